#pragma once

#include <span>
#include <vector>

#include "engine/model/Geometry.h"

namespace tolvane::embedded {

class EmbeddedWorksheet;
class RangeTracker;

// Rectangles of one sheet that stay on their cells when others are inserted, deleted or moved. Areas whose cells are
// all gone drop out.
class TrackedAreas {
 public:
  TrackedAreas(RangeTracker& tracker, std::vector<engine::Rect> areas);
  virtual ~TrackedAreas();
  TrackedAreas(const TrackedAreas&) = delete;
  TrackedAreas& operator=(const TrackedAreas&) = delete;

  const std::vector<engine::Rect>& areas() const { return areas_; }

 protected:
  // Its cells were cut and pasted on another sheet.
  virtual void MovedTo(EmbeddedWorksheet& sheet) = 0;
  void Unlink();  // nothing is tracked from then on

 private:
  friend class RangeTracker;
  void Link(RangeTracker& tracker);

  std::vector<engine::Rect> areas_;
  RangeTracker* tracker_ = nullptr;
  TrackedAreas* previous_ = nullptr;
  TrackedAreas* next_ = nullptr;
};

// All tracked areas of one sheet; told by whoever changes the sheet's shape. Each call costs one step per area, and a
// search among the runs.
class RangeTracker {
 public:
  RangeTracker() = default;
  RangeTracker(const RangeTracker&) = delete;
  RangeTracker& operator=(const RangeTracker&) = delete;
  ~RangeTracker();

  // Runs as in engine::Workbook.
  void DeleteRuns(engine::Axis axis, std::span<const engine::Run> runs);
  void InsertRuns(engine::Axis axis, std::span<const engine::Run> runs);
  void DeleteCells(const engine::Rect& area, engine::Axis shiftAlong);
  void InsertCells(const engine::Rect& area, engine::Axis shiftAlong);
  // Areas that lie within what was moved follow; with all of their areas moved to another sheet, they belong to it.
  void MoveCells(const engine::Rect& area, EmbeddedWorksheet& to, engine::CellPos target);

 private:
  friend class TrackedAreas;
  // `shift` gives a rectangle's successor, or nothing.
  template <class Shift>
  void ForAll(Shift&& shift);

  TrackedAreas* first_ = nullptr;
};

}  // namespace tolvane::embedded
