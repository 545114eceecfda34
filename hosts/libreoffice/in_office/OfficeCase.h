#pragma once

#include <gtest/gtest.h>

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/CalcHost.h"
#include "src/host/Events.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::libreoffice {

// Calc as a test finds it: a fresh host with its add-in, a folder of its own, and what happened, line by line. What the
// user of Calc does by hand goes through the office itself, past the host.
class OfficeUnderTest : private host::ApplicationEvents {
 public:
  explicit OfficeUnderTest(const Reference<css::uno::XComponentContext>& context);
  ~OfficeUnderTest() override;

  const Reference<css::uno::XComponentContext>& context() const { return context_; }
  host::Application application() { return host_.application(); }
  testing::ScriptedDesk& desk() { return desk_; }
  std::string PathFor(std::string_view name) const { return (folder_ / std::string(name)).string(); }
  std::string PutFile(std::string_view name, std::string_view bytes) const;
  // "open Book.xlsx", "activate Book.xlsx", "change Sheet1!$A$1"; taken away by asking.
  std::vector<std::string> TakeEvents();

  // By hand: "private:factory/scalc" or a path. The office then does all that waits to be done.
  Reference<css::frame::XModel> OpenByHand(std::string_view what, bool readOnly = false) const;
  void CloseByHand(const Reference<css::frame::XModel>& document) const;
  void StoreByHand(const Reference<css::frame::XModel>& document, std::string_view path, const char* filter) const;
  Reference<css::frame::XModel> ModelOf(const host::Workbook& book) const;

 private:
  void WorkbookOpen(const host::Workbook& book) override;
  void WindowActivate(const host::Workbook& book, const host::Window& window) override;
  void SheetChange(const host::Worksheet& sheet, const host::Range& target) override;

  Reference<css::uno::XComponentContext> context_;
  std::filesystem::path folder_;
  testing::ScriptedDesk desk_;
  CalcHost host_;
  host::Subscription subscription_;
  std::vector<std::string> events_;
};

struct OfficeCase {
  std::string suite;
  std::string name;
  std::function<void(OfficeUnderTest&)> run;
};

// The cases of each file of this folder.
std::vector<OfficeCase> ByHandCases();
std::vector<OfficeCase> BadInputCases();
std::vector<OfficeCase> CarriedCases();

// Whether `action` fails with a HostError of this number whose text holds `part`.
::testing::AssertionResult Fails(host::ErrorNumber number, std::string_view part, const std::function<void()>& action);

}  // namespace tolvane::libreoffice
