#include "engine/formula/RangeIndex.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "engine/formula/CellAddress.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/NumberText.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

// The number that its 15 digits say.
double AsSeen(double number) {
  constexpr double kAlwaysExact = 1e15;
  if (std::fabs(number) < kAlwaysExact && number == std::trunc(number)) return number;
  const std::string digits = NumberAsText(number);
  double seen = number;
  std::from_chars(digits.data(), digits.data() + digits.size(), seen);
  return seen;
}

std::string NumberKey(double number) {
  if (number == 0) number = 0;  // not -0
  std::string key(1 + sizeof(number), 'n');
  std::memcpy(key.data() + 1, &number, sizeof(number));
  return key;
}

}  // namespace

std::string RangeIndex::KeyOf(const Value& value) const {
  const bool asSeen = equality_ == Equality::AsSeen;
  switch (value.kind()) {
    case Value::Kind::Number:
      return NumberKey(asSeen ? AsSeen(value.number()) : value.number());
    case Value::Kind::Text:
      if (asSeen) {
        if (const auto number = NumberFromText(value.text().view())) return NumberKey(AsSeen(*number));
      }
      return "t" + platform::FoldCase(value.text().view());
    case Value::Kind::Boolean:
      return value.boolean() ? "b1" : "b0";
    case Value::Kind::Error:
      return "e" + std::string(TextOf(value.error()));
    case Value::Kind::Empty:
      break;
  }
  return {};
}

void RangeIndex::Add(CellOffset at, const Value& value) {
  if (!value.isEmpty()) places_[KeyOf(value)].push_back(at);
}

const std::vector<CellOffset>& RangeIndex::Find(const Value& wanted) const {
  static const std::vector<CellOffset> nowhere;
  const auto found = places_.find(KeyOf(wanted));
  return found == places_.end() ? nowhere : found->second;
}

std::size_t RangeIndexes::KeyHash::operator()(const Key& key) const {
  const CellAddressHash hash;
  const Rect& rect = key.area.rect;
  const std::size_t corners = hash({0, rect.topLeft()}) * 31 + hash({0, {rect.bottom, rect.right}});
  return (corners * 31 + std::hash<const Sheet*>()(key.area.sheet)) * 2 + static_cast<std::size_t>(key.equality);
}

const RangeIndex* Evaluator::IndexOf(const Area& area, Equality equality) {
  // A single lookup is cheaper without one.
  constexpr int kAskedBefore = 2;
  RangeIndexes::Entry& entry = indexes_.At(area, equality);
  if (entry.index == nullptr) {
    if (entry.asked++ < kAskedBefore) return nullptr;
    const std::size_t staleBefore = stale_.size();
    const bool usedStale = std::exchange(usedStale_, false);
    const bool restsOnKept = std::exchange(restsOnKept_, false);
    auto index = std::make_unique<RangeIndex>(equality);
    ForEachContent(area, [&](CellPos at, const Value& value) { index->Add(OffsetIn(area.rect, at), value); });
    index->usedStale = std::exchange(usedStale_, usedStale);
    index->restsOnKept = std::exchange(restsOnKept_, restsOnKept);
    if (stale_.size() != staleBefore) return nullptr;
    entry.index = std::move(index);
  }
  usedStale_ = usedStale_ || entry.index->usedStale;
  restsOnKept_ = restsOnKept_ || entry.index->restsOnKept;
  return entry.index.get();
}

std::optional<double> Evaluator::GrowingSum(const Area& area) {
  constexpr int kFewRows = 32;
  const Rect& rect = area.rect;
  if (&area.sheet->book() != &book_ || rect.left != rect.right || rect.rows() < kFewRows) return std::nullopt;
  SumSoFar& known = growingSums_[{area.sheet->id(), rect.topLeft()}];
  if (known.bottom > rect.bottom) return std::nullopt;
  SumSoFar grown = known;
  grown.bottom = rect.bottom;
  const std::size_t staleBefore = stale_.size();
  const bool usedStale = std::exchange(usedStale_, false);
  const bool restsOnKept = std::exchange(restsOnKept_, false);
  bool hasError = false;
  const Rect added{std::max(known.bottom + 1, rect.top), rect.left, rect.bottom, rect.right};
  if (added.top <= added.bottom) {
    ForEachContent({area.sheet, added}, [&](CellPos, const Value& value) {
      if (value.isNumber()) grown.sum += value.number();
      hasError = hasError || value.isError();
    });
  }
  grown.usedStale = grown.usedStale || usedStale_;
  grown.restsOnKept = grown.restsOnKept || restsOnKept_;
  usedStale_ = usedStale || grown.usedStale;
  restsOnKept_ = restsOnKept || grown.restsOnKept;
  if (stale_.size() != staleBefore) return grown.sum;  // counts for nothing
  if (hasError) return std::nullopt;
  known = grown;
  return grown.sum;
}

const std::optional<Rect>& Evaluator::UsedContentsOf(const Sheet& sheet) {
  const auto [known, isNew] = usedContents_.try_emplace(&sheet);
  if (isNew) known->second = sheet.UsedContents();
  return known->second;
}

void Evaluator::BeginPass() {
  indexes_.Clear();
  growingSums_.clear();
  usedContents_.clear();
}

}  // namespace tolvane::engine
