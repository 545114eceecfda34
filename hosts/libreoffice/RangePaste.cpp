// The part of CalcRange that copies and pastes.
#include <algorithm>
#include <com/sun/star/datatransfer/XTransferableSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <utility>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellReading.h"
#include "hosts/libreoffice/CellWriting.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

namespace {

// A rectangle of what was copied, and where it lies when the areas are pushed together (from 0).
struct Piece {
  Rect from;
  int row = 0, column = 0;
};

struct Copied {
  std::shared_ptr<CalcWorksheet> sheet;
  std::vector<Piece> pieces;
  int rows = 0, columns = 0;
};

// Rows that a filter hides are not copied.
Rects ShownParts(const CalcWorksheet& sheet, const Rect& area) {
  const auto filter = sheet.FilterArea();
  if (!filter || !filter->intersects(area)) return {area};
  Rects parts;
  for (int row = area.top; row <= area.bottom; ++row) {
    const auto rows = sheet.RangeOver({{row, 1, row, kMaxColumn}});
    if (row > filter->top && row <= filter->bottom && rows.Hidden() == true) continue;
    if (!parts.empty() && parts.back().bottom == row - 1) {
      parts.back().bottom = row;
    } else {
      parts.push_back({row, area.left, row, area.right});
    }
  }
  return parts.empty() ? Rects{area} : parts;
}

Copied Arrange(const CalcProgram::Clipboard& clipboard) {
  const auto range = BodyOf(clipboard.cells);
  const Rects areas = range->areas();
  Copied copied{range->sheet(), {}, 0, 0};
  const Rect& one = areas.front();
  const bool stacked = std::all_of(areas.begin(), areas.end(), [&](const Rect& area) { return area.left == one.left; });
  for (const Rect& area : areas) {
    const Rects parts = clipboard.mode == host::CutCopyMode::Copy ? ShownParts(*copied.sheet, area) : Rects{area};
    int rows = 0;
    for (const Rect& part : parts) {
      copied.pieces.push_back({part, stacked ? copied.rows + rows : rows, stacked ? 0 : copied.columns});
      rows += part.rows();
    }
    if (stacked) {
      copied.rows += rows;
      copied.columns = area.columns();
    } else {
      copied.columns += area.columns();
      copied.rows = std::max(copied.rows, rows);
    }
  }
  return copied;
}

Rect TargetOf(const CalcWorksheet& to, const Rect& area, int rows, int columns) {
  Rect target = area;
  if (area.rows() % rows != 0 || area.columns() % columns != 0) {
    target.bottom = area.top + rows - 1;
    target.right = area.left + columns - 1;
  }
  if (!target.isValid()) {
    Refuse("What was copied (" + std::to_string(rows) + " rows, " + std::to_string(columns) +
           " columns) does not fit on the sheet from " + to.PlaceOf({area.top, area.left, area.top, area.left}) +
           " on.");
  }
  return target;
}

css::table::CellAddress At(const CalcWorksheet& sheet, const Rect& place) {
  return css::table::CellAddress(static_cast<sal_Int16>(sheet.index()), place.left - 1, place.top - 1);
}

// Between documents Calc only copies by way of selections.
void CopyAcross(CalcWorksheet& from, const Rect& source, CalcWorksheet& to, const Rect& place) {
  const auto take = [](CalcWorksheet& sheet, const Rect& rect) {
    const auto controller = sheet.book().controller();
    As<css::sheet::XSpreadsheetView>(controller)->setActiveSheet(sheet.object());
    As<css::view::XSelectionSupplier>(controller)->select(Any(sheet.Cells(rect)));
    return As<css::datatransfer::XTransferableSupplier>(controller);
  };
  const auto contents = take(from, source)->getTransferable();
  take(to, place)->insertTransferable(contents);
  for (CalcWorksheet* sheet : {&from, &to}) {
    if (const auto front = sheet->book().activeSheet()) front->RestoreSelection();
  }
}

class Paster {
 public:
  Paster(const Copied& copied, CalcWorksheet& to) : copied_(copied), to_(to) {}

  void Paste(const Rect& target, host::PasteType type) {
    for (int top = target.top; top <= target.bottom; top += copied_.rows) {
      for (int left = target.left; left <= target.right; left += copied_.columns) {
        for (const Piece& piece : copied_.pieces) {
          const int row = top + piece.row;
          const int column = left + piece.column;
          PasteOne(piece.from, {row, column, row + piece.from.rows() - 1, column + piece.from.columns() - 1}, type);
        }
      }
    }
  }

 private:
  CalcWorksheet& from() const { return *copied_.sheet; }
  bool isSameBook() const { return &from().book() == &to_.book(); }

  void PasteOne(const Rect& source, const Rect& place, host::PasteType type) {
    switch (type) {
      case host::PasteType::All:
        return Everything(source, place);
      case host::PasteType::Values:
        return WriteContents(to_, place, PrepareValues(ReadValues(from(), source), place));
      case host::PasteType::Formulas:
        return WriteContents(
            to_, place,
            PrepareFormulas(to_.book(), ReadFormulas(from(), source, Dialect::ExcelR1C1), place, Dialect::ExcelR1C1));
      case host::PasteType::Formats:
        return Formats(source, place);
      case host::PasteType::Validation:
        return Validations(source, place);
    }
    Refuse("There is no way to paste with the number " + std::to_string(static_cast<int>(type)) + ".");
  }

  void Everything(const Rect& source, const Rect& place) {
    if (!isSameBook()) return CopyAcross(from(), source, to_, place);
    As<css::sheet::XCellRangeMovement>(to_.object())->copyRange(At(to_, place), ToAddress(source, from().index()));
  }

  // Calc's copying has no parts; what must not come along is put back.
  void Formats(const Rect& source, const Rect& place) {
    const host::CellBlock contents = ReadFormulas(to_, place, Dialect::ExcelR1C1);
    std::vector<std::pair<Rects, Any>> rules;
    for (const Look& look : LooksOf(to_, place)) rules.emplace_back(look.areas, GetAny(look.cells, "Validation"));
    Everything(source, place);
    WriteContents(to_, place, PrepareFormulas(to_.book(), contents, place, Dialect::ExcelR1C1));
    for (const auto& [areas, rule] : rules) SetAny(Collect(to_, areas), "Validation", rule);
  }

  void Validations(const Rect& source, const Rect& place) {
    for (const Look& look : LooksOf(from(), source)) {
      Rects places;
      for (const Rect& area : look.areas) {
        const int row = place.top - source.top;
        const int column = place.left - source.left;
        places.push_back({area.top + row, area.left + column, area.bottom + row, area.right + column});
      }
      SetAny(Collect(to_, places), "Validation", GetAny(look.cells, "Validation"));
    }
  }

  const Copied& copied_;
  CalcWorksheet& to_;
};

void PasteCut(CalcProgram& program, const Copied& cut, CalcWorksheet& to, const Rect& area) {
  const Rect source = cut.pieces.front().from;
  if (area.count() != 1 && (area.rows() != source.rows() || area.columns() != source.columns())) {
    Refuse("The cells " + to.PlaceOf(area) + " are not of the size of what was cut.");
  }
  const Rect corner{area.top, area.left, area.top, area.left};
  const Rect target = TargetOf(to, corner, source.rows(), source.columns());
  CalcWorksheet& from = *cut.sheet;
  RequireUnlocked(from, {source});
  RequireUnlocked(to, {target});
  const auto fromKept = from.Self();
  const auto toKept = to.Self();
  {
    const CalcProgram::OwnEdit edit(program);
    const ProtectionLifted liftedFrom(from);
    const ProtectionLifted liftedTo(to);
    AtEdge([&] {
      if (&from.book() == &to.book()) {
        As<css::sheet::XCellRangeMovement>(to.object())->moveRange(At(to, target), ToAddress(source, from.index()));
      } else {
        CopyAcross(from, source, to, target);
      }
    });
  }
  program.EndCutCopyMode();
  if (&from.book() != &to.book()) {
    from.RangeOver({source}).Clear();
    program.CellsEdited(to, {target});
  } else if (&from == &to) {
    program.CellsEdited(to, {source, target});
  } else {
    program.CellsEdited(from, {source});
    if (to.IsAlive()) program.CellsEdited(to, {target});
  }
}

}  // namespace

void CalcRange::PutOnClipboard(host::CutCopyMode mode) {
  const Rects all = areas();
  const Rect& one = all.front();
  if (all.size() > 1 && mode == host::CutCopyMode::Cut) Refuse("Several areas cannot be cut at once.");
  const bool sameRows = std::all_of(all.begin(), all.end(),
                                    [&](const Rect& area) { return area.top == one.top && area.bottom == one.bottom; });
  const bool sameColumns = std::all_of(
      all.begin(), all.end(), [&](const Rect& area) { return area.left == one.left && area.right == one.right; });
  if (!sameRows && !sameColumns) {
    Refuse("Several areas can only be copied at once when they share their rows or their columns.");
  }
  Rects ordered = all;
  std::sort(ordered.begin(), ordered.end(),
            [](const Rect& a, const Rect& b) { return std::pair(a.top, a.left) < std::pair(b.top, b.left); });
  for (std::size_t i = 1; i < ordered.size(); ++i) {
    if (ordered[i].intersects(ordered[i - 1])) Refuse("The areas overlap; cells cannot be copied twice.");
  }
  program().clipboard = {mode, sheet_->RangeOver(ordered), std::nullopt};
}

void CalcRange::Copy() {
  PutOnClipboard(host::CutCopyMode::Copy);
}

void CalcRange::Cut() {
  PutOnClipboard(host::CutCopyMode::Cut);
}

void CalcRange::PasteSpecial(host::PasteType type) {
  const Rects all = areas();
  const auto to = sheet_;
  CalcProgram& office = to->program();
  if (office.clipboard.mode == host::CutCopyMode::None || !office.clipboard.cells.IsAlive()) {
    Refuse("There are no copied cells to paste.");
  }
  const Copied copied = AtEdge([&] { return Arrange(office.clipboard); });
  if (office.clipboard.mode == host::CutCopyMode::Cut) {
    if (type != host::PasteType::All) Refuse("What was cut can only be pasted as a whole.");
    if (all.size() != 1) Refuse("What was cut cannot be pasted into several areas.");
    PasteCut(office, copied, *to, all.front());
    return;
  }
  Rects targets;
  for (const Rect& area : all) targets.push_back(TargetOf(*to, area, copied.rows, copied.columns));
  const bool looks = type == host::PasteType::Formats || type == host::PasteType::Validation;
  if (looks) {
    RequireAllowed(*to, &host::Protection::allowFormattingCells, "pasting formats or validation");
  } else {
    RequireUnlocked(*to, targets);
  }
  const CalcProgram::KeepCopyMode keep(office);
  {
    const CalcProgram::OwnEdit edit(office);
    const ProtectionLifted lifted(*to);
    AtEdge([&] {
      Paster paster(copied, *to);
      for (const Rect& target : targets) paster.Paste(target, type);
    });
  }
  office.CellsEdited(*to, targets);
}

}  // namespace tolvane::libreoffice
