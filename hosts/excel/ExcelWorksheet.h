#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Session.h"
#include "src/host/Worksheet.h"

namespace tolvane::excel {

// Its members stand in several files, by what they are about.
class ExcelWorksheet final : public host::WorksheetBody, public ObjectBody {
 public:
  ExcelWorksheet(std::shared_ptr<Session> session, Dispatch sheet, std::uint64_t key)
      : ObjectBody(std::move(session), std::move(sheet), "Name"), key_(key) {}

  bool IsAlive() const noexcept override { return Answers(); }
  host::Gate& gate() const noexcept override { return session().gate(); }

  std::uint64_t Key() const noexcept override { return key_; }
  std::string Name() const override;
  void SetName(std::string_view name) override;
  std::string CodeName() const override;
  void SetCodeName(std::string_view name) override;
  int Index() const override;
  host::Workbook Parent() const override;
  host::SheetVisibility Visible() const override;
  void SetVisible(host::SheetVisibility visibility) override;
  host::ColorIndex TabColorIndex() const override;
  void SetTabColorIndex(host::ColorIndex index) override;
  void Activate() override;
  void CopyBefore(const host::Worksheet& sheet) override;
  void CopyAfter(const host::Worksheet& sheet) override;
  void MoveBefore(const host::Worksheet& sheet) override;
  void MoveAfter(const host::Worksheet& sheet) override;
  void Delete() override;
  void Calculate() override;
  host::Range RangeOf(std::string_view nameOrAddress) const override;
  host::Range CellAt(int row, int column) const override;
  host::Range Cells() const override;
  host::Range RowAt(int row) const override;
  host::Range ColumnAt(int column) const override;
  int RowsCount() const override;
  int ColumnsCount() const override;
  host::Names Names() const override;
  bool ProtectContents() const override;
  host::Protection Protection() const override;
  void Protect(const host::Protection& allowed) override;
  void Unprotect() override;
  bool AutoFilterMode() const override;
  void RemoveAutoFilter() override;
  host::Range AutoFilterRange() const override;
  std::vector<host::FilterState> AutoFilterFilters() const override;
  host::SelectionMode EnableSelection() const override;
  void SetEnableSelection(host::SelectionMode mode) override;
  void PasteSpecialText() override;
  host::PageSetup PageSetup() const override;
  void SetPageSetup(const host::PageSetup& page) override;
  void DeleteRows(std::span<const host::RowRun> runs) override;
  void InsertRows(std::span<const host::RowRun> runs) override;

 private:
  Dispatch TabObject() const;
  Dispatch FilterObject() const;
  void RequireRuns(std::span<const host::RowRun> runs) const;

  std::uint64_t key_;
};

}  // namespace tolvane::excel
