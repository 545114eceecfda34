#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "engine/model/Workbook.h"

namespace tolvane::xlsxtest {

// Makes workbooks with something of everything that the model holds; the same seed makes the same book.
class RandomBook {
 public:
  explicit RandomBook(std::uint32_t seed) : random_(seed) {}

  std::unique_ptr<engine::Workbook> Make();
  // Some changes of the kinds that people make: values, rows inserted and deleted, formats, names, sheets.
  void Change(engine::Workbook& book);

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }
  bool Chance(int percent) { return Below(100) < percent; }
  std::string AnyText();
  engine::Value AnyValue();
  engine::Rect AnyArea(int rows, int columns);
  engine::Format AnyFormat();
  engine::CellFormat AnyCellFormat(engine::FormatTable& formats);
  engine::ExpressionPtr AnyFormula(const engine::Sheet& sheet, engine::CellPos at);
  void FillSheet(engine::Sheet& sheet);
  void AddParts(engine::Sheet& sheet);
  void AddView(engine::Sheet& sheet);
  void AddFilter(engine::Sheet& sheet);
  void AddNames(engine::Workbook& book);

  std::mt19937 random_;
};

}  // namespace tolvane::xlsxtest
