#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tolvane::xlsxtest {

// A workbook file with a few bytes changed, cut, doubled or swapped: within the XML of a part, or, now and then, in the
// archive itself. The same seed makes the same file.
std::string MutatedFile(std::uint32_t seed);

// A workbook file whose part of that number (it wraps) has another content.
std::string FileWithPart(std::size_t number, const std::string& content);

// Reads a file; where it opens, changes, saves and opens it again. False when it is refused with an XlsxError. Any
// other exception passes.
bool OpensOrRefuses(const std::string& bytes);

}  // namespace tolvane::xlsxtest
