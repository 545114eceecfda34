#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::books {

// What is wrong with a table, and where: "accounts/sheets.tsv, line 4: ...".
class TableError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A table of texts that people edit: UTF-8, columns apart by tabs, the first line names the columns; lines that are
// empty or begin with "#" say nothing. Cells at a line's end may be left out. In a cell, \n is a line feed, \r a
// carriage return, \t a tab and \\ a backslash.
class Table {
 public:
  class Row {
   public:
    Row(const Table& table, int line, std::vector<std::string> cells)
        : table_(&table), line_(line), cells_(std::move(cells)) {}
    // Empty where the line has no such cell; TableError where the table has no such column.
    const std::string& operator[](std::string_view column) const;
    const std::string& At(std::size_t column) const;  // from 0
    [[noreturn]] void Fail(const std::string& problem) const;

   private:
    const Table* table_;
    int line_;
    std::vector<std::string> cells_;
  };

  // `name` is what errors call it.
  Table(std::string name, std::string_view text);
  Table(const Table&) = delete;  // rows know their table
  Table& operator=(const Table&) = delete;

  const std::vector<std::string>& columns() const { return columns_; }
  const std::vector<Row>& rows() const { return rows_; }

 private:
  std::string name_;
  std::vector<std::string> columns_;
  std::vector<Row> rows_;
};

// The words of a cell, apart by blanks.
std::vector<std::string> WordsOf(std::string_view text);

}  // namespace tolvane::books
