#include "books/Table.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "platform/Text.h"

namespace tolvane::books {

namespace {

const std::string kNothing;

std::string WithoutEscapes(std::string_view cell, const std::string& where) {
  std::string text;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    if (cell[i] != '\\') {
      text.push_back(cell[i]);
      continue;
    }
    const char next = ++i < cell.size() ? cell[i] : '\0';
    switch (next) {
      case 'n':
        text.push_back('\n');
        break;
      case 'r':
        text.push_back('\r');
        break;
      case 't':
        text.push_back('\t');
        break;
      case '\\':
        text.push_back('\\');
        break;
      default:
        throw TableError(where + ": after a backslash stands n, r, t or another backslash.");
    }
  }
  return text;
}

std::vector<std::string> SplitLine(std::string_view line, const std::string& where) {
  std::vector<std::string> cells;
  while (true) {
    const std::size_t tab = line.find('\t');
    cells.push_back(WithoutEscapes(line.substr(0, tab), where));
    if (tab == std::string_view::npos) return cells;
    line.remove_prefix(tab + 1);
  }
}

}  // namespace

const std::string& Table::Row::operator[](std::string_view column) const {
  const auto found = std::find(table_->columns_.begin(), table_->columns_.end(), column);
  if (found == table_->columns_.end()) Fail("the table has no column \"" + std::string(column) + "\".");
  return At(static_cast<std::size_t>(found - table_->columns_.begin()));
}

const std::string& Table::Row::At(std::size_t column) const {
  return column < cells_.size() ? cells_[column] : kNothing;
}

void Table::Row::Fail(const std::string& problem) const {
  throw TableError(table_->name_ + ", line " + std::to_string(line_) + ": " + problem);
}

Table::Table(std::string name, std::string_view text) : name_(std::move(name)) {
  if (!platform::IsValidUtf8(text)) throw TableError(name_ + " is not a text in UTF-8.");
  int number = 0;
  while (!text.empty()) {
    ++number;
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.find_first_not_of(" \t") == std::string_view::npos || line.front() == '#') continue;
    const std::string where = name_ + ", line " + std::to_string(number);
    std::vector<std::string> cells = SplitLine(line, where);
    if (columns_.empty()) {
      columns_ = std::move(cells);
      continue;
    }
    if (cells.size() > columns_.size()) {
      throw TableError(where + ": " + std::to_string(cells.size()) + " cells, but the table has " +
                       std::to_string(columns_.size()) + " columns.");
    }
    rows_.emplace_back(*this, number, std::move(cells));
  }
  if (columns_.empty()) throw TableError(name_ + " is empty: its first line must name the columns.");
}

std::vector<std::string> WordsOf(std::string_view text) {
  std::istringstream stream{std::string(text)};
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(std::move(word));
  return words;
}

}  // namespace tolvane::books
