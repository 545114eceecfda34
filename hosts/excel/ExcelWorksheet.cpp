#include "hosts/excel/ExcelWorksheet.h"

#include "hosts/excel/Failure.h"

#include "hosts/excel/ExcelNames.h"
#include "hosts/excel/Optional.h"
#include "src/host/Workbook.h"

namespace tolvane::excel {

std::string ExcelWorksheet::Name() const {
  return object().Get("Name").AsText();
}
void ExcelWorksheet::SetName(std::string_view name) {
  object().Put("Name", name);
}
std::string ExcelWorksheet::CodeName() const {
  return object().Get("CodeName").AsText();
}
// The public property can only be read; this is what the program's own property window sets.
void ExcelWorksheet::SetCodeName(std::string_view name) {
  object().Put("_CodeName", name);
}
int ExcelWorksheet::Index() const {
  return object().Get("Index").AsInt();
}
host::Workbook ExcelWorksheet::Parent() const {
  return session().WorkbookOf(object().Get("Parent"));
}
host::SheetVisibility ExcelWorksheet::Visible() const {
  return static_cast<host::SheetVisibility>(object().Get("Visible").AsInt());
}
void ExcelWorksheet::SetVisible(host::SheetVisibility visibility) {
  object().Put("Visible", ConstantOf(visibility));
}

Dispatch ExcelWorksheet::TabObject() const {
  return session().ObjectOf("Tab", object().Get("Tab"));
}
host::ColorIndex ExcelWorksheet::TabColorIndex() const {
  return TabObject().Get("ColorIndex").AsInt();
}
void ExcelWorksheet::SetTabColorIndex(host::ColorIndex index) {
  TabObject().Put("ColorIndex", index);
}

void ExcelWorksheet::Activate() {
  object().Call("Activate");
}
void ExcelWorksheet::CopyBefore(const host::Worksheet& sheet) {
  object().Call("Copy", ArgumentOf(sheet));
}
void ExcelWorksheet::CopyAfter(const host::Worksheet& sheet) {
  object().Call("Copy", Variant::Missing(), ArgumentOf(sheet));
}
void ExcelWorksheet::MoveBefore(const host::Worksheet& sheet) {
  object().Call("Move", ArgumentOf(sheet));
}
void ExcelWorksheet::MoveAfter(const host::Worksheet& sheet) {
  object().Call("Move", Variant::Missing(), ArgumentOf(sheet));
}
void ExcelWorksheet::Delete() {
  object().Call("Delete");
}
void ExcelWorksheet::Calculate() {
  object().Call("Calculate");
}

// --- cells
// ---------------------------------------------------------------------------------------------------------------

host::Range ExcelWorksheet::RangeOf(std::string_view nameOrAddress) const {
  return session().RangeOf(object().Get("Range", nameOrAddress));
}
host::Range ExcelWorksheet::CellAt(int row, int column) const {
  return session().RangeOf(session().ObjectOf("Range", object().Get("Cells")).Get("Item", row, column));
}
host::Range ExcelWorksheet::Cells() const {
  return session().RangeOf(object().Get("Cells"));
}
host::Range ExcelWorksheet::RowAt(int row) const {
  return session().RangeOf(session().ObjectOf("Range", object().Get("Rows")).Get("Item", row));
}
host::Range ExcelWorksheet::ColumnAt(int column) const {
  return session().RangeOf(session().ObjectOf("Range", object().Get("Columns")).Get("Item", column));
}
int ExcelWorksheet::RowsCount() const {
  return session().ObjectOf("Range", object().Get("Rows")).Get("Count").AsInt();
}
int ExcelWorksheet::ColumnsCount() const {
  return session().ObjectOf("Range", object().Get("Columns")).Get("Count").AsInt();
}
host::Names ExcelWorksheet::Names() const {
  return host::Names(
      std::make_shared<ExcelNames>(sharedSession(), session().ObjectOf("Names", object().Get("Names")), true));
}

void ExcelWorksheet::PasteSpecialText() {
  object().Call("PasteSpecial", "Text");
}

host::PageSetup ExcelWorksheet::PageSetup() const {
  ThrowNotYet("Worksheet.PageSetup");
}
void ExcelWorksheet::SetPageSetup(const host::PageSetup&) {
  ThrowNotYet("Worksheet.PageSetup");
}

}  // namespace tolvane::excel
