#include "hosts/excel/ExcelHost.h"

#include "hosts/excel/EventSink.h"
#include "hosts/excel/ExcelApplication.h"
#include "hosts/excel/ExcelRange.h"
#include "hosts/excel/ExcelWorkbook.h"
#include "hosts/excel/ExcelWorksheet.h"
#include "hosts/excel/Session.h"

namespace tolvane::excel {

class ExcelHost::Impl {
 public:
  explicit Impl(ComPtr<IDispatch> application)
      : session(std::make_shared<Session>(std::move(application))), events(session) {}
  ~Impl() { session->End(); }

  const std::shared_ptr<Session> session;
  const EventConnection events;
};

ExcelHost::ExcelHost(ComPtr<IDispatch> application, ComPtr<IDispatch> thisWorkbook)
    : impl_(std::make_unique<Impl>(std::move(application))),
      application_(std::make_shared<ExcelApplication>(impl_->session, std::move(thisWorkbook))) {}

ExcelHost::~ExcelHost() = default;

IDispatch* ExcelHost::ObjectBehind(const host::Workbook& book) {
  return book.IsNothing() ? nullptr : static_cast<const ExcelWorkbook&>(*book.body()).dispatch();
}
IDispatch* ExcelHost::ObjectBehind(const host::Worksheet& sheet) {
  return sheet.IsNothing() ? nullptr : static_cast<const ExcelWorksheet&>(*sheet.body()).dispatch();
}
IDispatch* ExcelHost::ObjectBehind(const host::Range& range) {
  return range.IsNothing() ? nullptr : static_cast<const ExcelRange&>(*range.body()).dispatch();
}

}  // namespace tolvane::excel
