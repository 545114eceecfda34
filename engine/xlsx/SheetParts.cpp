#include "engine/xlsx/SheetParts.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tolvane::engine::xlsx {

namespace {

constexpr std::array<std::string_view, 38> kOrder = {"sheetPr",
                                                     "dimension",
                                                     "sheetViews",
                                                     "sheetFormatPr",
                                                     "cols",
                                                     "sheetData",
                                                     "sheetCalcPr",
                                                     "sheetProtection",
                                                     "protectedRanges",
                                                     "scenarios",
                                                     "autoFilter",
                                                     "sortState",
                                                     "dataConsolidate",
                                                     "customSheetViews",
                                                     "mergeCells",
                                                     "phoneticPr",
                                                     "conditionalFormatting",
                                                     "dataValidations",
                                                     "hyperlinks",
                                                     "printOptions",
                                                     "pageMargins",
                                                     "pageSetup",
                                                     "headerFooter",
                                                     "rowBreaks",
                                                     "colBreaks",
                                                     "customProperties",
                                                     "cellWatches",
                                                     "ignoredErrors",
                                                     "smartTags",
                                                     "drawing",
                                                     "legacyDrawing",
                                                     "legacyDrawingHF",
                                                     "drawingHF",
                                                     "picture",
                                                     "oleObjects",
                                                     "controls",
                                                     "webPublishItems",
                                                     "tableParts"};

constexpr double kDigitPixels = 7;
constexpr double kMarginPixels = 5;
constexpr double kNarrowPixels = kDigitPixels + kMarginPixels;  // of the first character

double Hundredths(double number) {
  return std::floor(number * 100 + 0.5) / 100;
}

}  // namespace

unsigned FittedRow(double points) {
  return static_cast<unsigned>(std::lround(points * 20) + 1) << kFlagBits;
}
unsigned FittedColumn(double characters) {
  return static_cast<unsigned>(std::lround(characters * 100) + 1) << kFlagBits;
}

int RankOf(std::string_view element) {
  if (element == "extLst") return static_cast<int>(kOrder.size());
  const auto found = std::find(kOrder.begin(), kOrder.end(), element);
  return found == kOrder.end() ? -1 : static_cast<int>(found - kOrder.begin());
}

double CharactersOf(double fileWidth) {
  const double pixels = std::floor(fileWidth * kDigitPixels + 0.5);
  return Hundredths(pixels < kNarrowPixels ? pixels / kNarrowPixels : (pixels - kMarginPixels) / kDigitPixels);
}

double FileWidthOf(double characters) {
  const double pixels =
      std::floor((characters < 1 ? characters * kNarrowPixels : characters * kDigitPixels + kMarginPixels) + 0.5);
  return std::floor(pixels / kDigitPixels * 256) / 256;
}

}  // namespace tolvane::engine::xlsx
