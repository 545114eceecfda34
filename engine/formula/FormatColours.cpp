#include "engine/formula/FormatColours.h"

#include <charconv>
#include <utility>

#include "platform/Text.h"

namespace tolvane::engine {
namespace {

constexpr std::pair<std::string_view, std::uint32_t> kNamed[] = {
    {"Black", 0x000000},   {"Blue", 0x0000FF}, {"Cyan", 0x00FFFF},  {"Green", 0x00FF00},
    {"Magenta", 0xFF00FF}, {"Red", 0xFF0000},  {"White", 0xFFFFFF}, {"Yellow", 0xFFFF00}};

// Excel's default palette, from Color1.
constexpr std::uint32_t kPalette[] = {0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,
                                      0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,
                                      0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,
                                      0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,
                                      0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
                                      0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,
                                      0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

}  // namespace

std::optional<std::uint32_t> ColourNamed(std::string_view name) {
  for (const auto& [spelling, colour] : kNamed) {
    if (platform::EqualIgnoringCase(name, spelling)) return colour;
  }
  constexpr std::string_view kNumbered = "Color";
  if (!platform::EqualIgnoringCase(name.substr(0, kNumbered.size()), kNumbered)) return std::nullopt;
  name.remove_prefix(kNumbered.size());
  while (name.starts_with(' ')) name.remove_prefix(1);
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || end != name.data() + name.size() || number < 1 || number > std::size(kPalette)) {
    return std::nullopt;
  }
  return kPalette[number - 1];
}

}  // namespace tolvane::engine
