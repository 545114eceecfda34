#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Geometry.h"
#include "engine/model/Value.h"

namespace tolvane::engine::xlsx {

// Texts and numbers as they stand in the XML of a workbook.

// Content of an element: what XML marks with is escaped, what it cannot hold is written as _xHHHH_, bytes that are no
// UTF-8 become U+FFFD.
void AppendText(std::string& out, std::string_view text);
// ` name="value"`. AppendXAttribute also writes _xHHHH_, for those attributes that hold texts of users.
void AppendAttribute(std::string& out, std::string_view name, std::string_view value);
void AppendXAttribute(std::string& out, std::string_view name, std::string_view value);
void AppendAttribute(std::string& out, std::string_view name, double value);
void AppendFlag(std::string& out, std::string_view name, bool value);  // "1" or "0"

// The shortest text that reads back as the same number. NaN and infinities do not occur in cells.
void AppendNumber(std::string& out, double number);
template <class Integer>
void AppendInteger(std::string& out, Integer number) {
  char digits[24];
  out.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
}

// Undoes the _xHHHH_.
std::string WithoutEscapes(std::string text);

std::optional<double> NumberOf(std::string_view text);
std::optional<std::int64_t> WholeOf(std::string_view text);
bool IsTrue(std::string_view text);  // "1", "true", "on"

// "B7". Nothing when it is no cell of the grid.
std::optional<CellPos> CellOf(std::string_view text);
// "B7", "B7:C9", "5:9", "B:D".
std::optional<Rect> RectOf(std::string_view text);
// Several, separated by blanks.
std::optional<std::vector<Rect>> RectsOf(std::string_view text);

void AppendColumn(std::string& out, int column);
void AppendCell(std::string& out, CellPos at);
void AppendRect(std::string& out, const Rect& area);
std::string TextOf(const Rect& area);
std::string TextOf(const std::vector<Rect>& areas);

std::optional<ErrorCode> ErrorOf(std::string_view text);  // "#DIV/0!"

}  // namespace tolvane::engine::xlsx
