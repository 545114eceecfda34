#pragma once

#include <cstdint>

namespace tolvane::host {

// The colour behind a control: one of the system's, or a fixed one.
struct Colour {
  enum class Kind : std::uint8_t { Window, ButtonFace, Rgb };
  Kind kind = Kind::Window;
  std::uint32_t rgb = 0;  // 0xRRGGBB, for Kind::Rgb

  static constexpr Colour Window() { return {}; }
  static constexpr Colour ButtonFace() { return {Kind::ButtonFace, 0}; }
  static constexpr Colour Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return {Kind::Rgb, static_cast<std::uint32_t>(red) << 16 | static_cast<std::uint32_t>(green) << 8 | blue};
  }
  friend bool operator==(const Colour&, const Colour&) = default;
};

// Behind a box whose content cannot be taken as it stands.
inline constexpr Colour kInvalidMark = Colour::Rgb(255, 255, 0);

}  // namespace tolvane::host
