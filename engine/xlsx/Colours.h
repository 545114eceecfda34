#pragma once

#include <pugixml.hpp>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/model/Format.h"
#include "engine/xlsx/Limits.h"

namespace tolvane::engine::xlsx {

// The colours that a file names by number: those of its theme and its palette.
class Colours {
 public:
  Colours();
  // A theme that cannot be read leaves the usual colours. Throws XlsxError.
  void ReadTheme(std::string_view xml, Budget& budget);
  void ReadPalette(const pugi::xml_node& colorsElement);  // <colors> of the styles part

  // What a colour element says (rgb, theme with tint, indexed, auto); none for the automatic colour.
  Colour Of(const pugi::xml_node& element) const;

 private:
  std::array<std::uint32_t, 12> theme_;
  std::vector<std::uint32_t> palette_;
};

// Lighter for a tint above 0, darker below; between -1 and 1.
std::uint32_t WithTint(std::uint32_t rgb, double tint);

// Sets an element to a colour; nothing removes what it said.
void SetColour(pugi::xml_node element, Colour colour);

}  // namespace tolvane::engine::xlsx
