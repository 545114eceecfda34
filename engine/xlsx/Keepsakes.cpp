#include "engine/xlsx/Keepsakes.h"

#include <algorithm>

#include "engine/xlsx/ValidationNames.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::size_t kLongestText = 200;  // of one text in a formula; Excel reads up to 255 characters
constexpr std::size_t kAllowances = 11;    // the first of kProtectionFlags

std::string HiddenNames(const NameTable& names) {
  std::string text;
  for (const auto& [folded, name] : names.byFoldedName()) {
    if (!name.hidden) continue;
    if (!text.empty()) text.push_back(',');
    text += folded;
  }
  return text;
}

void HideNames(const Facts& facts, NameTable& names) {
  const auto found = facts.find("hidden");
  if (found == facts.end()) return;
  for (std::string_view rest = found->second; !rest.empty();) {
    const std::string_view folded = rest.substr(0, rest.find(','));
    rest.remove_prefix(std::min(rest.size(), folded.size() + 1));
    const auto name = names.byFoldedName().find(std::string(folded));
    if (name != names.byFoldedName().end()) name->second.hidden = true;
  }
}

}  // namespace

bool IsKeepsake(std::string_view name) {
  return platform::EqualIgnoringCase(name, kSheetKeepsake) || platform::EqualIgnoringCase(name, kBookKeepsake);
}

std::optional<Facts> FactsOf(const Expression& formula) {
  for (const Node& node : formula.nodes) {
    const bool joins = node.kind == Node::Kind::Binary && node.op == Operator::Concatenate;
    const bool isText = node.kind == Node::Kind::Constant && formula.constants[node.index].isText();
    if (!joins && !isText) return std::nullopt;
  }
  // Texts stand in the order in which they were typed.
  std::string text;
  for (const Value& constant : formula.constants) text += constant.text().view();
  Facts facts;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view fact = rest.substr(0, rest.find(';'));
    rest.remove_prefix(std::min(rest.size(), fact.size() + 1));
    const std::size_t equals = fact.find('=');
    if (equals != std::string_view::npos) facts.emplace(fact.substr(0, equals), fact.substr(equals + 1));
  }
  return facts;
}

std::string FormulaOf(const Facts& facts) {
  std::string text;
  for (const auto& [key, value] : facts) text.append(key).append("=").append(value).append(";");
  std::string formula;
  while (!text.empty()) {
    std::size_t size = std::min(text.size(), kLongestText);
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
    formula.append(formula.empty() ? "\"" : "&\"").append(text, 0, size).append("\"");
    text.erase(0, size);
  }
  return formula;
}

Facts FactsAbout(const Sheet& sheet) {
  Facts facts;
  if (!sheet.codeName.empty()) facts["code"] = sheet.codeName;
  if (sheet.visibility == Visibility::VeryHidden) facts.emplace("veryHidden", "1");
  std::string allowed;
  for (std::size_t i = 0; i < kAllowances; ++i) {
    allowed.push_back(sheet.protection.*kProtectionFlags[i].member ? '1' : '0');
  }
  if (allowed.find('1') != std::string::npos) facts["allow"] = allowed;
  if (std::string hidden = HiddenNames(sheet.names); !hidden.empty()) facts["hidden"] = std::move(hidden);
  return facts;
}

Facts FactsAbout(const Workbook& book, const Facts& before) {
  Facts facts = before;
  facts.erase("hidden");
  facts.erase("structure");
  if (std::string hidden = HiddenNames(book.names); !hidden.empty()) facts["hidden"] = std::move(hidden);
  if (book.structureProtected) facts.emplace("structure", "1");
  return facts;
}

void PutBack(const Facts& facts, Sheet& sheet) {
  if (facts.contains("veryHidden") && sheet.visibility == Visibility::Hidden) sheet.visibility = Visibility::VeryHidden;
  if (const auto allowed = facts.find("allow"); allowed != facts.end()) {
    for (std::size_t i = 0; i < kAllowances && i < allowed->second.size(); ++i) {
      sheet.protection.*kProtectionFlags[i].member = allowed->second[i] == '1';
    }
  }
  HideNames(facts, sheet.names);
}

void PutBack(const Facts& facts, Workbook& book) {
  if (facts.contains("structure")) book.structureProtected = true;
  HideNames(facts, book.names);
}

}  // namespace tolvane::engine::xlsx
