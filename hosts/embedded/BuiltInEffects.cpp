#include "hosts/embedded/BuiltInEffects.h"

#include "hosts/embedded/CellSearch.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Sorting.h"
#include "hosts/shell/BuiltInControls.h"
#include "src/host/Range.h"

namespace tolvane::embedded {

namespace {

void Paste(EmbeddedWorksheet& sheet, host::PasteType type) {
  Program& program = sheet.program();
  const bool hasCells = program.clipboard.mode() != host::CutCopyMode::None;
  if (!hasCells && type == host::PasteType::All) {
    if (program.clipboard.HasText()) sheet.PasteSpecialText();
    return;
  }
  sheet.RangeOver(sheet.sheet().view.selection).PasteSpecial(type);
}

// By the column of the active cell; a single cell stands for the block around it, whose first row is taken for a header
// when it holds a text over something else.
void SortSelection(EmbeddedWorksheet& sheet, host::SortOrder order) {
  const engine::Sheet& cells = sheet.sheet();
  const engine::CellPos active = cells.view.activeCell;
  engine::Rect area = cells.view.selection.front();
  host::SortKey key;
  key.order = order;
  if (area.isCell()) {
    area = CurrentRegion(cells, active);
    const engine::Value& below = cells.ValueAt({area.top + 1, active.column});
    key.hasHeader = area.rows() > 1 && cells.ValueAt({area.top, active.column}).isText() && !below.isText();
  }
  key.column = active.column - area.left + 1;
  SortRows(sheet, area, key);
}

}  // namespace

void DoBuiltInControl(Program& program, int controlId) {
  const auto sheet = program.activeSheet();
  if (sheet == nullptr) return;
  const auto selection = [&] { return sheet->RangeOver(sheet->sheet().view.selection); };
  switch (controlId) {
    case shell::builtin::kCopy:
      return selection().Copy();
    case shell::builtin::kCut:
      return selection().Cut();
    case shell::builtin::kPaste:
    case shell::builtin::kPasteButton:
      return Paste(*sheet, host::PasteType::All);
    case shell::builtin::kPasteFormatting:
      return Paste(*sheet, host::PasteType::Formats);
    case shell::builtin::kPasteValues:
      return Paste(*sheet, host::PasteType::Values);
    case shell::builtin::kSortAscending:
      return SortSelection(*sheet, host::SortOrder::Ascending);
    case shell::builtin::kSortDescending:
      return SortSelection(*sheet, host::SortOrder::Descending);
    case shell::builtin::kProtectSheet:
      if (sheet->ProtectContents()) return sheet->Unprotect();
      return sheet->Protect({});
    default:
      return;
  }
}

}  // namespace tolvane::embedded
