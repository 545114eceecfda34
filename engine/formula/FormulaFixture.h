#pragma once

// For tests: a workbook that reads like a sheet.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "engine/formula/Calculator.h"
#include "engine/formula/NumberFormat.h"
#include "engine/formula/NumberText.h"
#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "engine/formula/ReferenceText.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

class FakeWorld : public CalculationWorld {
 public:
  double now = 45000.5;  // 15 March 2023, noon
  std::string bookName = "Book.xlsx";
  std::string folder = "C:\\Files\\";
  std::map<std::string, const Workbook*, std::less<>> books;

  double Now() const override { return now; }
  std::string BookName() const override { return bookName; }
  std::string BookFolder() const override { return folder; }
  const Workbook* FindBook(std::string_view fileName) const override {
    const auto found = books.find(fileName);
    return found == books.end() ? nullptr : found->second;
  }
};

// Cells are named "B7" or "Sheet2!B7"; what begins with "=" is a formula, what reads as a number is one.
class FormulaFixture : public testing::Test {
 protected:
  FormulaFixture() {
    while (book.sheetCount() > 1) book.DeleteSheet(book.sheetAt(book.sheetCount() - 1).id());
    if (book.sheetCount() == 0) book.AddSheet("Sheet1", 0);
    if (book.sheetAt(0).name() != "Sheet1") book.RenameSheet(book.sheetAt(0).id(), "Sheet1");
    book.AddSheet("Sheet2", 1);
  }

  static constexpr CellPos kA1{1, 1};

  struct Place {
    Sheet& sheet;
    Rect rect;
  };
  Place At(std::string_view address) {
    const std::size_t mark = address.find('!');
    Sheet* sheet = mark == std::string_view::npos ? &book.sheetAt(0) : book.FindSheet(address.substr(0, mark));
    const auto found = ScanReference(address, mark == std::string_view::npos ? 0 : mark + 1, Notation::A1, kA1);
    if (sheet == nullptr || !found) throw std::invalid_argument("no cell " + std::string(address));
    return {*sheet, *found->reference.At(kA1)};
  }

  ExpressionPtr Parse(std::string_view text, const Place& place) {
    return ParseFormula(text, Notation::A1, {place.sheet.id(), place.rect.topLeft()}, book);
  }

  static Value Read(std::string_view content) {
    if (content.empty()) return {};
    if (content == "TRUE" || content == "FALSE") return Value(content == "TRUE");
    if (content.front() == '\'') return Value(content.substr(1));
    if (const auto number = NumberFromText(content)) return Value(*number);
    return Value(content);
  }

  void Set(std::string_view address, std::string_view content) {
    const Place place = At(address);
    if (content.starts_with('=')) {
      place.sheet.SetFormula(place.rect.topLeft(), Parse(content, place));
    } else {
      place.sheet.SetValue(place.rect.topLeft(), Read(content));
    }
  }
  void Set(std::string_view address, double number) {
    const Place place = At(address);
    place.sheet.SetValue(place.rect.topLeft(), Value(number));
  }
  void SetArray(std::string_view area, std::string_view formula) {
    const Place place = At(area);
    place.sheet.SetArrayFormula(place.rect, Parse(formula, place));
  }
  void Name(std::string_view name, std::string_view refersTo) {
    book.SetName(kOwnSheet, {std::string(name), ParseFormula(refersTo, Notation::A1, {kOwnSheet, kA1}, book), false});
  }

  // After a calculation.
  const Value& ValueOf(std::string_view address) {
    calculator.Recalculate();
    return Stored(address);
  }
  const Value& Stored(std::string_view address) {
    const Place place = At(address);
    return place.sheet.ValueAt(place.rect.topLeft());
  }
  static std::string Show(const Value& value) {
    if (value.isNumber()) return NumberAsText(value.number());
    return FormatValue(value, "General");
  }
  std::string Text(std::string_view address) { return Show(ValueOf(address)); }
  double Number(std::string_view address) {
    const Value& value = ValueOf(address);
    EXPECT_TRUE(value.isNumber()) << address << " holds " << Show(value);
    return value.isNumber() ? value.number() : 0;
  }
  // A formula's result, worked out in Z99.
  std::string Result(std::string_view formula) {
    Set("Z99", formula);
    return Text("Z99");
  }

  Workbook book;
  FakeWorld world;
  Calculator calculator{book, world};
};

}  // namespace tolvane::engine
