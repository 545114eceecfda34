#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Session.h"
#include "src/host/Application.h"

namespace tolvane::excel {

class ExcelApplication final : public host::ApplicationBody {
 public:
  // `thisWorkbook` is the add-in's own, as the program hands it over when it loads the add-in.
  ExcelApplication(std::shared_ptr<Session> session, ComPtr<IDispatch> thisWorkbook)
      : session_(std::move(session)), thisWorkbook_(std::move(thisWorkbook)) {}

  bool IsAlive() const noexcept override { return !session_->hasEnded(); }
  host::Gate& gate() const noexcept override { return session_->gate(); }

  std::string Version() const override;
  std::string Caption() const override;
  std::string StatusBar() const override;
  void SetStatusBar(const std::optional<std::string>& text) override;
  bool ScreenUpdating() const override;
  void SetScreenUpdating(bool on) override;
  bool EnableEvents() const override;
  void SetEnableEvents(bool on) override;
  bool DisplayAlerts() const override;
  void SetDisplayAlerts(bool on) override;
  host::Cursor Cursor() const override;
  void SetCursor(host::Cursor cursor) override;
  host::CancelKey EnableCancelKey() const override;
  void SetEnableCancelKey(host::CancelKey mode) override;
  host::Calculation Calculation() const override;
  void SetCalculation(host::Calculation mode) override;
  host::ReferenceStyle ReferenceStyle() const override;
  void SetReferenceStyle(host::ReferenceStyle style) override;
  host::CutCopyMode CutCopyMode() const override;
  void EndCutCopyMode() override;
  std::vector<host::Workbook> WorkbooksAll() const override;
  host::Workbook WorkbookNamed(std::string_view name) const override;
  host::Workbook WorkbooksOpen(std::string_view path) override;
  host::Workbook WorkbooksAdd(const std::optional<std::string>& templatePath) override;
  host::Workbook ActiveWorkbook() const override;
  host::Worksheet ActiveSheet() const override;
  host::Range ActiveCell() const override;
  host::Window ActiveWindow() const override;
  host::Workbook ThisWorkbook() const override;
  bool SelectionIsRange() const override;
  host::Range SelectionRange() const override;
  void SelectionCopy() override;
  void SelectionCut() override;
  host::Range Intersect(std::span<const host::Range> ranges) const override;
  host::Range Union(std::span<const host::Range> ranges) const override;
  host::CommandBars CommandBars() const override;
  void OnKey(std::string_view key, const std::optional<std::string>& macro) override;
  void SendKeys(std::string_view keys) override;
  host::CellValue Run(std::string_view macro) override;
  void OnUndo(std::string_view caption, std::string_view macro) override;
  void OnRepeat(std::string_view caption, std::string_view macro) override;
  host::Subscription Advise(host::ApplicationEvents& listener) override;
  host::User User() const override;

 private:
  const Dispatch& object() const noexcept { return session_->application(); }
  Dispatch Books() const;
  Dispatch SelectionObject() const;
  host::Range Joined(const char* member, std::vector<Variant> ranges) const;

  std::shared_ptr<Session> session_;
  ComPtr<IDispatch> thisWorkbook_;
};

}  // namespace tolvane::excel
