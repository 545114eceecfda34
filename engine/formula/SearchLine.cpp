#include "engine/formula/SearchLine.h"

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"

namespace tolvane::engine {
namespace {

bool AreSame(const Value& value, const Value& wanted) {
  return value.kind() == wanted.kind() && CompareExactly(value, wanted) == 0;
}

}  // namespace

SearchLine::SearchLine(Evaluator& evaluator, const Operand& table, Axis along, int position)
    : evaluator_(evaluator), along_(along) {
  if (table.isReference()) {
    area_ = table.areas()[0];
    Rect& rect = area_.rect;
    if (along == Axis::Rows) {
      rect.left = rect.right = rect.left + position;
      size_ = rect.rows();
    } else {
      rect.top = rect.bottom = rect.top + position;
      size_ = rect.columns();
    }
  } else {
    array_ = evaluator.ToArray(table);
    position_ = position;
    size_ = along == Axis::Rows ? array_->rows : array_->columns;
  }
}

int SearchLine::filled() const {
  if (array_ != nullptr) return size_;
  const std::optional<Rect>& used = evaluator_.UsedContentsOf(*area_.sheet);
  if (!used) return 0;
  return std::clamp(PositionOf({used->bottom, used->right}) + 1, 0, size_);
}

Value SearchLine::At(int i) const {
  if (array_ != nullptr) return along_ == Axis::Rows ? array_->At(i, position_) : array_->At(position_, i);
  return evaluator_.ValueAt(*area_.sheet, Part(i, i).rect.topLeft());
}

Area SearchLine::Part(int first, int last) const {
  Area part = area_;
  if (along_ == Axis::Rows) {
    part.rect.top = area_.rect.top + first;
    part.rect.bottom = area_.rect.top + last;
  } else {
    part.rect.left = area_.rect.left + first;
    part.rect.right = area_.rect.left + last;
  }
  return part;
}

const RangeIndex* SearchLine::Index() const {
  return array_ == nullptr ? evaluator_.IndexOf(area_, Equality::Exactly) : nullptr;
}

std::optional<int> SearchLine::FindEqual(const Value& wanted) const {
  if (const RangeIndex* index = Index()) {
    const std::vector<CellOffset>& places = index->Find(wanted);
    return places.empty() ? std::nullopt : std::optional(PositionOf(CellAtOffset(area_.rect, places.front())));
  }
  return Find([&](const Value& value) { return AreSame(value, wanted); });
}

std::optional<int> SearchLine::FindLastEqual(const Value& wanted) const {
  if (const RangeIndex* index = Index()) {
    const std::vector<CellOffset>& places = index->Find(wanted);
    return places.empty() ? std::nullopt : std::optional(PositionOf(CellAtOffset(area_.rect, places.back())));
  }
  for (int i = filled() - 1; i >= 0; --i) {
    if (AreSame(At(i), wanted)) return i;
  }
  return std::nullopt;
}

std::optional<int> SearchLine::FindMatch(const Value& wanted) const {
  if (wanted.isText()) {
    const std::string_view text = wanted.text().view();
    const WildcardPattern pattern(text);
    if (pattern.hasWildcards() || text.find('~') != std::string_view::npos) {
      return Find([&](const Value& value) { return value.isText() && pattern.Matches(value.text().view()); });
    }
  }
  return FindEqual(wanted);
}

std::optional<int> SearchLine::FindLastNotGreater(const Value& wanted) const {
  int low = 0;
  int high = filled();  // the answer lies before `high`
  std::optional<int> best;
  while (low < high) {
    const int middle = low + (high - low) / 2;
    int probe = middle;
    Value value = At(probe);
    while (value.kind() != wanted.kind() && probe + 1 < high) value = At(++probe);
    if (value.kind() != wanted.kind()) {
      high = middle;
    } else if (CompareExactly(value, wanted) <= 0) {
      best = probe;
      low = probe + 1;
    } else {
      high = middle;
    }
  }
  return best;
}

std::optional<int> SearchLine::FindLastNotLess(const Value& wanted) const {
  std::optional<int> best;
  const int end = filled();
  for (int i = 0; i < end; ++i) {
    const Value value = At(i);
    if (value.kind() != wanted.kind()) continue;
    const int order = CompareExactly(value, wanted);
    if (order < 0) break;
    best = i;
    if (order == 0) break;
  }
  return best;
}

const Operand& TableAt(FunctionCall& call, std::size_t i) {
  const Operand& table = call.Argument(i);
  if (table.isValue() && table.value().isError()) throw FunctionError{table.value().error()};
  if (table.isReference() ? !table.areas().isSingle() : !table.isArray()) throw FunctionError{ErrorCode::NA};
  return table;
}

int TableRows(const Operand& table) {
  return table.isReference() ? table.areas()[0].rect.rows() : RowsOf(table);
}
int TableColumns(const Operand& table) {
  return table.isReference() ? table.areas()[0].rect.columns() : ColumnsOf(table);
}

}  // namespace tolvane::engine
