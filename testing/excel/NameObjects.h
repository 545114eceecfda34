#pragma once

#include "src/host/Names.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

class NameObject final : public ObjectOf<NameObject> {
 public:
  NameObject(std::shared_ptr<World> world, host::Name name) : ObjectOf(std::move(world)), handle(std::move(name)) {}
  static std::span<const Member> Members();

  const host::Name handle;
};

// The names of a sheet; or of a book, where Excel lists those of its sheets, too, and finds those of the sheet in
// front.
class NamesObject final : public ObjectOf<NamesObject> {
 public:
  NamesObject(std::shared_ptr<World> world, host::Names names, host::Workbook book)
      : ObjectOf(std::move(world)), handle(std::move(names)), book_(std::move(book)) {}
  static std::span<const Member> Members();

  const host::Names handle;

 private:
  host::Name Find(const std::string& name) const;
  std::vector<Variant> All() const;

  const host::Workbook book_;  // Nothing for the names of a sheet
};

}  // namespace tolvane::testing::excel
