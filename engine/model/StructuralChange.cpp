#include "engine/model/StructuralChange.h"

#include <algorithm>
#include <utility>

#include "engine/model/Area.h"

namespace tolvane::engine {

std::optional<Anchor> FindAnchor(SheetId sheet, const Rect& firstArea, const std::vector<Rect>& parts,
                                 const StructuralChange& change) {
  const Place first{sheet, firstArea.topLeft()};
  const auto after = change.Map(first);
  if (after && after->sheet == sheet) return Anchor{first, *after};
  for (const Rect& part : parts) {
    const Place before = change.Unmap({sheet, part.topLeft()});
    const auto mapped = change.Map(before);
    if (mapped && before.sheet == sheet && mapped->sheet == sheet) return Anchor{before, *mapped};
  }
  return std::nullopt;
}

// --- RunShift
// ----------------------------------------------------------------------------------------------------------

RunShift::RunShift(SheetId sheet, Axis axis, AxisShift shift, Span across)
    : sheet_(sheet), axis_(axis), shift_(std::move(shift)), across_(across) {}

RunShift RunShift::Runs(SheetId sheet, Axis axis, AxisShift::Kind kind, std::span<const Run> runs) {
  const Axis other = axis == Axis::Rows ? Axis::Columns : Axis::Rows;
  return {sheet, axis, AxisShift(axis, kind, runs), {1, LimitOf(other)}};
}

RunShift RunShift::Cells(SheetId sheet, const Rect& area, Axis along, AxisShift::Kind kind) {
  const bool rows = along == Axis::Rows;
  const Run run = rows ? Run{area.top, area.rows()} : Run{area.left, area.columns()};
  return {sheet, along, AxisShift(along, kind, {&run, 1}),
          rows ? Span{area.left, area.right} : Span{area.top, area.bottom}};
}

Span RunShift::AlongOf(const Rect& area) const {
  return axis_ == Axis::Rows ? Span{area.top, area.bottom} : Span{area.left, area.right};
}

Span RunShift::AcrossOf(const Rect& area) const {
  return axis_ == Axis::Rows ? Span{area.left, area.right} : Span{area.top, area.bottom};
}

bool RunShift::IsWithin(const Rect& area) const {
  const Span across = AcrossOf(area);
  return across_.first <= across.first && across.last <= across_.last;
}

Rect RunShift::With(const Rect& area, Span along) const {
  return axis_ == Axis::Rows ? Rect{along.first, area.left, along.last, area.right}
                             : Rect{area.top, along.first, area.bottom, along.last};
}

Place RunShift::Unmap(const Place& cell) const {
  if (cell.sheet != sheet_ || !IsWithin(Rect::Cell(cell.cell))) return cell;
  return {sheet_, axis_ == Axis::Rows ? CellPos{shift_.Unmap(cell.cell.row), cell.cell.column}
                                      : CellPos{cell.cell.row, shift_.Unmap(cell.cell.column)}};
}

std::optional<Place> RunShift::Map(const Place& cell) const {
  if (cell.sheet != sheet_ || !IsWithin(Rect::Cell(cell.cell))) return cell;
  const auto index = shift_.Map(axis_ == Axis::Rows ? cell.cell.row : cell.cell.column);
  if (!index) return std::nullopt;
  return Place{sheet_, axis_ == Axis::Rows ? CellPos{*index, cell.cell.column} : CellPos{cell.cell.row, *index}};
}

std::optional<SheetArea> RunShift::Map(const SheetArea& area) const {
  if (area.sheet != sheet_ || !IsWithin(area.area)) return area;
  const auto along = shift_.Map(AlongOf(area.area));
  if (!along) return std::nullopt;
  return SheetArea{sheet_, With(area.area, *along)};
}

bool RunShift::Cuts(const SheetArea& area) const {
  if (area.sheet != sheet_ || IsWithin(area.area)) return false;
  const Span across = AcrossOf(area.area);
  if (across.last < across_.first || across_.last < across.first) return false;
  return shift_.Map(AlongOf(area.area)) != AlongOf(area.area);
}

void RunShift::MapCells(const SheetArea& area, std::vector<SheetArea>& parts) const {
  if (!Cuts(area)) {
    if (const auto mapped = Map(area)) parts.push_back(*mapped);
    return;
  }
  const Rect strip =
      axis_ == Axis::Rows ? Rect::Columns(across_.first, across_.last) : Rect::Rows(across_.first, across_.last);
  std::vector<Rect> rest;
  AddRest(area.area, strip, rest);
  for (const Rect& part : rest) parts.push_back({sheet_, part});
  if (const auto mapped = Map(SheetArea{sheet_, *area.area.intersection(strip)})) parts.push_back(*mapped);
}

// --- BlockMove
// -----------------------------------------------------------------------------------------------------------

BlockMove::BlockMove(SheetId from, const Rect& area, SheetId to, CellPos target)
    : source_{from, area},
      target_{to, {target.row, target.column, target.row + area.rows() - 1, target.column + area.columns() - 1}},
      down_(target.row - area.top),
      right_(target.column - area.left) {}

Rect BlockMove::Moved(const Rect& area) const {
  return {area.top + down_, area.left + right_, area.bottom + down_, area.right + right_};
}

bool BlockMove::IsSource(const SheetArea& area) const {
  return area.sheet == source_.sheet && source_.area.contains(area.area);
}

std::optional<Place> BlockMove::Map(const Place& cell) const {
  if (IsSource({cell.sheet, Rect::Cell(cell.cell)})) {
    return Place{target_.sheet, {cell.cell.row + down_, cell.cell.column + right_}};
  }
  if (cell.sheet == target_.sheet && target_.area.contains(cell.cell)) return std::nullopt;
  return cell;
}

Place BlockMove::Unmap(const Place& cell) const {
  if (cell.sheet != target_.sheet || !target_.area.contains(cell.cell)) return cell;
  return {source_.sheet, {cell.cell.row - down_, cell.cell.column - right_}};
}

// The block may hold a whole edge of an area and move along the area: then the edge goes with it.
std::optional<Rect> BlockMove::WithMovedEdge(const Rect& area) const {
  const Rect& block = source_.area;
  if (source_.sheet != target_.sheet || !block.intersects(area)) return std::nullopt;
  Rect moved = area;
  if (right_ == 0 && block.left <= area.left && area.right <= block.right) {
    (block.top <= area.top ? moved.top : moved.bottom) += down_;
    if (block.top > area.top && block.bottom < area.bottom) return std::nullopt;
  } else if (down_ == 0 && block.top <= area.top && area.bottom <= block.bottom) {
    (block.left <= area.left ? moved.left : moved.right) += right_;
    if (block.left > area.left && block.right < area.right) return std::nullopt;
  } else {
    return std::nullopt;
  }
  return moved.isValid() ? std::optional(moved) : std::nullopt;
}

std::optional<SheetArea> BlockMove::Map(const SheetArea& area) const {
  if (IsSource(area)) return SheetArea{target_.sheet, Moved(area.area)};
  if (area.sheet == source_.sheet) {
    if (const auto moved = WithMovedEdge(area.area)) return SheetArea{area.sheet, *moved};
  }
  if (area.sheet == target_.sheet && target_.area.contains(area.area)) return std::nullopt;
  return area;
}

bool BlockMove::Cuts(const SheetArea& area) const {
  if (IsSource(area)) return false;
  if (area.sheet == source_.sheet && source_.area.intersects(area.area)) return true;
  return area.sheet == target_.sheet && target_.area.intersects(area.area) && !target_.area.contains(area.area);
}

void BlockMove::MapCells(const SheetArea& area, std::vector<SheetArea>& parts) const {
  std::vector<Rect> rest{area.area};
  if (area.sheet == source_.sheet) Subtract(rest, source_.area);
  if (area.sheet == target_.sheet) Subtract(rest, target_.area);
  for (const Rect& part : rest) parts.push_back({area.sheet, part});
  if (area.sheet != source_.sheet) return;
  if (const auto taken = area.area.intersection(source_.area)) parts.push_back({target_.sheet, Moved(*taken)});
}

}  // namespace tolvane::engine
