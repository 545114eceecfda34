#include "hosts/excel/ExcelApplication.h"

#include <algorithm>
#include <iterator>

#include "hosts/excel/Failure.h"
#include "hosts/excel/Optional.h"
#include "src/host/Errors.h"

namespace tolvane::excel {

// --- state
// -----------------------------------------------------------------------------------------------------------------

std::string ExcelApplication::Version() const {
  return object().Get("Version").AsText();
}
std::string ExcelApplication::Caption() const {
  return object().Get("Caption").AsText();
}
// False while the program has the bar, and to give it back.
std::string ExcelApplication::StatusBar() const {
  const Variant text = object().Get("StatusBar");
  return text.IsText() ? text.AsText() : std::string();
}
void ExcelApplication::SetStatusBar(const std::optional<std::string>& text) {
  object().Put("StatusBar", text ? Variant(*text) : Variant(false));
}
bool ExcelApplication::ScreenUpdating() const {
  return object().Get("ScreenUpdating").AsBool();
}
void ExcelApplication::SetScreenUpdating(bool on) {
  object().Put("ScreenUpdating", on);
}
bool ExcelApplication::EnableEvents() const {
  return object().Get("EnableEvents").AsBool();
}
void ExcelApplication::SetEnableEvents(bool on) {
  object().Put("EnableEvents", on);
}
bool ExcelApplication::DisplayAlerts() const {
  return object().Get("DisplayAlerts").AsBool();
}
void ExcelApplication::SetDisplayAlerts(bool on) {
  object().Put("DisplayAlerts", on);
}
host::Cursor ExcelApplication::Cursor() const {
  return static_cast<host::Cursor>(object().Get("Cursor").AsInt());
}
void ExcelApplication::SetCursor(host::Cursor cursor) {
  object().Put("Cursor", ConstantOf(cursor));
}
host::CancelKey ExcelApplication::EnableCancelKey() const {
  return static_cast<host::CancelKey>(object().Get("EnableCancelKey").AsInt());
}
void ExcelApplication::SetEnableCancelKey(host::CancelKey mode) {
  object().Put("EnableCancelKey", ConstantOf(mode));
}
host::Calculation ExcelApplication::Calculation() const {
  return static_cast<host::Calculation>(object().Get("Calculation").AsInt());
}
void ExcelApplication::SetCalculation(host::Calculation mode) {
  object().Put("Calculation", ConstantOf(mode));
}
host::ReferenceStyle ExcelApplication::ReferenceStyle() const {
  return static_cast<host::ReferenceStyle>(object().Get("ReferenceStyle").AsInt());
}
void ExcelApplication::SetReferenceStyle(host::ReferenceStyle style) {
  object().Put("ReferenceStyle", ConstantOf(style));
}
host::CutCopyMode ExcelApplication::CutCopyMode() const {
  return static_cast<host::CutCopyMode>(object().Get("CutCopyMode").AsInt());
}
void ExcelApplication::EndCutCopyMode() {
  object().Put("CutCopyMode", false);
}

// --- what is open and in front
// ---------------------------------------------------------------------------------------------

Dispatch ExcelApplication::Books() const {
  return session_->ObjectOf("Workbooks", object().Get("Workbooks"));
}

std::vector<host::Workbook> ExcelApplication::WorkbooksAll() const {
  std::vector<host::Workbook> all;
  Books().ForEach([&](ComPtr<IDispatch> book) { all.push_back(session_->WorkbookOf(std::move(book))); });
  return all;
}
host::Workbook ExcelApplication::WorkbookNamed(std::string_view name) const {
  return session_->WorkbookOf(Books().Get("Item", name));
}
host::Workbook ExcelApplication::WorkbooksOpen(std::string_view path) {
  return session_->WorkbookOf(Books().Get("Open", path));
}
host::Workbook ExcelApplication::WorkbooksAdd(const std::optional<std::string>& templatePath) {
  return session_->WorkbookOf(Books().Get("Add", templatePath ? Variant(*templatePath) : Variant::Missing()));
}
host::Workbook ExcelApplication::ActiveWorkbook() const {
  return session_->WorkbookOf(object().Get("ActiveWorkbook"));
}
host::Worksheet ExcelApplication::ActiveSheet() const {
  return session_->WorksheetOf(object().Get("ActiveSheet"));
}
host::Range ExcelApplication::ActiveCell() const {
  return session_->RangeOf(object().Get("ActiveCell"));
}
host::Window ExcelApplication::ActiveWindow() const {
  return session_->WindowOf(object().Get("ActiveWindow"));
}
// The program's own ThisWorkbook is whichever book holds the code that runs, and none holds ours.
host::Workbook ExcelApplication::ThisWorkbook() const {
  return session_->WorkbookOf(thisWorkbook_);
}

// Whatever is selected: cells, a drawing, a chart. Only cells have entire rows.
Dispatch ExcelApplication::SelectionObject() const {
  MemberIds unknownClass;
  const ComPtr<IDispatch> selected = object().Get("Selection").AsObject();
  if (!selected || !Dispatch(selected, unknownClass).Has("EntireRow")) return {};
  return session_->ObjectOf("Range", selected);
}
bool ExcelApplication::SelectionIsRange() const {
  return static_cast<bool>(SelectionObject());
}
host::Range ExcelApplication::SelectionRange() const {
  return session_->RangeOf(ComPtr<IDispatch>(SelectionObject().get()));
}
void ExcelApplication::SelectionCopy() {
  SelectionObject().Call("Copy");
}
void ExcelApplication::SelectionCut() {
  SelectionObject().Call("Cut");
}

// --- doing
// -----------------------------------------------------------------------------------------------------------------

// Intersect and Union take 2 to 30 ranges.
host::Range ExcelApplication::Joined(const char* member, std::vector<Variant> ranges) const {
  constexpr std::size_t kMost = 30;
  while (ranges.size() > 1) {
    std::vector<Variant> joined;
    for (std::size_t from = 0; from < ranges.size(); from += kMost) {
      const std::size_t count = std::min(kMost, ranges.size() - from);
      const auto begin = ranges.begin() + static_cast<std::ptrdiff_t>(from);
      std::vector<Variant> some(std::make_move_iterator(begin),
                                std::make_move_iterator(begin + static_cast<std::ptrdiff_t>(count)));
      joined.push_back(count == 1 ? some.front() : object().CallWith(member, std::move(some)));
      if (!joined.back().AsObject()) return {};
    }
    ranges = std::move(joined);
  }
  return ranges.empty() ? host::Range() : session_->RangeOf(ranges.front());
}

host::Range ExcelApplication::Intersect(std::span<const host::Range> ranges) const {
  std::vector<Variant> arguments;
  for (const host::Range& range : ranges) {
    arguments.push_back(ArgumentOf(range));
    // The program refuses ranges of different sheets; they have no cell in common.
    if (range.body()->Parent() != ranges.front().body()->Parent()) return {};
  }
  return Joined("Intersect", std::move(arguments));
}

host::Range ExcelApplication::Union(std::span<const host::Range> ranges) const {
  std::vector<Variant> arguments;
  for (const host::Range& range : ranges) {
    if (!range.IsNothing()) arguments.push_back(ArgumentOf(range));
  }
  return Joined("Union", std::move(arguments));
}

host::CommandBars ExcelApplication::CommandBars() const {
  ThrowNotYet("Application.CommandBars");
}

void ExcelApplication::OnKey(std::string_view key, const std::optional<std::string>& macro) {
  object().Call("OnKey", key, macro ? Variant(*macro) : Variant::Missing());
}
void ExcelApplication::SendKeys(std::string_view keys) {
  object().Call("SendKeys", keys);
}
host::CellValue ExcelApplication::Run(std::string_view macro) {
  return object().Get("Run", macro).AsCell();
}
void ExcelApplication::OnUndo(std::string_view caption, std::string_view macro) {
  object().Call("OnUndo", caption, macro);
}
void ExcelApplication::OnRepeat(std::string_view caption, std::string_view macro) {
  object().Call("OnRepeat", caption, macro);
}

host::Subscription ExcelApplication::Advise(host::ApplicationEvents& listener) {
  return session_->events().Advise(listener);
}

host::User ExcelApplication::User() const {
  ThrowNotYet("Application.User");
}

}  // namespace tolvane::excel
