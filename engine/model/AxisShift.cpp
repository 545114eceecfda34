#include "engine/model/AxisShift.h"

#include <algorithm>

namespace tolvane::engine {

namespace {

// With many runs the search for an index begins at what is known of its stretch of the axis.
constexpr std::size_t kRunsWorthBuckets = 16;
constexpr int kBucket = 128;

}  // namespace

AxisShift::AxisShift(Axis axis, Kind kind, std::span<const Run> runs) : limit_(LimitOf(axis)), kind_(kind) {
  starts_.reserve(runs.size());
  totals_.reserve(runs.size());
  int total = 0;
  for (const Run& run : runs) {
    starts_.push_back(kind == Kind::Delete ? run.first : run.first - total);
    total += run.count;
    totals_.push_back(total);
  }
  if (starts_.size() < kRunsWorthBuckets) return;
  const auto buckets = static_cast<std::size_t>(starts_.back() / kBucket + 1);
  runsUpTo_.reserve(buckets + 1);
  std::size_t runsSoFar = 0;
  for (std::size_t bucket = 0; bucket <= buckets; ++bucket) {
    const int end = static_cast<int>(bucket) * kBucket;
    while (runsSoFar < starts_.size() && starts_[runsSoFar] < end) ++runsSoFar;
    runsUpTo_.push_back(runsSoFar);
  }
}

std::size_t AxisShift::RunsBefore(int index) const {
  std::size_t from = 0;
  std::size_t to = starts_.size();
  if (!runsUpTo_.empty()) {
    const auto bucket = static_cast<std::size_t>(std::max(index, 0) / kBucket);
    if (bucket + 1 >= runsUpTo_.size()) return to;
    from = runsUpTo_[bucket];
    to = runsUpTo_[bucket + 1];
  }
  const auto begin = starts_.begin();
  return static_cast<std::size_t>(
      std::upper_bound(begin + static_cast<std::ptrdiff_t>(from), begin + static_cast<std::ptrdiff_t>(to), index) -
      begin);
}

std::optional<int> AxisShift::Map(int index) const {
  const std::size_t runs = RunsBefore(index);
  if (kind_ == Kind::Insert) {
    const int moved = index + CountBefore(runs);
    return moved <= limit_ ? std::optional(moved) : std::nullopt;
  }
  if (runs == 0) return index;
  const int countOfLast = totals_[runs - 1] - CountBefore(runs - 1);
  if (index < starts_[runs - 1] + countOfLast) return std::nullopt;
  return index - totals_[runs - 1];
}

std::optional<Span> AxisShift::Map(Span span) const {
  if (span.first == 1 && span.last == limit_) return span;
  if (kind_ == Kind::Insert) {
    const auto first = Map(span.first);
    if (!first) return std::nullopt;
    return Span{*first, Map(span.last).value_or(limit_)};
  }
  // How many of the first `index` ones stay.
  const auto staying = [this](int index) {
    const std::size_t runs = RunsBefore(index);
    if (runs == 0) return index;
    const int countOfLast = totals_[runs - 1] - CountBefore(runs - 1);
    const int goneOfLast = std::min(countOfLast, index - starts_[runs - 1] + 1);
    return index - CountBefore(runs - 1) - goneOfLast;
  };
  const Span kept{staying(span.first - 1) + 1, staying(span.last)};
  return kept.first <= kept.last ? std::optional(kept) : std::nullopt;
}

int AxisShift::Unmap(int index) const {
  std::size_t low = 0;
  std::size_t high = starts_.size();
  // The number of runs whose place in the numbering after the change is not behind the index.
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    const int place =
        kind_ == Kind::Delete ? starts_[middle] - CountBefore(middle) : starts_[middle] + CountBefore(middle);
    if (place <= index) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (low == 0) return index;
  if (kind_ == Kind::Delete) return index + totals_[low - 1];
  return std::max(index - totals_[low - 1], starts_[low - 1]);
}

}  // namespace tolvane::engine
