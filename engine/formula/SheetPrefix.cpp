#include "engine/formula/SheetPrefix.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "engine/formula/Printer.h"
#include "engine/formula/ReferenceText.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

constexpr CellPos kAnywhere{kMaxRow / 2, kMaxColumn / 2};

// "[Book]Sheet" and "Folder\[Book]Sheet" into their parts. A workbook with brackets in its name cannot be referred to.
SheetPrefix Split(std::string_view content, std::size_t length) {
  const std::size_t open = content.find('[');
  const std::size_t close = content.rfind(']');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
      content.substr(open + 1, close - open - 1).find_first_of("[]") != std::string_view::npos) {
    return {"", std::string(content), length};
  }
  std::string book(content.substr(0, open));
  book += content.substr(open + 1, close - open - 1);
  return {std::move(book), std::string(content.substr(close + 1)), length};
}

std::optional<SheetPrefix> ScanQuoted(std::string_view text, std::size_t at) {
  std::string content;
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    if (text[i] != '\'') {
      content += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == '\'') {
      content += '\'';
      ++i;
    } else if (i + 1 < text.size() && text[i + 1] == '!') {
      return Split(content, i + 2 - at);
    } else {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

std::size_t WordEnd(std::string_view text, std::size_t from) {
  while (from < text.size() && IsWordByte(text[from])) ++from;
  return from;
}

bool IsPlainCharacter(UChar32 c) {
  return c == '_' || c == '.' || u_isalnum(c);
}

bool IsReferenceInSomeNotation(std::string_view word) {
  for (const Notation notation : {Notation::A1, Notation::R1C1}) {
    const auto found = ScanReference(word, 0, notation, kAnywhere);
    if (found && found->length == word.size()) return true;
  }
  return false;
}

void AppendQuoted(std::string& out, std::string_view content) {
  out += '\'';
  for (const char c : content) {
    if (c == '\'') out += '\'';
    out += c;
  }
  out += '\'';
}

}  // namespace

std::pair<std::string_view, std::string_view> FirstAndLastSheet(std::string_view sheets) {
  const std::size_t colon = sheets.find(':');
  if (colon == std::string_view::npos) return {sheets, sheets};
  return {sheets.substr(0, colon), sheets.substr(colon + 1)};
}

std::optional<SheetPrefix> ScanSheetPrefix(std::string_view text, std::size_t at, Notation notation) {
  if (at >= text.size()) return std::nullopt;
  if (text[at] == '\'') return ScanQuoted(text, at);
  std::size_t end = at;
  if (text[at] == '[') {
    const std::size_t close = text.find(']', at);
    if (close == std::string_view::npos) return std::nullopt;
    if (text.substr(at + 1, close - at - 1).find_first_of("['") != std::string_view::npos) return std::nullopt;
    end = close + 1;
  }
  const std::size_t firstWord = end;
  end = WordEnd(text, end);
  if (end == firstWord) return std::nullopt;
  if (end < text.size() && text[end] == ':') {
    // A1:Sheet2!B2 is a range that begins with a cell, not a span of sheets.
    const auto cell = ScanReference(text.substr(firstWord, end - firstWord), 0, notation, kAnywhere);
    const std::size_t last = WordEnd(text, end + 1);
    if (!cell && last > end + 1 && last < text.size() && text[last] == '!') end = last;
  }
  if (end >= text.size() || text[end] != '!') return std::nullopt;
  return Split(text.substr(at, end - at), end + 1 - at);
}

bool LooksLikeFileName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return false;
  const std::string_view extension = name.substr(dot + 1);
  if (extension.size() < 2 || extension.size() > 5) return false;
  for (const char c : extension) {
    if (!IsWordByte(c) || c == '_' || c == '\\' || c == '?' || static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return !IsDigit(extension[0]);
}

bool NeedsQuotes(std::string_view name) {
  if (name.empty() || IsDigit(name[0]) || name[0] == '.') return true;
  const auto length = static_cast<std::int32_t>(name.size());
  for (std::int32_t i = 0; i < length;) {
    UChar32 c = 0;
    U8_NEXT(name.data(), i, length, c);
    if (c < 0 || !IsPlainCharacter(c)) return true;
  }
  const std::string upper = platform::UpperCase(name);
  return upper == "TRUE" || upper == "FALSE" || IsReferenceInSomeNotation(name);
}

std::string QuoteSheetName(std::string_view name) {
  std::string out;
  if (NeedsQuotes(name)) {
    AppendQuoted(out, name);
  } else {
    out = name;
  }
  return out;
}

void AppendSheetPrefix(std::string& out, std::string_view first, std::string_view last) {
  std::string content(first);
  if (first != last) content.append(":").append(last);
  if (NeedsQuotes(first) || NeedsQuotes(last)) {
    AppendQuoted(out, content);
  } else {
    out += content;
  }
  out += '!';
}

void AppendExternalPrefix(std::string& out, std::string_view book, std::string_view sheets) {
  if (sheets.empty()) {
    out += QuoteSheetName(book);
    out += '!';
    return;
  }
  const std::size_t slash = book.find_last_of("\\/");
  const std::size_t fileAt = slash == std::string_view::npos ? 0 : slash + 1;
  const auto file = book.substr(fileAt);
  std::string content(book.substr(0, fileAt));
  content.append("[").append(file).append("]").append(sheets);

  const auto [first, last] = FirstAndLastSheet(sheets);
  // In brackets a number does not disturb: [1]Sheet1!A1.
  const bool plainFile = fileAt == 0 && (!NeedsQuotes(file) || file.find_first_not_of("0123456789") == file.npos);
  if (plainFile && !NeedsQuotes(first) && !NeedsQuotes(last)) {
    out += content;
  } else {
    AppendQuoted(out, content);
  }
  out += '!';
}

}  // namespace tolvane::engine
