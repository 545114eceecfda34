// The part of CellStore that moves cells.
#include <algorithm>
#include <utility>

#include "engine/model/CellStore.h"

namespace tolvane::engine {

void CellStore::DeleteRows(int column, std::span<const Run> runs) {
  CellColumn* old = ColumnAt(column);
  if (old == nullptr || old->empty()) return;
  const int lastUsed = (old->slots().back().number + 1) * kChunkRows;
  if (runs.front().first > lastUsed) return;
  ColumnMover mover(*old);
  int next = 1;  // the first row not looked at yet
  int gone = 0;
  for (const Run& run : runs) {
    if (run.first > lastUsed) break;
    mover.Move(next, run.first - next, next - gone);
    mover.Drop(run.first, run.count, [&](CellChunk& chunk, std::uint64_t mask) { ClearCells(chunk, mask, true); });
    next = run.last() + 1;
    gone += run.count;
  }
  mover.Move(next, lastUsed - next + 1, next - gone);
  ReplaceColumn(column, mover.Finish());
}

void CellStore::InsertRows(int column, std::span<const Run> runs) {
  CellColumn* old = ColumnAt(column);
  if (old == nullptr || old->empty()) return;
  const int lastUsed = std::min((old->slots().back().number + 1) * kChunkRows, kMaxRow);
  if (runs.front().first > lastUsed) return;
  ColumnMover mover(*old);
  int next = 1;
  int inserted = 0;
  const auto moveUntil = [&](int end) {  // in the old numbering
    const int last = std::min({end, lastUsed, kMaxRow - inserted});
    mover.Move(next, last - next + 1, next + inserted);
    next = std::max(next, last + 1);
  };
  for (const Run& run : runs) {
    moveUntil(run.first - 1 - inserted);
    inserted += run.count;
  }
  moveUntil(lastUsed);
  ReplaceColumn(column, mover.Finish());
}

void CellStore::ReplaceColumn(int column, CellColumn cells) {
  ReleaseColumn(column);
  *ColumnAt(column) = std::move(cells);
}

void CellStore::DeleteRuns(Axis axis, std::span<const Run> runs) {
  if (runs.empty()) return;
  if (axis == Axis::Rows) {
    for (int c = 1; c <= static_cast<int>(columns_.size()); ++c) DeleteRows(c, runs);
    return;
  }
  std::vector<std::unique_ptr<CellColumn>> kept;
  std::size_t run = 0;
  for (int c = 1; c <= static_cast<int>(columns_.size()); ++c) {
    while (run < runs.size() && runs[run].last() < c) ++run;
    if (run < runs.size() && runs[run].first <= c) {
      ReleaseColumn(c);
    } else {
      kept.push_back(std::move(columns_[static_cast<std::size_t>(c - 1)]));
    }
  }
  columns_ = std::move(kept);
}

void CellStore::InsertRuns(Axis axis, std::span<const Run> runs) {
  if (runs.empty()) return;
  if (axis == Axis::Rows) {
    for (int c = 1; c <= static_cast<int>(columns_.size()); ++c) InsertRows(c, runs);
    return;
  }
  std::vector<std::unique_ptr<CellColumn>> grown;
  std::size_t run = 0;
  for (int c = 1; c <= static_cast<int>(columns_.size()); ++c) {
    while (run < runs.size() && runs[run].first <= static_cast<int>(grown.size()) + 1) {
      grown.resize(grown.size() + static_cast<std::size_t>(runs[run++].count));
    }
    if (static_cast<int>(grown.size()) >= kMaxColumn) {
      ReleaseColumn(c);
    } else {
      grown.push_back(std::move(columns_[static_cast<std::size_t>(c - 1)]));
    }
  }
  if (static_cast<int>(grown.size()) > kMaxColumn) grown.resize(kMaxColumn);
  columns_ = std::move(grown);
}

void CellStore::DeleteCells(const Rect& area, Axis shiftAlong) {
  if (shiftAlong == Axis::Rows) {
    const Run run{area.top, area.rows()};
    for (int c = area.left; c <= LastColumnOf(area); ++c) DeleteRows(c, {&run, 1});
    return;
  }
  const int last = static_cast<int>(columns_.size());
  for (int c = area.left; c <= last; ++c) {
    if (CellColumn* column = ColumnAt(c)) ClearRows(*column, area.top, area.bottom, true);
    if (c > last - area.columns()) continue;
    if (CellColumn* source = ColumnAt(c + area.columns())) {
      source->MoveTo(area.top, area.rows(), ObtainColumn(c), area.top);
      source->DropEmpty(CellColumn::ChunkOf(area.top), CellColumn::ChunkOf(area.bottom));
    }
  }
}

void CellStore::InsertCells(const Rect& area, Axis shiftAlong) {
  if (shiftAlong == Axis::Rows) {
    const Run run{area.top, area.rows()};
    for (int c = area.left; c <= LastColumnOf(area); ++c) InsertRows(c, {&run, 1});
    return;
  }
  const int last = static_cast<int>(columns_.size());
  for (int c = last; c >= area.left; --c) {
    CellColumn* source = ColumnAt(c);
    if (source == nullptr || source->empty()) continue;
    const int target = c + area.columns();
    if (target > kMaxColumn) {
      ClearRows(*source, area.top, area.bottom, true);
      continue;
    }
    CellColumn& to = ObtainColumn(target);  // may move the columns' table, but not the columns
    source->MoveTo(area.top, area.rows(), to, area.top);
    source->DropEmpty(CellColumn::ChunkOf(area.top), CellColumn::ChunkOf(area.bottom));
  }
}

void CellStore::CarryFormats(Axis axis, std::span<const Run> runs, Run across) {
  if (axis == Axis::Rows) {
    for (int c = across.first; c <= std::min(across.last(), static_cast<int>(columns_.size())); ++c) {
      const CellColumn* column = ColumnAt(c);
      if (column == nullptr || column->empty()) continue;
      for (const Run& run : runs) {
        if (run.first == 1) continue;
        const FormatId front = FormatAt({run.first - 1, c});
        if (front == 0) continue;
        for (int row = run.first; row <= std::min(run.last(), kMaxRow); ++row) SetFormat({row, c}, front);
      }
    }
    return;
  }
  for (const Run& run : runs) {
    if (run.first == 1 || ColumnAt(run.first - 1) == nullptr) continue;
    ForEachCell({across.first, run.first - 1, across.last(), run.first - 1},
                [&](CellPos at, const Value&, const FormulaCell*, FormatId front) {
                  if (front == 0) return;
                  for (int c = run.first; c <= std::min(run.last(), kMaxColumn); ++c) SetFormat({at.row, c}, front);
                });
  }
}

void CellStore::MoveBlock(const Rect& area, CellStore& to, CellPos target) {
  std::vector<CellColumn> taken(static_cast<std::size_t>(area.columns()));
  for (int c = area.left; c <= LastColumnOf(area); ++c) {
    CellColumn* column = ColumnAt(c);
    if (column == nullptr) continue;
    column->MoveTo(area.top, area.rows(), taken[static_cast<std::size_t>(c - area.left)], target.row);
    column->DropEmpty(CellColumn::ChunkOf(area.top), CellColumn::ChunkOf(area.bottom));
  }
  const int lastRow = target.row + area.rows() - 1;
  to.Clear({target.row, target.column, lastRow, target.column + area.columns() - 1});
  for (int c = 0; c < area.columns(); ++c) {
    CellColumn& block = taken[static_cast<std::size_t>(c)];
    if (block.empty()) continue;
    for (const CellColumn::Slot& slot : block.slots()) {
      ForEachBit(slot.chunk->formulas, [&](int bit) {
        FormulaNumber& number = slot.chunk->formula[static_cast<std::size_t>(bit)];
        if (auto& array = formulas_[number - 1].arrayArea) {
          const int down = target.row - area.top;
          const int right = target.column - area.left;
          array = Rect{array->top + down, array->left + right, array->bottom + down, array->right + right};
        }
        if (&to == this) return;
        const FormulaNumber there = to.AddFormula(formulas_[number - 1]);
        ReleaseFormula(number);
        number = there;
      });
    }
    block.MoveTo(target.row, area.rows(), to.ObtainColumn(target.column + c), target.row);
  }
}

}  // namespace tolvane::engine
