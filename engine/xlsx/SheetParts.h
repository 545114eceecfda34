#pragma once

#include <string_view>

namespace tolvane::engine::xlsx {

// The place of a worksheet's child in the order that the format asks for; -1 for one that it does not know, which stays
// behind what it stood behind.
int RankOf(std::string_view element);
inline constexpr int kSheetDataRank = 5;

// How many pages a sheet can be asked to fit on, across or down.
inline constexpr int kMostPages = 32767;

// Column widths: the model counts characters, the file adds the margins of a cell, both in the pixels of the default
// font. This is that of Calibri 11; other fonts give widths that are a little off, both ways alike.
double CharactersOf(double fileWidth);
double FileWidthOf(double characters);

// What a row or a column says beyond the model, in Band::kept.
enum BandFlag : unsigned {
  kCollapsed = 1,
  kPhonetic = 2,
  kThickTop = 4,
  kThickBottom = 8,
  kBestFit = 16,
};
// The size that a program gave a row or column to fit its contents stands there too, above the flags: while it still
// has that size, it is not one that the user set.
inline constexpr unsigned kFlagBits = 8;
unsigned FittedRow(double points);
unsigned FittedColumn(double characters);

}  // namespace tolvane::engine::xlsx
