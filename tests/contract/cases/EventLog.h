#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/host/Application.h"
#include "src/host/Events.h"

namespace tolvane::contract {

// Listens for as long as it lives and writes a line for each event: "change Sheet1 $A$1", "open Book1".
class EventLog : public host::ApplicationEvents {
 public:
  explicit EventLog(const host::Application& application) : subscription_(application.Advise(*this)) {}

  std::vector<std::string> lines;
  // Called after the line has been written, with the line.
  std::function<void(const std::string& line)> then;
  // What is answered where an event can be cancelled.
  bool cancels = false;

  std::vector<std::string> Take() { return std::exchange(lines, {}); }
  // Those of one kind, by the first word.
  std::vector<std::string> Take(std::string_view kind) {
    std::vector<std::string> found;
    for (std::string& line : lines) {
      if (line.starts_with(std::string(kind) + " ")) found.push_back(std::move(line));
    }
    lines.clear();
    return found;
  }
  void End() { subscription_.End(); }

  void WorkbookOpen(const host::Workbook& book) override { Write("open " + book.Name()); }
  void WorkbookBeforeSave(const host::Workbook& book, bool saveAsUI, bool& cancel) override {
    Write("save " + book.Name() + (saveAsUI ? " as" : ""));
    cancel = cancel || cancels;
  }
  void AddinInstall(const host::Workbook& book) override { Write("install " + book.Name()); }
  void AddinUninstall(const host::Workbook& book) override { Write("uninstall " + book.Name()); }
  void WorkbookBeforeClose(const host::Workbook& book, bool& cancel) override {
    Write("close " + book.Name());
    cancel = cancel || cancels;
  }
  void WorkbookBeforePrint(const host::Workbook& book, bool& cancel) override {
    Write("print " + book.Name());
    cancel = cancel || cancels;
  }
  void WindowActivate(const host::Workbook& book, const host::Window&) override { Write("window " + book.Name()); }
  void SheetActivate(const host::Worksheet& sheet) override { Write("activate " + sheet.Name()); }
  void SheetCalculate(const host::Worksheet& sheet) override { Write("calculate " + sheet.Name()); }
  void SheetChange(const host::Worksheet& sheet, const host::Range& target) override {
    Write("change " + sheet.Name() + " " + target.Address());
  }
  void SheetSelectionChange(const host::Worksheet& sheet, const host::Range& target) override {
    Write("select " + sheet.Name() + " " + target.Address());
  }
  void SheetBeforeDoubleClick(const host::Worksheet& sheet, const host::Range& target, bool& cancel) override {
    Write("double " + sheet.Name() + " " + target.Address());
    cancel = cancel || cancels;
  }
  void SheetBeforeRightClick(const host::Worksheet& sheet, const host::Range& target, bool& cancel) override {
    Write("right " + sheet.Name() + " " + target.Address());
    cancel = cancel || cancels;
  }

 private:
  void Write(std::string line) {
    lines.push_back(line);
    if (then) then(line);
  }

  host::Subscription subscription_;
};

}  // namespace tolvane::contract
