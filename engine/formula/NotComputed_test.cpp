#include "engine/formula/FormulaFixture.h"
#include "engine/formula/FunctionTable.h"

namespace tolvane::engine {
namespace {

// Formulas as they are when a workbook has been read from a file: with a result, and not stale.
class NotComputed : public FormulaFixture {
 protected:
  void Load(std::string_view address, std::string_view formula, const Value& result) {
    const Place place = At(address);
    const CellPos cell = place.rect.topLeft();
    place.sheet.cells().SetFormula(cell, {Parse(formula, place), std::nullopt, false});
    place.sheet.StoreResult(cell, result);
  }
  bool IsNotComputed(std::string_view address) {
    const Place place = At(address);
    return calculator.IsNotComputed(place.sheet.id(), place.rect.topLeft());
  }
};

TEST_F(NotComputed, AnUnknownFunctionKeepsTheResultThatCameWithIt) {
  Set("A1", 2);
  Load("B1", "=NOSUCH(A1)", Value(42));
  Load("C1", "=B1+1", Value(43));
  Load("D1", "=A1+1", Value(3));
  EXPECT_EQ(Text("B1"), "42");
  Set("A1", 3);
  EXPECT_EQ(Text("B1"), "42");
  EXPECT_EQ(Text("C1"), "43");
  EXPECT_EQ(Text("D1"), "4");
  EXPECT_TRUE(IsNotComputed("B1"));
  EXPECT_TRUE(IsNotComputed("C1"));
  EXPECT_FALSE(IsNotComputed("D1"));
  EXPECT_FALSE(IsNotComputed("A1"));
}

TEST_F(NotComputed, WhatRestsOnItThroughRangesAndLookupsIsKnown) {
  Set("A1", 2);
  Load("B1", "=NOSUCH(A1)", Value(42));
  Set("A1", 3);
  Set("C1", "=SUM(B1:B5)");
  Set("C2", "=VLOOKUP(42,B1:B5,1,FALSE)");
  Set("C3", "=COUNTIF(B1:B5,42)");
  Set("C4", "=COUNTIF(B2:B5,42)");
  for (int row = 5; row < 10; ++row) Set("C" + std::to_string(row), "=COUNTIF(B1:B5,42)");
  calculator.Recalculate();
  for (const char* cell : {"C1", "C2", "C3", "C5", "C9"}) EXPECT_TRUE(IsNotComputed(cell)) << cell;
  EXPECT_FALSE(IsNotComputed("C4"));
}

TEST_F(NotComputed, OneEnteredByHandGivesAnError) {
  Set("B1", 7);
  Set("B1", "=NOSUCH(1)");
  EXPECT_EQ(Text("B1"), "#NAME?");
  EXPECT_TRUE(IsNotComputed("B1"));
  Set("B2", "=IF(TRUE,5,NOSUCH(1))");
  EXPECT_EQ(Text("B2"), "5");
  EXPECT_FALSE(IsNotComputed("B2"));
}

TEST_F(NotComputed, EndsWhenTheFormulaGoes) {
  Set("A1", 2);
  Load("B1", "=NOSUCH(A1)", Value(42));
  Load("C1", "=B1+1", Value(43));
  Set("A1", 3);
  calculator.Recalculate();
  EXPECT_TRUE(IsNotComputed("C1"));
  Set("B1", "=A1*2");
  EXPECT_EQ(Text("C1"), "7");
  EXPECT_FALSE(IsNotComputed("B1"));
  EXPECT_FALSE(IsNotComputed("C1"));
}

TEST_F(NotComputed, AFormulaThatCannotBeReadIsNever) {
  const Place place = At("B1");
  auto constant = std::make_shared<Expression>();
  constant->constants.push_back(Value(5));
  constant->nodes.push_back({.kind = Node::Kind::Constant});
  place.sheet.cells().SetFormula(place.rect.topLeft(), {constant, std::nullopt, false, engine::Text("=[Odd]!x")});
  place.sheet.StoreResult(place.rect.topLeft(), Value(5));
  Set("C1", "=B1*2");
  EXPECT_EQ(Text("C1"), "10");
  EXPECT_TRUE(IsNotComputed("B1"));
  EXPECT_TRUE(IsNotComputed("C1"));
}

TEST_F(NotComputed, NeedsFilePrefixKnowsBothSpellings) {
  EXPECT_TRUE(NeedsFilePrefix("XLOOKUP"));
  EXPECT_TRUE(NeedsFilePrefix("LET"));
  EXPECT_FALSE(NeedsFilePrefix("SUM"));
  EXPECT_EQ(FilePrefixOf("XLOOKUP"), "_xlfn.");
  EXPECT_EQ(FilePrefixOf("FILTER"), "_xlfn._xlws.");
  EXPECT_EQ(FilePrefixOf("VLOOKUP"), "");
  EXPECT_EQ(WithoutFilePrefix("_XLFN._XLWS.SORT"), "SORT");
  EXPECT_EQ(WithoutFilePrefix("_XLFN.MINE"), "_XLFN.MINE");
  const Place place = At("A1");
  const FormulaHome home{place.sheet.id(), place.rect.topLeft()};
  EXPECT_EQ(PrintFormula(*Parse("=_xlfn.XLOOKUP(1,B1:B2,C1:C2)", place), Notation::A1, home, book),
            "=XLOOKUP(1,B1:B2,C1:C2)");
}

}  // namespace
}  // namespace tolvane::engine
