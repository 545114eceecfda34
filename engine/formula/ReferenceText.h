#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/formula/Notation.h"

namespace tolvane::engine {

// Whether a byte may stand inside a bare word of a formula (a name, a function, a plain sheet name).
constexpr bool IsWordByte(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
         c == '\\' || c == '?' || static_cast<unsigned char>(c) >= 0x80;
}
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

struct ScannedReference {
  Reference reference;
  std::size_t length = 0;  // bytes
};

// The cell, area, whole rows or whole columns that begins at `at`, without a sheet. Bounds come out in order where
// `home` tells it. Nothing when no reference stands there, or when it is only the beginning of a longer word.
std::optional<ScannedReference> ScanReference(std::string_view text, std::size_t at, Notation notation, CellPos home);

// Whether a name can be told from a reference only by apostrophes: R1C1 notation takes A7 for a name, and A1 notation
// RC.
bool ReadsAsReference(std::string_view name, Notation notation);
// The same for a name before a colon: in A1 notation tot: begins an area of columns.
bool ReadsAsColumn(std::string_view name, Notation notation);

// Appends a reference without its sheet; "#REF!" when it is broken. In A1 notation offsets that leave the grid wrap.
void AppendReference(std::string& out, const Reference& reference, Notation notation, CellPos home);

}  // namespace tolvane::engine
