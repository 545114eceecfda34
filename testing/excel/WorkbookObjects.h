#pragma once

#include "src/host/Workbook.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

class WorkbookObject final : public ObjectOf<WorkbookObject> {
 public:
  WorkbookObject(std::shared_ptr<World> world, host::Workbook book);
  static std::span<const Member> Members();

  const host::Workbook handle;

 protected:
  ~WorkbookObject() override;
};

// The open workbooks.
class WorkbooksObject final : public ObjectOf<WorkbooksObject> {
 public:
  explicit WorkbooksObject(std::shared_ptr<World> world) : ObjectOf(std::move(world)) {}
  static std::span<const Member> Members();
};

// The sheets of a workbook.
class WorksheetsObject final : public ObjectOf<WorksheetsObject> {
 public:
  WorksheetsObject(std::shared_ptr<World> world, host::Workbook book)
      : ObjectOf(std::move(world)), handle(std::move(book)) {}
  static std::span<const Member> Members();

  const host::Workbook handle;
};

}  // namespace tolvane::testing::excel
