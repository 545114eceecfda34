#include "engine/model/Sheet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "engine/model/Area.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

Sheet::Sheet(Workbook& book, SheetId id, std::string name) : book_(&book), id_(id), name_(std::move(name)) {}

FormatId Sheet::FormatAt(CellPos at) const {
  FormatId format = cells_.FormatAt(at);
  if (format == 0) format = rows.At(at.row).format;
  if (format == 0) format = columns.At(at.column).format;
  return format == kPlainFormat ? kDefaultFormat : format;
}

void Sheet::RequireWritable(const Rect& area) const {
  if (!area.isValid()) throw std::invalid_argument("The cells are not on the sheet " + name_);
  if (cells_.CutsArray(area)) {
    throw std::invalid_argument("You can't change part of an array formula: " + name_ + "!" + AddressOf(area));
  }
}

void Sheet::SetValue(CellPos at, Value value) {
  RequireWritable(Rect::Cell(at));
  cells_.SetValue(at, std::move(value));
  book_->TellCellsChanged(id_, Rect::Cell(at));
}

void Sheet::SetFormula(CellPos at, ExpressionPtr formula) {
  RequireWritable(Rect::Cell(at));
  cells_.SetFormula(at, {std::move(formula), std::nullopt, true});
  book_->TellCellsChanged(id_, Rect::Cell(at));
}

void Sheet::SetArrayFormula(const Rect& area, ExpressionPtr formula) {
  RequireWritable(area);
  for (int column = area.left; column <= area.right; ++column) {
    for (int row = area.top; row <= area.bottom; ++row) {
      const bool isAnchor = row == area.top && column == area.left;
      cells_.SetFormula({row, column}, {isAnchor ? formula : nullptr, area, true});
    }
  }
  book_->TellCellsChanged(id_, area);
}

void Sheet::SetValues(const Rect& area, std::span<const Value> values) {
  RequireWritable(area);
  if (static_cast<std::int64_t>(values.size()) != area.cells()) {
    throw std::invalid_argument(std::to_string(values.size()) + " values for the " + std::to_string(area.cells()) +
                                " cells of " + name_ + "!" + AddressOf(area));
  }
  cells_.WriteValues(area, values);
  book_->TellCellsChanged(id_, area);
}

void Sheet::ReadValues(const Rect& area, std::span<Value> values) const {
  if (!area.isValid() || static_cast<std::int64_t>(values.size()) != area.cells()) {
    throw std::invalid_argument("The block to read " + name_ + "!" + AddressOf(area) + " into is of another size");
  }
  cells_.ReadValues(area, values);
}

void Sheet::ClearContents(const Rect& area) {
  RequireWritable(area);
  cells_.ClearContents(area);
  book_->TellCellsChanged(id_, area);
}

std::optional<Rect> Sheet::MergeAt(CellPos at) const {
  for (const Rect& merge : merges) {
    if (merge.contains(at)) return merge;
  }
  return std::nullopt;
}

const Validation* Sheet::ValidationAt(CellPos at) const {
  for (const Validation& rule : validations) {
    for (const Rect& range : rule.ranges) {
      if (range.contains(at)) return &rule;
    }
  }
  return nullptr;
}

bool Sheet::IsRowHidden(int row) const {
  const Band& band = rows.At(row);
  return band.hidden || band.filtered;
}

bool Sheet::IsColumnHidden(int column) const {
  return columns.At(column).hidden;
}

void Sheet::RemoveValidation(const Rect& area) {
  for (Validation& rule : validations) Subtract(rule.ranges, area);
  std::erase_if(validations, [](const Validation& rule) { return rule.ranges.empty(); });
}

void Sheet::AddValidation(Validation rule) {
  if (rule.ranges.empty()) throw std::invalid_argument("A validation needs cells to stand on");
  for (const Rect& range : rule.ranges) {
    if (!range.isValid()) throw std::invalid_argument("The validation's cells are not on the sheet " + name_);
  }
  for (const Rect& range : rule.ranges) RemoveValidation(range);
  validations.push_back(std::move(rule));
}

void Sheet::RemoveHyperlinks(const Rect& area) {
  std::erase_if(hyperlinks, [&](const Hyperlink& link) { return link.range.intersects(area); });
}

}  // namespace tolvane::engine
