#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/CellBlock.h"
#include "src/host/CommandBars.h"
#include "src/host/Range.h"
#include "src/host/Worksheet.h"

namespace tolvane::host {

// How values look in the messages of a failed case.
void PrintTo(const CellValue& value, std::ostream* out);
void PrintTo(const CellBlock& block, std::ostream* out);

}  // namespace tolvane::host

namespace tolvane::contract {

// A worksheet as cases write it: s("A1"), s.Value("A1"), s.Put("B1", "=A1*2").
class Sheet : public host::Worksheet {
 public:
  Sheet() = default;
  explicit Sheet(const host::Worksheet& sheet) : Worksheet(sheet) {}

  host::Range operator()(std::string_view address) const { return Range(address); }
  host::CellValue Value(std::string_view cell) const { return Range(cell).Value().single(); }
  // The text that Formula gives, for cells whose formula or constant is one.
  std::string Formula(std::string_view cell) const { return TextIn(Range(cell).Formula()); }
  std::string FormulaR1C1(std::string_view cell) const { return TextIn(Range(cell).FormulaR1C1()); }
  void Put(std::string_view address, const host::CellBlock& formulas) const { Range(address).SetFormula(formulas); }

 private:
  // The text of a single value; a failure of the case, and empty, when it is none.
  static std::string TextIn(const host::CellBlock& block);
};

// Arguments, spelt shortly.
host::ValidationRule ListRule(std::string_view source);
host::HyperlinkTarget LinkTo(std::string_view subAddress);
host::FilterCriterion Where(int field, std::string_view criterion1,
                            host::FilterOperator op = host::FilterOperator::None,
                            const std::optional<std::string>& criterion2 = std::nullopt);
host::FilterCriterion WhereAny(int field);  // takes the criteria of a field away
host::FilterCriterion WhereOneOf(int field, std::vector<std::string> values);
host::NewControl NewOf(host::ControlType type);
host::NewControl NewBuiltIn(int id);

// Whether `action` fails with a HostError of this number.
::testing::AssertionResult Raises(host::ErrorNumber number, const std::function<void()>& action);
// The same for ApplicationDefined, the number of everything that the spreadsheet refuses.
::testing::AssertionResult Refused(const std::function<void()>& action);

}  // namespace tolvane::contract
