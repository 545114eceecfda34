#include "hosts/excel/Session.h"

#include <utility>

#include "hosts/excel/ExcelNames.h"
#include "hosts/excel/ExcelRange.h"
#include "hosts/excel/ExcelWindow.h"
#include "hosts/excel/ExcelWorkbook.h"
#include "hosts/excel/ExcelWorksheet.h"
#include "hosts/excel/Failure.h"
#include "src/host/Errors.h"

namespace tolvane::excel {

Session::Session(ComPtr<IDispatch> application) : application_(ObjectOf("Application", std::move(application))) {}

void Session::End() {
  ended_ = true;
  events_.End();
  known_.clear();
  application_ = Dispatch();
}

void Session::RaiseKeptInterrupt() {
  if (std::exchange(interrupted_, false)) {
    throw host::HostError(host::ErrorNumber::UserInterrupt, host::kUserInterruptText);
  }
}

Dispatch Session::ObjectOf(std::string_view className, ComPtr<IDispatch> object) {
  auto ids = ids_.find(className);
  if (ids == ids_.end()) ids = ids_.emplace(className, MemberIds()).first;
  return Dispatch(std::move(object), ids->second);
}

std::uint64_t Session::KeyOf(IDispatch& object) {
  ComPtr<IUnknown> identity;
  const HRESULT result = object.QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity.receive()));
  if (FAILED(result)) {
    EXCEPINFO none = {};
    ThrowFailure(result, none, "IUnknown");
  }
  const auto [known, isNew] = known_.try_emplace(identity.get(), Known{identity, nextKey_});
  if (isNew) ++nextKey_;
  return known->second.key;
}

host::Workbook Session::WorkbookOf(ComPtr<IDispatch> book) {
  if (!book) return {};
  const std::uint64_t key = KeyOf(*book.get());
  return host::Workbook(
      std::make_shared<ExcelWorkbook>(shared_from_this(), ObjectOf("Workbook", std::move(book)), key));
}

host::Worksheet Session::WorksheetOf(ComPtr<IDispatch> sheet) {
  if (!sheet) return {};
  const std::uint64_t key = KeyOf(*sheet.get());
  return host::Worksheet(
      std::make_shared<ExcelWorksheet>(shared_from_this(), ObjectOf("Worksheet", std::move(sheet)), key));
}

host::Range Session::RangeOf(ComPtr<IDispatch> range) {
  if (!range) return {};
  return host::Range(std::make_shared<ExcelRange>(shared_from_this(), ObjectOf("Range", std::move(range))));
}

host::Window Session::WindowOf(ComPtr<IDispatch> window) {
  if (!window) return {};
  return host::Window(std::make_shared<ExcelWindow>(shared_from_this(), ObjectOf("Window", std::move(window))));
}

host::Name Session::NameOf(ComPtr<IDispatch> name) {
  if (!name) return {};
  return host::Name(std::make_shared<ExcelName>(shared_from_this(), ObjectOf("Name", std::move(name))));
}

bool ObjectBody::Answers() const noexcept {
  if (session_->hasEnded()) return false;
  try {
    object_.Get(probe_);
    return true;
  } catch (const host::HostError& error) {
    // Whatever else the program says, there is an object that says it.
    if (error.number() == host::ErrorNumber::UserInterrupt) session_->KeepInterrupt();
    return error.number() != host::ErrorNumber::ObjectRequired;
  }
}

Variant ArgumentOf(const host::Range& range) {
  if (range.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return Variant(static_cast<const ExcelRange&>(*range.body()).dispatch());
}

Variant ArgumentOf(const host::Worksheet& sheet) {
  if (sheet.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return Variant(static_cast<const ExcelWorksheet&>(*sheet.body()).dispatch());
}

Variant ArgumentOf(const host::Workbook& book) {
  if (book.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return Variant(static_cast<const ExcelWorkbook&>(*book.body()).dispatch());
}

}  // namespace tolvane::excel
