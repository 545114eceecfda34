#pragma once

#include <memory>
#include <string>

#include "engine/model/Workbook.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "src/core/AddIn.h"
#include "testing/MemoryBookFiles.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::testing {

// A spreadsheet program with a scripted user, and an add-in at work in it that has not been started: its workbook is
// open and nothing more is known.
struct AddInWorld {
  ScriptedDesk desk;
  MemoryBookFiles files;
  std::unique_ptr<embedded::EmbeddedHost> host = std::make_unique<embedded::EmbeddedHost>(desk, files);
  accounts::AddIn addIn;
  accounts::AddInScope scope{addIn};

  AddInWorld() {
    addIn.globals.gxlApp = host->application();
    addIn.globals.gwkbAddin = host->AdoptAddin(OneSheet(), "Tolvane Accounts.xlam", "/addin/Tolvane Accounts.xlam");
    addIn.globals.gsAddinPath = "/addin/";
    addIn.globals.gbEventsEnabled = true;
  }

  host::Application app() { return addIn.globals.gxlApp; }

  // What stands in the error log; empty without one.
  std::string ErrorLog() const {
    return desk.FileExists("/addin/Error.log") ? desk.ReadFile("/addin/Error.log") : std::string();
  }

  static std::unique_ptr<engine::Workbook> OneSheet() {
    auto book = std::make_unique<engine::Workbook>();
    book->AddSheet("Sheet1", 0);
    return book;
  }
};

}  // namespace tolvane::testing
