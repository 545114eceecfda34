#include <algorithm>

#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/NumberFormat.h"
#include "engine/formula/NumberText.h"
#include "engine/formula/TextLimits.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

// The byte at which a character stands; the end for one beyond it. Characters are code points and count from 0.
std::size_t ByteOf(std::string_view text, std::size_t character) {
  std::size_t at = 0;
  for (; character > 0 && at < text.size(); --character) {
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) ++at;
  }
  return at;
}

std::string_view Part(std::string_view text, std::size_t first, std::size_t count) {
  text.remove_prefix(ByteOf(text, first));
  return text.substr(0, ByteOf(text, count));
}

std::size_t Count(FunctionCall& call, std::size_t i, std::int64_t otherwise) {
  const std::int64_t count = call.Whole(i, otherwise);
  if (count < 0) throw FunctionError{ErrorCode::Value};
  return static_cast<std::size_t>(count);
}

// A place in a text, from 1; comes out from 0.
std::size_t Start(FunctionCall& call, std::size_t i, std::int64_t otherwise) {
  const std::int64_t start = call.Whole(i, otherwise);
  if (start < 1) throw FunctionError{ErrorCode::Value};
  return static_cast<std::size_t>(start) - 1;
}

Value TextResult(std::string_view text) {
  return text.size() > kLongestText && platform::CharacterCount(text) > kLongestText ? Value(ErrorCode::Value)
                                                                                     : Value(text);
}

Operand Left(FunctionCall& call) {
  return Value(Part(call.Text(0), 0, Count(call, 1, 1)));
}

Operand Right(FunctionCall& call) {
  const std::string text = call.Text(0);
  const std::size_t count = Count(call, 1, 1);
  const std::size_t length = platform::CharacterCount(text);
  return Value(Part(text, length > count ? length - count : 0, count));
}

Operand Mid(FunctionCall& call) {
  const std::string text = call.Text(0);
  const std::size_t start = Start(call, 1, 1);
  return Value(Part(text, start, Count(call, 2, 0)));
}

Operand Len(FunctionCall& call) {
  return static_cast<double>(platform::CharacterCount(call.Text(0)));
}

Operand Find(FunctionCall& call) {
  const std::string wanted = call.Text(0);
  const std::string text = call.Text(1);
  const std::size_t start = Start(call, 2, 1);
  if (start > platform::CharacterCount(text)) return ErrorCode::Value;
  const std::size_t found = text.find(wanted, ByteOf(text, start));
  if (found == std::string::npos) return ErrorCode::Value;
  return static_cast<double>(platform::CharacterCount(std::string_view(text).substr(0, found)) + 1);
}

Operand Search(FunctionCall& call) {
  const WildcardPattern wanted(call.Text(0));
  const std::string text = call.Text(1);
  const std::optional<std::size_t> found = wanted.Find(text, Start(call, 2, 1));
  return found ? Operand(static_cast<double>(*found) + 1) : Operand(ErrorCode::Value);
}

Operand Substitute(FunctionCall& call) {
  const std::string text = call.Text(0);
  const std::string wanted = call.Text(1);
  const std::string replacement = call.Text(2);
  const bool onlyOne = call.Has(3);
  const std::int64_t which = call.Whole(3, 0);
  if (onlyOne && which < 1) return ErrorCode::Value;
  if (wanted.empty()) return Value(text);
  std::string out;
  std::size_t copied = 0;
  std::int64_t occurrence = 0;
  for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + wanted.size())) {
    if (onlyOne && ++occurrence != which) continue;
    out.append(text, copied, at - copied).append(replacement);
    copied = at + wanted.size();
  }
  return TextResult(out.append(text, copied));
}

Operand Replace(FunctionCall& call) {
  const std::string text = call.Text(0);
  const std::size_t start = Start(call, 1, 1);
  const std::size_t count = Count(call, 2, 0);
  const std::size_t from = ByteOf(text, start);
  const std::size_t to = from + ByteOf(std::string_view(text).substr(from), count);
  return TextResult(text.substr(0, from) + call.Text(3) + text.substr(to));
}

Operand Upper(FunctionCall& call) {
  return Value(platform::UpperCase(call.Text(0)));
}
Operand Lower(FunctionCall& call) {
  return Value(platform::LowerCase(call.Text(0)));
}

// A letter behind a letter is small, all others are capitals.
Operand Proper(FunctionCall& call) {
  const std::string text = call.Text(0);
  std::string out;
  bool afterLetter = false;
  for (std::size_t at = 0; at < text.size();) {
    char32_t c = platform::NextCharacter(text, at);
    const bool isLetter = platform::IsLetter(c);
    if (isLetter) c = afterLetter ? platform::LowerCharacter(c) : platform::TitleCharacter(c);
    afterLetter = isLetter;
    platform::AppendCharacter(out, c);
  }
  return Value(out);
}

// Blanks at the ends go, and all but one between words.
Operand Trim(FunctionCall& call) {
  std::string out;
  for (const char c : call.Text(0)) {
    if (c != ' ' || (!out.empty() && out.back() != ' ')) out += c;
  }
  if (!out.empty() && out.back() == ' ') out.pop_back();
  return Value(out);
}

Operand Concatenate(FunctionCall& call) {
  std::string out;
  for (std::size_t i = 0; i < call.count(); ++i) out += call.Text(i);
  return TextResult(out);
}

Operand Format(FunctionCall& call) {
  Value value = call.ValueAt(0);
  if (value.isEmpty()) value = Value(0.0);
  if (value.isText()) {
    if (const auto number = NumberFromText(value.text().view())) value = Value(*number);
  }
  const std::optional<std::string> text = TryFormatValue(value, call.Text(1), call.evaluator.book().date1904);
  return text ? TextResult(*text) : Value(ErrorCode::Value);
}

Operand ToValue(FunctionCall& call) {
  if (call.ValueAt(0).isBoolean()) return ErrorCode::Value;
  return call.Number(0);
}

Operand Repeat(FunctionCall& call) {
  const std::string text = call.Text(0);
  const std::size_t count = Count(call, 1, 0);
  if (text.empty() || count == 0) return Value(Text());
  if (count > kLongestText || count * platform::CharacterCount(text) > kLongestText) return ErrorCode::Value;
  std::string out;
  for (std::size_t i = 0; i < count; ++i) out += text;
  return Value(out);
}

Operand Exact(FunctionCall& call) {
  return Value(call.Text(0) == call.Text(1));
}

// The character codes are those of Windows' western code page.
Operand Char(FunctionCall& call) {
  const std::int64_t code = call.Whole(0);
  if (code < 1 || code > 255) return ErrorCode::Value;
  const char byte = static_cast<char>(code);
  return Value(platform::FromWindows1252({&byte, 1}));
}

Operand Code(FunctionCall& call) {
  const std::string text = call.Text(0);
  if (text.empty()) return ErrorCode::Value;
  const std::string_view first = Part(text, 0, 1);
  for (int code = 1; code < 256; ++code) {
    const char byte = static_cast<char>(code);
    if (platform::FromWindows1252({&byte, 1}) == first) return static_cast<double>(code);
  }
  constexpr double kUnknown = '?';
  return kUnknown;
}

constexpr Function kFunctions[] = {
    {"CHAR", 1, 1, "V", Char},
    {"CODE", 1, 1, "V", Code},
    {"CONCATENATE", 1, kMostArguments, "V", Concatenate},
    {"EXACT", 2, 2, "V", Exact},
    {"FIND", 2, 3, "V", Find},
    {"LEFT", 1, 2, "V", Left},
    {"LEN", 1, 1, "V", Len},
    {"LOWER", 1, 1, "V", Lower},
    {"MID", 3, 3, "V", Mid},
    {"PROPER", 1, 1, "V", Proper},
    {"REPLACE", 4, 4, "V", Replace},
    {"REPT", 2, 2, "V", Repeat},
    {"RIGHT", 1, 2, "V", Right},
    {"SEARCH", 2, 3, "V", Search},
    {"SUBSTITUTE", 3, 4, "V", Substitute},
    {"TEXT", 2, 2, "V", Format},
    {"TRIM", 1, 1, "V", Trim},
    {"UPPER", 1, 1, "V", Upper},
    {"VALUE", 1, 1, "V", ToValue},
};

}  // namespace

std::span<const Function> TextFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
