#include "hosts/embedded/Sorting.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "engine/model/Workbook.h"
#include "hosts/embedded/CellSearch.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "platform/Text.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::FormatId;
using engine::Rect;
using engine::Value;

namespace {

struct RowKey {
  Value value;
  std::string folded;  // of a text
};

int KindOrder(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Number:
      return 0;
    case Value::Kind::Text:
      return 1;
    case Value::Kind::Boolean:
      return 2;
    case Value::Kind::Error:
      return 3;
    case Value::Kind::Empty:
      break;
  }
  return 4;
}

// Less than 0, 0, more than 0; neither is blank.
int Compare(const RowKey& a, const RowKey& b) {
  if (const int kinds = KindOrder(a.value) - KindOrder(b.value); kinds != 0) return kinds;
  switch (a.value.kind()) {
    case Value::Kind::Number:
      return a.value.number() < b.value.number() ? -1 : a.value.number() > b.value.number() ? 1 : 0;
    case Value::Kind::Text:
      return a.folded.compare(b.folded);
    case Value::Kind::Boolean:
      return static_cast<int>(a.value.boolean()) - static_cast<int>(b.value.boolean());
    case Value::Kind::Error:
    case Value::Kind::Empty:
      break;
  }
  return 0;  // errors are all alike
}

// The cells of the rows to sort, row by row.
struct Cells {
  std::vector<Value> values;
  std::vector<engine::ExpressionPtr> formulas;
  std::vector<FormatId> formats;
};

class Sorter {
 public:
  Sorter(engine::Sheet& sheet, const Rect& area)
      : sheet_(sheet), area_(area), width_(static_cast<std::size_t>(area.columns())) {
    const auto count = static_cast<std::size_t>(area.cells());
    old_.values.resize(count);
    old_.formulas.resize(count);
    old_.formats.resize(count);
    sheet.cells().ForEachCell(
        area, [this](CellPos at, const Value& value, const engine::FormulaCell* formula, FormatId format) {
          const std::size_t i = IndexOf(at);
          old_.values[i] = value;
          if (formula != nullptr) old_.formulas[i] = formula->expression;
          old_.formats[i] = format;
        });
    sheet.rows.ForEachStretch(area.top, area.bottom, [this](int first, int last, const engine::Band& band) {
      if (band.filtered) return;
      for (int row = first; row <= last; ++row) shown_.push_back(static_cast<std::size_t>(row - area_.top));
    });
  }

  void Sort(std::size_t column, bool descending) {
    std::vector<RowKey> keys(shown_.size());
    for (std::size_t i = 0; i < shown_.size(); ++i) {
      keys[i].value = old_.values[shown_[i] * width_ + column];
      if (keys[i].value.isText()) keys[i].folded = platform::FoldCase(keys[i].value.text().view());
    }
    std::vector<std::size_t> order(shown_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      const bool blankA = keys[a].value.isEmpty();
      const bool blankB = keys[b].value.isEmpty();
      if (blankA || blankB) return !blankA && blankB;
      const int compared = Compare(keys[a], keys[b]);
      return descending ? compared > 0 : compared < 0;
    });
    source_.resize(static_cast<std::size_t>(area_.rows()));
    std::iota(source_.begin(), source_.end(), std::size_t{0});
    for (std::size_t i = 0; i < shown_.size(); ++i) source_[shown_[i]] = shown_[order[i]];
  }

  void Write() {
    std::vector<Value> values(old_.values.size());
    for (std::size_t row = 0; row < source_.size(); ++row) {
      for (std::size_t column = 0; column < width_; ++column) {
        values[row * width_ + column] = old_.values[source_[row] * width_ + column];
      }
    }
    engine::CellStore& store = sheet_.cells();
    store.WriteValues(area_, values);
    for (std::size_t row = 0; row < source_.size(); ++row) {
      for (std::size_t column = 0; column < width_; ++column) {
        const std::size_t from = source_[row] * width_ + column;
        const CellPos at{area_.top + static_cast<int>(row), area_.left + static_cast<int>(column)};
        if (old_.formulas[from] != nullptr) store.SetFormula(at, {old_.formulas[from], std::nullopt, true});
        if (old_.formats[from] != old_.formats[row * width_ + column]) store.SetFormat(at, old_.formats[from]);
      }
    }
    MoveLinks();
    sheet_.book().TellCellsChanged(sheet_.id(), area_);
  }

 private:
  std::size_t IndexOf(CellPos at) const {
    return static_cast<std::size_t>(at.row - area_.top) * width_ + static_cast<std::size_t>(at.column - area_.left);
  }

  // Links of single rows go with them.
  void MoveLinks() {
    std::vector<std::size_t> target(source_.size());
    for (std::size_t row = 0; row < source_.size(); ++row) target[source_[row]] = row;
    for (engine::Hyperlink& link : sheet_.hyperlinks) {
      if (link.range.top != link.range.bottom || !area_.contains(link.range)) continue;
      const int row = area_.top + static_cast<int>(target[static_cast<std::size_t>(link.range.top - area_.top)]);
      link.range.top = link.range.bottom = row;
    }
  }

  engine::Sheet& sheet_;
  Rect area_;
  std::size_t width_;
  Cells old_;
  std::vector<std::size_t> shown_;   // rows that take part, from 0
  std::vector<std::size_t> source_;  // for each row the one whose cells it gets
};

}  // namespace

void SortRows(EmbeddedWorksheet& sheet, const Rect& wanted, const host::SortKey& key) {
  engine::Sheet& cells = sheet.sheet();
  Rect area = wanted.isCell() ? CurrentRegion(cells, wanted.topLeft()) : wanted;
  if (key.column < 1 || key.column > area.columns()) {
    Refuse("The cells " + sheet.PlaceOf(area) + " have no column " + std::to_string(key.column) + " to sort by.");
  }
  if (key.order != host::SortOrder::Ascending && key.order != host::SortOrder::Descending) {
    Refuse("There is no sort order " + std::to_string(static_cast<int>(key.order)) + ".");
  }
  RequireAllowed(cells, &engine::SheetProtection::sort, "sorting");
  if (key.hasHeader) ++area.top;
  // Below and beside what is used nothing can move.
  const auto used = cells.UsedRange();
  const auto sorted = used && area.isValid() ? area.intersection(*used) : std::nullopt;
  if (!sorted) return;
  area.bottom = sorted->bottom;
  area.right = std::max(sorted->right, std::min(area.right, area.left + key.column - 1));
  RequireUnlocked(cells, {area});
  for (const Rect& merge : cells.merges) {
    if (merge.intersects(area)) Refuse("The merged cells " + sheet.PlaceOf(merge) + " cannot be sorted.");
  }
  bool hasArray = false;
  if (cells.cells().hasArrays()) {
    cells.cells().ForEachContent(area, [&](CellPos, const Value&, const engine::FormulaCell* formula) {
      hasArray = hasArray || (formula != nullptr && formula->arrayArea.has_value());
    });
  }
  if (hasArray) Refuse("The cells " + sheet.PlaceOf(area) + " hold an array formula, which cannot be sorted.");
  Sorter sorter(cells, area);
  sorter.Sort(static_cast<std::size_t>(key.column - 1), key.order == host::SortOrder::Descending);
  sorter.Write();
  sheet.program().CellsEdited(sheet, {area});
}

}  // namespace tolvane::embedded
