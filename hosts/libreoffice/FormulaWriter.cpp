#include <algorithm>
#include <array>

#include "hosts/libreoffice/FormulaText.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

using Kind = FormulaToken::Kind;
using Shape = CellReference::Shape;

std::string Doubled(std::string_view text, char quote) {
  std::string result(1, quote);
  for (const char c : text) {
    if (c == quote) result += quote;
    result += c;
  }
  return result += quote;
}

void AppendA1(std::string& out, const CellReference::Corner& corner, bool column, bool row) {
  if (column) out += (corner.columnAbsolute ? "$" : "") + ColumnName(corner.column);
  if (row) out += (corner.rowAbsolute ? "$" : "") + std::to_string(corner.row);
}

void AppendAxis(std::string& out, char letter, int value, bool absolute, int origin) {
  out += letter;
  if (absolute) {
    out += std::to_string(value);
  } else if (value != origin) {
    out += '[' + std::to_string(value - origin) + ']';
  }
}

std::string FileNameOf(std::string_view url) {
  const std::size_t slash = url.rfind('/');
  return std::string(slash == std::string_view::npos ? url : url.substr(slash + 1));
}

bool IsOneCall(const FormulaTokens& tokens, std::size_t begin, std::size_t end) {
  if (end - begin < 3 || tokens[begin].kind != Kind::Function || tokens[end - 1].kind != Kind::Close) return false;
  int depth = 0;
  for (std::size_t i = begin; i < end; ++i) {
    if (tokens[i].kind == Kind::Open) ++depth;
    if (tokens[i].kind == Kind::Close && --depth == 0) return i == end - 1;
  }
  return false;
}

// Excel's functions whose result is TRUE or FALSE, by their pages' "returns".
constexpr std::array<std::string_view, 19> kTruthFunctions = {
    "AND",       "OR",   "NOT",       "XOR",      "TRUE",  "FALSE",  "EXACT",  "ISBLANK", "ISERR",    "ISERROR",
    "ISLOGICAL", "ISNA", "ISNONTEXT", "ISNUMBER", "ISREF", "ISTEXT", "ISEVEN", "ISODD",   "ISFORMULA"};
// Those that hand on what they are given or look up.
constexpr std::array<std::string_view, 12> kOpenFunctions = {
    "IF", "IFERROR", "IFNA", "CHOOSE", "INDEX", "LOOKUP", "VLOOKUP", "HLOOKUP", "OFFSET", "INDIRECT", "IFS", "SWITCH"};

Truth TruthOf(const FormulaTokens& tokens, std::size_t begin, std::size_t end) {
  while (begin < end && tokens[begin].kind == Kind::Space) ++begin;
  while (end > begin && tokens[end - 1].kind == Kind::Space) --end;
  if (begin == end) return Truth::No;
  int depth = 0;
  bool calculates = false;
  for (std::size_t i = begin; i < end; ++i) {
    if (tokens[i].kind == Kind::Open) ++depth;
    if (tokens[i].kind == Kind::Close) --depth;
    if (depth > 0) continue;
    if (tokens[i].kind == Kind::Percent) calculates = true;
    if (tokens[i].kind != Kind::Operator || tokens[i].text == ":") continue;
    const char c = tokens[i].text[0];
    if (c == '=' || c == '<' || c == '>') return Truth::Yes;
    calculates = true;
  }
  if (calculates) return Truth::No;
  if (end - begin == 1) {
    if (tokens[begin].kind == Kind::Boolean) return Truth::Yes;
    const bool refers = tokens[begin].kind == Kind::Reference || tokens[begin].kind == Kind::Name;
    return refers ? Truth::Unknown : Truth::No;
  }
  if (IsOneCall(tokens, begin, end)) {
    const std::string name = platform::UpperCase(tokens[begin].text);
    if (std::find(kTruthFunctions.begin(), kTruthFunctions.end(), name) != kTruthFunctions.end()) return Truth::Yes;
    const bool open = std::find(kOpenFunctions.begin(), kOpenFunctions.end(), name) != kOpenFunctions.end();
    return open ? Truth::Unknown : Truth::No;
  }
  if (tokens[begin].kind == Kind::Open && tokens[end - 1].kind == Kind::Close) return Truth::Unknown;
  return Truth::No;
}

}  // namespace

Rect CellReference::rect() const {
  Rect result{std::min(first.row, last.row), std::min(first.column, last.column), std::max(first.row, last.row),
              std::max(first.column, last.column)};
  if (shape == Shape::Rows) result.left = 1, result.right = kMaxColumn;
  if (shape == Shape::Columns) result.top = 1, result.bottom = kMaxRow;
  return result;
}

std::string ColumnName(int column) {
  std::string name;
  for (; column > 0; column = (column - 1) / 26) name.insert(name.begin(), static_cast<char>('A' + (column - 1) % 26));
  return name;
}

std::string QuoteSheetName(std::string_view name) {
  const auto plain = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
           static_cast<unsigned char>(c) >= 128;
  };
  const bool startsPlain = !name.empty() && !(name[0] >= '0' && name[0] <= '9') && name[0] != '.';
  if (startsPlain && std::all_of(name.begin(), name.end(), plain) && !ReadReference(name, Dialect::ExcelA1, {}) &&
      !ReadReference(name, Dialect::ExcelR1C1, {}) && !platform::EqualIgnoringCase(name, "TRUE") &&
      !platform::EqualIgnoringCase(name, "FALSE")) {
    return std::string(name);
  }
  return Doubled(name, '\'');
}

std::string QuotePlace(std::string_view book, std::string_view sheet) {
  const std::string place = '[' + std::string(book) + ']' + std::string(sheet);
  const bool plain =
      QuoteSheetName(sheet) == sheet && QuoteSheetName("a" + std::string(book)) == "a" + std::string(book);
  return plain ? place : Doubled(place, '\'');
}

std::string WriteReference(const CellReference& reference, Dialect dialect, CellPos origin) {
  const bool calc = dialect == Dialect::Calc;
  if (reference.shape == Shape::Deleted) {
    const bool knowsSheet = !calc && reference.sheet && *reference.sheet != "#REF!" && reference.file.empty();
    return (knowsSheet ? QuoteSheetName(*reference.sheet) + '!' : "") + "#REF!";
  }
  std::string out;
  if (reference.sheet) {
    if (calc) {
      if (!reference.file.empty()) out += Doubled(reference.file, '\'') + '#';
      out += '$' + (reference.file.empty() ? Doubled(*reference.sheet, '\'') : QuoteSheetName(*reference.sheet)) + '.';
    } else if (!reference.file.empty()) {
      out += QuotePlace(FileNameOf(reference.file), *reference.sheet) + '!';
    } else {
      out += QuoteSheetName(*reference.sheet) + '!';
    }
  }
  const bool columns = reference.shape != Shape::Rows;
  const bool rows = reference.shape != Shape::Columns;
  const auto half = [&](const CellReference::Corner& corner) {
    std::string text;
    if (dialect == Dialect::ExcelR1C1) {
      if (rows) AppendAxis(text, 'R', corner.row, corner.rowAbsolute, origin.row);
      if (columns) AppendAxis(text, 'C', corner.column, corner.columnAbsolute, origin.column);
    } else {
      AppendA1(text, corner, columns, rows);
    }
    return text;
  };
  const std::string first = half(reference.first);
  out += first;
  if (reference.shape == Shape::Cell) return out;
  const std::string last = half(reference.last);
  // One whole row or column stands alone in R1C1.
  if (dialect == Dialect::ExcelR1C1 && reference.shape != Shape::Area && first == last) return out;
  return out + ':' + last;
}

std::string WriteFormula(const FormulaTokens& tokens, Dialect dialect, CellPos origin) {
  const bool calc = dialect == Dialect::Calc;
  std::string out;
  bool inArray = false;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const FormulaToken& token = tokens[i];
    if (token.kind == Kind::ArrayOpen) inArray = true;
    if (token.kind == Kind::ArrayClose) inArray = false;
    switch (token.kind) {
      case Kind::Text:
        out += Doubled(token.text, '"');
        break;
      case Kind::Reference:
        out += WriteReference(token.reference, dialect, origin);
        break;
      case Kind::Name:
        if (!token.reference.file.empty()) {
          out +=
              calc ? Doubled(token.reference.file, '\'') + '#' : QuoteSheetName(FileNameOf(token.reference.file)) + '!';
        } else if (token.reference.sheet) {
          out +=
              calc ? '$' + Doubled(*token.reference.sheet, '\'') + '.' : QuoteSheetName(*token.reference.sheet) + '!';
        }
        out += token.text;
        break;
      case Kind::Boolean:
        out += token.text + (calc && !inArray ? "()" : "");
        break;
      case Kind::Function: {
        const bool truth = token.text == "TRUE" || token.text == "FALSE";
        out += token.text;
        // Calc has no literal for these; what was written as one comes back as one.
        if (!calc && truth && i + 2 < tokens.size() && tokens[i + 2].kind == Kind::Close) i += 2;
        break;
      }
      case Kind::Separator:
        out += calc ? ';' : ',';
        break;
      case Kind::Union:
        out += calc ? '~' : ',';
        break;
      case Kind::Intersection:
        out += calc ? '!' : ' ';
        break;
      case Kind::ArrayColumn:
        out += calc ? ';' : ',';
        break;
      case Kind::ArrayRow:
        out += calc ? '|' : ';';
        break;
      default:
        out += token.text;
    }
  }
  return out;
}

void Spell(FormulaTokens& tokens, const Spelling& spell) {
  for (FormulaToken& token : tokens) {
    if (token.kind != Kind::Name && token.kind != Kind::Function) continue;
    if (platform::LowerCase(token.text) == token.text) token.text = spell(token.text);
  }
}

Truth GivesTruth(const FormulaTokens& tokens) {
  return TruthOf(tokens, 0, tokens.size());
}

}  // namespace tolvane::libreoffice
