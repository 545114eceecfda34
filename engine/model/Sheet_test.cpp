#include "engine/model/Sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/model/ExpressionBuilder.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

using test::Area;
using test::At;
using test::PutSum;
using test::Sum;
using testing::ElementsAre;

class SheetTest : public testing::Test {
 protected:
  FormatId Sized(FormatId from, double size) {
    return book.formats.With(from, FormatGroup::Font, [&](Format& format) { format.font.size = size; });
  }
  FormatId Bold(FormatId from) {
    return book.formats.With(from, FormatGroup::Font, [](Format& format) { format.font.bold = true; });
  }
  void SetSize(std::string_view area, double size) {
    sheet.ChangeFormat(Area(area), [&](FormatId from) { return Sized(from, size); });
  }
  void SetBold(std::string_view area) {
    sheet.ChangeFormat(Area(area), [&](FormatId from) { return Bold(from); });
  }
  // "11", or "11b" for bold.
  std::string Shown(std::string_view cell) const { return ShownAt(At(cell)); }
  std::string ShownAt(CellPos at) const {
    const Font& font = book.formats.At(sheet.FormatAt(at)).format.font;
    return std::to_string(static_cast<int>(font.size)).append(font.bold ? "b" : "");
  }
  std::size_t CellsWithOwnFormat() const {
    std::size_t count = 0;
    sheet.cells().ForEachCell(Rect::WholeSheet(), [&](CellPos, const Value&, const FormulaCell*, FormatId own) {
      count += own != 0 ? 1 : 0;
    });
    return count;
  }

  Workbook book;
  Sheet& sheet = book.AddSheet("Data", 0);
};

// --- contents --------------------------------------------------------------------------------------------------------

TEST_F(SheetTest, WritesAndReadsABlockRowByRow) {
  const std::vector<Value> block{Value("Food"), 1, Value("Rent"), 2, Value(), true};
  sheet.SetValues(Area("B2:C4"), block);
  EXPECT_EQ(sheet.ValueAt(At("B3")), Value("Rent"));
  EXPECT_EQ(sheet.ValueAt(At("C4")), Value(true));
  std::vector<Value> back(6);
  sheet.ReadValues(Area("B2:C4"), back);
  EXPECT_EQ(back, block);
  EXPECT_EQ(sheet.UsedRange(), Area("B2:C4"));
}

TEST_F(SheetTest, RefusesABlockOfAnotherSizeAndPlacesOffTheGrid) {
  const std::vector<Value> block(3);
  std::vector<Value> out(3);
  EXPECT_THROW(sheet.SetValues(Area("B2:C4"), block), std::invalid_argument);
  EXPECT_THROW(sheet.ReadValues(Area("B2:C4"), out), std::invalid_argument);
  EXPECT_THROW(sheet.SetValue({0, 1}, 1), std::invalid_argument);
  EXPECT_THROW(sheet.SetValue({1, kMaxColumn + 1}, 1), std::invalid_argument);
  EXPECT_EQ(sheet.UsedRange(), std::nullopt);
}

TEST_F(SheetTest, AnArrayFormulaCannotBeChangedInPart) {
  sheet.SetArrayFormula(Area("B2:B4"), Sum("A2:A4", At("B2"), book));
  EXPECT_THROW(sheet.SetValue(At("B3"), 1), std::invalid_argument);
  EXPECT_THROW(sheet.ClearContents(Area("A1:C3")), std::invalid_argument);
  EXPECT_THROW(PutSum(sheet, "B2", "A1"), std::invalid_argument);
  EXPECT_EQ(test::FormulaIn(sheet, "B2"), "SUM(A2:A4)");
  EXPECT_EQ(sheet.FormulaAt(At("B4"))->arrayArea, Area("B2:B4"));
  EXPECT_EQ(sheet.FormulaAt(At("B4"))->expression, nullptr);
  sheet.ClearContents(Area("B1:B9"));
  EXPECT_EQ(sheet.FormulaAt(At("B4")), nullptr);
  EXPECT_NO_THROW(sheet.SetValue(At("B3"), 1));
}

// --- parts -----------------------------------------------------------------------------------------------------------

TEST_F(SheetTest, ValidationIsTakenOffPartOfARule) {
  Validation rule;
  rule.ranges = {Area("B2:D6")};
  rule.kind = Validation::Kind::List;
  sheet.AddValidation(rule);
  sheet.RemoveValidation(Area("C3:C4"));
  EXPECT_THAT(sheet.validations[0].ranges, ElementsAre(Area("B2:D2"), Area("B3:B4"), Area("D3:D4"), Area("B5:D6")));
  EXPECT_EQ(sheet.ValidationAt(At("C3")), nullptr);
  EXPECT_NE(sheet.ValidationAt(At("C5")), nullptr);
  sheet.RemoveValidation(Area("A1:Z99"));
  EXPECT_TRUE(sheet.validations.empty());
}

TEST_F(SheetTest, ANewRuleTakesThePlaceOfTheOldOne) {
  Validation rule;
  rule.ranges = {Area("B2:B9")};
  rule.kind = Validation::Kind::List;
  sheet.AddValidation(rule);
  rule.ranges = {Area("B4:B5")};
  rule.kind = Validation::Kind::Decimal;
  sheet.AddValidation(rule);
  EXPECT_EQ(sheet.ValidationAt(At("B4"))->kind, Validation::Kind::Decimal);
  EXPECT_EQ(sheet.ValidationAt(At("B6"))->kind, Validation::Kind::List);
  EXPECT_THROW(sheet.AddValidation(Validation{}), std::invalid_argument);
}

TEST_F(SheetTest, FindsMergesAndHiddenRows) {
  sheet.merges.push_back(Area("B2:C3"));
  EXPECT_EQ(sheet.MergeAt(At("C3")), Area("B2:C3"));
  EXPECT_EQ(sheet.MergeAt(At("C4")), std::nullopt);
  sheet.rows.Change(5, 5, [](Band& band) { band.filtered = true; });
  sheet.columns.Change(2, 3, [](Band& band) { band.hidden = true; });
  EXPECT_TRUE(sheet.IsRowHidden(5));
  EXPECT_FALSE(sheet.IsRowHidden(6));
  EXPECT_TRUE(sheet.IsColumnHidden(3));
}

TEST_F(SheetTest, RemovesTheHyperlinksThatAnAreaTouches) {
  sheet.hyperlinks = {{Area("A1"), "", "total", ""}, {Area("B1"), "", "total", ""}};
  sheet.RemoveHyperlinks(Area("B1:C9"));
  ASSERT_EQ(sheet.hyperlinks.size(), 1u);
  EXPECT_EQ(sheet.hyperlinks[0].range, Area("A1"));
}

// --- formats
// -----------------------------------------------------------------------------------------------------------

TEST_F(SheetTest, ACellsFormatComesBeforeItsRowsAndThatBeforeItsColumns) {
  SetSize("B:B", 20);
  SetSize("5:5", 30);
  SetSize("B5", 40);
  EXPECT_EQ(Shown("A1"), "11");
  EXPECT_EQ(Shown("B1"), "20");
  EXPECT_EQ(Shown("A5"), "30");
  EXPECT_EQ(Shown("B5"), "40");
}

TEST_F(SheetTest, WhereARowAndAColumnCrossTheLaterOneWins) {
  SetSize("5:5", 30);
  SetSize("B:B", 20);
  EXPECT_EQ(Shown("B5"), "20");
  EXPECT_EQ(Shown("C5"), "30");
  EXPECT_EQ(CellsWithOwnFormat(), 1u);
}

TEST_F(SheetTest, ABandChangesWhatItsCellsShow) {
  SetSize("B5", 40);
  SetSize("7:7", 30);
  SetBold("B:B");
  EXPECT_EQ(Shown("B5"), "40b");
  EXPECT_EQ(Shown("B7"), "30b");
  EXPECT_EQ(Shown("B9"), "11b");
  EXPECT_EQ(Shown("C7"), "30");
}

TEST_F(SheetTest, ARowOnAFormattedSheetNeedsNoCellsOfItsOwn) {
  SetSize("1:1048576", 20);
  SetBold("5:5");
  EXPECT_EQ(Shown("XFD5"), "20b");
  EXPECT_EQ(Shown("XFD6"), "20");
  EXPECT_EQ(CellsWithOwnFormat(), 0u);
}

TEST_F(SheetTest, ACellCanGoBackToTheDefaultInAFormattedColumn) {
  SetSize("B:B", 20);
  SetSize("B5", 11);
  sheet.ChangeFormat(Area("B5"), [](FormatId) { return kDefaultFormat; });
  EXPECT_EQ(Shown("B5"), "11");
  EXPECT_EQ(sheet.FormatAt(At("B5")), kDefaultFormat);
  EXPECT_EQ(Shown("B6"), "20");
}

TEST_F(SheetTest, GoingBackToTheDefaultWithoutBandsLeavesNothing) {
  SetSize("B5:D9", 20);
  sheet.ChangeFormat(Area("B5:D9"), [](FormatId) { return kDefaultFormat; });
  EXPECT_EQ(sheet.UsedRange(), std::nullopt);
}

TEST_F(SheetTest, AsksOncePerDistinctFormat) {
  SetSize("A1:C100", 20);
  SetBold("A7:C9");
  int asked = 0;
  sheet.ChangeFormat(Area("A1:C200"), [&](FormatId from) {
    ++asked;
    return Sized(from, 14);
  });
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(Shown("B8"), "14b");
  EXPECT_EQ(Shown("B150"), "14");
}

TEST_F(SheetTest, RefusesToFillTheSheetWithFormattedCells) {
  EXPECT_THROW(SetSize("A1:XFC1048575", 20), std::invalid_argument);
  EXPECT_EQ(sheet.UsedRange(), std::nullopt);
}

// Each cell's size and boldness by itself.
TEST_F(SheetTest, FormatsAgreeWithAListOfCells) {
  EXPECT_TRUE(rc::check([this] {
    sheet.cells().Clear(Rect::WholeSheet());
    sheet.rows = BandTable(Axis::Rows);
    sheet.columns = BandTable(Axis::Columns);
    constexpr int kRows = 8;
    constexpr int kColumns = 6;
    std::map<std::pair<int, int>, std::string> plain;
    for (int row = 1; row <= kRows; ++row) {
      for (int column = 1; column <= kColumns; ++column) plain[{row, column}] = "11";
    }
    for (int step = *rc::gen::inRange(1, 9); step > 0; --step) {
      const int top = *rc::gen::inRange(1, kRows + 1);
      const int bottom = *rc::gen::inRange(top, kRows + 1);
      const int left = *rc::gen::inRange(1, kColumns + 1);
      const int right = *rc::gen::inRange(left, kColumns + 1);
      const std::vector<Rect> areas{
          {top, left, bottom, right}, Rect::Rows(top, bottom), Rect::Columns(left, right), Rect::WholeSheet()};
      const Rect area =
          areas[static_cast<std::size_t>(*rc::gen::weightedElement<int>({{4, 0}, {4, 1}, {4, 2}, {1, 3}}))];
      const int kind = *rc::gen::inRange(0, 4);
      sheet.ChangeFormat(area, [&](FormatId from) {
        return kind == 0 ? kDefaultFormat : kind == 1 ? Bold(from) : Sized(from, 10 + kind);
      });
      for (auto& [at, shown] : plain) {
        if (!area.contains(CellPos{at.first, at.second})) continue;
        const bool wasBold = shown.ends_with('b');
        shown = kind == 0   ? "11"
                : kind == 1 ? shown.substr(0, 2).append("b")
                            : std::to_string(10 + kind).append(wasBold ? "b" : "");
      }
      for (const auto& [at, shown] : plain) RC_ASSERT(ShownAt({at.first, at.second}) == shown);
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
