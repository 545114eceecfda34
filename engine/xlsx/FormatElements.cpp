#include "engine/xlsx/FormatElements.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "engine/xlsx/Dom.h"

namespace tolvane::engine::xlsx {

namespace {

template <class Enum>
Enum FromName(std::span<const std::string_view> names, std::string_view name, Enum otherwise) {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? otherwise : static_cast<Enum>(found - names.begin());
}

// By the order of the model's enumerations.
constexpr std::array<std::string_view, 5> kUnderlines = {"none", "single", "double", "singleAccounting",
                                                         "doubleAccounting"};
constexpr std::array<std::string_view, 14> kLineStyles = {
    "none",         "thin",    "medium",        "dashed",     "dotted",           "thick",       "double", "hair",
    "mediumDashed", "dashDot", "mediumDashDot", "dashDotDot", "mediumDashDotDot", "slantDashDot"};
constexpr std::array<std::string_view, 8> kHorizontal = {"general", "left",    "center",           "right",
                                                         "fill",    "justify", "centerContinuous", "distributed"};
constexpr std::array<std::string_view, 5> kVertical = {"bottom", "top", "center", "justify", "distributed"};

template <class Enum>
std::string_view NameOf(std::span<const std::string_view> names, Enum value) {
  return names[static_cast<std::size_t>(value)];
}

bool Switch(const pugi::xml_node& parent, std::string_view local) {
  const pugi::xml_node child = ChildOf(parent, local);
  return child && FlagOf(child, "val", true);
}

void SetSwitch(pugi::xml_node font, std::string_view local, bool value) {
  RemoveChildren(font, local);
  if (value) font.prepend_child(std::string(local).c_str());
}

constexpr std::array<std::array<std::string_view, 2>, 4> kEdges = {
    {{"left", "start"}, {"right", "end"}, {"top", "top"}, {"bottom", "bottom"}}};

pugi::xml_node EdgeOf(const pugi::xml_node& border, std::size_t edge) {
  const pugi::xml_node usual = ChildOf(border, kEdges[edge][0]);
  return usual ? usual : ChildOf(border, kEdges[edge][1]);
}

// The format tells rotations downward as 91 to 180.
constexpr int kUpright = 255;

}  // namespace

Font ReadFont(const pugi::xml_node& font, const Colours& colours) {
  Font result;
  if (const pugi::xml_node name = ChildOf(font, "name")) result.name = AttributeOf(name, "val");
  if (const pugi::xml_node size = ChildOf(font, "sz")) result.size = NumberOf(size, "val", result.size);
  result.bold = Switch(font, "b");
  result.italic = Switch(font, "i");
  result.strikeout = Switch(font, "strike");
  if (const pugi::xml_node underline = ChildOf(font, "u")) {
    result.underline = FromName(kUnderlines, HasAttribute(underline, "val") ? AttributeOf(underline, "val") : "single",
                                Underline::Single);
  }
  result.colour = colours.Of(ChildOf(font, "color"));
  return result;
}

void WriteFont(pugi::xml_node font, const Font& from, const Font& to) {
  if (from.strikeout != to.strikeout) SetSwitch(font, "strike", to.strikeout);
  if (from.italic != to.italic) SetSwitch(font, "i", to.italic);
  if (from.bold != to.bold) SetSwitch(font, "b", to.bold);
  if (from.underline != to.underline) {
    RemoveChildren(font, "u");
    if (to.underline != Underline::None) {
      const pugi::xml_node underline =
          ObtainChild(font, "u", {"vertAlign", "sz", "color", "name", "family", "charset", "scheme"});
      if (to.underline != Underline::Single) SetAttribute(underline, "val", NameOf(kUnderlines, to.underline));
    }
  }
  if (from.size != to.size || !ChildOf(font, "sz")) {
    SetNumber(ObtainChild(font, "sz", {"color", "name", "family", "charset", "scheme"}), "val", to.size);
  }
  if (from.colour != to.colour) {
    RemoveChildren(font, "color");
    if (to.colour) SetColour(ObtainChild(font, "color", {"name", "family", "charset", "scheme"}), to.colour);
  }
  if (from.name != to.name || !ChildOf(font, "name")) {
    SetAttribute(ObtainChild(font, "name", {"family", "charset", "scheme"}), "val", to.name);
    // These belong to the former face; "scheme" would even bring it back.
    for (const std::string_view gone : {"family", "charset", "scheme"}) {
      if (from.name != to.name) RemoveChildren(font, gone);
    }
  }
}

Fill ReadFill(const pugi::xml_node& fill, const Colours& colours) {
  Fill result;
  const pugi::xml_node pattern = ChildOf(fill, "patternFill");
  if (!pattern) {
    if (ChildOf(fill, "gradientFill")) result.pattern = FillPattern::Other;
    return result;
  }
  const std::string type = AttributeOf(pattern, "patternType");
  result.pattern = type.empty() || type == "none" ? FillPattern::None
                   : type == "solid"              ? FillPattern::Solid
                                                  : FillPattern::Other;
  if (result.pattern != FillPattern::None) result.colour = colours.Of(ChildOf(pattern, "fgColor"));
  return result;
}

void WriteFill(pugi::xml_node fill, const Fill& from, const Fill& to) {
  if (from == to) return;
  // Which of the other patterns it is only the element itself knows.
  const bool keepsPattern = from.pattern == to.pattern && to.pattern == FillPattern::Other;
  if (!keepsPattern) fill.remove_children();
  pugi::xml_node pattern = ChildOf(fill, "patternFill");
  if (!pattern && keepsPattern) return;  // a gradient has no one colour
  if (!pattern) {
    pattern = AddChild(fill, "patternFill");
    SetAttribute(pattern, "patternType",
                 to.pattern == FillPattern::None    ? "none"
                 : to.pattern == FillPattern::Solid ? "solid"
                                                    : "gray125");
  }
  RemoveChildren(pattern, "fgColor");
  if (to.colour) SetColour(ObtainChild(pattern, "fgColor", {"bgColor"}), to.colour);
  if (to.pattern == FillPattern::Solid && to.colour && !ChildOf(pattern, "bgColor")) {
    SetAttribute(AddChild(pattern, "bgColor"), "indexed", "64");
  }
}

std::array<Line, 4> ReadBorder(const pugi::xml_node& border, const Colours& colours) {
  std::array<Line, 4> lines;
  for (std::size_t edge = 0; edge < lines.size(); ++edge) {
    const pugi::xml_node element = EdgeOf(border, edge);
    lines[edge].style = FromName(kLineStyles, AttributeOf(element, "style"), LineStyle::None);
    if (lines[edge].style != LineStyle::None) lines[edge].colour = colours.Of(ChildOf(element, "color"));
  }
  return lines;
}

void WriteBorder(pugi::xml_node border, const std::array<Line, 4>& from, const std::array<Line, 4>& to) {
  for (std::size_t edge = 0; edge < to.size(); ++edge) {
    pugi::xml_node element = EdgeOf(border, edge);
    if (!element) {
      element = ObtainChild(
          border, kEdges[edge][0],
          edge == 0   ? std::initializer_list<std::string_view>{"right", "end", "top", "bottom", "diagonal", "vertical",
                                                                "horizontal"}
          : edge == 1 ? std::initializer_list<std::string_view>{"top", "bottom", "diagonal", "vertical", "horizontal"}
          : edge == 2 ? std::initializer_list<std::string_view>{"bottom", "diagonal", "vertical", "horizontal"}
                      : std::initializer_list<std::string_view>{"diagonal", "vertical", "horizontal"});
    }
    if (from[edge] == to[edge]) continue;
    element.remove_children();
    element.remove_attributes();
    if (to[edge].style == LineStyle::None) continue;
    SetAttribute(element, "style", NameOf(kLineStyles, to[edge].style));
    SetColour(AddChild(element, "color"), to[edge].colour);
  }
}

Alignment ReadAlignment(const pugi::xml_node& xf) {
  Alignment result;
  const pugi::xml_node element = ChildOf(xf, "alignment");
  if (!element) return result;
  result.horizontal = FromName(kHorizontal, AttributeOf(element, "horizontal"), HorizontalAlignment::General);
  result.vertical = FromName(kVertical, AttributeOf(element, "vertical"), VerticalAlignment::Bottom);
  result.wrap = FlagOf(element, "wrapText", false);
  result.shrink = FlagOf(element, "shrinkToFit", false);
  result.indent = static_cast<std::uint8_t>(WholeOf(element, "indent", 0, 0, 250));
  const int rotation = WholeOf(element, "textRotation", 0, 0, kUpright);
  result.rotation = static_cast<std::int16_t>(rotation > 90 && rotation <= 180 ? 90 - rotation : rotation);
  return result;
}

void WriteAlignment(pugi::xml_node xf, const Alignment& to) {
  pugi::xml_node element = ChildOf(xf, "alignment");
  if (!element && to == Alignment{}) return;
  if (!element) element = ObtainChild(xf, "alignment", {"protection", "extLst"});
  const auto set = [&](const char* name, bool isDefault, std::string_view value) {
    if (isDefault) {
      element.remove_attribute(name);
    } else {
      SetAttribute(element, name, value);
    }
  };
  set("horizontal", to.horizontal == HorizontalAlignment::General, NameOf(kHorizontal, to.horizontal));
  set("vertical", to.vertical == VerticalAlignment::Bottom, NameOf(kVertical, to.vertical));
  SetFlag(element, "wrapText", to.wrap, false);
  SetFlag(element, "shrinkToFit", to.shrink, false);
  set("indent", to.indent == 0, std::to_string(to.indent));
  set("textRotation", to.rotation == 0, std::to_string(to.rotation < 0 ? 90 - to.rotation : to.rotation));
  if (!element.first_attribute() && !element.first_child()) xf.remove_child(element);
}

CellProtection ReadProtection(const pugi::xml_node& xf) {
  const pugi::xml_node element = ChildOf(xf, "protection");
  return {FlagOf(element, "locked", true), FlagOf(element, "hidden", false)};
}

void WriteProtection(pugi::xml_node xf, const CellProtection& to) {
  pugi::xml_node element = ChildOf(xf, "protection");
  if (!element && to == CellProtection{}) return;
  if (!element) element = ObtainChild(xf, "protection", {"extLst"});
  SetFlag(element, "locked", to.locked, true);
  SetFlag(element, "hidden", to.formulaHidden, false);
  if (!element.first_attribute() && !element.first_child()) xf.remove_child(element);
}

}  // namespace tolvane::engine::xlsx
