#include "hosts/embedded/RangeTracker.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engine/model/AxisShift.h"
#include "hosts/embedded/EmbeddedWorksheet.h"

namespace tolvane::embedded {

using engine::Axis;
using engine::AxisShift;
using engine::Rect;
using engine::Run;

namespace {

std::optional<Rect> Shifted(Rect rect, Axis axis, const AxisShift& shift) {
  int& first = axis == Axis::Rows ? rect.top : rect.left;
  int& last = axis == Axis::Rows ? rect.bottom : rect.right;
  const auto span = shift.Map(engine::Span{first, last});
  if (!span) return std::nullopt;
  first = span->first;
  last = span->last;
  return rect;
}

// Whether a rectangle lies within the lane in which cells move when `area` is inserted or deleted.
bool LiesInLane(const Rect& rect, const Rect& area, Axis shiftAlong) {
  if (shiftAlong == Axis::Rows) return area.left <= rect.left && rect.right <= area.right;
  return area.top <= rect.top && rect.bottom <= area.bottom;
}

Run RunOf(const Rect& area, Axis axis) {
  return axis == Axis::Rows ? Run{area.top, area.rows()} : Run{area.left, area.columns()};
}

}  // namespace

TrackedAreas::TrackedAreas(RangeTracker& tracker, std::vector<Rect> areas) : areas_(std::move(areas)) {
  Link(tracker);
}

TrackedAreas::~TrackedAreas() {
  Unlink();
}

void TrackedAreas::Link(RangeTracker& tracker) {
  tracker_ = &tracker;
  previous_ = nullptr;
  next_ = tracker.first_;
  if (next_ != nullptr) next_->previous_ = this;
  tracker.first_ = this;
}

void TrackedAreas::Unlink() {
  if (tracker_ == nullptr) return;
  (previous_ == nullptr ? tracker_->first_ : previous_->next_) = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
  tracker_ = nullptr;
}

RangeTracker::~RangeTracker() {
  while (first_ != nullptr) first_->Unlink();
}

template <class Shift>
void RangeTracker::ForAll(Shift&& shift) {
  for (TrackedAreas* tracked = first_; tracked != nullptr; tracked = tracked->next_) {
    std::vector<Rect>& areas = tracked->areas_;
    std::size_t kept = 0;
    for (const Rect& area : areas) {
      if (const std::optional<Rect> shifted = shift(area)) areas[kept++] = *shifted;
    }
    areas.resize(kept);
  }
}

void RangeTracker::DeleteRuns(Axis axis, std::span<const Run> runs) {
  const AxisShift shift(axis, AxisShift::Kind::Delete, runs);
  ForAll([&](const Rect& rect) { return Shifted(rect, axis, shift); });
}

void RangeTracker::InsertRuns(Axis axis, std::span<const Run> runs) {
  const AxisShift shift(axis, AxisShift::Kind::Insert, runs);
  ForAll([&](const Rect& rect) { return Shifted(rect, axis, shift); });
}

void RangeTracker::DeleteCells(const Rect& area, Axis shiftAlong) {
  const Run run = RunOf(area, shiftAlong);
  const AxisShift shift(shiftAlong, AxisShift::Kind::Delete, std::span(&run, 1));
  ForAll([&](const Rect& rect) -> std::optional<Rect> {
    return LiesInLane(rect, area, shiftAlong) ? Shifted(rect, shiftAlong, shift) : rect;
  });
}

void RangeTracker::InsertCells(const Rect& area, Axis shiftAlong) {
  const Run run = RunOf(area, shiftAlong);
  const AxisShift shift(shiftAlong, AxisShift::Kind::Insert, std::span(&run, 1));
  ForAll([&](const Rect& rect) -> std::optional<Rect> {
    return LiesInLane(rect, area, shiftAlong) ? Shifted(rect, shiftAlong, shift) : rect;
  });
}

void RangeTracker::MoveCells(const Rect& area, EmbeddedWorksheet& to, engine::CellPos target) {
  const int rows = target.row - area.top;
  const int columns = target.column - area.left;
  const auto moves = [&](const Rect& rect) { return area.contains(rect); };
  const auto moved = [&](const Rect& rect) {
    return Rect{rect.top + rows, rect.left + columns, rect.bottom + rows, rect.right + columns};
  };
  if (&to.tracker() == this) {
    ForAll([&](const Rect& rect) { return std::optional<Rect>(moves(rect) ? moved(rect) : rect); });
    return;
  }
  for (TrackedAreas* tracked = first_; tracked != nullptr;) {
    TrackedAreas* const next = tracked->next_;
    std::vector<Rect>& areas = tracked->areas_;
    if (!areas.empty() && std::all_of(areas.begin(), areas.end(), moves)) {
      std::transform(areas.begin(), areas.end(), areas.begin(), moved);
      tracked->Unlink();
      tracked->Link(to.tracker());
      tracked->MovedTo(to);
    }
    tracked = next;
  }
}

}  // namespace tolvane::embedded
