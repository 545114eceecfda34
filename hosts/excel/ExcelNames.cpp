#include "hosts/excel/ExcelNames.h"

#include <utility>

#include "src/host/Errors.h"
#include "src/host/Range.h"

namespace tolvane::excel {
namespace {

// A name of a sheet stands behind the sheet's: 'My Sheet'!name.
bool IsOfSheet(std::string_view name) {
  return name.find('!') != std::string_view::npos;
}

}  // namespace

// --- one name
// ----------------------------------------------------------------------------------------------------------

std::string ExcelName::NameText() const {
  return object().Get("Name").AsText();
}
std::string ExcelName::RefersTo() const {
  return object().Get("RefersTo").AsText();
}
void ExcelName::SetRefersTo(std::string_view formula) {
  object().Put("RefersTo", formula);
}
std::string ExcelName::RefersToR1C1() const {
  return object().Get("RefersToR1C1").AsText();
}
void ExcelName::SetRefersToR1C1(std::string_view formula) {
  object().Put("RefersToR1C1", formula);
}
host::Range ExcelName::RefersToRange() const {
  return session().RangeOf(object().Get("RefersToRange"));
}
bool ExcelName::Visible() const {
  return object().Get("Visible").AsBool();
}
void ExcelName::SetVisible(bool visible) {
  object().Put("Visible", visible);
}
void ExcelName::Delete() {
  object().Call("Delete");
}

// --- the names of a book or a sheet
// ---------------------------------------------------------------------------------------

host::Name ExcelNames::Item(std::string_view name) const {
  const Variant found = object().Get("Item", name);
  // Of a book, the program also finds the name of the sheet in front.
  if (!ofSheet_ && IsOfSheet(session().ObjectOf("Name", found).Get("Name").AsText())) {
    throw host::HostError(host::ErrorNumber::ApplicationDefined,
                          "There is no name \"" + std::string(name) + "\" of the workbook.");
  }
  return session().NameOf(found);
}

std::vector<host::Name> ExcelNames::All() const {
  std::vector<host::Name> all;
  object().ForEach([&](ComPtr<IDispatch> name) {
    const Dispatch entry = session().ObjectOf("Name", name);
    if (ofSheet_ || !IsOfSheet(entry.Get("Name").AsText())) all.push_back(session().NameOf(std::move(name)));
  });
  return all;
}

host::Name ExcelNames::Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) {
  const auto missing = [] { return Variant::Missing(); };
  if (!r1c1) return session().NameOf(object().Get("Add", name, refersTo, visible));
  // Name, RefersTo, Visible, MacroType, ShortcutKey, Category, NameLocal, RefersToLocal, CategoryLocal, RefersToR1C1
  return session().NameOf(object().Get("Add", name, missing(), visible, missing(), missing(), missing(), missing(),
                                       missing(), missing(), refersTo));
}

}  // namespace tolvane::excel
