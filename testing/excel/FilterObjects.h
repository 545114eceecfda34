#pragma once

#include "src/host/Worksheet.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

// The filter of a sheet.
class AutoFilterObject final : public ObjectOf<AutoFilterObject> {
 public:
  AutoFilterObject(std::shared_ptr<World> world, host::AutoFilter filter)
      : ObjectOf(std::move(world)), handle(std::move(filter)) {}
  static std::span<const Member> Members();

  const host::AutoFilter handle;
};

// The criteria of one column of it.
class FilterObject final : public ObjectOf<FilterObject> {
 public:
  FilterObject(std::shared_ptr<World> world, host::FilterState state)
      : ObjectOf(std::move(world)), state_(std::move(state)) {}
  static std::span<const Member> Members();

 private:
  void RequireOn() const;

  const host::FilterState state_;
};

}  // namespace tolvane::testing::excel
