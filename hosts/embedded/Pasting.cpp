#include "hosts/embedded/Pasting.h"

#include <string>
#include <utility>

#include "engine/model/Workbook.h"
#include "hosts/embedded/CopiedCells.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::FormatId;
using engine::Rect;
using engine::Run;

namespace {

// Where a copy goes: an area whose sides are multiples of the copy's.
class Paster {
 public:
  Paster(const CopiedCells& copy, EmbeddedWorksheet& to, const Rect& area)
      : copy_(copy), sheet_(to.sheet()), area_(area) {}

  void PasteContents(bool withFormulas) {
    engine::CellStore& store = sheet_.cells();
    store.ClearContents(area_);
    ForEachTile([&](int top, int left) {
      for (const CopiedCells::Content& content : copy_.contents) {
        const CellPos at{top + content.row, left + content.column};
        if (!withFormulas || content.formula == nullptr) {
          store.SetValue(at, content.value);
        } else if (content.array) {
          sheet_.SetArrayFormula(Moved(*content.array, top, left), content.formula);
        } else {
          store.SetFormula(at, {content.formula, std::nullopt, true});
        }
      }
    });
    sheet_.book().TellCellsChanged(sheet_.id(), area_);
  }

  void PasteFormats() {
    std::erase_if(sheet_.merges, [&](const Rect& merge) { return merge.intersects(area_); });
    if (copy_.wholeRows || copy_.wholeColumns) {
      sheet_.cells().ChangeOwnFormats(area_, [](CellPos, FormatId) { return FormatId{0}; });
      PasteBands();
    }
    for (const CopiedCells::Block& block : copy_.formats) {
      ForEachPlace(block.place, [&](const Rect& place) {
        sheet_.ChangeFormat(place, [&](FormatId) {
          return block.format == engine::kPlainFormat ? engine::kDefaultFormat : block.format;
        });
      });
    }
    for (const Rect& merge : copy_.merges) {
      ForEachTile([&](int top, int left) { sheet_.merges.push_back(Moved(merge, top, left)); });
    }
  }

  void PasteValidation() {
    sheet_.RemoveValidation(area_);
    for (const CopiedCells::Rule& rule : copy_.validations) {
      engine::Validation pasted = rule.rule;
      pasted.ranges.clear();
      for (const Rect& from : rule.places) {
        ForEachPlace(from, [&](const Rect& place) { pasted.ranges.push_back(place); });
      }
      sheet_.validations.push_back(std::move(pasted));  // nothing else is there any more
    }
  }

  void PasteLinks() {
    sheet_.RemoveHyperlinks(area_);
    for (const CopiedCells::Link& link : copy_.links) {
      ForEachTile([&](int top, int left) {
        engine::Hyperlink pasted = link.link;
        pasted.range = Moved(link.place, top, left);
        sheet_.hyperlinks.push_back(std::move(pasted));
      });
    }
  }

 private:
  static Rect Moved(const Rect& place, int top, int left) {
    return {top + place.top, left + place.left, top + place.bottom, left + place.right};
  }

  template <class Visit>
  void ForEachTile(Visit&& visit) const {
    for (int top = area_.top; top <= area_.bottom; top += copy_.rows) {
      for (int left = area_.left; left <= area_.right; left += copy_.columns) visit(top, left);
    }
  }

  // The places of one part of the copy in all tiles. What fills the copy from edge to edge is one place across tiles.
  template <class Visit>
  void ForEachPlace(const Rect& part, Visit&& visit) const {
    const bool down = part.top == 0 && part.bottom == copy_.rows - 1;
    const bool across = part.left == 0 && part.right == copy_.columns - 1;
    for (int top = area_.top; top <= area_.bottom; top += down ? area_.rows() : copy_.rows) {
      for (int left = area_.left; left <= area_.right; left += across ? area_.columns() : copy_.columns) {
        Rect place = Moved(part, top, left);
        if (down) place.bottom = area_.bottom;
        if (across) place.right = area_.right;
        visit(place);
      }
    }
  }

  void PasteBands() {
    const bool rows = !copy_.wholeColumns;
    engine::BandTable& bands = rows ? sheet_.rows : sheet_.columns;
    const int first = rows ? area_.top : area_.left;
    const int last = rows ? area_.bottom : area_.right;
    const int size = rows ? copy_.rows : copy_.columns;
    const auto put = [&](int from, int to, const engine::Band& band) {
      bands.Change(from, to, [&](engine::Band& there) {
        there.size = band.size;
        there.format = band.format;
      });
    };
    if (copy_.bands.size() == 1) return put(first, last, copy_.bands.front().band);
    for (int at = first; at <= last; at += size) {
      for (const CopiedCells::Stretch& stretch : copy_.bands) {
        put(at + stretch.first, at + stretch.last, stretch.band);
      }
    }
  }

  const CopiedCells& copy_;
  engine::Sheet& sheet_;
  Rect area_;
};

// What is filled when `rows` by `columns` cells are pasted into an area.
Rect TargetOf(const Rect& area, int rows, int columns, const EmbeddedWorksheet& to) {
  Rect target = area;
  if (area.rows() % rows != 0 || area.columns() % columns != 0) {
    target.bottom = area.top + rows - 1;
    target.right = area.left + columns - 1;
  }
  if (!target.isValid()) {
    Refuse("What was copied (" + std::to_string(rows) + " rows, " + std::to_string(columns) +
           " columns) does not fit on the sheet from " + to.PlaceOf(Rect::Cell(area.topLeft())) + " on.");
  }
  return target;
}

// Formats are put on cells one by one; more than this would take gigabytes.
void RequirePasteable(const CopiedCells& copy, const std::vector<Rect>& targets) {
  constexpr std::int64_t kMostCells = 16'000'000;
  if (copy.wholeRows || copy.wholeColumns) return;
  for (const Rect& target : targets) {
    if (target.cells() > kMostCells) {
      Refuse("Formats cannot be pasted on " + std::to_string(target.cells()) + " cells at once.");
    }
  }
}

void PasteCut(Program& program, const Clipboard::Cells& cut, EmbeddedWorksheet& to, const Rect& area) {
  const Rect source{cut.rows.front().first, cut.columns.front().first, cut.rows.front().last(),
                    cut.columns.front().last()};
  if (!area.isCell() && (area.rows() != source.rows() || area.columns() != source.columns())) {
    Refuse("The cells " + to.PlaceOf(area) + " are not of the size of what was cut.");
  }
  const Rect target = TargetOf(Rect::Cell(area.topLeft()), source.rows(), source.columns(), to);
  const std::shared_ptr<EmbeddedWorksheet> from = cut.sheet;
  if (&from->book() == &to.book()) {
    from->MoveCells(source, to, target.topLeft());
    return;
  }
  // Into another workbook there is no moving: a copy, and the cells are cleared.
  RequireUnlocked(from->sheet(), {source});
  {
    const Program::KeepCopyMode keep(program);
    program.clipboard.Put(cut, host::CutCopyMode::Copy);
    PasteCells(program, to, {target}, host::PasteType::All);
  }
  program.clipboard.EndMode();
  if (from->IsAlive()) from->RangeOver(source).Clear();
}

}  // namespace

int TotalOf(const std::vector<Run>& runs) {
  int total = 0;
  for (const Run& run : runs) total += run.count;
  return total;
}

void PasteCells(Program& program, EmbeddedWorksheet& to, const std::vector<Rect>& areas, host::PasteType type) {
  const host::CutCopyMode mode = program.clipboard.mode();
  if (mode == host::CutCopyMode::None) Refuse("There are no copied cells to paste.");
  const Clipboard::Cells cells = program.clipboard.cells();
  if (mode == host::CutCopyMode::Cut) {
    if (type != host::PasteType::All) Refuse("What was cut can only be pasted as a whole.");
    if (areas.size() != 1) Refuse("What was cut cannot be pasted into several areas.");
    PasteCut(program, cells, to, areas.front());
    return;
  }
  const int rows = TotalOf(cells.rows);
  const int columns = TotalOf(cells.columns);
  std::vector<Rect> targets;
  for (const Rect& area : areas) targets.push_back(TargetOf(area, rows, columns, to));
  const bool all = type == host::PasteType::All;
  const bool contents = all || type == host::PasteType::Formulas || type == host::PasteType::Values;
  if (!contents && type != host::PasteType::Formats && type != host::PasteType::Validation) {
    Refuse("There is no way to paste with the number " + std::to_string(static_cast<int>(type)) + ".");
  }
  if (contents) {
    RequireUnlocked(to.sheet(), targets);
    for (const Rect& target : targets) {
      if (to.sheet().cells().CutsArray(target)) {
        Refuse("The cells " + to.PlaceOf(target) +
               " hold part of an array formula, which can only be changed as a whole.");
      }
    }
  } else {
    RequireAllowed(to.sheet(), &engine::SheetProtection::formatCells, "pasting formats or validation");
  }
  const CopiedCells copy = CopiedCells::Take(cells, to.book().book());
  if (all || type == host::PasteType::Formats) RequirePasteable(copy, targets);
  const Program::KeepCopyMode keep(program);
  for (const Rect& target : targets) {
    Paster paster(copy, to, target);
    if (all || type == host::PasteType::Formats) Refusing([&] { paster.PasteFormats(); });
    if (contents) paster.PasteContents(type != host::PasteType::Values);
    if (all || type == host::PasteType::Validation) paster.PasteValidation();
    if (all) paster.PasteLinks();
  }
  program.FormulasEntered(to, targets);
}

}  // namespace tolvane::embedded
