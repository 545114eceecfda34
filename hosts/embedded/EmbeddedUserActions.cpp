#include "hosts/embedded/EmbeddedUserActions.h"

#include <algorithm>
#include <string>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Entering.h"
#include "hosts/embedded/FormatRuns.h"

namespace tolvane::embedded {

using engine::Rect;

namespace {

std::optional<std::string> LockedPlace(const EmbeddedWorksheet& sheet, const std::vector<Rect>& areas) {
  std::optional<std::string> place;
  for (const Rect& area : areas) {
    ForEachFormatRun(sheet.sheet(), area, [&](const Rect& run, engine::FormatId format) {
      if (!place && sheet.sheet().book().formats.At(format).format.protection.locked) place = sheet.PlaceOf(run);
    });
  }
  return place;
}

}  // namespace

// --- going somewhere
// ---------------------------------------------------------------------------------------------------------

void EmbeddedUserActions::ActivateSheet(const host::Worksheet& sheet) {
  BodyOf(sheet).Activate();
}

void EmbeddedUserActions::Select(const host::Range& range) {
  const EmbeddedRange& body = BodyOf(range);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  const std::vector<Rect> areas = body.areas();
  RequireSelectable(*sheet, [&] { return LockedPlace(*sheet, areas); });
  sheet->Activate();
  if (sheet->IsAlive()) sheet->Select(areas);
}

void EmbeddedUserActions::DoubleClick(const host::Range& cell) {
  const EmbeddedRange& body = BodyOf(cell);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  const host::Range target = sheet->RangeOver(Rect::Cell(body.first().topLeft()));
  Select(target);
  AskBeforeDoubleClick(host::Worksheet(sheet), target);
}

void EmbeddedUserActions::RightClick(const host::Range& cell) {
  const EmbeddedRange& body = BodyOf(cell);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  // Within the selection it stays, elsewhere the click selects.
  const std::vector<Rect>& selected = sheet->sheet().view.selection;
  const bool isSelected =
      sheet->IsInFront() && std::all_of(body.areas().begin(), body.areas().end(), [&](const Rect& a) {
        return std::any_of(selected.begin(), selected.end(), [&](const Rect& area) { return area.contains(a); });
      });
  if (!isSelected) Select(cell);
  if (!sheet->IsAlive()) return;
  const host::Range target = sheet->RangeOver(sheet->sheet().view.selection);
  // The program's own menu of cells holds nothing that a user of this host could not do otherwise; it is not shown.
  AskBeforeRightClick(host::Worksheet(sheet), target);
}

// --- changing cells
// ----------------------------------------------------------------------------------------------------------

void EmbeddedUserActions::Type(const host::Range& cell, std::string_view text, bool asText) {
  const EmbeddedRange& body = BodyOf(cell);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  EnterText(*sheet, body.first().topLeft(), text, asText);
}

void EmbeddedUserActions::PressDelete(const host::Range& range) {
  BodyOf(range).ClearContents();
}

// --- the rest
// ----------------------------------------------------------------------------------------------------------------

void EmbeddedUserActions::PutTextOnClipboard(std::string_view text) {
  program_.clipboard.PutText(std::string(text));
}

}  // namespace tolvane::embedded
