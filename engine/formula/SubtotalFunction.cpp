#include <algorithm>

#include "engine/formula/Aggregates.h"

namespace tolvane::engine {
namespace {

constexpr int kWithoutHidden = 100;  // added to the number of a function: leave out rows hidden by hand too

// The rows that a subtotal leaves out, in order.
std::vector<Run> SkippedRows(const Sheet& sheet, bool alsoHidden) {
  std::vector<Run> skipped;
  for (const BandTable::Stretch& stretch : sheet.rows.stretches()) {
    if (stretch.band.filtered || (alsoHidden && stretch.band.hidden)) {
      skipped.push_back({stretch.first, stretch.last - stretch.first + 1});
    }
  }
  return skipped;
}

bool Contains(const std::vector<Run>& runs, int row) {
  const auto next =
      std::upper_bound(runs.begin(), runs.end(), row, [](int index, const Run& run) { return index < run.first; });
  return next != runs.begin() && std::prev(next)->last() >= row;
}

}  // namespace

bool HoldsSubtotal(const Expression& expression) {
  return std::any_of(expression.nodes.begin(), expression.nodes.end(), [&](const Node& node) {
    if (node.kind != Node::Kind::Function) return false;
    const std::string& name = expression.names[node.index].name;
    return name == "SUBTOTAL" || name == "AGGREGATE";
  });
}

namespace {

Operand Subtotal(FunctionCall& call) {
  std::int64_t which = call.Whole(0);
  const bool alsoHidden = which > kWithoutHidden;
  if (alsoHidden) which -= kWithoutHidden;
  if (which < 1 || which > 11) return ErrorCode::Value;
  constexpr std::int64_t kCount = 2;
  constexpr std::int64_t kCountA = 3;
  const bool counts = which == kCount || which == kCountA;

  Summary summary;
  std::int64_t filled = 0;
  std::optional<ErrorCode> error;
  for (std::size_t i = 1; i < call.count(); ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isValue() && argument.value().isError()) return argument.value();
    if (!argument.isReference()) return ErrorCode::Value;
    for (std::size_t part = 0; part < argument.areas().size(); ++part) {
      const Area& area = argument.areas()[part];
      const std::vector<Run> skipped = SkippedRows(*area.sheet, alsoHidden);
      // Neighbouring formulas are mostly one and the same.
      const Expression* lastExpression = nullptr;
      bool lastHoldsSubtotal = false;
      call.evaluator.ForEachCell(area, [&](CellPos at, const Value& value, const FormulaCell* formula) {
        if (value.isEmpty() || (!skipped.empty() && Contains(skipped, at.row))) return;
        if (formula != nullptr && formula->expression != nullptr) {
          if (formula->expression.get() != lastExpression) {
            lastExpression = formula->expression.get();
            lastHoldsSubtotal = HoldsSubtotal(*lastExpression);
          }
          if (lastHoldsSubtotal) return;
        }
        ++filled;
        if (value.isNumber()) {
          summary.Add(value.number());
        } else if (value.isError() && !error) {
          error = value.error();
        }
      });
    }
  }
  if (error && !counts) return *error;
  switch (which) {
    case 1:
      return summary.Average();
    case kCount:
      return static_cast<double>(summary.count());
    case kCountA:
      return static_cast<double>(filled);
    case 4:
      return summary.Greatest();
    case 5:
      return summary.Least();
    case 6:
      return summary.Product();
    case 7:
      return summary.Variance(true, true);
    case 8:
      return summary.Variance(false, true);
    case 9:
      return summary.Sum();
    case 10:
      return summary.Variance(true, false);
    default:
      return summary.Variance(false, false);
  }
}

constexpr Function kFunctions[] = {
    {"SUBTOTAL", 2, kMostArguments, "VR", Subtotal},
};

}  // namespace

std::span<const Function> SubtotalFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
