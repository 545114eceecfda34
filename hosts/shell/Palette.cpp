#include "hosts/shell/Palette.h"

#include <array>
#include <cstdlib>

#include "hosts/shell/Refusal.h"

namespace tolvane::shell {

namespace {

// Excel's default palette as its object model documents it under ColorIndex, from index 1 on.
constexpr std::array<std::uint32_t, 56> kPalette = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  // 1 to 8
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,  // 9 to 16
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,  // 17 to 24
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,  // 25 to 32
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,  // 33 to 40
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,  // 41 to 48
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333,  // 49 to 56
};

int Part(std::uint32_t colour, int shift) {
  return static_cast<int>(colour >> shift & 0xFF);
}

}  // namespace

std::optional<std::uint32_t> ColourOf(host::ColorIndex index) {
  if (index == host::kColorIndexNone || index == host::kColorIndexAutomatic) return std::nullopt;
  if (index < 1 || index > static_cast<int>(kPalette.size())) {
    Refuse("There is no colour with index " + std::to_string(index) + "; the palette has 1 to 56.");
  }
  return kPalette[static_cast<std::size_t>(index - 1)];
}

host::ColorIndex NearestIndex(std::uint32_t colour) {
  std::size_t best = 0;
  int bestDistance = -1;
  for (std::size_t i = 0; i < kPalette.size(); ++i) {
    int distance = 0;
    for (const int shift : {16, 8, 0}) {
      const int difference = Part(kPalette[i], shift) - Part(colour, shift);
      distance += difference * difference;
    }
    if (bestDistance < 0 || distance <= bestDistance) {
      best = i;
      bestDistance = distance;
    }
  }
  return static_cast<host::ColorIndex>(best) + 1;
}

}  // namespace tolvane::shell
