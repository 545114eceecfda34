#pragma once

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/CalcProgram.h"
#include "hosts/libreoffice/FormulaText.h"
#include "hosts/shell/Book.h"
#include "src/host/Workbook.h"

namespace tolvane::libreoffice {

class CalcWorkbook final : public shell::Book {
 public:
  CalcWorkbook(std::shared_ptr<CalcProgram> program, const Reference<css::frame::XModel>& model, std::string name,
               std::string path, bool isAddin);
  // Takes up what the file holds of ours, and the sheets.
  void Start();
  void Die();

  std::shared_ptr<CalcWorkbook> Self() const {
    return std::static_pointer_cast<CalcWorkbook>(std::const_pointer_cast<shell::Book>(shared_from_this()));
  }
  CalcProgram& program() const { return *program_; }
  const Reference<css::frame::XModel>& model() const { return model_; }
  Reference<css::frame::XController> controller() const;
  Reference<css::uno::XInterface> Create(const char* service) const;
  Reference<css::container::XIndexAccess> sheetAccess() const;
  Reference<css::sheet::XSpreadsheet> SheetObject(int index) const;  // from 0

  // In tab order; takes up sheets that came or went by another way.
  const std::vector<std::shared_ptr<CalcWorksheet>>& sheets();
  std::shared_ptr<CalcWorksheet> SheetNamed(std::string_view name);  // ignoring case; null
  std::shared_ptr<CalcWorksheet> activeSheet();
  void ActivateSheet(const std::shared_ptr<CalcWorksheet>& sheet);
  void RequireStructure(std::string_view what) const;
  // Throws for a book that the user opened for reading only.
  void RequireEditable() const;
  // Its file is not ours to write, since another user has it open.
  void SetReadOnlyFile() { readOnlyFile_ = true; }
  std::string FreeCodeName(std::string stem);
  int VisibleSheets();
  // The sheet in front is gone or hidden, or the user changed it.
  void SyncActiveSheet();
  void UserActivatedSheet();

  // --- what Calc cannot hold, carried in the file by names of ours; see README.md ------------------------------------
  std::set<std::string> hiddenNames;  // folded, of the book
  void WriteKeepsakes();
  void RemoveKeepsakes();
  // The user gave it another file.
  void TakeUpFile();

  // --- formulas
  // --------------------------------------------------------------------------------------------------------- Remembers
  // how unknown names were written.
  void Learn(const FormulaTokens& tokens);
  std::string SpellingOf(const std::string& lower) const;
  // "=..." in one of Excel's dialects to Calc's and back, both with "="; one that does not parse is ApplicationDefined.
  FormulaTokens Read(std::string_view formula, Dialect dialect, CellPos origin);
  FormulaTokens ReadCalc(std::string_view formula, CellPos origin) const;

  // --- Book
  // -------------------------------------------------------------------------------------------------------------
  shell::Session& session() const override { return *program_; }
  bool HasFile() const override { return !path_.empty(); }
  void RequireFilePath(const std::string& path) const override;
  void WriteFile(const std::string& path) override;
  bool DefinesName(std::string_view name) const override;

  // --- WorkbookBody
  // ---------------------------------------------------------------------------------------------------
  bool IsAlive() const noexcept override { return model_.is(); }
  host::Gate& gate() const noexcept override { return *program_->gate; }
  std::uint64_t Key() const noexcept override { return key_; }
  std::string Name() const override { return name_; }
  std::string Path() const override;
  std::string FullName() const override;
  bool Saved() const override;
  void SetSaved(bool saved) override;
  bool IsAddin() const override { return isAddin_; }
  void SetIsAddin(bool isAddin) override;
  bool ProtectStructure() const override { return protectStructure_; }
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

 private:
  void Sync();
  void ReadKeepsakes();
  void Place(FormulaToken& token);

  std::shared_ptr<CalcProgram> program_;
  Reference<css::frame::XModel> model_;
  std::uint64_t key_;
  std::string name_;
  std::string path_;  // of the file; empty while unsaved
  bool readOnlyFile_ = false;
  bool isAddin_;
  bool protectStructure_ = false;
  std::vector<std::shared_ptr<CalcWorksheet>> sheets_;
  std::shared_ptr<CalcWorksheet> active_;
  std::map<std::string, std::string> spelling_;
};

// The body of a book that a caller handed in; ObjectNotSet for Nothing, ObjectRequired for a dead one.
std::shared_ptr<CalcWorkbook> BodyOf(const host::Workbook& book);

}  // namespace tolvane::libreoffice
