#include "hosts/libreoffice/BuiltInEffects.h"

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/shell/BuiltInControls.h"

namespace tolvane::libreoffice {

namespace builtin = shell::builtin;

namespace {

void Paste(CalcWorksheet& sheet, host::PasteType type) {
  CalcProgram& program = sheet.program();
  const bool hasCells = program.clipboard.mode != host::CutCopyMode::None;
  if (!hasCells && type == host::PasteType::All) {
    if (program.ClipboardHasText()) sheet.PasteSpecialText();
    return;
  }
  sheet.RangeOver(sheet.Selected()).PasteSpecial(type);
}

// By the column of the active cell; a single cell stands for the block around it, whose first row is taken for a header
// when it holds a text over something else.
void SortSelection(CalcWorksheet& sheet, host::SortOrder order) {
  const CellPos active = sheet.ActiveCell();
  Rect area = sheet.Selected().front();
  host::SortKey key;
  key.order = order;
  if (area.count() == 1) {
    area = sheet.RegionAround(area);
    const auto value = [&](int row) { return sheet.CellAt(row, active.column).Value().single(); };
    key.hasHeader = area.rows() > 1 && value(area.top).isText() && !value(area.top + 1).isText();
  }
  key.column = active.column - area.left + 1;
  sheet.RangeOver({area}).Sort(key);
}

}  // namespace

void DoBuiltInControl(CalcProgram& program, int controlId) {
  const auto sheet = program.activeSheet();
  if (sheet == nullptr) return;
  const auto selection = [&] { return sheet->RangeOver(sheet->Selected()); };
  switch (controlId) {
    case builtin::kCopy:
      return selection().Copy();
    case builtin::kCut:
      return selection().Cut();
    case builtin::kPaste:
    case builtin::kPasteButton:
      return Paste(*sheet, host::PasteType::All);
    case builtin::kPasteFormatting:
      return Paste(*sheet, host::PasteType::Formats);
    case builtin::kPasteValues:
      return Paste(*sheet, host::PasteType::Values);
    case builtin::kSortAscending:
      return SortSelection(*sheet, host::SortOrder::Ascending);
    case builtin::kSortDescending:
      return SortSelection(*sheet, host::SortOrder::Descending);
    case builtin::kProtectSheet:
      return sheet->ProtectContents() ? sheet->Unprotect() : sheet->Protect({});
    default:
      return;
  }
}

}  // namespace tolvane::libreoffice
