#include "books/SheetBuilder.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "src/host/Errors.h"
#include "src/host/Workbook.h"

namespace tolvane::books {

namespace {

std::string QuotedName(const std::string& sheet) {
  std::string quoted = "'";
  for (const char c : sheet) quoted.append(c == '\'' ? 2 : 1, c);
  return quoted + "'";
}

std::optional<double> NumberOf(const std::string& text) {
  double number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, number);
  return problem == std::errc() && stop == end && !text.empty() ? std::optional(number) : std::nullopt;
}

// What the port refuses is told with its place in the table.
template <class Action>
void ForRow(const Table::Row& row, Action&& action) {
  try {
    action();
  } catch (const host::HostError& error) {
    row.Fail(row["where"] + ": " + error.what());
  }
}

void Fill(const host::Range& range, const std::string& content) {
  if (content.empty()) return;
  if (content.front() == '=') {
    range.SetFormula(content);
  } else if (content.front() == '\'') {
    range.SetValue(std::string_view(content).substr(1));
  } else if (const auto number = NumberOf(content)) {
    range.SetValue(*number);
  } else {
    range.SetValue(content);
  }
}

void Look(const host::Range& range, const std::string& word, const Table::Row& row, const Lists& lists) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos) {
    if (word == "wrap") return range.SetWrapText(true);
    if (word == "bold") return range.Font().SetBold(true);
    if (word == "italic") return range.Font().SetItalic(true);
    if (word == "unlocked") return range.SetLocked(false);
    if (word == "merge") return range.Merge();
    if (word == "unruled")
      return range.Borders(host::BorderIndex::InsideHorizontal).SetLineStyle(host::LineStyle::None);
    return range.SetHorizontalAlignment(AlignmentOf(word, row));
  }
  const std::string what = word.substr(0, equals);
  const std::string value = word.substr(equals + 1);
  if (what == "list") return range.Validation().Add(lists.Of(value, row));
  const auto size = NumberOf(value);
  if (!size || (what != "width" && what != "height" && what != "colour")) {
    row.Fail("\"" + word + "\" is no look that a cell can have.");
  }
  if (what == "width") return range.SetColumnWidth(*size);
  if (what == "height") return range.SetRowHeight(*size);
  range.Interior().SetColorIndex(static_cast<host::ColorIndex>(*size));
}

void Link(const host::Range& range, const Table::Row& row) {
  const std::string& link = row["link"];
  if (link.empty()) return;
  constexpr std::string_view between = " | ";
  const std::size_t at = link.find(between);
  if (at == std::string::npos) row.Fail("a link is told by a place and a tip, apart by \" | \".");
  host::HyperlinkTarget target;
  target.subAddress = link.substr(0, at);
  target.screenTip = link.substr(at + between.size());
  range.Hyperlinks().Add(target, row["content"]);
}

}  // namespace

void NameCells(const host::Worksheet& sheet, const Table& table) {
  constexpr std::string_view ofBook = "book:";
  for (const Table::Row& row : table.rows()) {
    for (const std::string& word : WordsOf(row["names"])) {
      ForRow(row, [&] {
        const std::string place = "=" + QuotedName(sheet.Name()) + "!" + sheet.Range(row["where"]).Address();
        if (word.starts_with(ofBook)) {
          sheet.Parent().Names().Add(word.substr(ofBook.size()), place, false);
        } else {
          sheet.Names().Add(word, place, false);
        }
      });
    }
  }
}

void FillCells(const host::Worksheet& sheet, const Table& table, const Formats& formats, const Lists& lists) {
  for (const Table::Row& row : table.rows()) {
    ForRow(row, [&] {
      const host::Range range = sheet.Range(row["where"]);
      if (!row["style"].empty()) range.SetStyle(row["style"]);
      if (!row["format"].empty()) range.SetNumberFormat(formats.Of(row["format"], row));
      Fill(range, row["content"]);
      Link(range, row);
      for (const std::string& word : WordsOf(row["look"])) Look(range, word, row, lists);
    });
  }
}

}  // namespace tolvane::books
