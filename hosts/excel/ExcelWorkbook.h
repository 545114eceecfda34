#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Session.h"
#include "src/host/Workbook.h"

namespace tolvane::excel {

class ExcelWorkbook final : public host::WorkbookBody, public ObjectBody {
 public:
  ExcelWorkbook(std::shared_ptr<Session> session, Dispatch book, std::uint64_t key)
      : ObjectBody(std::move(session), std::move(book), "Name"), key_(key) {}

  bool IsAlive() const noexcept override { return Answers(); }
  host::Gate& gate() const noexcept override { return session().gate(); }

  std::uint64_t Key() const noexcept override { return key_; }
  std::string Name() const override;
  std::string Path() const override;
  std::string FullName() const override;
  bool Saved() const override;
  void SetSaved(bool saved) override;
  bool IsAddin() const override;
  void SetIsAddin(bool isAddin) override;
  bool ProtectStructure() const override;
  void SetProtectStructure(bool on) override;
  host::Names Names() const override;
  int WorksheetsCount() const override;
  host::Worksheet WorksheetAt(int index) const override;
  host::Worksheet WorksheetNamed(std::string_view name) const override;
  host::Worksheet WorksheetsAdd() override;
  host::Worksheet ActiveSheet() const override;
  std::vector<host::Window> Windows() const override;
  void Activate() override;
  void DefineStyle(const host::StyleDefinition& style) override;
  std::vector<std::string> StyleNames() const override;
  void Save() override;
  void SaveAs(std::string_view path) override;
  void Close(bool saveChanges) override;

 private:
  Dispatch Sheets() const;

  std::uint64_t key_;
};

}  // namespace tolvane::excel
