#pragma once

#include "src/host/Worksheet.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

class WorksheetObject final : public ObjectOf<WorksheetObject> {
 public:
  WorksheetObject(std::shared_ptr<World> world, host::Worksheet sheet);
  static std::span<const Member> Members();

  const host::Worksheet handle;

 protected:
  ~WorksheetObject() override;
};

}  // namespace tolvane::testing::excel
