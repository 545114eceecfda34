#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::app {

// A text as it can be shown on any terminal: control characters, which could move the cursor or change its colours, and
// the invisible marks that turn the direction of text are replaced by U+FFFD.
std::string VisibleText(std::string_view text);

// A table with columns as wide as their widest cell, two blanks apart; numbers stand right.
class TextTable {
 public:
  struct Cell {
    std::string text;
    bool right = false;
  };
  void AddRow(std::vector<Cell> cells);
  void Print(std::ostream& output) const;

 private:
  std::vector<std::vector<Cell>> rows_;
};

}  // namespace tolvane::app
