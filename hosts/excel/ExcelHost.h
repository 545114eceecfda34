#pragma once

#include <memory>

#include "hosts/excel/Com.h"
#include "src/host/Application.h"

namespace tolvane::excel {

// A running Excel as a host: the port over late-bound calls of its object model. Belongs to the thread that Excel runs
// the add-in on.
class ExcelHost {
 public:
  // `application` is Excel's Application object, `thisWorkbook` the add-in's own workbook; both are what the loader of
  // the add-in hands over.
  ExcelHost(ComPtr<IDispatch> application, ComPtr<IDispatch> thisWorkbook);
  // Lets go of everything of Excel's; handles that were given out are dead then.
  ~ExcelHost();
  ExcelHost(const ExcelHost&) = delete;
  ExcelHost& operator=(const ExcelHost&) = delete;

  host::Application application() const { return application_; }
  // The program's object behind a handle of this host; null for Nothing.
  static IDispatch* ObjectBehind(const host::Workbook& book);
  static IDispatch* ObjectBehind(const host::Worksheet& sheet);
  static IDispatch* ObjectBehind(const host::Range& range);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
  host::Application application_;
};

}  // namespace tolvane::excel
