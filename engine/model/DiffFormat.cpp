#include <string>
#include <utility>

#include "engine/model/DiffContext.h"

namespace tolvane::engine {

namespace {

std::string TextOf(const Colour& colour) {
  if (!colour) return "automatic";
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[*colour >> shift & 15u];
  return text;
}

std::string NumberOf(auto value) {
  return std::to_string(static_cast<int>(value));
}

std::string TextOf(const Font& font) {
  std::string text = font.name;
  text.append(1, ' ').append(std::to_string(font.size));
  if (font.bold) text += " bold";
  if (font.italic) text += " italic";
  if (font.strikeout) text += " strikeout";
  if (font.underline != Underline::None) text.append(" underline ").append(NumberOf(font.underline));
  return text.append(1, ' ').append(TextOf(font.colour));
}

std::string TextOf(const Alignment& alignment) {
  std::string text = "horizontal ";
  text.append(NumberOf(alignment.horizontal)).append(" vertical ").append(NumberOf(alignment.vertical));
  if (alignment.wrap) text += " wrap";
  if (alignment.shrink) text += " shrink";
  text.append(" indent ").append(NumberOf(alignment.indent));
  return text.append(" rotation ").append(NumberOf(alignment.rotation));
}

std::string TextOf(const Line& line) {
  return std::string("line ").append(NumberOf(line.style)).append(1, ' ').append(TextOf(line.colour));
}

std::string TextOf(const Fill& fill) {
  return std::string("pattern ").append(NumberOf(fill.pattern)).append(1, ' ').append(TextOf(fill.colour));
}

}  // namespace

void CompareFormat(DiffContext& context, const std::string& where, const Format& left, const Format& right) {
  const auto report = [&](const char* what, std::string a, std::string b) {
    context.Report(where, what, std::move(a), std::move(b));
  };
  if (left.numberFormat != right.numberFormat) report("number format", left.numberFormat, right.numberFormat);
  if (!(left.font == right.font)) report("font", TextOf(left.font), TextOf(right.font));
  if (!(left.alignment == right.alignment)) report("alignment", TextOf(left.alignment), TextOf(right.alignment));
  constexpr const char* kEdges[] = {"left border", "right border", "top border", "bottom border"};
  for (std::size_t i = 0; i < left.border.size(); ++i) {
    if (!(left.border[i] == right.border[i])) report(kEdges[i], TextOf(left.border[i]), TextOf(right.border[i]));
  }
  if (!(left.fill == right.fill)) report("fill", TextOf(left.fill), TextOf(right.fill));
  const CellProtection& a = left.protection;
  const CellProtection& b = right.protection;
  if (a.locked != b.locked) report("locked", engine::TextOf(a.locked), engine::TextOf(b.locked));
  if (a.formulaHidden != b.formulaHidden) {
    report("formula hidden", engine::TextOf(a.formulaHidden), engine::TextOf(b.formulaHidden));
  }
}

}  // namespace tolvane::engine
