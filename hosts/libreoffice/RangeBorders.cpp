// The part of CalcRange that reads and sets borders. Neighbouring cells share the line between them: it is drawn where
// either of the two has it, and setting it on one takes it from the other.
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <string>
#include <vector>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/SheetGuard.h"
#include "hosts/shell/Palette.h"

namespace tolvane::libreoffice {

namespace {

constexpr sal_Int32 kAutomatic = -1;
constexpr sal_Int16 kThin = 26;  // 1/100 mm: the 0.75 points of a thin line

struct Line {
  bool drawn = false;
  sal_Int32 colour = kAutomatic;
  friend bool operator==(const Line&, const Line&) = default;
};

// One side of the lines in question: these cells have them in that property.
struct Side {
  Rect cells;
  const char* edge;
};
struct Lines {
  std::vector<Side> own, opposite;
};

constexpr const char* kLeft = "LeftBorder2";
constexpr const char* kRight = "RightBorder2";
constexpr const char* kTop = "TopBorder2";
constexpr const char* kBottom = "BottomBorder2";

void Add(std::vector<Side>& sides, const Rect& cells, const char* edge) {
  if (cells.isValid()) sides.push_back({cells, edge});
}

Lines LinesOf(const Rect& r, host::BorderIndex border) {
  Lines lines;
  switch (border) {
    case host::BorderIndex::EdgeLeft:
      Add(lines.own, {r.top, r.left, r.bottom, r.left}, kLeft);
      Add(lines.opposite, {r.top, r.left - 1, r.bottom, r.left - 1}, kRight);
      return lines;
    case host::BorderIndex::EdgeRight:
      Add(lines.own, {r.top, r.right, r.bottom, r.right}, kRight);
      Add(lines.opposite, {r.top, r.right + 1, r.bottom, r.right + 1}, kLeft);
      return lines;
    case host::BorderIndex::EdgeTop:
      Add(lines.own, {r.top, r.left, r.top, r.right}, kTop);
      Add(lines.opposite, {r.top - 1, r.left, r.top - 1, r.right}, kBottom);
      return lines;
    case host::BorderIndex::EdgeBottom:
      Add(lines.own, {r.bottom, r.left, r.bottom, r.right}, kBottom);
      Add(lines.opposite, {r.bottom + 1, r.left, r.bottom + 1, r.right}, kTop);
      return lines;
    case host::BorderIndex::InsideVertical:
      // Along whole rows every cell has a neighbour, as far as anybody looks.
      Add(lines.own, r.isWholeRows() ? r : Rect{r.top, r.left, r.bottom, r.right - 1}, kRight);
      Add(lines.opposite, r.isWholeRows() ? r : Rect{r.top, r.left + 1, r.bottom, r.right}, kLeft);
      return lines;
    case host::BorderIndex::InsideHorizontal:
      Add(lines.own, r.isWholeColumns() ? r : Rect{r.top, r.left, r.bottom - 1, r.right}, kBottom);
      Add(lines.opposite, r.isWholeColumns() ? r : Rect{r.top + 1, r.left, r.bottom, r.right}, kTop);
      return lines;
  }
  Refuse("There is no border with the number " + std::to_string(static_cast<int>(border)) + ".");
}

Line ToLine(const Any& any) {
  css::table::BorderLine2 line;
  any >>= line;
  if (line.OuterLineWidth == 0 && line.LineWidth == 0) return {};
  return {true, line.Color};
}

Any ToAny(const Line& line) {
  css::table::BorderLine2 result;
  result.LineStyle = line.drawn ? css::table::BorderLineStyle::SOLID : css::table::BorderLineStyle::NONE;
  result.LineWidth = line.drawn ? kThin : 0;
  result.OuterLineWidth = result.LineWidth;
  result.Color = line.colour;
  return Any(result);
}

// The line that all cells of one side share; nothing when they differ.
std::optional<Line> CommonLine(const CalcWorksheet& sheet, const Side& side, bool& differ) {
  const auto cells = sheet.Cells(side.cells);
  if (!MayDiffer(cells, side.edge)) return ToLine(GetAny(cells, side.edge));
  std::optional<Line> common;
  for (const Look& look : LooksOf(sheet, side.cells)) {
    const Line line = ToLine(GetAny(look.cells, side.edge));
    if (common && !(*common == line)) differ = true;
    common = line;
  }
  return common;
}

// What all lines of a border share: a line may stand on either side of it, but for all cells on the same one.
std::optional<Line> ReadLine(const CalcWorksheet& sheet, const Rects& areas, host::BorderIndex border) {
  std::optional<Line> common;
  for (const Rect& area : areas) {
    const Lines lines = LinesOf(area, border);
    Line line;
    for (const std::vector<Side>* sides : {&lines.own, &lines.opposite}) {
      if (line.drawn) break;
      for (const Side& side : *sides) {
        bool differ = false;
        const auto found = CommonLine(sheet, side, differ);
        if (differ) return std::nullopt;
        if (found) line = *found;
      }
    }
    if (common && !(*common == line)) return std::nullopt;
    common = line;
  }
  return common;
}

template <class Change>
void ChangeLines(const CalcWorksheet& sheet, const Side& side, const Change& change) {
  const auto one = [&](const Reference<css::uno::XInterface>& cells) {
    Line line = ToLine(GetAny(cells, side.edge));
    const Line before = line;
    change(line);
    if (!(line == before)) SetAny(cells, side.edge, ToAny(line));
  };
  const auto cells = sheet.Cells(side.cells);
  if (!MayDiffer(cells, side.edge)) return one(cells);
  for (const Look& look : LooksOf(sheet, side.cells)) one(look.cells);
}

// A line that only the neighbour has moves to this side first, so that a change finds it.
template <class Change>
void ChangeBorder(const CalcWorksheet& sheet, const Rects& areas, host::BorderIndex border, const Change& change) {
  RequireAllowed(sheet, &host::Protection::allowFormattingCells, "changing borders");
  const ProtectionLifted lifted(sheet);
  for (const Rect& area : areas) {
    const Lines lines = LinesOf(area, border);
    Line theirs;
    for (const Side& side : lines.opposite) {
      bool differ = false;
      if (const auto line = CommonLine(sheet, side, differ); line && !differ) theirs = *line;
      ChangeLines(sheet, side, [](Line& line) { line = {}; });
    }
    for (const Side& side : lines.own) {
      ChangeLines(sheet, side, [&](Line& line) {
        if (!line.drawn) line = theirs;
        change(line);
      });
    }
  }
}

}  // namespace

std::optional<host::LineStyle> CalcRange::BorderLineStyle(host::BorderIndex border) const {
  const Rects all = areas();
  const auto line = ReadLine(*sheet_, all, border);
  if (!line) return std::nullopt;
  return line->drawn ? host::LineStyle::Continuous : host::LineStyle::None;
}

void CalcRange::SetBorderLineStyle(host::BorderIndex border, host::LineStyle style) {
  if (style != host::LineStyle::None && style != host::LineStyle::Continuous) {
    Refuse("A border can be set to no line or a continuous one, not to the style " +
           std::to_string(static_cast<int>(style)) + ".");
  }
  const Rects all = areas();
  const CalcProgram::OwnEdit edit(program());
  ChangeBorder(*sheet_, all, border, [style](Line& line) {
    if (style == host::LineStyle::None) {
      line = {};
    } else {
      line.drawn = true;
    }
  });
  program().BookEdited(book());
}

std::optional<host::ColorIndex> CalcRange::BorderColorIndex(host::BorderIndex border) const {
  const Rects all = areas();
  const auto line = ReadLine(*sheet_, all, border);
  if (!line) return std::nullopt;
  if (!line->drawn) return host::kColorIndexNone;
  if (line->colour == kAutomatic) return host::kColorIndexAutomatic;
  return shell::NearestIndex(static_cast<std::uint32_t>(line->colour) & 0xFFFFFF);
}

void CalcRange::SetBorderColorIndex(host::BorderIndex border, host::ColorIndex index) {
  const auto colour = shell::ColourOf(index);
  const Rects all = areas();
  const CalcProgram::OwnEdit edit(program());
  ChangeBorder(*sheet_, all, border, [&](Line& line) {
    if (index == host::kColorIndexNone) {
      line = {};
      return;
    }
    line = {true, colour ? static_cast<sal_Int32>(*colour) : kAutomatic};
  });
  program().BookEdited(book());
}

}  // namespace tolvane::libreoffice
