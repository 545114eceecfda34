// The part of EmbeddedRange that reads and sets borders. Neighbouring cells share the line between them: it is drawn
// where either of the two has it, and setting it on one takes it from the other.
#include <string>
#include <utility>
#include <vector>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/FormatRuns.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/StyleConversion.h"
#include "hosts/shell/Palette.h"

namespace tolvane::embedded {

using engine::Edge;
using engine::FormatId;
using engine::Line;
using engine::Rect;

namespace {

// One side of the lines in question: these cells have them at that edge.
struct Side {
  Rect cells;
  Edge edge;
};

// The lines of a border: on the inner side, and as their neighbours have them.
struct Lines {
  std::vector<Side> own;
  std::vector<Side> opposite;
};

void Add(std::vector<Side>& sides, const Rect& cells, Edge edge) {
  if (cells.isValid()) sides.push_back({cells, edge});
}

Lines LinesOf(const Rect& r, host::BorderIndex border) {
  Lines lines;
  switch (border) {
    case host::BorderIndex::EdgeLeft:
      Add(lines.own, {r.top, r.left, r.bottom, r.left}, Edge::Left);
      Add(lines.opposite, {r.top, r.left - 1, r.bottom, r.left - 1}, Edge::Right);
      return lines;
    case host::BorderIndex::EdgeRight:
      Add(lines.own, {r.top, r.right, r.bottom, r.right}, Edge::Right);
      Add(lines.opposite, {r.top, r.right + 1, r.bottom, r.right + 1}, Edge::Left);
      return lines;
    case host::BorderIndex::EdgeTop:
      Add(lines.own, {r.top, r.left, r.top, r.right}, Edge::Top);
      Add(lines.opposite, {r.top - 1, r.left, r.top - 1, r.right}, Edge::Bottom);
      return lines;
    case host::BorderIndex::EdgeBottom:
      Add(lines.own, {r.bottom, r.left, r.bottom, r.right}, Edge::Bottom);
      Add(lines.opposite, {r.bottom + 1, r.left, r.bottom + 1, r.right}, Edge::Top);
      return lines;
    case host::BorderIndex::InsideVertical:
      // Along whole rows every cell has a neighbour, as far as anybody looks.
      Add(lines.own, r.isWholeRows() ? r : Rect{r.top, r.left, r.bottom, r.right - 1}, Edge::Right);
      Add(lines.opposite, r.isWholeRows() ? r : Rect{r.top, r.left + 1, r.bottom, r.right}, Edge::Left);
      return lines;
    case host::BorderIndex::InsideHorizontal:
      Add(lines.own, r.isWholeColumns() ? r : Rect{r.top, r.left, r.bottom - 1, r.right}, Edge::Bottom);
      Add(lines.opposite, r.isWholeColumns() ? r : Rect{r.top + 1, r.left, r.bottom, r.right}, Edge::Top);
      return lines;
  }
  Refuse("There is no border with the number " + std::to_string(static_cast<int>(border)) + ".");
}

// The line that all cells of one side share; nothing when they differ.
std::optional<Line> CommonLine(const engine::Sheet& sheet, const Side& side, bool& differ) {
  std::optional<Line> common;
  ForEachFormatRun(sheet, side.cells, [&](const Rect&, FormatId id) {
    const Line& line = sheet.book().formats.At(id).format.border[static_cast<std::size_t>(side.edge)];
    if (common && !(*common == line)) differ = true;
    common = line;
  });
  return common;
}

// What all lines of a border share: a line may stand on either side of it, but for all cells on the same one.
std::optional<Line> ReadLine(const engine::Sheet& sheet, const std::vector<Rect>& areas, host::BorderIndex border) {
  std::optional<Line> common;
  for (const Rect& area : areas) {
    const Lines lines = LinesOf(area, border);
    Line line;
    for (const std::vector<Side>* sides : {&lines.own, &lines.opposite}) {
      if (line.style != engine::LineStyle::None) break;
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
void ChangeLines(engine::Sheet& sheet, const Side& side, Change&& change) {
  engine::FormatTable& formats = sheet.book().formats;
  const auto edge = static_cast<std::size_t>(side.edge);
  Refusing([&] {
    sheet.ChangeFormat(side.cells, [&](FormatId from) {
      Line changed = formats.At(from).format.border[edge];
      change(changed);
      if (changed == formats.At(from).format.border[edge]) return from;
      return formats.With(from, engine::FormatGroup::Border, [&](engine::Format& f) { f.border[edge] = changed; });
    });
  });
}

// A line that only the neighbour has moves to this side first, so that a change finds it.
template <class Change>
void ChangeBorder(engine::Sheet& sheet, const std::vector<Rect>& areas, host::BorderIndex border, Change&& change) {
  RequireAllowed(sheet, &engine::SheetProtection::formatCells, "changing borders");
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
        if (line.style == engine::LineStyle::None) line = theirs;
        change(line);
      });
    }
  }
}

}  // namespace

std::optional<host::LineStyle> EmbeddedRange::BorderLineStyle(host::BorderIndex border) const {
  const auto line = ReadLine(cells(), areas(), border);
  if (!line) return std::nullopt;
  return ToHost(line->style);
}

void EmbeddedRange::SetBorderLineStyle(host::BorderIndex border, host::LineStyle style) {
  if (style != host::LineStyle::None && style != host::LineStyle::Continuous) {
    Refuse("A border can be set to no line or a continuous one, not to the style " +
           std::to_string(static_cast<int>(style)) + ".");
  }
  ChangeBorder(cells(), areas(), border, [style](Line& line) {
    if (style == host::LineStyle::None) {
      line = {};
    } else if (ToHost(line.style) != host::LineStyle::Continuous) {
      line.style = engine::LineStyle::Thin;
    }
  });
  program().BookEdited(sheet_->book());
}

std::optional<host::ColorIndex> EmbeddedRange::BorderColorIndex(host::BorderIndex border) const {
  const auto line = ReadLine(cells(), areas(), border);
  if (!line) return std::nullopt;
  if (line->style == engine::LineStyle::None) return host::kColorIndexNone;
  return line->colour ? shell::NearestIndex(*line->colour) : host::kColorIndexAutomatic;
}

void EmbeddedRange::SetBorderColorIndex(host::BorderIndex border, host::ColorIndex index) {
  const engine::Colour colour = shell::ColourOf(index);
  ChangeBorder(cells(), areas(), border, [&](Line& line) {
    if (index == host::kColorIndexNone) {
      line = {};
      return;
    }
    if (line.style == engine::LineStyle::None) line.style = engine::LineStyle::Thin;
    line.colour = colour;
  });
  program().BookEdited(sheet_->book());
}

}  // namespace tolvane::embedded
