#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tolvane::formulacases {

// A file of formula cases reads from top to bottom, its fields parted by tabs:
//
//   # a comment
//   # Source: where the expected values from here on come from
//   == a group                  begins with empty sheets
//   B3 <tab> 12                 a cell: a number, TRUE, a text ('12 for a text of digits) or a =formula
//   name total <tab> =Sheet1!$B$3
//   =B3+1 <tab> 13              a formula, and what a cell in General format shows of it, with 15 digits
//   {=SUM(A1:A3*2)} <tab> 12    the same as an array formula
struct Line {
  enum class Kind { Cell, Name, Case };
  int number = 0;
  Kind kind = Kind::Case;
  std::string left;      // the cell's address, the name, or the formula without braces
  std::string right;     // its content, or what is expected
  bool isArray = false;  // of a case
  std::string source;    // of a case: "help page", "memory", "calculated", "LibreOffice"
};

struct Group {
  std::string file;
  std::string title;
  std::vector<Line> lines;
};

// The files of a folder, by name.
std::vector<std::filesystem::path> CaseFiles();

// Throws std::runtime_error that names file and line for what cannot be read: no tab, a case without a source.
std::vector<Group> ReadCaseFile(const std::filesystem::path& path);

}  // namespace tolvane::formulacases
