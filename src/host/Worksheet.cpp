#include "src/host/Worksheet.h"

#include "src/host/Workbook.h"

namespace tolvane::host {

int WorksheetRows::Count() const {
  return Read("Worksheet.Rows.Count", &WorksheetBody::RowsCount);
}
Range WorksheetRows::Item(int row) const {
  return Read("Worksheet.Rows.Item", &WorksheetBody::RowAt, row);
}

int WorksheetColumns::Count() const {
  return Read("Worksheet.Columns.Count", &WorksheetBody::ColumnsCount);
}
Range WorksheetColumns::Item(int column) const {
  return Read("Worksheet.Columns.Item", &WorksheetBody::ColumnAt, column);
}

host::ColorIndex Tab::ColorIndex() const {
  return Read("Tab.ColorIndex", &WorksheetBody::TabColorIndex);
}
void Tab::SetColorIndex(host::ColorIndex index) const {
  Write("Tab.ColorIndex", &WorksheetBody::SetTabColorIndex, index);
}

host::Range AutoFilter::Range() const {
  return Read("AutoFilter.Range", &WorksheetBody::AutoFilterRange);
}
std::vector<FilterState> AutoFilter::Filters() const {
  return Read("AutoFilter.Filters", &WorksheetBody::AutoFilterFilters);
}

std::string Worksheet::Name() const {
  return Read("Worksheet.Name", &WorksheetBody::Name);
}
void Worksheet::SetName(std::string_view name) const {
  Write("Worksheet.Name", &WorksheetBody::SetName, name);
}
std::string Worksheet::CodeName() const {
  return Read("Worksheet.CodeName", &WorksheetBody::CodeName);
}
void Worksheet::SetCodeName(std::string_view name) const {
  Write("Worksheet.CodeName", &WorksheetBody::SetCodeName, name);
}
int Worksheet::Index() const {
  return Read("Worksheet.Index", &WorksheetBody::Index);
}
Workbook Worksheet::Parent() const {
  return Read("Worksheet.Parent", &WorksheetBody::Parent);
}
SheetVisibility Worksheet::Visible() const {
  return Read("Worksheet.Visible", &WorksheetBody::Visible);
}
void Worksheet::SetVisible(SheetVisibility visibility) const {
  Write("Worksheet.Visible", &WorksheetBody::SetVisible, visibility);
}
host::PageSetup Worksheet::PageSetup() const {
  return Read("Worksheet.PageSetup", &WorksheetBody::PageSetup);
}
void Worksheet::SetPageSetup(const host::PageSetup& page) const {
  Write("Worksheet.PageSetup", &WorksheetBody::SetPageSetup, page);
}
void Worksheet::Activate() const {
  Write("Worksheet.Activate", &WorksheetBody::Activate);
}
void Worksheet::CopyBefore(const Worksheet& sheet) const {
  Write("Worksheet.Copy", &WorksheetBody::CopyBefore, sheet);
}
void Worksheet::CopyAfter(const Worksheet& sheet) const {
  Write("Worksheet.Copy", &WorksheetBody::CopyAfter, sheet);
}
void Worksheet::MoveBefore(const Worksheet& sheet) const {
  Write("Worksheet.Move", &WorksheetBody::MoveBefore, sheet);
}
void Worksheet::MoveAfter(const Worksheet& sheet) const {
  Write("Worksheet.Move", &WorksheetBody::MoveAfter, sheet);
}
void Worksheet::Delete() const {
  Write("Worksheet.Delete", &WorksheetBody::Delete);
}
void Worksheet::Calculate() const {
  Write("Worksheet.Calculate", &WorksheetBody::Calculate);
}
host::Range Worksheet::Range(std::string_view nameOrAddress) const {
  return Read("Worksheet.Range", &WorksheetBody::RangeOf, nameOrAddress);
}
host::Range Worksheet::Cells(int row, int column) const {
  return Read("Worksheet.Cells", &WorksheetBody::CellAt, row, column);
}
host::Range Worksheet::Cells() const {
  return Read("Worksheet.Cells", &WorksheetBody::Cells);
}
host::Names Worksheet::Names() const {
  return Read("Worksheet.Names", &WorksheetBody::Names);
}
bool Worksheet::ProtectContents() const {
  return Read("Worksheet.ProtectContents", &WorksheetBody::ProtectContents);
}
host::Protection Worksheet::Protection() const {
  return Read("Worksheet.Protection", &WorksheetBody::Protection);
}
void Worksheet::Protect(const host::Protection& allowed) const {
  Write("Worksheet.Protect", &WorksheetBody::Protect, allowed);
}
void Worksheet::Unprotect() const {
  Write("Worksheet.Unprotect", &WorksheetBody::Unprotect);
}
bool Worksheet::AutoFilterMode() const {
  return Read("Worksheet.AutoFilterMode", &WorksheetBody::AutoFilterMode);
}
void Worksheet::SetAutoFilterModeOff() const {
  Write("Worksheet.AutoFilterMode", &WorksheetBody::RemoveAutoFilter);
}
SelectionMode Worksheet::EnableSelection() const {
  return Read("Worksheet.EnableSelection", &WorksheetBody::EnableSelection);
}
void Worksheet::SetEnableSelection(SelectionMode mode) const {
  Write("Worksheet.EnableSelection", &WorksheetBody::SetEnableSelection, mode);
}
void Worksheet::PasteSpecialText() const {
  Write("Worksheet.PasteSpecial", &WorksheetBody::PasteSpecialText);
}
void Worksheet::DeleteRows(std::span<const RowRun> runs) const {
  Write("Worksheet.DeleteRows", &WorksheetBody::DeleteRows, runs);
}
void Worksheet::InsertRows(std::span<const RowRun> runs) const {
  Write("Worksheet.InsertRows", &WorksheetBody::InsertRows, runs);
}

}  // namespace tolvane::host
