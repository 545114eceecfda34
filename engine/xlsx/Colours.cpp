#include "engine/xlsx/Colours.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "engine/xlsx/Dom.h"

namespace tolvane::engine::xlsx {

namespace {

// Office's usual theme, in the order in which colours are numbered: light 1, dark 1, light 2, dark 2, six accents,
// links.
constexpr std::array<std::uint32_t, 12> kOfficeTheme = {0xFFFFFF, 0x000000, 0xEEECE1, 0x1F497D, 0x4F81BD, 0xC0504D,
                                                        0x9BBB59, 0x8064A2, 0x4BACC6, 0xF79646, 0x0000FF, 0x800080};
// The elements of a theme by those numbers.
constexpr std::array<std::string_view, 12> kThemeNames = {
    "lt1", "dk1", "lt2", "dk2", "accent1", "accent2", "accent3", "accent4", "accent5", "accent6", "hlink", "folHlink"};
// The palette of a workbook that defines none; the first eight repeat.
constexpr std::array<std::uint32_t, 64> kPalette = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x000000, 0xFFFFFF, 0xFF0000,
    0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080,
    0xC0C0C0, 0x808080, 0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080,
    0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF, 0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99,
    0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99, 0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699,
    0x969696, 0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

// "FF1F497D" or "1F497D".
std::optional<std::uint32_t> RgbOf(std::string_view text) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (error != std::errc() || end != text.data() + text.size() || text.size() < 6) return std::nullopt;
  return number & 0xFFFFFF;
}

struct Hsl {
  double hue = 0;
  double saturation = 0;
  double lightness = 0;
};

Hsl ToHsl(std::uint32_t rgb) {
  const double r = (rgb >> 16 & 0xFF) / 255.0, g = (rgb >> 8 & 0xFF) / 255.0, b = (rgb & 0xFF) / 255.0;
  const double high = std::max({r, g, b}), low = std::min({r, g, b}), spread = high - low;
  Hsl hsl{0, 0, (high + low) / 2};
  if (spread == 0) return hsl;
  hsl.saturation = hsl.lightness > 0.5 ? spread / (2 - high - low) : spread / (high + low);
  if (high == r) {
    hsl.hue = (g - b) / spread + (g < b ? 6 : 0);
  } else if (high == g) {
    hsl.hue = (b - r) / spread + 2;
  } else {
    hsl.hue = (r - g) / spread + 4;
  }
  hsl.hue /= 6;
  return hsl;
}

double Channel(double p, double q, double hue) {
  hue -= std::floor(hue);
  if (hue < 1.0 / 6) return p + (q - p) * 6 * hue;
  if (hue < 0.5) return q;
  if (hue < 2.0 / 3) return p + (q - p) * (2.0 / 3 - hue) * 6;
  return p;
}

std::uint32_t ToRgb(const Hsl& hsl) {
  const double l = hsl.lightness;
  const double q = l < 0.5 ? l * (1 + hsl.saturation) : l + hsl.saturation - l * hsl.saturation;
  const double p = 2 * l - q;
  const auto byte = [](double part) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
  };
  return byte(Channel(p, q, hsl.hue + 1.0 / 3)) << 16 | byte(Channel(p, q, hsl.hue)) << 8 |
         byte(Channel(p, q, hsl.hue - 1.0 / 3));
}

}  // namespace

std::uint32_t WithTint(std::uint32_t rgb, double tint) {
  if (tint == 0) return rgb;
  Hsl hsl = ToHsl(rgb);
  hsl.lightness = tint < 0 ? hsl.lightness * (1 + tint) : hsl.lightness * (1 - tint) + tint;
  return ToRgb(hsl);
}

Colours::Colours() : theme_(kOfficeTheme), palette_(kPalette.begin(), kPalette.end()) {}

void Colours::ReadTheme(std::string_view xml, Budget& budget) {
  const auto document = ParseDom(xml, "theme", budget);
  const pugi::xml_node scheme = ChildOf(ChildOf(document->document_element(), "themeElements"), "clrScheme");
  for (std::size_t i = 0; i < kThemeNames.size(); ++i) {
    const pugi::xml_node colour = ChildOf(scheme, kThemeNames[i]);
    const pugi::xml_node rgb = ChildOf(colour, "srgbClr");
    const pugi::xml_node system = ChildOf(colour, "sysClr");
    if (const auto value = RgbOf(rgb ? AttributeOf(rgb, "val") : AttributeOf(system, "lastClr"))) theme_[i] = *value;
  }
}

void Colours::ReadPalette(const pugi::xml_node& colorsElement) {
  std::size_t i = 0;
  ForEachChild(ChildOf(colorsElement, "indexedColors"), "rgbColor", [&](const pugi::xml_node& colour) {
    const auto value = RgbOf(AttributeOf(colour, "rgb"));
    if (value && i < palette_.size()) palette_[i] = *value;
    ++i;
  });
}

Colour Colours::Of(const pugi::xml_node& element) const {
  if (!element || FlagOf(element, "auto", false)) return std::nullopt;
  const double tint = std::clamp(NumberOf(element, "tint", 0), -1.0, 1.0);
  if (HasAttribute(element, "rgb")) {
    const auto rgb = RgbOf(AttributeOf(element, "rgb"));
    return rgb ? Colour(WithTint(*rgb, tint)) : std::nullopt;
  }
  if (HasAttribute(element, "theme")) {
    const int number = WholeOf(element, "theme", -1, 0, static_cast<int>(theme_.size()) - 1);
    return number < 0 ? Colour() : WithTint(theme_[static_cast<std::size_t>(number)], tint);
  }
  // 64 and 65 are the system's colours: what is automatic.
  const int number = WholeOf(element, "indexed", -1, 0, static_cast<int>(palette_.size()) - 1);
  return number < 0 ? Colour() : WithTint(palette_[static_cast<std::size_t>(number)], tint);
}

void SetColour(pugi::xml_node element, Colour colour) {
  element.remove_attributes();
  if (!colour) {
    SetAttribute(element, "auto", "1");
    return;
  }
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string rgb = "FF";
  for (int shift = 20; shift >= 0; shift -= 4) rgb.push_back(kDigits[*colour >> shift & 0xF]);
  SetAttribute(element, "rgb", rgb);
}

}  // namespace tolvane::engine::xlsx
