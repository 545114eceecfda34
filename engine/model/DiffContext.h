#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/model/Diff.h"
#include "engine/model/Expression.h"
#include "engine/model/Format.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

// What the comparing of two workbooks knows and gathers.
class DiffContext {
 public:
  DiffContext(const Workbook& left, const Workbook& right, const DiffOptions& options);

  const Workbook& left() const { return left_; }
  const Workbook& right() const { return right_; }
  const DiffOptions& options() const { return options_; }
  // Sheets of the left and the right workbook that are taken for the same one: by name, else by code name.
  const std::vector<std::pair<const Sheet*, const Sheet*>>& pairs() const { return pairs_; }

  bool isFull() const { return found_.size() >= options_.most; }
  void Report(std::string where, std::string what, std::string leftText, std::string rightText);
  std::vector<Difference> Take() { return std::move(found_); }

  // Whether two formulas in the same place mean and print the same.
  bool SameFormula(const ExpressionPtr& a, const ExpressionPtr& b, CellPos home) const;
  bool SameSheet(SheetId leftId, SheetId rightId) const;

  // Whether two cell formats look the same and follow styles of the same name.
  bool SameFormats(FormatId leftFormat, FormatId rightFormat);
  // Reports in what two formats differ, property by property.
  void CompareFormats(const std::string& where, FormatId leftFormat, FormatId rightFormat);

 private:
  bool SameReference(const Reference& a, const Reference& b, CellPos home) const;
  bool SameNode(const Expression& a, const Node& nodeA, const Expression& b, const Node& nodeB, CellPos home) const;

  const Workbook& left_;
  const Workbook& right_;
  const DiffOptions& options_;
  std::vector<std::pair<const Sheet*, const Sheet*>> pairs_;
  std::unordered_map<SheetId, SheetId> rightOf_;  // by left sheet
  std::unordered_map<std::uint64_t, bool> sameFormats_;
  std::vector<Difference> found_;
};

// Everything on a pair of sheets but their cells and bands.
void CompareParts(DiffContext& context, const Sheet& left, const Sheet& right);
// Cells, rows and columns.
void CompareCells(DiffContext& context, const Sheet& left, const Sheet& right);
// Reports how two formats differ, property by property.
void CompareFormat(DiffContext& context, const std::string& where, const Format& left, const Format& right);

inline std::string TextOf(bool flag) {
  return flag ? "yes" : "no";
}

}  // namespace tolvane::engine
