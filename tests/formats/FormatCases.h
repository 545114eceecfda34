#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Value.h"

namespace tolvane::formatstest {

// A value shown in a number format.
struct FormatCase {
  std::string format;
  std::string written;  // the value as formats.txt writes it: -1234.5, TRUE, "text"
  engine::Value value;
};

// A value as it is written: TRUE, "a text" or a number. Throws std::runtime_error for anything else.
engine::Value ReadValue(const std::string& written);

// Every format of a text with every value of its group:
//   // a comment
//   == the values of the group, parted by tabs
//   a format
std::vector<FormatCase> ReadFormatCases(std::string_view text);

// `count` formats as people could write them, each with a few values that fit it. The same for the same seed.
std::vector<FormatCase> GenerateFormatCases(unsigned seed, int count);

}  // namespace tolvane::formatstest
