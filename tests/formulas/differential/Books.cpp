#include "tests/formulas/differential/Books.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <utility>

#include "engine/formula/NumberText.h"
#include "engine/formula/Parser.h"
#include "engine/formula/ReferenceText.h"
#include "engine/xlsx/XmlText.h"
#include "tests/formulas/CaseFile.h"
#include "tests/formulas/differential/DataSheet.h"
#include "tests/formulas/differential/FormulaMaker.h"

namespace tolvane::formulacases {

using namespace engine;

namespace {

constexpr int kCaseRow = 99;  // where the cases stand when they run alone, for formulas that look around themselves
constexpr int kFirstCaseColumn = 27;

Value ValueOf(const std::string& content) {
  if (content.empty()) return {};
  if (content == "TRUE" || content == "FALSE") return Value(content == "TRUE");
  if (content.front() == '\'') return Value(std::string_view(content).substr(1));
  if (const auto number = NumberFromText(content)) return Value(*number);
  return Value(std::string_view(content));
}

// The cells of one group up to a case, and the cases that follow it.
class GroupWriter {
 public:
  GroupWriter(ComparedBook& into, int number) : into_(into), book_(*into.book), number_(number) {}

  // Cells that come behind cases change them, so the cases from there on get a fresh pair of sheets.
  void Write(const Group& group) {
    std::vector<const Line*> cells;
    bool hasCase = true;
    for (const Line& line : group.lines) {
      if (line.kind != Line::Kind::Case) {
        if (std::exchange(hasCase, false)) Rename();
        cells.push_back(&line);
        continue;
      }
      if (!hasCase || first_ == nullptr) {
        Begin(cells);
        hasCase = true;
      }
      AddCase(group, line);
    }
    Rename();
  }
  int number() const { return number_; }

 private:
  void Begin(const std::vector<const Line*>& cells) {
    Rename();
    first_ = &book_.AddSheet("Sheet1", book_.sheetCount());
    second_ = &book_.AddSheet("Sheet2", book_.sheetCount());
    column_ = kFirstCaseColumn;
    for (const Line* line : cells) {
      if (line->kind == Line::Kind::Name) {
        const ExpressionPtr refersTo = Parse(line->right, first_->id(), {1, 1});
        book_.SetName(first_->id(), {line->left, refersTo, false});
        continue;
      }
      const std::size_t mark = line->left.find('!');
      Sheet& sheet = mark == std::string::npos || line->left.substr(0, mark) == "Sheet1" ? *first_ : *second_;
      const std::size_t start = mark == std::string::npos ? 0 : mark + 1;
      const CellPos at = ScanReference(line->left, start, Notation::A1, {1, 1})->reference.At({1, 1})->topLeft();
      if (line->right.starts_with('=')) {
        sheet.SetFormula(at, Parse(line->right, sheet.id(), at));
      } else {
        sheet.SetValue(at, ValueOf(line->right));
      }
    }
  }

  void AddCase(const Group& group, const Line& line) {
    const CellPos at{kCaseRow, column_};
    try {
      const ExpressionPtr formula = Parse(line.left, first_->id(), at);
      if (line.isArray) {
        first_->SetArrayFormula(Rect::Cell(at), formula);
      } else {
        first_->SetFormula(at, formula);
      }
    } catch (const ParseError&) {
      ++into_.leftOut;
      return;
    }
    ++column_;
    const std::string text = line.isArray ? "{" + line.left + "}" : line.left;
    into_.cells.push_back(
        {first_->id(), "", at, text, group.file + ".txt:" + std::to_string(line.number) + "  " + text});
  }

  // Formulas name sheets by number, so they follow.
  void Rename() {
    if (first_ == nullptr) return;
    const std::string name = "Case" + std::to_string(number_++);
    for (ComparedCell& cell : into_.cells) {
      if (cell.sheet == first_->id()) cell.sheetName = name;
    }
    book_.RenameSheet(first_->id(), name);
    book_.RenameSheet(second_->id(), name + " second");
    first_ = second_ = nullptr;
  }

  ExpressionPtr Parse(const std::string& text, SheetId sheet, CellPos at) {
    return ParseFormula(text, Notation::A1, {sheet, at}, book_);
  }

  ComparedBook& into_;
  Workbook& book_;
  int number_;
  Sheet* first_ = nullptr;
  Sheet* second_ = nullptr;
  int column_ = kFirstCaseColumn;
};

// Where the number of the error of a cell stands.
constexpr const char* kErrorSheet = "Errors";
CellPos PlaceOfError(std::size_t cell) {
  constexpr std::size_t kRows = 1000;
  return {static_cast<int>(cell % kRows) + 1, static_cast<int>(cell / kRows) + 1};
}

}  // namespace

std::unique_ptr<Workbook> WithErrorNumbers(const ComparedBook& compared) {
  std::unique_ptr<Workbook> book = compared.book->Clone();
  Sheet& errors = book->AddSheet(kErrorSheet, book->sheetCount());
  for (std::size_t i = 0; i < compared.cells.size(); ++i) {
    const ComparedCell& cell = compared.cells[i];
    std::string text = "=_xlfn.ORG.OPENOFFICE.ERRORTYPE('" + cell.sheetName + "'!";
    xlsx::AppendColumn(text, cell.at.column);
    text += std::to_string(cell.at.row) + ")";
    const CellPos at = PlaceOfError(i);
    errors.SetFormula(at, ParseFormula(text, Notation::A1, {errors.id(), at}, *book));
  }
  return book;
}

CalcResult ResultOf(const Workbook& recalculated, const ComparedBook& compared, std::size_t cell) {
  // Calc's numbers of the errors that Excel has: #NULL!, #NUM!, #VALUE!, #REF!, #NAME?, #DIV/0!, #N/A.
  constexpr int kExcelErrors[] = {521, 503, 519, 524, 525, 532, 32767};
  const Sheet* sheet = recalculated.FindSheet(compared.cells[cell].sheetName);
  const Sheet* errors = recalculated.FindSheet(kErrorSheet);
  if (sheet == nullptr || errors == nullptr) throw std::runtime_error("Calc lost a sheet.");
  CalcResult result{sheet->ValueAt(compared.cells[cell].at), 0};
  const Value& number = errors->ValueAt(PlaceOfError(cell));
  if (!result.value.isError() || !number.isNumber()) return result;
  const int code = static_cast<int>(number.number());
  if (std::find(std::begin(kExcelErrors), std::end(kExcelErrors), code) == std::end(kExcelErrors)) result.error = code;
  return result;
}

ComparedBook WrittenCases() {
  ComparedBook written{std::make_unique<Workbook>(), {}, 0};
  int number = 1;
  for (const auto& path : CaseFiles()) {
    for (const Group& group : ReadCaseFile(path)) {
      GroupWriter writer(written, number);
      writer.Write(group);
      number = writer.number();
    }
  }
  return written;
}

ComparedBook MadeCases(int count, std::uint64_t seed) {
  constexpr int kRows = 45;  // beyond the data, so that some formulas stand beside it and some below it
  ComparedBook made{std::make_unique<Workbook>(), {}, 0};
  Workbook& book = *made.book;
  FillDataSheet(book.AddSheet("Data", 0), seed);
  Sheet& sheet = book.AddSheet("Made", 1);
  FormulaMaker maker(seed + 1);
  for (int i = 0; i < count; ++i) {
    const CellPos at{1 + i % kRows, 1 + i / kRows};
    const MadeFormula formula = maker.Next();
    const ExpressionPtr expression = ParseFormula(formula.text, Notation::A1, {sheet.id(), at}, book);
    if (formula.isArray) {
      sheet.SetArrayFormula(Rect::Cell(at), expression);
    } else {
      sheet.SetFormula(at, expression);
    }
    made.cells.push_back(
        {sheet.id(), sheet.name(), at, formula.kind, formula.isArray ? "{" + formula.text + "}" : formula.text});
  }
  return made;
}

}  // namespace tolvane::formulacases
