#include "src/host/Workbook.h"

#include <cstddef>

#include "src/host/Window.h"

namespace tolvane::host {

int Worksheets::Count() const {
  return Read("Worksheets.Count", &WorkbookBody::WorksheetsCount);
}
Worksheet Worksheets::Item(int index) const {
  return Read("Worksheets.Item", &WorkbookBody::WorksheetAt, index);
}
Worksheet Worksheets::Item(std::string_view name) const {
  return Read("Worksheets.Item", &WorkbookBody::WorksheetNamed, name);
}
std::vector<Worksheet> Worksheets::All() const {
  return Read("Worksheets.All", [](const WorkbookBody& book) {
    std::vector<Worksheet> sheets;
    const int count = book.WorksheetsCount();
    sheets.reserve(static_cast<std::size_t>(count));
    for (int index = 1; index <= count; ++index) sheets.push_back(book.WorksheetAt(index));
    return sheets;
  });
}
Worksheet Worksheets::Add() const {
  return Write("Worksheets.Add", &WorkbookBody::WorksheetsAdd);
}

std::string Workbook::Name() const {
  return Read("Workbook.Name", &WorkbookBody::Name);
}
std::string Workbook::Path() const {
  return Read("Workbook.Path", &WorkbookBody::Path);
}
std::string Workbook::FullName() const {
  return Read("Workbook.FullName", &WorkbookBody::FullName);
}
bool Workbook::Saved() const {
  return Read("Workbook.Saved", &WorkbookBody::Saved);
}
void Workbook::SetSaved(bool saved) const {
  Write("Workbook.Saved", &WorkbookBody::SetSaved, saved);
}
bool Workbook::IsAddin() const {
  return Read("Workbook.IsAddin", &WorkbookBody::IsAddin);
}
void Workbook::SetIsAddin(bool isAddin) const {
  Write("Workbook.IsAddin", &WorkbookBody::SetIsAddin, isAddin);
}
bool Workbook::ProtectStructure() const {
  return Read("Workbook.ProtectStructure", &WorkbookBody::ProtectStructure);
}
void Workbook::SetProtectStructure(bool on) const {
  Write("Workbook.ProtectStructure", &WorkbookBody::SetProtectStructure, on);
}
host::Names Workbook::Names() const {
  return Read("Workbook.Names", &WorkbookBody::Names);
}
Worksheet Workbook::ActiveSheet() const {
  return Read("Workbook.ActiveSheet", &WorkbookBody::ActiveSheet);
}
std::vector<Window> Workbook::Windows() const {
  return Read("Workbook.Windows", &WorkbookBody::Windows);
}
void Workbook::Activate() const {
  Write("Workbook.Activate", &WorkbookBody::Activate);
}
void Workbook::DefineStyle(const StyleDefinition& style) const {
  Write("Workbook.DefineStyle", &WorkbookBody::DefineStyle, style);
}
std::vector<std::string> Workbook::StyleNames() const {
  return Read("Workbook.StyleNames", &WorkbookBody::StyleNames);
}
void Workbook::Save() const {
  Write("Workbook.Save", &WorkbookBody::Save);
}
void Workbook::SaveAs(std::string_view path) const {
  Write("Workbook.SaveAs", &WorkbookBody::SaveAs, path);
}
void Workbook::Close(bool saveChanges) const {
  Write("Workbook.Close", &WorkbookBody::Close, saveChanges);
}

}  // namespace tolvane::host
