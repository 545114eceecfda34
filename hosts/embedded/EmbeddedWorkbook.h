#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formula/Calculator.h"
#include "engine/model/Workbook.h"
#include "hosts/embedded/Program.h"
#include "hosts/shell/Book.h"
#include "src/host/Window.h"
#include "src/host/Workbook.h"

namespace tolvane::embedded {

class EmbeddedWorksheet;

class EmbeddedWorkbook final : public shell::Book, public engine::CalculationWorld {
 public:
  // `path`: the file, empty while there is none.
  EmbeddedWorkbook(std::shared_ptr<Program> program, std::unique_ptr<engine::Workbook> book, std::string name,
                   std::string path, bool isAddin);
  ~EmbeddedWorkbook() override;
  // Makes the bodies of the sheets; called once, when a shared pointer holds this.
  void MakeSheets();
  // The book is closed: it and all that belongs to it is dead.
  void Die();

  std::shared_ptr<EmbeddedWorkbook> Self() const {
    return std::static_pointer_cast<EmbeddedWorkbook>(std::const_pointer_cast<shell::Book>(shared_from_this()));
  }
  Program& program() const { return *program_; }
  engine::Workbook& book() const { return *book_; }
  engine::Calculator& calculator() const { return *calculator_; }
  std::shared_ptr<EmbeddedWorksheet> SheetOf(engine::SheetId id) const { return sheets_.at(id); }
  std::shared_ptr<EmbeddedWorksheet> activeSheet() const { return sheets_.at(activeSheet_); }
  // A formula as it is read in this book, where other open books are known by their names. Throws engine::ParseError.
  engine::ExpressionPtr Parse(std::string_view text, engine::Notation notation, const engine::FormulaHome& home) const;
  // Brings a sheet to the front of its book; SheetActivate where the book is in front.
  void ActivateSheet(EmbeddedWorksheet& sheet);
  // Takes up a sheet that the engine has just made.
  std::shared_ptr<EmbeddedWorksheet> TakeUp(engine::Sheet& sheet);
  // Another sheet comes to the front where this one was.
  void DeleteSheet(EmbeddedWorksheet& sheet);
  // The same before a sheet is hidden.
  void LeaveSheet(EmbeddedWorksheet& sheet);
  void RequireUnprotectedStructure(std::string_view what) const;
  int VisibleSheets() const;
  void MarkUnsaved() { saved_ = false; }

  // --- CalculationWorld
  // -------------------------------------------------------------------------------------------------
  double Now() const override;
  std::string BookName() const override { return name_; }
  std::string BookFolder() const override { return folder_; }
  const engine::Workbook* FindBook(std::string_view fileName) const override;

  // --- WorkbookBody
  // -----------------------------------------------------------------------------------------------------
  bool IsAlive() const noexcept override { return book_ != nullptr; }
  host::Gate& gate() const noexcept override { return *program_->gate; }
  std::uint64_t Key() const noexcept override { return key_; }
  std::string Name() const override { return name_; }
  std::string Path() const override;
  std::string FullName() const override { return folder_ + name_; }
  bool Saved() const override { return saved_; }
  void SetSaved(bool saved) override { saved_ = saved; }
  bool IsAddin() const override { return isAddin_; }
  void SetIsAddin(bool isAddin) override;
  bool ProtectStructure() const override { return book_->structureProtected; }
  void SetProtectStructure(bool on) override;
  host::Names Names() const override;
  int WorksheetsCount() const override { return static_cast<int>(book_->sheetCount()); }
  host::Worksheet WorksheetAt(int index) const override;
  host::Worksheet WorksheetNamed(std::string_view name) const override;
  host::Worksheet WorksheetsAdd() override;
  host::Worksheet ActiveSheet() const override;
  std::vector<host::Window> Windows() const override;
  void Activate() override;
  void DefineStyle(const host::StyleDefinition& style) override;
  std::vector<std::string> StyleNames() const override;

  // --- Book
  // -------------------------------------------------------------------------------------------------------------
  shell::Session& session() const override { return *program_; }
  bool HasFile() const override { return !folder_.empty(); }
  void RequireFilePath(const std::string& path) const override;
  void WriteFile(const std::string& path) override;
  bool DefinesName(std::string_view name) const override { return book_->names.Find(name) != nullptr; }

 private:
  void SetPath(const std::string& path);
  // The sheet that is in front when this one has gone.
  engine::SheetId FrontWithout(engine::SheetId leaving) const;

  std::shared_ptr<Program> program_;
  std::uint64_t key_;
  std::string name_;
  std::string folder_;  // with its separator; empty while there is no file
  bool saved_ = true;
  bool isAddin_ = false;
  std::unique_ptr<engine::Workbook> book_;
  std::unique_ptr<engine::Calculator> calculator_;
  std::map<engine::SheetId, std::shared_ptr<EmbeddedWorksheet>> sheets_;
  engine::SheetId activeSheet_ = 0;
};

}  // namespace tolvane::embedded
