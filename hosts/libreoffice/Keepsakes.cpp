// The part of CalcWorkbook that puts into a file what Calc cannot hold: as texts in defined names, one a sheet and one
// for the book. They are there while a file is written and taken out again after that and after loading.
#include <algorithm>
#include <array>
#include <com/sun/star/sheet/XNamedRange.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <map>

#include "hosts/libreoffice/CalcNames.h"
#include "hosts/libreoffice/CalcWorkbook.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

constexpr std::size_t kLongestText = 200;  // of a text in a formula; Excel reads up to 255 characters

constexpr std::array<bool host::Protection::*, 11> kFlags = {
    &host::Protection::allowFormattingCells, &host::Protection::allowFormattingColumns,
    &host::Protection::allowFormattingRows,  &host::Protection::allowInsertingColumns,
    &host::Protection::allowInsertingRows,   &host::Protection::allowInsertingHyperlinks,
    &host::Protection::allowDeletingColumns, &host::Protection::allowDeletingRows,
    &host::Protection::allowSorting,         &host::Protection::allowFiltering,
    &host::Protection::allowUsingPivotTables};

using Facts = std::map<std::string, std::string>;

std::string Join(const std::set<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

std::set<std::string> SplitNames(std::string_view text) {
  std::set<std::string> names;
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    names.emplace(text.substr(0, comma));
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  return names;
}

// key=value;key=value as a formula: "text"&"text". Neither names nor code names hold any of ; = , or a quotation mark.
OUString ToContent(const Facts& facts) {
  std::string text;
  for (const auto& [key, value] : facts) text += key + '=' + value + ';';
  std::string content;
  while (!text.empty()) {
    std::size_t size = std::min(text.size(), kLongestText);
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
    content += (content.empty() ? "\"" : "&\"") + text.substr(0, size) + '"';
    text.erase(0, size);
  }
  return ToUno(content);
}

Facts FromContent(const CalcWorkbook& book, const std::string& content) {
  std::string text;
  try {
    for (const FormulaToken& token : book.ReadCalc(content, {})) {
      if (token.kind == FormulaToken::Kind::Text) text += token.text;
    }
  } catch (const FormulaError&) {
    return {};  // somebody else's; nothing is carried then
  }
  Facts facts;
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::string_view fact = rest.substr(0, rest.find(';'));
    rest.remove_prefix(std::min(rest.size(), fact.size() + 1));
    const std::size_t equals = fact.find('=');
    if (equals != std::string_view::npos) facts.emplace(fact.substr(0, equals), fact.substr(equals + 1));
  }
  return facts;
}

Reference<css::sheet::XNamedRanges> NamesOf(const Reference<css::uno::XInterface>& owner) {
  return Reference<css::sheet::XNamedRanges>(GetAny(owner, "NamedRanges"), UNO_QUERY_THROW);
}

void Put(const Reference<css::uno::XInterface>& owner, std::string_view name, const Facts& facts, int sheet) {
  const auto names = NamesOf(owner);
  const OUString key = ToUno(name);
  if (names->hasByName(key)) names->removeByName(key);
  if (facts.empty()) return;
  names->addNewByName(key, ToContent(facts), css::table::CellAddress(static_cast<sal_Int16>(sheet), 0, 0), 0);
}

std::optional<std::string> Take(const Reference<css::uno::XInterface>& owner, std::string_view name) {
  const auto names = NamesOf(owner);
  const OUString key = ToUno(name);
  if (!names->hasByName(key)) return std::nullopt;
  const Reference<css::sheet::XNamedRange> range(names->getByName(key), UNO_QUERY_THROW);
  const std::string content = ToUtf8(range->getContent());
  names->removeByName(key);
  return content;
}

}  // namespace

void CalcWorkbook::WriteKeepsakes() {
  AtEdge([&] {
    for (const auto& sheet : sheets()) {
      Facts facts = {{"code", sheet->codeName()}};
      if (sheet->carried.veryHidden && sheet->Visible() == host::SheetVisibility::VeryHidden) facts["veryHidden"] = "1";
      std::string flags;
      for (const auto flag : kFlags) flags += sheet->carried.allowed.*flag ? '1' : '0';
      if (flags.find('1') != std::string::npos) facts["allow"] = flags;
      if (!sheet->carried.hiddenNames.empty()) facts["hidden"] = Join(sheet->carried.hiddenNames);
      Put(sheet->object(), kSheetKeepsake, facts, sheet->index());
    }
    Facts facts;
    if (!hiddenNames.empty()) facts["hidden"] = Join(hiddenNames);
    if (isAddin_) facts["addin"] = "1";
    if (protectStructure_) facts["structure"] = "1";
    Put(model_, kBookKeepsake, facts, 0);
  });
}

void CalcWorkbook::RemoveKeepsakes() {
  AtEdge([&] {
    for (const auto& sheet : sheets()) Take(sheet->object(), kSheetKeepsake);
    Take(model_, kBookKeepsake);
  });
}

void CalcWorkbook::ReadKeepsakes() {
  AtEdge([&] {
    std::set<std::string> taken;
    std::vector<std::pair<int, std::string>> codeNames;
    for (const auto& sheet : sheets()) {
      const auto content = Take(sheet->object(), kSheetKeepsake);
      if (!content) continue;
      const Facts facts = FromContent(*this, *content);
      const auto fact = [&](const char* key) {
        const auto found = facts.find(key);
        return found == facts.end() ? std::string() : found->second;
      };
      const std::string flags = fact("allow");
      for (std::size_t i = 0; i < kFlags.size() && i < flags.size(); ++i) {
        sheet->carried.allowed.*kFlags[i] = flags[i] == '1';
      }
      sheet->carried.veryHidden = fact("veryHidden") == "1";
      sheet->carried.hiddenNames = SplitNames(fact("hidden"));
      // A sheet that another program copied carries the code name of its original: the first one keeps it.
      const std::string codeName = fact("code");
      if (!codeName.empty() && taken.insert(platform::FoldCase(codeName)).second) {
        codeNames.emplace_back(sheet->index(), codeName);
      }
    }
    // All at once, since they may have changed places: first out of the way, then each its own.
    std::vector<std::pair<std::shared_ptr<CalcWorksheet>, std::string>> wanted;
    for (const auto& [index, codeName] : codeNames)
      wanted.emplace_back(sheets_[static_cast<std::size_t>(index)], codeName);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      if (wanted[i].first->codeName() != wanted[i].second) wanted[i].first->SetCodeName(FreeCodeName("Moving"));
    }
    for (const auto& sheet : sheets_) {
      const bool isWanted = std::any_of(wanted.begin(), wanted.end(), [&](const auto& w) { return w.first == sheet; });
      if (!isWanted && taken.contains(platform::FoldCase(sheet->codeName()))) sheet->SetCodeName(FreeCodeName("Sheet"));
    }
    for (const auto& [sheet, codeName] : wanted) sheet->SetCodeName(codeName);
    if (const auto content = Take(model_, kBookKeepsake)) {
      const Facts facts = FromContent(*this, *content);
      if (const auto hidden = facts.find("hidden"); hidden != facts.end()) hiddenNames = SplitNames(hidden->second);
      if (facts.contains("addin")) isAddin_ = true;
      if (facts.contains("structure")) protectStructure_ = true;
    }
  });
}

}  // namespace tolvane::libreoffice
