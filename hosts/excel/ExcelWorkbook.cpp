#include "hosts/excel/ExcelWorkbook.h"

#include "hosts/excel/ExcelNames.h"

namespace tolvane::excel {

std::string ExcelWorkbook::Name() const {
  return object().Get("Name").AsText();
}
std::string ExcelWorkbook::Path() const {
  return object().Get("Path").AsText();
}
std::string ExcelWorkbook::FullName() const {
  return object().Get("FullName").AsText();
}
bool ExcelWorkbook::Saved() const {
  return object().Get("Saved").AsBool();
}
void ExcelWorkbook::SetSaved(bool saved) {
  object().Put("Saved", saved);
}
bool ExcelWorkbook::IsAddin() const {
  return object().Get("IsAddin").AsBool();
}
void ExcelWorkbook::SetIsAddin(bool isAddin) {
  object().Put("IsAddin", isAddin);
}
bool ExcelWorkbook::ProtectStructure() const {
  return object().Get("ProtectStructure").AsBool();
}
void ExcelWorkbook::SetProtectStructure(bool on) {
  if (on) {
    object().Call("Protect", Variant::Missing(), true, false);  // Password, Structure, Windows
  } else {
    object().Call("Unprotect");
  }
}

host::Names ExcelWorkbook::Names() const {
  return host::Names(
      std::make_shared<ExcelNames>(sharedSession(), session().ObjectOf("Names", object().Get("Names")), false));
}

Dispatch ExcelWorkbook::Sheets() const {
  return session().ObjectOf("Worksheets", object().Get("Worksheets"));
}
int ExcelWorkbook::WorksheetsCount() const {
  return Sheets().Get("Count").AsInt();
}
host::Worksheet ExcelWorkbook::WorksheetAt(int index) const {
  return session().WorksheetOf(Sheets().Get("Item", index));
}
host::Worksheet ExcelWorkbook::WorksheetNamed(std::string_view name) const {
  return session().WorksheetOf(Sheets().Get("Item", name));
}
host::Worksheet ExcelWorkbook::WorksheetsAdd() {
  const Dispatch sheets = Sheets();
  // Before, After
  return session().WorksheetOf(sheets.Get("Add", Variant::Missing(), sheets.Get("Item", sheets.Get("Count").AsInt())));
}
host::Worksheet ExcelWorkbook::ActiveSheet() const {
  return session().WorksheetOf(object().Get("ActiveSheet"));
}

std::vector<host::Window> ExcelWorkbook::Windows() const {
  std::vector<host::Window> windows;
  session().ObjectOf("Windows", object().Get("Windows")).ForEach([&](ComPtr<IDispatch> window) {
    windows.push_back(session().WindowOf(std::move(window)));
  });
  return windows;
}

void ExcelWorkbook::Activate() {
  object().Call("Activate");
}

std::vector<std::string> ExcelWorkbook::StyleNames() const {
  std::vector<std::string> names;
  session().ObjectOf("Styles", object().Get("Styles")).ForEach([&](ComPtr<IDispatch> style) {
    names.push_back(session().ObjectOf("Style", std::move(style)).Get("Name").AsText());
  });
  return names;
}

void ExcelWorkbook::Save() {
  object().Call("Save");
}
void ExcelWorkbook::SaveAs(std::string_view path) {
  object().Call("SaveAs", path);
}
void ExcelWorkbook::Close(bool saveChanges) {
  object().Call("Close", saveChanges);
}

}  // namespace tolvane::excel
