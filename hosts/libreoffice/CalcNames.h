#pragma once

#include <com/sun/star/sheet/XNamedRange.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/libreoffice/CalcWorksheet.h"
#include "src/host/Names.h"

namespace tolvane::libreoffice {

// Whose names: the book's own, or those of one of its sheets.
struct CalcNameScope {
  std::shared_ptr<CalcWorkbook> book;
  std::shared_ptr<CalcWorksheet> sheet;  // null: the book's

  bool IsAlive() const noexcept { return book->IsAlive() && (sheet == nullptr || sheet->IsAlive()); }
  Reference<css::sheet::XNamedRanges> names() const;
  Reference<css::sheet::XNamedRange> Find(std::string_view name) const;  // ignoring case; null
  std::string SpellingOf(std::string_view name) const;                   // of one that is there
  std::set<std::string>& hidden() const;                                 // folded
};

class CalcNames final : public host::NamesBody {
 public:
  explicit CalcNames(CalcNameScope scope) : scope_(std::move(scope)) {}
  bool IsAlive() const noexcept override { return scope_.IsAlive(); }
  host::Gate& gate() const noexcept override { return scope_.book->gate(); }
  host::Name Item(std::string_view name) const override;
  std::vector<host::Name> All() const override;
  host::Name Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) override;

 private:
  CalcNameScope scope_;
};

class CalcName final : public host::NameBody {
 public:
  CalcName(CalcNameScope scope, std::string name) : scope_(std::move(scope)), name_(std::move(name)) {}
  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override { return scope_.book->gate(); }
  std::string NameText() const override;
  std::string RefersTo() const override { return Print(Dialect::ExcelA1); }
  void SetRefersTo(std::string_view formula) override { Put(formula, Dialect::ExcelA1); }
  std::string RefersToR1C1() const override { return Print(Dialect::ExcelR1C1); }
  void SetRefersToR1C1(std::string_view formula) override { Put(formula, Dialect::ExcelR1C1); }
  host::Range RefersToRange() const override;
  bool Visible() const override;
  void SetVisible(bool visible) override;
  void Delete() override;

 private:
  std::string Print(Dialect dialect) const;
  void Put(std::string_view formula, Dialect dialect);

  CalcNameScope scope_;
  std::string name_;
};

// Names of our own, in which a file carries what Calc cannot hold; nobody else sees them.
inline constexpr std::string_view kSheetKeepsake = "_Tolvane_Sheet";
inline constexpr std::string_view kBookKeepsake = "_Tolvane_Book";
bool IsKeepsake(std::string_view name);

// 1 to 255 characters: a letter or _, then letters, digits, _ and points; no cell address.
bool IsValidName(std::string_view name);

// What a name of the sheet, else of its book, stands for.
std::optional<FormulaTokens> TokensOfName(const CalcWorksheet& sheet, std::string_view name);

// The cells that a formula names and does nothing with. References without a sheet mean `home`.
struct NamedCells {
  std::shared_ptr<CalcWorksheet> sheet;
  Rects areas;
};
std::optional<NamedCells> CellsOf(const CalcWorksheet& home, const FormulaTokens& tokens);

}  // namespace tolvane::libreoffice
