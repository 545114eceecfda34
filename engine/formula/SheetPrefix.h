#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engine/formula/Notation.h"

namespace tolvane::engine {

// What stands before the "!" of a reference: Sheet1, Sheet1:Sheet3, [Book.xlsx]Sheet1, 'C:\Folder\[Book.xlsx]My Sheet'.
struct SheetPrefix {
  std::string book;        // with its folder, where that is given; empty for this workbook
  std::string sheets;      // one sheet, or First:Last
  std::size_t length = 0;  // bytes, with the "!"
};

// "First:Last" into its two names; a single name comes out twice.
std::pair<std::string_view, std::string_view> FirstAndLastSheet(std::string_view sheets);

// The prefix that begins at `at`; nothing when what stands there is not followed by "!".
std::optional<SheetPrefix> ScanSheetPrefix(std::string_view text, std::size_t at, Notation notation);

// Whether a prefix names a workbook rather than a sheet: it ends with a file extension.
bool LooksLikeFileName(std::string_view name);

// Whether a name must stand in apostrophes before "!".
bool NeedsQuotes(std::string_view name);

// "[Book.xlsx]Sheet1!", quoted where that is needed; without a sheet "Book.xlsx!".
void AppendExternalPrefix(std::string& out, std::string_view book, std::string_view sheets);
// "Sheet1!" or "Sheet1:Sheet3!".
void AppendSheetPrefix(std::string& out, std::string_view first, std::string_view last);

}  // namespace tolvane::engine
