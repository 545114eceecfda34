// The part of CalcRange that reads and sets sizes and hidden states of rows and columns.
#include <cmath>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <string>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

namespace {

using Object = Reference<css::uno::XInterface>;

// Excel's column widths count digits of the default font: 7 pixels each and 5 for the margins, at 96 pixels an inch.
constexpr double kPixelsOfDigit = 7, kPixelsOfMargin = 5;
constexpr double kHundredthsOfPixel = 2540.0 / 96;
constexpr double kHundredthsOfPoint = 2540.0 / 72;
constexpr double kTwipsOfPoint = 20;

sal_Int32 WidthOf(double characters) {
  const double pixels = characters < 1 ? std::round(characters * (kPixelsOfDigit + kPixelsOfMargin))
                                       : std::round(characters * kPixelsOfDigit + kPixelsOfMargin);
  return static_cast<sal_Int32>(std::lround(pixels * kHundredthsOfPixel));
}

double CharactersOf(sal_Int32 width) {
  const double pixels = std::round(width / kHundredthsOfPixel);
  const double characters = pixels < kPixelsOfDigit + kPixelsOfMargin ? pixels / (kPixelsOfDigit + kPixelsOfMargin)
                                                                      : (pixels - kPixelsOfMargin) / kPixelsOfDigit;
  return std::round(characters * 100) / 100;
}

double PointsOf(sal_Int32 height) {
  return std::round(height / kHundredthsOfPoint * kTwipsOfPoint) / kTwipsOfPoint;
}

Object Bands(const CalcWorksheet& sheet, const Rect& area, bool rows) {
  const auto owner = As<css::table::XColumnRowRange>(sheet.Cells(area));
  return rows ? Object(owner->getRows()) : Object(owner->getColumns());
}

bool MayBeHidden(const CalcWorksheet& sheet, const Rect& area) {
  if (area.isWholeRows()) return true;
  if (area.isWholeColumns()) return false;
  Refuse("Only whole rows and whole columns can be hidden; " + sheet.PlaceOf(area) + " is neither.");
}

// What the rows or columns have in common. Calc has no call that gives stretches of alike ones, so they are looked at
// one by one, but no further than to where the used cells end: those beyond are as the one behind the last.
template <class T, class ReadOne>
bool Gather(const CalcWorksheet& sheet, const Rect& area, bool rows, const ReadOne& read, std::optional<T>& common) {
  const Reference<css::container::XIndexAccess> bands(Bands(sheet, area, rows), UNO_QUERY_THROW);
  const Rect used = sheet.UsedArea();
  const sal_Int32 count = bands->getCount();
  const int first = rows ? area.top : area.left;
  const int lastUsed = rows ? used.bottom : used.right;
  const sal_Int32 looked = std::min<sal_Int32>(count, std::max(lastUsed - first + 1, 0) + 64);
  for (sal_Int32 i = 0; i < looked; ++i) {
    const T value = read(Object(bands->getByIndex(i), UNO_QUERY));
    if (common && !(*common == value)) return false;
    common = value;
  }
  return true;
}

}  // namespace

std::optional<bool> CalcRange::Hidden() const {
  const Rects all = areas();
  return AtEdge([&]() -> std::optional<bool> {
    std::optional<bool> common;
    for (const Rect& area : all) {
      const bool rows = MayBeHidden(*sheet_, area);
      const auto read = [](const Object& band) { return !Get<bool>(band, "IsVisible", true); };
      if (!Gather(*sheet_, area, rows, read, common)) return std::nullopt;
    }
    return common;
  });
}

void CalcRange::SetHidden(bool hidden) {
  const Rects all = areas();
  for (const Rect& area : all) {
    if (MayBeHidden(*sheet_, area)) {
      RequireAllowed(*sheet_, &host::Protection::allowFormattingRows, "hiding or showing rows");
    } else {
      RequireAllowed(*sheet_, &host::Protection::allowFormattingColumns, "hiding or showing columns");
    }
  }
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    for (const Rect& area : all) Set(Bands(*sheet_, area, area.isWholeRows()), "IsVisible", !hidden);
  }
  program().BookEdited(book());
}

std::optional<double> CalcRange::ColumnWidth() const {
  const Rects all = areas();
  return AtEdge([&]() -> std::optional<double> {
    std::optional<double> common;
    for (const Rect& area : all) {
      const auto read = [](const Object& band) {
        return Get<bool>(band, "IsVisible", true) ? CharactersOf(Get<sal_Int32>(band, "Width")) : 0.0;
      };
      if (!Gather(*sheet_, area, false, read, common)) return std::nullopt;
    }
    return common;
  });
}

void CalcRange::SetColumnWidth(double characters) {
  constexpr double kWidest = 255;  // Excel's limit
  if (!(characters >= 0 && characters <= kWidest)) {
    Refuse("A column can be 0 to 255 characters wide, not " + std::to_string(characters) + ".");
  }
  const Rects all = areas();
  RequireAllowed(*sheet_, &host::Protection::allowFormattingColumns, "changing the width of columns");
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    for (const Rect& area : all) {
      const Object columns = Bands(*sheet_, area, false);
      Set(columns, "IsVisible", characters > 0);
      if (characters > 0) Set(columns, "Width", WidthOf(characters));
    }
  }
  program().BookEdited(book());
}

std::optional<double> CalcRange::RowHeight() const {
  const Rects all = areas();
  return AtEdge([&]() -> std::optional<double> {
    std::optional<double> common;
    for (const Rect& area : all) {
      const auto read = [](const Object& band) {
        return Get<bool>(band, "IsVisible", true) ? PointsOf(Get<sal_Int32>(band, "Height")) : 0.0;
      };
      if (!Gather(*sheet_, area, true, read, common)) return std::nullopt;
    }
    return common;
  });
}

void CalcRange::SetRowHeight(double points) {
  constexpr double kTallest = 409.5;  // Excel's limit
  if (!(points >= 0 && points <= kTallest)) {
    Refuse("A row can be 0 to 409.5 points tall, not " + std::to_string(points) + ".");
  }
  const Rects all = areas();
  RequireAllowed(*sheet_, &host::Protection::allowFormattingRows, "changing the height of rows");
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    for (const Rect& area : all) {
      const Object rows = Bands(*sheet_, area, true);
      Set(rows, "IsVisible", points > 0);
      if (points > 0) Set(rows, "Height", static_cast<sal_Int32>(std::lround(points * kHundredthsOfPoint)));
    }
  }
  program().BookEdited(book());
}

}  // namespace tolvane::libreoffice
