#pragma once

// For the tests of this folder: a slow model of the grid. Every cell is a token; rows and columns go and come one at a
// time.

#include <rapidcheck.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "engine/model/ExpressionBuilder.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine::test {

using Token = int;
using Tokens = std::set<Token>;

// As much of the grid as the tests get to see.
inline constexpr int kWindow = 110;
// Where things are put at first; what is inserted pushes them on, within the window.
inline constexpr int kUsed = 16;

class TokenGrid {
 public:
  TokenGrid() {
    for (int row = 0; row < kWindow; ++row) rows_.push_back(FreshRow());
  }

  Token At(CellPos at) const { return rows_[Index(at.row)][Index(at.column)]; }
  Tokens In(const Rect& area) const {
    Tokens tokens;
    for (int row = area.top; row <= area.bottom; ++row) {
      for (int column = area.left; column <= area.right; ++column) tokens.insert(At({row, column}));
    }
    return tokens;
  }
  std::map<Token, CellPos> Places() const {
    std::map<Token, CellPos> places;
    for (int row = 1; row <= kWindow; ++row) {
      for (int column = 1; column <= kWindow; ++column) places[At({row, column})] = {row, column};
    }
    return places;
  }

  // In the columns from `left` to `right`; the last rows fall out, or come in fresh.
  void DeleteOneRow(int row, int left, int right) {
    for (int column = left; column <= right; ++column) {
      for (int r = row; r < kWindow; ++r) rows_[Index(r)][Index(column)] = rows_[Index(r + 1)][Index(column)];
      rows_.back()[Index(column)] = next_++;
    }
  }
  void InsertOneRow(int row, int left, int right) {
    for (int column = left; column <= right; ++column) {
      for (int r = kWindow; r > row; --r) rows_[Index(r)][Index(column)] = rows_[Index(r - 1)][Index(column)];
      rows_[Index(row)][Index(column)] = next_++;
    }
  }
  void Transpose() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) std::swap(rows_[i][j], rows_[j][i]);
    }
  }
  void Move(const Rect& area, CellPos target) {
    std::map<std::pair<int, int>, Token> taken;
    for (int row = area.top; row <= area.bottom; ++row) {
      for (int column = area.left; column <= area.right; ++column) {
        taken[{row - area.top, column - area.left}] = At({row, column});
        rows_[Index(row)][Index(column)] = next_++;
      }
    }
    for (const auto& [offset, token] : taken) {
      rows_[Index(target.row + offset.first)][Index(target.column + offset.second)] = token;
    }
  }

 private:
  static std::size_t Index(int number) { return static_cast<std::size_t>(number - 1); }
  std::vector<Token> FreshRow() {
    std::vector<Token> row;
    for (int i = 0; i < kWindow; ++i) row.push_back(next_++);
    return row;
  }

  std::vector<std::vector<Token>> rows_;
  Token next_ = 1;
};

// One change, as the workbook is told of it.
struct Step {
  enum class Kind { DeleteRuns, InsertRuns, DeleteCells, InsertCells, Move };
  Kind kind;
  Axis axis;
  Runs runs;
  Rect area;
  CellPos target;
};

inline bool IsShift(const Step& step) {
  return step.kind != Step::Kind::Move;
}

inline void Apply(const Step& step, Workbook& book, SheetId sheet) {
  switch (step.kind) {
    case Step::Kind::DeleteRuns:
      return book.DeleteRuns(sheet, step.axis, step.runs);
    case Step::Kind::InsertRuns:
      return book.InsertRuns(sheet, step.axis, step.runs);
    case Step::Kind::DeleteCells:
      return book.DeleteCells(sheet, step.area, step.axis);
    case Step::Kind::InsertCells:
      return book.InsertCells(sheet, step.area, step.axis);
    case Step::Kind::Move:
      return book.MoveCells(sheet, step.area, sheet, step.target);
  }
}

// The same, one row at a time. Columns are rows of the transposed grid.
inline void Apply(const Step& step, TokenGrid& grid) {
  if (step.kind == Step::Kind::Move) return grid.Move(step.area, step.target);
  const bool transposed = step.axis == Axis::Columns;
  Rect area = step.area;
  if (transposed) {
    grid.Transpose();
    area = {area.left, area.top, area.right, area.bottom};
  }
  switch (step.kind) {
    case Step::Kind::DeleteRuns:
      for (auto run = step.runs.rbegin(); run != step.runs.rend(); ++run) {
        for (int i = 0; i < run->count; ++i) grid.DeleteOneRow(run->first, 1, kWindow);
      }
      break;
    case Step::Kind::InsertRuns:
      for (const auto& run : step.runs) {
        for (int i = 0; i < run.count; ++i) grid.InsertOneRow(run.first, 1, kWindow);
      }
      break;
    case Step::Kind::DeleteCells:
      for (int i = 0; i < area.rows(); ++i) grid.DeleteOneRow(area.top, area.left, area.right);
      break;
    case Step::Kind::InsertCells:
      for (int i = 0; i < area.rows(); ++i) grid.InsertOneRow(area.top, area.left, area.right);
      break;
    case Step::Kind::Move:
      break;
  }
  if (transposed) grid.Transpose();
}

// The smallest rectangle around the tokens that are still there.
inline std::optional<Rect> Hull(const Tokens& tokens, const std::map<Token, CellPos>& places) {
  std::optional<Rect> hull;
  for (const Token token : tokens) {
    const auto found = places.find(token);
    if (found == places.end()) continue;
    const CellPos at = found->second;
    if (!hull) hull = Rect::Cell(at);
    *hull = {std::min(hull->top, at.row), std::min(hull->left, at.column), std::max(hull->bottom, at.row),
             std::max(hull->right, at.column)};
  }
  return hull;
}

inline Rect AnyArea(int limit) {
  const int top = *rc::gen::inRange(1, limit);
  const int left = *rc::gen::inRange(1, limit);
  return {top, left, std::min(limit, top + *rc::gen::inRange(0, 6)), std::min(limit, left + *rc::gen::inRange(0, 6))};
}

inline Step AnyStep(bool wholeRunsOnly) {
  Step step{};
  step.axis = *rc::gen::element(Axis::Rows, Axis::Columns);
  step.kind = wholeRunsOnly ? *rc::gen::element(Step::Kind::DeleteRuns, Step::Kind::InsertRuns)
                            : *rc::gen::element(Step::Kind::DeleteRuns, Step::Kind::InsertRuns, Step::Kind::DeleteCells,
                                                Step::Kind::InsertCells, Step::Kind::Move);
  int next = 1;
  for (int i = *rc::gen::inRange(1, 4); i > 0; --i) {
    step.runs.push_back({next + *rc::gen::inRange(0, 8), *rc::gen::inRange(1, 4)});
    next = step.runs.back().last() + 2;
  }
  step.area = AnyArea(kUsed);
  step.target = {*rc::gen::inRange(1, kUsed), *rc::gen::inRange(1, kUsed)};
  return step;
}

}  // namespace tolvane::engine::test
