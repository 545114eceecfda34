#include <algorithm>
#include <optional>
#include <vector>

#include "engine/formula/Aggregates.h"
#include "engine/formula/Criterion.h"

namespace tolvane::engine {
namespace {

// The cells of an area that meet conditions. Where a condition holds for blank cells too, the few that do not meet it
// are remembered instead, so that a whole column costs no more than what stands in it.
class Selection {
 public:
  Selection(Evaluator& evaluator, const Area& area, const Criterion& criterion) : inverted_(criterion.matchesBlank()) {
    if (const auto wanted = criterion.plainEquality()) {
      if (const RangeIndex* index = evaluator.IndexOf(area, Equality::AsSeen)) {
        listed_ = index->Find(*wanted);
        return;
      }
    }
    evaluator.ForEachContent(area, [&](CellPos at, const Value& value) {
      if (criterion.Matches(value) != inverted_) listed_.push_back(OffsetIn(area.rect, at));
    });
  }

  void Narrow(const Selection& other) {
    std::vector<CellOffset> result;
    const auto out = std::back_inserter(result);
    const auto& a = listed_;
    const auto& b = other.listed_;
    if (inverted_ && other.inverted_) {
      std::set_union(a.begin(), a.end(), b.begin(), b.end(), out);
    } else if (inverted_) {
      std::set_difference(b.begin(), b.end(), a.begin(), a.end(), out);
    } else if (other.inverted_) {
      std::set_difference(a.begin(), a.end(), b.begin(), b.end(), out);
    } else {
      std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), out);
    }
    inverted_ = inverted_ && other.inverted_;
    listed_ = std::move(result);
  }

  std::int64_t CountOf(std::int64_t cells) const {
    const auto listed = static_cast<std::int64_t>(listed_.size());
    return inverted_ ? cells - listed : listed;
  }

  // The numbers of an area of the same shape whose cells are selected. An error among them is thrown.
  Summary Summarize(Evaluator& evaluator, const Area& area) const {
    Summary summary;
    std::optional<ErrorCode> error;
    const auto add = [&](const Value& value) {
      if (value.isNumber()) {
        summary.Add(value.number());
      } else if (value.isError() && !error) {
        error = value.error();
      }
    };
    if (IsFew(area)) {
      for (const CellOffset offset : listed_) {
        const CellPos at = CellAtOffset(area.rect, offset);
        if (area.rect.contains(at)) add(evaluator.ValueAt(*area.sheet, at));
      }
    } else {
      auto next = listed_.begin();
      evaluator.ForEachContent(area, [&](CellPos at, const Value& value) {
        const CellOffset offset = OffsetIn(area.rect, at);
        while (next != listed_.end() && *next < offset) ++next;
        const bool isListed = next != listed_.end() && *next == offset;
        if (isListed != inverted_) add(value);
      });
    }
    if (error) throw FunctionError{*error};
    return summary;
  }

 private:
  // Whether going to each selected cell costs less than walking all contents.
  bool IsFew(const Area& area) const {
    constexpr std::int64_t kCostOfGoing = 8;
    return !inverted_ && static_cast<std::int64_t>(listed_.size()) * kCostOfGoing < area.rect.cells();
  }

  bool inverted_;
  std::vector<CellOffset> listed_;
};

// Areas and conditions alternate from the argument `first` on.
Selection SelectWhere(FunctionCall& call, std::size_t first) {
  if ((call.count() - first) % 2 != 0) throw FunctionError{ErrorCode::Value};
  std::optional<Selection> selection;
  const Rect& shape = call.AreaAt(first).rect;
  for (std::size_t i = first; i + 1 < call.count(); i += 2) {
    const Area& area = call.AreaAt(i);
    if (area.rect.rows() != shape.rows() || area.rect.columns() != shape.columns()) {
      throw FunctionError{ErrorCode::Value};
    }
    Selection here(call.evaluator, area, Criterion(call.ValueAt(i + 1)));
    if (selection) {
      selection->Narrow(here);
    } else {
      selection.emplace(std::move(here));
    }
  }
  return *selection;
}

// SUMIF and AVERAGEIF: what is summed has the shape of the tested area, from its own top left cell on.
Summary SummarizeIf(FunctionCall& call) {
  const Area& tested = call.AreaAt(0);
  Area summed = tested;
  if (call.Has(2)) {
    summed = call.AreaAt(2);
    summed.rect.bottom = std::min(summed.rect.top + tested.rect.rows() - 1, kMaxRow);
    summed.rect.right = std::min(summed.rect.left + tested.rect.columns() - 1, kMaxColumn);
  }
  return Selection(call.evaluator, tested, Criterion(call.ValueAt(1))).Summarize(call.evaluator, summed);
}

Operand SumIf(FunctionCall& call) {
  return SummarizeIf(call).Sum();
}
Operand AverageIf(FunctionCall& call) {
  return SummarizeIf(call).Average();
}

Summary SummarizeIfs(FunctionCall& call) {
  const Area& summed = call.AreaAt(0);
  const Rect& tested = call.AreaAt(1).rect;
  if (summed.rect.rows() != tested.rows() || summed.rect.columns() != tested.columns()) {
    throw FunctionError{ErrorCode::Value};
  }
  return SelectWhere(call, 1).Summarize(call.evaluator, summed);
}

Operand SumIfs(FunctionCall& call) {
  return SummarizeIfs(call).Sum();
}
Operand AverageIfs(FunctionCall& call) {
  return SummarizeIfs(call).Average();
}

Operand MaxIfs(FunctionCall& call) {
  return SummarizeIfs(call).Greatest();
}
Operand MinIfs(FunctionCall& call) {
  return SummarizeIfs(call).Least();
}

Operand CountIfs(FunctionCall& call) {
  return static_cast<double>(SelectWhere(call, 0).CountOf(call.AreaAt(0).rect.cells()));
}

constexpr Function kFunctions[] = {
    {"AVERAGEIF", 2, 3, "RER", AverageIf},
    {"AVERAGEIFS", 3, kMostArguments, "R|RE", AverageIfs},
    {"COUNTIF", 2, 2, "RE", CountIfs},
    {"COUNTIFS", 2, kMostArguments, "|RE", CountIfs},
    {"MAXIFS", 3, kMostArguments, "R|RE", MaxIfs},
    {"MINIFS", 3, kMostArguments, "R|RE", MinIfs},
    {"SUMIF", 2, 3, "RER", SumIf},
    {"SUMIFS", 3, kMostArguments, "R|RE", SumIfs},
};

}  // namespace

std::span<const Function> ConditionalFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
