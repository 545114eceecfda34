// What lies on the cells, under structural changes, compared with a slow model of the grid.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engine/model/Diff.h"
#include "engine/model/ExpressionBuilder.h"
#include "engine/model/TokenGrid.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

using test::AnyArea;
using test::AnyStep;
using test::Hull;
using test::kUsed;
using test::Runs;
using test::Step;
using test::Token;
using test::TokenGrid;

// Areas that keep clear of each other.
std::vector<Rect> AnyDisjointAreas() {
  std::vector<Rect> areas;
  for (int i = 0; i < 6; ++i) {
    const Rect area = AnyArea(kUsed);
    const bool isClear =
        std::none_of(areas.begin(), areas.end(), [&](const Rect& other) { return other.intersects(area); });
    if (isClear && !area.isCell()) areas.push_back(area);
  }
  return areas;
}

Validation RuleOn(const Rect& area, std::size_t number) {
  Validation rule;
  rule.ranges = {area};
  rule.kind = Validation::Kind::List;
  rule.errorTitle = std::to_string(number);
  return rule;
}

TEST(PartsProperty, AreasFollowWholeRowsAndColumns) {
  EXPECT_TRUE(rc::check([] {
    Workbook book;
    Sheet& sheet = book.AddSheet("Data", 0);
    TokenGrid grid;
    std::vector<std::optional<Rect>> areas;
    std::vector<std::optional<Rect>> merges;
    for (const Rect& area : AnyDisjointAreas()) {
      sheet.merges.push_back(area);
      sheet.printAreas.push_back(area);
      sheet.hyperlinks.push_back({area, "", std::to_string(areas.size()), ""});
      sheet.AddValidation(RuleOn(area, areas.size()));
      areas.emplace_back(area);
      merges.emplace_back(area);
    }
    for (int i = *rc::gen::inRange(1, 6); i > 0; --i) {
      const Step step = AnyStep(true);
      const TokenGrid before = grid;
      test::Apply(step, grid);
      test::Apply(step, book, sheet.id());
      const auto places = grid.Places();
      std::vector<Rect> left;
      for (auto& area : areas) {
        if (area) area = Hull(before.In(*area), places);
        if (area) left.push_back(*area);
      }
      RC_ASSERT(sheet.printAreas == left);
      RC_ASSERT(sheet.hyperlinks.size() == left.size());
      RC_ASSERT(sheet.validations.size() == left.size());
      for (std::size_t j = 0; j < left.size(); ++j) {
        RC_ASSERT(sheet.hyperlinks[j].range == left[j]);
        RC_ASSERT(sheet.validations[j].ranges == std::vector<Rect>{left[j]});
        RC_ASSERT(sheet.validations[j].errorTitle == sheet.hyperlinks[j].subAddress);
      }
      // A merge that has come down to one cell is gone for good.
      std::vector<Rect> leftMerges;
      for (auto& merge : merges) {
        if (merge) merge = Hull(before.In(*merge), places);
        if (merge && merge->isCell()) merge.reset();
        if (merge) leftMerges.push_back(*merge);
      }
      RC_ASSERT(sheet.merges == leftMerges);
    }
  }));
}

TEST(PartsProperty, RulesAndFormatsStayWithTheirCells) {
  EXPECT_TRUE(rc::check([] {
    Workbook book;
    Sheet& sheet = book.AddSheet("Data", 0);
    TokenGrid grid;
    std::map<Token, std::string> rules;
    std::map<Token, FormatId> formats;
    std::size_t number = 0;
    for (const Rect& area : AnyDisjointAreas()) {
      sheet.AddValidation(RuleOn(area, ++number));
      const FormatId format = book.formats.With(kDefaultFormat, FormatGroup::Font,
                                                [&](Format& f) { f.font.size = 20 + static_cast<double>(number); });
      sheet.ChangeFormat(area, [&](FormatId) { return format; });
      for (const Token token : grid.In(area)) {
        rules[token] = std::to_string(number);
        formats[token] = format;
      }
    }
    const auto old = grid.Places();
    for (int i = *rc::gen::inRange(1, 6); i > 0; --i) {
      const Step step = AnyStep(false);
      test::Apply(step, grid);
      test::Apply(step, book, sheet.id());
      for (const auto& [token, at] : grid.Places()) {
        // Of cells that have come in between, others tell.
        if (!old.contains(token) || at.row > 2 * kUsed || at.column > 2 * kUsed) continue;
        const Validation* rule = sheet.ValidationAt(at);
        RC_ASSERT((rule == nullptr ? std::string() : rule->errorTitle) == rules[token]);
        RC_ASSERT(sheet.FormatAt(at) == formats[token]);
      }
    }
  }));
}

// A book with contents, references, formats and parts.
void FillAnyhow(Workbook& book) {
  Sheet& data = book.AddSheet("Data", 0);
  Sheet& other = book.AddSheet("Other", 1);
  for (int i = 0; i < 12; ++i) {
    const CellPos at{*rc::gen::inRange(1, kUsed), *rc::gen::inRange(1, kUsed)};
    const Rect area = AnyArea(kUsed);
    Reference reference;
    reference.shape = Reference::Shape::Area;
    reference.sheet = data.id();
    reference.firstRow = {area.top, false};
    reference.lastRow = {area.bottom - at.row, true};
    reference.firstColumn = {area.left - at.column, true};
    reference.lastColumn = {area.right, false};
    (i % 2 == 0 ? data : other).SetFormula(at, test::SumOf({reference}));
    data.SetValue({i + 1, 20}, i);
    data.rows.Change(at.row, at.row, [&](Band& band) { band.size = 30 + i; });
    data.ChangeFormat(area, [&](FormatId from) {
      return book.formats.With(from, FormatGroup::Font, [&](Format& f) { f.font.size = 20 + i; });
    });
  }
  std::size_t number = 0;
  for (const Rect& area : AnyDisjointAreas()) {
    data.merges.push_back(area);
    data.AddValidation(RuleOn(area, ++number));
  }
}

TEST(PartsProperty, DeletingWhatWasInsertedUndoesIt) {
  EXPECT_TRUE(rc::check([] {
    Workbook book;
    FillAnyhow(book);
    const auto before = book.Clone();
    const SheetId data = book.FindSheet("Data")->id();
    const Step step = AnyStep(true);
    book.InsertRuns(data, step.axis, step.runs, *rc::gen::arbitrary<bool>());
    book.DeleteRuns(data, step.axis, step.runs);
    const auto found = Diff(*before, book);
    RC_LOG() << (found.empty() ? std::string() : found[0].where + " " + found[0].what);
    RC_ASSERT(found.empty());
  }));
}

TEST(PartsProperty, InsertingWhatWasDeletedPutsTheOtherCellsBack) {
  EXPECT_TRUE(rc::check([] {
    Workbook book;
    FillAnyhow(book);
    Sheet& data = *book.FindSheet("Data");
    const Step step = AnyStep(true);
    for (const auto& run : step.runs) {
      data.cells().Clear(step.axis == Axis::Rows ? Rect::Rows(run.first, run.last())
                                                 : Rect::Columns(run.first, run.last()));
    }
    const auto before = book.Clone();
    book.DeleteRuns(data.id(), step.axis, step.runs);
    book.InsertRuns(data.id(), step.axis, step.runs, true);
    const auto cellsOf = [](const Sheet& sheet) {
      std::vector<std::string> cells;
      sheet.cells().ForEachCell(
          Rect::WholeSheet(), [&](CellPos at, const Value& value, const FormulaCell* formula, FormatId format) {
            cells.push_back(std::to_string(at.row) + "," + std::to_string(at.column) + " " + DebugText(value) +
                            (formula == nullptr ? "" : " formula") + " " + std::to_string(format));
          });
      return cells;
    };
    RC_ASSERT(cellsOf(data) == cellsOf(*before->FindSheet("Data")));
  }));
}

}  // namespace
}  // namespace tolvane::engine
