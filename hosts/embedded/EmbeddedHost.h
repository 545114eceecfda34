#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "engine/model/Workbook.h"
#include "hosts/shell/Session.h"
#include "src/host/Application.h"
#include "src/host/Ribbon.h"
#include "src/host/UserActions.h"

namespace tolvane::embedded {

// Reads and writes workbook files. Failures are HostErrors.
class BookFiles {
 public:
  virtual ~BookFiles() = default;
  struct Opened {
    std::unique_ptr<engine::Workbook> book;
    bool isTemplate = false;
    bool isAddin = false;
  };
  virtual Opened Open(const std::string& path) = 0;
  virtual void Save(const engine::Workbook& book, const std::string& path) = 0;
};

// A spreadsheet program without a window: the port over the workbook engine. Everything that it hands out dies with it.
class EmbeddedHost {
 public:
  using Options = shell::Session::Options;
  EmbeddedHost(shell::Desk& desk, BookFiles& files, Options options);
  EmbeddedHost(shell::Desk& desk, BookFiles& files) : EmbeddedHost(desk, files, Options{}) {}
  ~EmbeddedHost();
  EmbeddedHost(const EmbeddedHost&) = delete;
  EmbeddedHost& operator=(const EmbeddedHost&) = delete;

  host::Application application();
  host::UserActions& userActions();

  // A workbook in memory becomes an open one, as if it had been opened from `path` (empty: a new, unsaved one called
  // `name`). Raises the events of opening.
  host::Workbook Adopt(std::unique_ptr<engine::Workbook> book, std::string name, std::string path);
  // The add-in's own workbook, ThisWorkbook: open, never in front, left out of Workbooks.
  host::Workbook AdoptAddin(std::unique_ptr<engine::Workbook> book, std::string name, std::string path);
  const engine::Workbook& BookOf(const host::Workbook& book) const;

  // A macro of a workbook, for Run, OnKey, OnUndo and OnAction.
  void OfferMacro(const host::Workbook& book, std::string_view name, std::function<host::CellValue()> macro);
  // The ribbon of an add-in: its definition (customUI XML) and who answers its callbacks. Calls OnLoad.
  void LoadRibbon(std::string_view definition, host::RibbonCallbacks& callbacks);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tolvane::embedded
