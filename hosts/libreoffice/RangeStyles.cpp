// The part of CalcRange that reads and sets cell styles.
#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellStyles.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

namespace {

// A style brings the groups that it includes; of the others a cell keeps what it has, also what it had from the style
// before. Calc only knows styles that bring everything, under what was set on the cell itself.
void Apply(CalcWorkbook& book, const Reference<css::uno::XInterface>& cells, const OUString& style) {
  std::vector<std::pair<const char*, Any>> kept;
  for (const StyleGroup& group : StyleGroups()) {
    if (Includes(book, style, group)) continue;
    for (const char* property : group.properties) kept.emplace_back(property, GetAny(cells, property));
  }
  for (const StyleGroup& group : StyleGroups()) {
    for (const char* property : group.properties) SetDefault(cells, property);
  }
  Set(cells, "CellStyle", style);
  for (const auto& [property, value] : kept) {
    if (GetAny(cells, property) != value) SetAny(cells, property, value);
  }
}

}  // namespace

std::optional<std::string> CalcRange::Style() const {
  const Rects all = areas();
  return AtEdge([&]() -> std::optional<std::string> {
    std::optional<std::string> common;
    for (const Rect& area : all) {
      const auto name = Get<OUString>(sheet_->Cells(area), "CellStyle");
      if (name.isEmpty()) return std::nullopt;
      const std::string style = StyleNameOf(book(), name);
      if (common && *common != style) return std::nullopt;
      common = style;
    }
    return common;
  });
}

void CalcRange::SetStyle(std::string_view name) {
  const Rects all = areas();
  const auto style = FindStyle(book(), name);
  if (!style) Refuse("The workbook \"" + book().Name() + "\" has no style \"" + std::string(name) + "\".");
  RequireAllowed(*sheet_, &host::Protection::allowFormattingCells, "changing formats");
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    AtEdge([&] {
      for (const Rect& area : all) {
        for (const Look& look : LooksOf(*sheet_, area)) Apply(book(), look.cells, *style);
      }
    });
  }
  program().BookEdited(book());
}

}  // namespace tolvane::libreoffice
