#include "engine/model/BandTable.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tolvane::engine {

namespace {

const Band kDefaultBand;

using Stretches = std::vector<BandTable::Stretch>;

// Adds a stretch behind the last one, joining equal neighbours and leaving out defaults.
void Append(Stretches& stretches, int first, int last, const Band& band) {
  if (first > last || band.isDefault()) return;
  if (!stretches.empty() && stretches.back().last + 1 == first && stretches.back().band == band) {
    stretches.back().last = last;
  } else {
    stretches.push_back({first, last, band});
  }
}

// The first stretch that ends at an index or behind it.
Stretches::const_iterator EndingFrom(const Stretches& stretches, int index) {
  return std::lower_bound(stretches.begin(), stretches.end(), index,
                          [](const BandTable::Stretch& stretch, int wanted) { return stretch.last < wanted; });
}

}  // namespace

const Band& BandTable::At(int index) const {
  const auto found = EndingFrom(stretches_, index);
  return found != stretches_.end() && found->first <= index ? found->band : kDefaultBand;
}

void BandTable::ForEachStretch(int first, int last, const std::function<void(int, int, const Band&)>& visit) const {
  int next = first;
  for (auto it = EndingFrom(stretches_, first); it != stretches_.end() && it->first <= last; ++it) {
    if (next < it->first) visit(next, it->first - 1, kDefaultBand);
    visit(std::max(first, it->first), std::min(last, it->last), it->band);
    next = it->last + 1;
  }
  if (next <= last) visit(next, last, kDefaultBand);
}

void BandTable::Change(int first, int last, const std::function<void(Band&)>& change) {
  // The stretches before and behind the interval stay where they are; only what touches it is rebuilt.
  const auto from = EndingFrom(stretches_, first - 1) - stretches_.begin();
  auto to = from;
  while (to < std::ssize(stretches_) && stretches_[static_cast<std::size_t>(to)].first <= last + 1) ++to;

  Stretches rebuilt;
  const auto rebuild = [&](int low, int high, const Band& band) {
    if (low < first) Append(rebuilt, low, std::min(high, first - 1), band);
    const int innerLow = std::max(low, first);
    const int innerHigh = std::min(high, last);
    if (innerLow <= innerHigh) {
      Band changed = band;
      change(changed);
      Append(rebuilt, innerLow, innerHigh, changed);
    }
    if (high > last) Append(rebuilt, std::max(low, last + 1), high, band);
  };
  int next = first;
  for (auto i = from; i < to; ++i) {
    const Stretch& stretch = stretches_[static_cast<std::size_t>(i)];
    if (next < stretch.first && next <= last) rebuild(next, std::min(stretch.first - 1, last), kDefaultBand);
    rebuild(stretch.first, stretch.last, stretch.band);
    next = std::max(next, stretch.last + 1);
  }
  if (next <= last) rebuild(next, last, kDefaultBand);

  const auto common = std::min<std::ptrdiff_t>(to - from, std::ssize(rebuilt));
  std::copy_n(rebuilt.begin(), common, stretches_.begin() + from);
  if (common < to - from) {
    stretches_.erase(stretches_.begin() + from + common, stretches_.begin() + to);
  } else {
    stretches_.insert(stretches_.begin() + to, rebuilt.begin() + common, rebuilt.end());
  }
}

void BandTable::DeleteRuns(std::span<const Run> runs) {
  if (stretches_.empty()) return;
  Stretches kept;
  std::size_t run = 0;
  int gone = 0;  // bands deleted before the place reached
  for (const Stretch& stretch : stretches_) {
    int at = stretch.first;
    while (at <= stretch.last) {
      while (run < runs.size() && runs[run].last() < at) gone += runs[run++].count;
      if (run < runs.size() && runs[run].first <= at) {
        at = runs[run].last() + 1;
        continue;
      }
      const int end = run < runs.size() ? std::min(stretch.last, runs[run].first - 1) : stretch.last;
      Append(kept, at - gone, end - gone, stretch.band);
      at = end + 1;
    }
  }
  stretches_ = std::move(kept);
}

void BandTable::InsertRuns(std::span<const Run> runs, bool plain) {
  if (stretches_.empty()) return;
  const int limit = LimitOf(axis_);
  Stretches grown;
  std::size_t run = 0;
  int shift = 0;  // bands inserted before the place reached
  // `front`: the band just before the runs that are due.
  const auto insertBefore = [&](int newIndex, const Band& front) {
    Band inserted = plain ? Band{} : front;
    inserted.filtered = false;
    while (run < runs.size() && runs[run].first <= newIndex) {
      Append(grown, runs[run].first, std::min(limit, runs[run].last()), inserted);
      shift += runs[run].count;
      newIndex += runs[run].count;
      ++run;
    }
  };
  int next = 1;
  const Band* front = &kDefaultBand;
  for (const Stretch& stretch : stretches_) {
    // Runs within the default bands in front of this stretch insert default bands: only the numbers move on.
    if (next < stretch.first) {
      insertBefore(next + shift, *front);
      front = &kDefaultBand;
      insertBefore(stretch.first + shift, kDefaultBand);
    }
    int at = stretch.first;
    while (at <= stretch.last) {
      insertBefore(at + shift, *front);
      front = &stretch.band;
      const int end =
          run < runs.size() ? std::min(stretch.last, std::max(at, runs[run].first - 1 - shift)) : stretch.last;
      if (at + shift <= limit) Append(grown, at + shift, std::min(limit, end + shift), stretch.band);
      at = end + 1;
    }
    next = stretch.last + 1;
  }
  insertBefore(next + shift, *front);
  stretches_ = std::move(grown);
}

}  // namespace tolvane::engine
