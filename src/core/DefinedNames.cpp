#include "src/core/DefinedNames.h"

#include "src/core/MErrorHandler.h"
#include "src/host/Names.h"

namespace tolvane::accounts {

namespace {

constexpr std::string_view kFalse = "=FALSE";

void Set(const host::Names& names, std::string_view sName, std::string_view sValue, Notation notation) {
  std::string formula(sValue.empty() ? kFalse : sValue);
  if (formula.front() != '=') formula.insert(0, 1, '=');
  host::Name existing;
  Ignoring([&] { existing = names.Item(sName); });
  if (existing.IsNothing()) {
    notation == Notation::R1C1 ? names.AddR1C1(sName, formula, false) : names.Add(sName, formula, false);
  } else {
    notation == Notation::R1C1 ? existing.SetRefersToR1C1(formula) : existing.SetRefersTo(formula);
  }
}

std::string Get(const host::Names& names, std::string_view sName, Notation notation) {
  const host::Name name = names.Item(sName);
  std::string text = notation == Notation::R1C1 ? name.RefersToR1C1() : name.RefersTo();
  if (text.size() > 1 && text.front() == '=') text.erase(0, 1);
  if (text.size() > 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return text;
}

template <class Parent>
std::string GetOrEmpty(const Parent& parent, std::string_view sName, Notation notation) {
  std::string text;
  Ignoring([&] { text = Get(parent.Names(), sName, notation); });
  return text;
}

}  // namespace

void SetName(const host::Workbook& parent, std::string_view sName, std::string_view sValue, Notation notation) {
  Ignoring([&] { Set(parent.Names(), sName, sValue, notation); });
}

void SetName(const host::Worksheet& parent, std::string_view sName, std::string_view sValue, Notation notation) {
  Ignoring([&] { Set(parent.Names(), sName, sValue, notation); });
}

std::string sGetName(const host::Workbook& parent, std::string_view sName, Notation notation) {
  return GetOrEmpty(parent, sName, notation);
}

std::string sGetName(const host::Worksheet& parent, std::string_view sName, Notation notation) {
  return GetOrEmpty(parent, sName, notation);
}

bool bNameExists(const host::Workbook& wkb, std::string_view sName) {
  return Ignoring([&] { static_cast<void>(wkb.Names().Item(sName)); });
}

bool bIsAccSheet(const host::Worksheet& wks) {
  return !sGetName(wks, "setIsAccSheet").empty();
}

bool bSheetExists(const host::Workbook& wkb, std::string_view sName) {
  return Ignoring([&] { static_cast<void>(wkb.Worksheets().Item(sName)); });
}

}  // namespace tolvane::accounts
