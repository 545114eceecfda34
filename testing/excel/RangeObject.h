#pragma once

#include "src/host/Range.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

// Cells; or rows or columns, as Range.Rows gives them: the same cells, counted differently.
class RangeObject final : public ObjectOf<RangeObject> {
 public:
  enum class Unit { Cells, Rows, Columns };
  RangeObject(std::shared_ptr<World> world, host::Range range, Unit unit = Unit::Cells)
      : ObjectOf(std::move(world)), handle(std::move(range)), unit_(unit) {}
  static std::span<const Member> Members();

  Variant Of(const host::Range& range) const;
  std::int64_t Count() const;
  host::Range Item(const Call& call) const;

  const host::Range handle;

 private:
  const Unit unit_;
};

// Members with more than a line behind them, in RangeContents.cpp and RangeMembers.cpp.
Variant RangeValue(RangeObject& range, const Call& call);
Variant RangeFormula(RangeObject& range, const Call& call);
Variant RangeFormulaR1C1(RangeObject& range, const Call& call);
Variant RangeAddress(RangeObject& range, const Call& call);
Variant RangeSort(RangeObject& range, const Call& call);
Variant RangeAutoFilter(RangeObject& range, const Call& call);

}  // namespace tolvane::testing::excel
