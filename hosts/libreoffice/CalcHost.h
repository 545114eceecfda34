#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/libreoffice/CalcProgram.h"
#include "hosts/shell/Desk.h"
#include "src/host/Application.h"
#include "src/host/Ribbon.h"
#include "src/host/UserActions.h"

namespace tolvane::libreoffice {

// LibreOffice Calc as a spreadsheet program of the port, from inside the office's own process. Everything that it hands
// out dies with it. To be used on the office's main thread only.
class CalcHost {
 public:
  CalcHost(const Reference<css::uno::XComponentContext>& context, shell::Desk& desk, CalcProgram::Options options);
  ~CalcHost();
  CalcHost(const CalcHost&) = delete;
  CalcHost& operator=(const CalcHost&) = delete;

  host::Application application();
  host::UserActions& userActions();
  // The add-in's own workbook, ThisWorkbook: open, without a window, left out of Workbooks.
  host::Workbook AdoptAddin(std::string name);
  // A macro of a workbook, for Run, OnKey, OnUndo and OnAction.
  void OfferMacro(const host::Workbook& book, std::string_view name, std::function<host::CellValue()> macro);
  void LoadRibbon(std::string_view definition, host::RibbonCallbacks& callbacks);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tolvane::libreoffice
