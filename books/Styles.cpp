#include "books/Styles.h"

#include <charconv>
#include <cstdint>
#include <optional>

namespace tolvane::books {

namespace {

using host::StyleDefinition;

std::optional<std::uint32_t> ColourOf(const std::string& word) {
  std::uint32_t colour = 0;
  const char* end = word.data() + word.size();
  if (word.size() != 6) return std::nullopt;
  const auto [stop, problem] = std::from_chars(word.data(), end, colour, 16);
  return problem == std::errc() && stop == end ? std::optional(colour) : std::nullopt;
}

StyleDefinition::FontGroup FontOf(const Table::Row& row) {
  StyleDefinition::FontGroup font;
  for (const std::string& word : WordsOf(row["font"])) {
    if (word == "bold") {
      font.bold = true;
    } else if (word == "italic") {
      font.italic = true;
    } else if (const auto colour = ColourOf(word)) {
      font.colour = colour;
    } else {
      const auto [stop, problem] = std::from_chars(word.data(), word.data() + word.size(), font.size);
      if (problem != std::errc() || stop != word.data() + word.size()) {
        row.Fail("a font is told by its size, bold, italic and a colour such as 1F3864, not by \"" + word + "\".");
      }
    }
  }
  return font;
}

StyleDefinition::BorderGroup BorderOf(const Table::Row& row) {
  StyleDefinition::BorderGroup border;
  std::uint32_t colour = 0;
  const std::vector<std::string> words = WordsOf(row["border"]);
  for (const std::string& word : words) {
    if (const auto told = ColourOf(word)) colour = *told;
  }
  const StyleDefinition::BorderLine line{host::LineStyle::Continuous, colour};
  for (const std::string& word : words) {
    if (word == "none" || ColourOf(word)) continue;
    const bool all = word == "all";
    if (!all && word != "left" && word != "top" && word != "right" && word != "bottom") {
      row.Fail("a border is told by left, top, right, bottom, all or none and a colour, not by \"" + word + "\".");
    }
    if (all || word == "left") border.left = line;
    if (all || word == "top") border.top = line;
    if (all || word == "right") border.right = line;
    if (all || word == "bottom") border.bottom = line;
  }
  return border;
}

StyleDefinition::FillGroup FillOf(const Table::Row& row) {
  const std::string& text = row["fill"];
  if (text == "none") return {};
  const auto colour = ColourOf(text);
  if (!colour) row.Fail("a fill is a colour such as F2F2F2 or none, not \"" + text + "\".");
  return {colour};
}

StyleDefinition::AlignmentGroup AlignmentGroupOf(const Table::Row& row) {
  StyleDefinition::AlignmentGroup group;
  for (const std::string& word : WordsOf(row["align"])) {
    if (word == "wrap") {
      group.wrap = true;
    } else {
      group.horizontal = AlignmentOf(word, row);
    }
  }
  return group;
}

}  // namespace

host::Alignment AlignmentOf(const std::string& word, const Table::Row& row) {
  if (word == "left") return host::Alignment::Left;
  if (word == "centre") return host::Alignment::Center;
  if (word == "right") return host::Alignment::Right;
  if (word == "general") return host::Alignment::General;
  row.Fail("an alignment is left, centre, right or general, not \"" + word + "\".");
}

void DefineStyles(const host::Workbook& book, const Table& styles) {
  for (const Table::Row& row : styles.rows()) {
    StyleDefinition style;
    style.name = row["name"];
    if (!row["number"].empty()) style.numberFormat = row["number"];
    if (!row["font"].empty()) style.font = FontOf(row);
    if (!row["align"].empty()) style.alignment = AlignmentGroupOf(row);
    if (!row["border"].empty()) style.border = BorderOf(row);
    if (!row["fill"].empty()) style.fill = FillOf(row);
    if (const std::string& protection = row["protection"]; !protection.empty()) {
      if (protection != "locked" && protection != "unlocked") row.Fail("protection is locked or unlocked.");
      style.protection = StyleDefinition::ProtectionGroup{.locked = protection == "locked"};
    }
    book.DefineStyle(style);
  }
}

Formats::Formats(const Table& table) {
  for (const Table::Row& row : table.rows()) {
    if (!byName_.emplace(row["name"], row["format"]).second)
      row.Fail("the format \"" + row["name"] + "\" stands twice.");
  }
}

const std::string& Formats::Of(const std::string& name, const Table::Row& asking) const {
  const auto found = byName_.find(name);
  if (found == byName_.end()) asking.Fail("formats.tsv has no format \"" + name + "\".");
  return found->second;
}

}  // namespace tolvane::books
