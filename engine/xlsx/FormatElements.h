#pragma once

#include <pugixml.hpp>

#include <string>

#include "engine/model/Format.h"
#include "engine/xlsx/Colours.h"

namespace tolvane::engine::xlsx {

// The groups of a format as elements of the styles part. Writers change an element only in what the model tells, so
// that the rest of it stays.

Font ReadFont(const pugi::xml_node& font, const Colours& colours);
void WriteFont(pugi::xml_node font, const Font& from, const Font& to);

Fill ReadFill(const pugi::xml_node& fill, const Colours& colours);
void WriteFill(pugi::xml_node fill, const Fill& from, const Fill& to);

std::array<Line, 4> ReadBorder(const pugi::xml_node& border, const Colours& colours);
void WriteBorder(pugi::xml_node border, const std::array<Line, 4>& from, const std::array<Line, 4>& to);

// Of an xf element.
Alignment ReadAlignment(const pugi::xml_node& xf);
void WriteAlignment(pugi::xml_node xf, const Alignment& to);
CellProtection ReadProtection(const pugi::xml_node& xf);
void WriteProtection(pugi::xml_node xf, const CellProtection& to);

}  // namespace tolvane::engine::xlsx
