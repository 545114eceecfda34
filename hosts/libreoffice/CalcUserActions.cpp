#include "hosts/libreoffice/CalcUserActions.h"

#include <algorithm>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <string>

#include "hosts/libreoffice/CalcNames.h"
#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWindow.h"
#include "hosts/libreoffice/CellReading.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/PastedText.h"
#include "hosts/libreoffice/SheetGuard.h"
#include "hosts/shell/CommandBars.h"
#include "platform/Text.h"
#include "src/host/CommandBars.h"

namespace tolvane::libreoffice {

namespace {

std::optional<std::string> LockedPlace(const CalcWorksheet& sheet, const Rects& areas) {
  std::optional<std::string> place;
  for (const Rect& area : areas) {
    ForEachFormatRun(sheet, area, [&](const Rect& run, const Reference<css::uno::XInterface>& cells) {
      if (!place && Get<css::util::CellProtection>(cells, "CellProtection").IsLocked) place = sheet.PlaceOf(run);
    });
  }
  return place;
}

void Dispatch(const CalcWorkbook& book, const char* command, Arguments arguments) {
  AtEdge([&] {
    const auto helper = css::frame::DispatchHelper::create(book.program().context());
    const Reference<css::frame::XDispatchProvider> frame(book.controller()->getFrame(), UNO_QUERY_THROW);
    helper->executeDispatch(frame, OUString::createFromAscii(command), OUString(), 0, ToSequence(arguments));
  });
}

// Calc's commands work on what its window shows; afterwards that is as it was.
class Showing {
 public:
  Showing(CalcWorksheet& sheet, const Rects& areas) : sheet_(sheet), front_(sheet.book().activeSheet()) {
    const CalcProgram::OwnEdit edit(sheet.program());
    if (front_.get() != &sheet) sheet.book().ActivateSheet(sheet.Self());
    ShowSelection(sheet, areas, {areas.front().top, areas.front().left});
  }
  ~Showing() {
    try {
      if (sheet_.IsAlive()) sheet_.RestoreSelection();
    } catch (const host::HostError&) {
      // The sheet went while it was shown.
    }
  }
  Showing(const Showing&) = delete;
  Showing& operator=(const Showing&) = delete;

 private:
  CalcWorksheet& sheet_;
  std::shared_ptr<CalcWorksheet> front_;
};

// The command that types does not look at the validation, unlike the line that a user types into.
void RequireListed(const CalcWorksheet& sheet, const Rect& at, std::string_view text, bool asText) {
  const auto rule = sheet.RangeOver({at}).Validation().Rule();
  if (!rule || !rule->showError || rule->alert != host::AlertStyle::Stop || text.empty()) return;
  const host::CellValue typed = asText ? host::CellValue(text) : Recognise(sheet.book(), text).value;
  const auto same = [&](const host::CellValue& entry) {
    if (entry.isText() && typed.isText()) return platform::EqualIgnoringCase(entry.text(), typed.text());
    return entry == typed;
  };
  bool listed = false;
  if (rule->source.starts_with('=')) {
    const auto cells = CellsOf(sheet, sheet.book().Read(rule->source, Dialect::ExcelA1, {at.top, at.left}));
    if (!cells) return;  // a source that means nothing lets everything through
    for (const Rect& area : cells->areas) {
      const host::CellBlock entries = ReadValues(*cells->sheet, area);
      listed = listed || std::any_of(entries.cells().begin(), entries.cells().end(), same);
    }
  } else {
    listed = ("," + rule->source + ",").find("," + std::string(text) + ",") != std::string::npos;
  }
  if (listed) return;
  Refuse(rule->errorMessage.empty() ? "The value is not in the list that the cell is restricted to."
                                    : rule->errorMessage);
}

}  // namespace

// --- going somewhere
// ---------------------------------------------------------------------------------------------------------

void CalcUserActions::ActivateSheet(const host::Worksheet& sheet) {
  BodyOf(sheet).Activate();
}

void CalcUserActions::Select(const host::Range& range) {
  const auto body = BodyOf(range);
  const Rects areas = body->areas();
  const auto sheet = body->sheet();
  RequireSelectable(*sheet, [&] { return LockedPlace(*sheet, areas); });
  sheet->Activate();
  if (sheet->IsAlive()) sheet->Select(areas);
}

void CalcUserActions::DoubleClick(const host::Range& cell) {
  const auto body = BodyOf(cell);
  const Rect area = body->first();
  const auto sheet = body->sheet();
  const host::Range target = sheet->RangeOver({{area.top, area.left, area.top, area.left}});
  Select(target);
  AskBeforeDoubleClick(host::Worksheet(sheet), target);
}

void CalcUserActions::RightClick(const host::Range& cell) {
  const auto body = BodyOf(cell);
  const Rects areas = body->areas();
  const auto sheet = body->sheet();
  // Within the selection it stays, elsewhere the click selects.
  const Rects selected = sheet->Selected();
  const bool isSelected =
      sheet->IsInFront() && std::all_of(areas.begin(), areas.end(), [&](const Rect& a) {
        return std::any_of(selected.begin(), selected.end(), [&](const Rect& area) { return area.contains(a); });
      });
  if (!isSelected) Select(cell);
  if (!sheet->IsAlive()) return;
  const host::Range target = sheet->RangeOver(sheet->Selected());
  if (AskBeforeRightClick(host::Worksheet(sheet), target)) return;
  host::CommandBars(commandBars_).Item("Cell").ShowPopup();
}

// --- changing cells
// ----------------------------------------------------------------------------------------------------------

void CalcUserActions::Type(const host::Range& cell, std::string_view text, bool asText) {
  const auto body = BodyOf(cell);
  const Rect first = body->first();
  const Rect at{first.top, first.left, first.top, first.left};
  const auto sheet = body->sheet();
  RequireUnlocked(*sheet, {at});
  if (!asText && text.size() > 1 && text.front() == '=') {
    sheet->book().Read(text, Dialect::ExcelA1, {at.top, at.left});
    body->sheet()->RangeOver({at}).SetFormula(host::CellValue(text));
    return;
  }
  RequireListed(*sheet, at, text, asText);
  const Showing showing(*sheet, {at});
  const std::string typed = (asText ? "'" : "") + std::string(text);
  Dispatch(sheet->book(), ".uno:EnterString", {{"StringName", Any(ToUno(typed))}});
}

void CalcUserActions::PressDelete(const host::Range& range) {
  const auto body = BodyOf(range);
  const Rects areas = body->areas();
  const auto sheet = body->sheet();
  RequireUnlocked(*sheet, areas);
  const Showing showing(*sheet, areas);
  Dispatch(sheet->book(), ".uno:ClearContents", {});
}

// --- the rest
// ----------------------------------------------------------------------------------------------------------------

void CalcUserActions::PutTextOnClipboard(std::string_view text) {
  program_.clipboard = {host::CutCopyMode::None, {}, std::string(text)};
}

}  // namespace tolvane::libreoffice
