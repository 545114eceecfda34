#include "engine/formula/Parser.h"

#include <gmock/gmock.h>

#include "engine/formula/ExpressionBuilder.h"
#include "engine/formula/FormulaFixture.h"

namespace tolvane::engine {
namespace {

class ParserTest : public FormulaFixture {
 protected:
  ParserTest() {
    book.AddSheet("My Sheet", 2);
    book.AddSheet("O'Brien", 3);
    book.AddSheet("R1C1", 4);
  }
  FormulaHome Home(CellPos cell = {5, 5}) { return {book.sheetAt(0).id(), cell}; }
  // Read and written again.
  std::string Canonical(std::string_view text, Notation notation = Notation::A1) {
    try {
      return PrintFormula(*ParseFormula(text, notation, Home(), book), notation, Home(), book);
    } catch (const ParseError& error) {
      return error.what();
    }
  }
  std::string Translated(std::string_view text, Notation from, Notation to) {
    return PrintFormula(*ParseFormula(text, from, Home(), book), to, Home(), book);
  }
  std::size_t ErrorPosition(std::string_view text) {
    try {
      ParseFormula(text, Notation::A1, Home(), book);
    } catch (const ParseError& error) {
      return error.position;
    }
    return 999999;
  }
};

TEST_F(ParserTest, NamesThatReadAsReferencesStandInApostrophes) {
  EXPECT_EQ(Translated("=SUM(A7)", Notation::R1C1, Notation::A1), "=SUM('A7')");
  EXPECT_EQ(Translated("=RC+1", Notation::A1, Notation::R1C1), "='RC'+1");
  EXPECT_EQ(Translated("=tot:C4", Notation::R1C1, Notation::A1), "='tot':$D:$D");
  EXPECT_EQ(Canonical("='A7'", Notation::R1C1), "=A7");
  EXPECT_EQ(Canonical("='tot':$D:$D"), "='tot':$D:$D");
  EXPECT_EQ(Translated("='My Sheet'!A7", Notation::R1C1, Notation::A1), "='My Sheet'!'A7'");
  EXPECT_EQ(Canonical("='My Sheet'!'A7'", Notation::R1C1), "='My Sheet'!A7");
}

TEST_F(ParserTest, NoBracketsInNamesOfWorkbooks) {
  EXPECT_EQ(Canonical("=[a[b]c!A1").find("\"[\""), 0u);
  EXPECT_EQ(Canonical("='x[a[b.xlsx]c'!A1"), "There is no sheet named \"x[a[b.xlsx]c\" (at character 2).");
}

TEST_F(ParserTest, WhatIsCanonicalStaysAsItIs) {
  for (const char* text : {"=1",
                           "=1.5",
                           "=\"a \"\"quoted\"\" word\"",
                           "=TRUE",
                           "=#N/A",
                           "=#DIV/0!",
                           "=#REF!",
                           "={1,2;3,4}",
                           "={-1,\"a\",TRUE,#N/A}",
                           "=A1",
                           "=$A$1",
                           "=A$1",
                           "=$A1",
                           "=A1:B2",
                           "=$A$1:B2",
                           "=5:9",
                           "=$5:$9",
                           "=A:C",
                           "=$A:C",
                           "=XFD1048576",
                           "=Sheet2!A1",
                           "=Sheet2!A1:B2",
                           "=Sheet2!5:9",
                           "='My Sheet'!A1",
                           "='O''Brien'!A1",
                           "='R1C1'!A1",
                           "=Sheet1:Sheet2!A1",
                           "='Sheet1:My Sheet'!A1:B2",
                           "=Sheet2!#REF!",
                           "=[Book.xlsx]Sheet!A1",
                           "='[Book 1.xlsx]My Sheet'!$A$1",
                           "='C:\\Some Folder\\[Book.xlsx]Sheet'!A1",
                           "=[1]Sheet1!A1",
                           "=Book.xlsx!total",
                           "='My Book.xlsx'!total",
                           "='[Book.xlsx]O''Brien'!A1",
                           "=[Book.xlsx]Sheet!#REF!",
                           "=[Book.xlsx]Sheet!total",
                           "=Sheet2!total",
                           "=total",
                           "=-2^2",
                           "=2^-2",
                           "=-A1%",
                           "=50%",
                           "=1+2*3-4/5^6&\"x\"=\"y\"",
                           "=(1+2)*3",
                           "=((A1))",
                           "=A1<>B1",
                           "=A1<=B1",
                           "=A1>=B1",
                           "=SUM(A1,B1)",
                           "=SUM((A1,B1))",
                           "=SUM(A1:B2 B1:C3)",
                           "=A1:INDEX(B:B,5)",
                           "=Sheet1!A1:Sheet1!B5",
                           "=ROUND(A1,)",
                           "=IF(,,)",
                           "=PI()",
                           "=NOSUCHFUNCTION(1)",
                           "=LOG10(5)",
                           "=( 1 + 2 ) * 3",
                           "=SUM( A1, B1)",
                           "=A1  B1",
                           "=+A1",
                           "=--A1",
                           "=1E+20",
                           "=R1C1A",
                           "=\\name",
                           "=_x.y",
                           "=1%%"}) {
    EXPECT_EQ(Canonical(text), std::string(text) == "=( 1 + 2 ) * 3" ? "=( 1 + 2) * 3" : text);
  }
}

TEST_F(ParserTest, SpellingBecomesCanonical) {
  EXPECT_EQ(Canonical("sum(a1,b1)"), "=SUM(A1,B1)");
  EXPECT_EQ(Canonical("=true"), "=TRUE");
  EXPECT_EQ(Canonical("=#n/a"), "=#N/A");
  EXPECT_EQ(Canonical("=B5:A1"), "=A1:B5");
  EXPECT_EQ(Canonical("=$B5:A$1"), "=A$1:$B5");
  EXPECT_EQ(Canonical("=9:5"), "=5:9");
  EXPECT_EQ(Canonical("=sheet2!a1"), "=Sheet2!A1");
  EXPECT_EQ(Canonical("='Sheet2'!A1"), "=Sheet2!A1");
  EXPECT_EQ(Canonical("=1.50"), "=1.5");
  EXPECT_EQ(Canonical("=.5"), "=0.5");
  EXPECT_EQ(Canonical("=1e3"), "=1000");
  EXPECT_EQ(Canonical("=1e300"), "=1E+300");
  EXPECT_EQ(Canonical("=1E-400"), "=0");
  EXPECT_EQ(Canonical("=SUM (A1)"), "=SUM(A1)");
  EXPECT_EQ(Canonical("={ 1 , 2 ; 3 , 4 }"), "={1,2;3,4}");
}

TEST_F(ParserTest, NamesAreSpelledAsDefined) {
  Name("Total", "=Sheet1!$A$1");
  EXPECT_EQ(Canonical("=TOTAL+1"), "=Total+1");
  EXPECT_EQ(Canonical("=total:Sheet1!B9"), "=Total:Sheet1!B9");
}

TEST_F(ParserTest, R1C1) {
  for (const char* text :
       {"=RC", "=R1C1", "=R[1]C[-1]", "=R[-3]C:R[-1]C", "=R6:R9", "=R6", "=C[-1]", "=C", "=R", "=R[-2]:R[3]", "=C3:C5",
        "=Sheet2!R1C1", "=SUM(R1C:R[-1]C)", "=RC[-1]*2", "=total", "='R1C1'!RC", "=[Book.xlsx]Sheet!R1C1"}) {
    EXPECT_EQ(Canonical(text, Notation::R1C1), text);
  }
  EXPECT_EQ(Canonical("=r[0]c[0]", Notation::R1C1), "=RC");
  EXPECT_EQ(Canonical("=R[1]C:R[-1]C", Notation::R1C1), "=R[-1]C:R[1]C");
  EXPECT_EQ(Canonical("=A1", Notation::R1C1), "=A1");  // a name here
}

TEST_F(ParserTest, FromOneNotationToTheOther) {
  EXPECT_EQ(Translated("=E4", Notation::A1, Notation::R1C1), "=R[-1]C");
  EXPECT_EQ(Translated("=$A$1+F5", Notation::A1, Notation::R1C1), "=R1C1+RC[1]");
  EXPECT_EQ(Translated("=5:5", Notation::A1, Notation::R1C1), "=R");
  EXPECT_EQ(Translated("=$6:$9", Notation::A1, Notation::R1C1), "=R6:R9");
  EXPECT_EQ(Translated("=D:D", Notation::A1, Notation::R1C1), "=C[-1]");
  EXPECT_EQ(Translated("=R6", Notation::R1C1, Notation::A1), "=$6:$6");
  // Off the grid, A1 notation comes back in at the other end.
  EXPECT_EQ(Translated("=R[-5]C", Notation::R1C1, Notation::A1), "=E1048576");
  EXPECT_EQ(Translated("=RC[-5]", Notation::R1C1, Notation::A1), "=XFD5");
}

TEST_F(ParserTest, PrecedenceIsThatOfSpreadsheets) {
  EXPECT_EQ(Result("=-2^2"), "4");
  EXPECT_EQ(Result("=2^3^2"), "64");
  EXPECT_EQ(Result("=10-4-3"), "3");
  EXPECT_EQ(Result("=2+3*4"), "14");
  EXPECT_EQ(Result("=1+2&3+4"), "37");
  EXPECT_EQ(Result("=1=1&\"\""), "FALSE");
  EXPECT_EQ(Result("=200%%"), "0.02");
  EXPECT_EQ(Result("=2^200%"), "4");
  EXPECT_EQ(Result("=--\"3\""), "3");
}

TEST_F(ParserTest, ErrorsSayWhatAndWhere) {
  using testing::HasSubstr;
  EXPECT_THAT(Canonical("="), HasSubstr("empty"));
  EXPECT_THAT(Canonical(""), HasSubstr("empty"));
  EXPECT_THAT(Canonical("=1+"), HasSubstr("ends where a value"));
  EXPECT_THAT(Canonical("=(1+2"), HasSubstr("never closed"));
  EXPECT_THAT(Canonical("=SUM(1"), HasSubstr("SUM is never closed"));
  EXPECT_THAT(Canonical("=1)"), HasSubstr("\")\" is not expected"));
  EXPECT_THAT(Canonical("=\"abc"), HasSubstr("never closed"));
  EXPECT_THAT(Canonical("=Nowhere!A1"), HasSubstr("no sheet named \"Nowhere\""));
  EXPECT_THAT(Canonical("=Sheet1:Nowhere!A1"), HasSubstr("no sheet named \"Nowhere\""));
  EXPECT_THAT(Canonical("='Nowhere'!A1"), HasSubstr("no sheet named \"Nowhere\""));
  EXPECT_THAT(Canonical("='Sheet1"), HasSubstr("apostrophe"));
  EXPECT_THAT(Canonical("=ROUND(1)"), HasSubstr("ROUND needs at least 2"));
  EXPECT_THAT(Canonical("=ROUND(1,2,3)"), HasSubstr("ROUND takes at most 2"));
  EXPECT_THAT(Canonical("={1,2;3}"), HasSubstr("different lengths"));
  EXPECT_THAT(Canonical("={1,A1}"), HasSubstr("An array may hold only"));
  EXPECT_THAT(Canonical("={1"), HasSubstr("never closed"));
  EXPECT_THAT(Canonical("=1,2"), HasSubstr("needs a reference"));
  EXPECT_THAT(Canonical("=5x"), HasSubstr("not expected"));
  EXPECT_THAT(Canonical("=1E999"), HasSubstr("out of range"));
  EXPECT_THAT(Canonical("=#WHAT!"), HasSubstr("no such error value"));
  EXPECT_THAT(Canonical("=A1 5"), HasSubstr("\" \" needs a reference"));
  EXPECT_EQ(ErrorPosition("=1+*2"), 3U);
  EXPECT_EQ(ErrorPosition("=SUM(1,Nowhere!A1)"), 7U);
}

TEST_F(ParserTest, LengthAndNestingAreBounded) {
  std::string longSum = "=1";
  for (int i = 0; i < 4000; ++i) longSum += "+1";
  EXPECT_EQ(Result(longSum), "4001");
  EXPECT_EQ(Canonical(longSum), longSum);
  EXPECT_THAT(Canonical(longSum + longSum.substr(1) + std::string(200, '1')), testing::HasSubstr("at most 8192"));

  const auto nested = [](int levels) {
    std::string text = "=";
    for (int i = 0; i < levels; ++i) text += "ABS(";
    return text + "1" + std::string(static_cast<std::size_t>(levels), ')');
  };
  EXPECT_EQ(Result(nested(64)), "1");
  EXPECT_THAT(Canonical(nested(65)), testing::HasSubstr("64 levels"));
  EXPECT_THAT(Canonical(std::string("=").append(3000, '-').append("1")), testing::HasSubstr("64 levels"));
  EXPECT_THAT(Canonical(std::string("=").append(3000, '(')), testing::HasSubstr("64 levels"));
  EXPECT_THAT(Canonical(std::string("=1").append(3000, '%')), testing::HasSubstr("percent"));
}

TEST_F(ParserTest, ParenthesesAreAddedToTreesThatNeedThem) {
  ExpressionBuilder builder;
  const auto sum = [&] { return builder.Binary(Operator::Add, builder.Constant(1), builder.Constant(2)); };
  const auto product = builder.Binary(Operator::Multiply, sum(), sum());
  EXPECT_EQ(PrintFormula(*builder.Finish(product), Notation::A1, Home(), book), "=(1+2)*(1+2)");

  const SheetId second = book.sheetAt(1).id();
  const Reference other{Reference::Shape::Cell, second, second, {1, false}, {1, false}, {1, false}, {1, false}};
  const Reference own{Reference::Shape::Cell, kOwnSheet, kOwnSheet, {2, false}, {2, false}, {2, false}, {2, false}};
  const auto left = builder.Refer(other);
  const auto range = builder.Binary(Operator::Range, left, builder.Refer(own));
  EXPECT_EQ(PrintFormula(*builder.Finish(range), Notation::A1, Home(), book), "=Sheet2!$A$1:($B$2)");
}

TEST_F(ParserTest, VolatileFunctionsMarkTheirFormula) {
  EXPECT_TRUE(ParseFormula("=1+OFFSET(A1,1,1)", Notation::A1, Home(), book)->isVolatile);
  EXPECT_TRUE(ParseFormula("=today()", Notation::A1, Home(), book)->isVolatile);
  EXPECT_FALSE(ParseFormula("=SUM(A1:B2)", Notation::A1, Home(), book)->isVolatile);
}

TEST_F(ParserTest, EqualFormulasOfNeighboursAreEqual) {
  const FormulaHome above = Home({5, 5});
  const FormulaHome below = Home({6, 5});
  EXPECT_EQ(*ParseFormula("=A5*2", Notation::A1, above, book), *ParseFormula("=A6*2", Notation::A1, below, book));
}

TEST(Printer, SheetNamesAreQuotedWhereNeeded) {
  EXPECT_EQ(QuoteSheetName("Sheet1"), "Sheet1");
  EXPECT_EQ(QuoteSheetName("Übersicht_2.x"), "Übersicht_2.x");
  EXPECT_EQ(QuoteSheetName("My Sheet"), "'My Sheet'");
  EXPECT_EQ(QuoteSheetName("O'Brien"), "'O''Brien'");
  EXPECT_EQ(QuoteSheetName("A1"), "'A1'");
  EXPECT_EQ(QuoteSheetName("ABCD1"), "ABCD1");  // beyond the last column
  EXPECT_EQ(QuoteSheetName("R1C1"), "'R1C1'");
  EXPECT_EQ(QuoteSheetName("RC"), "'RC'");
  EXPECT_EQ(QuoteSheetName("r"), "'r'");
  EXPECT_EQ(QuoteSheetName("True"), "'True'");
  EXPECT_EQ(QuoteSheetName("2020"), "'2020'");
  EXPECT_EQ(QuoteSheetName("a-b"), "'a-b'");
}

TEST(Printer, Addresses) {
  EXPECT_EQ(PrintAddress({7, 2, 9, 3}, {}), "$B$7:$C$9");
  EXPECT_EQ(PrintAddress({7, 2, 7, 2}, {Notation::A1, false, false, {}}), "B7");
  EXPECT_EQ(PrintAddress({7, 2, 7, 2}, {Notation::A1, true, false, {}}), "B$7");
  EXPECT_EQ(PrintAddress({7, 2, 7, 2}, {Notation::R1C1, true, true, {}}), "R7C2");
  EXPECT_EQ(PrintAddress({7, 2, 7, 2}, {Notation::R1C1, false, false, {8, 2}}), "R[-1]C");
  EXPECT_EQ(PrintAddress(Rect::Rows(5, 9), {}), "$5:$9");
  EXPECT_EQ(PrintAddress(Rect::Rows(5, 5), {}), "$5:$5");
  EXPECT_EQ(PrintAddress(Rect::Columns(3, 3), {Notation::R1C1, false, false, {1, 4}}), "C[-1]");
  EXPECT_EQ(ColumnLetters(1), "A");
  EXPECT_EQ(ColumnLetters(26), "Z");
  EXPECT_EQ(ColumnLetters(27), "AA");
  EXPECT_EQ(ColumnLetters(702), "ZZ");
  EXPECT_EQ(ColumnLetters(703), "AAA");
  EXPECT_EQ(ColumnLetters(16384), "XFD");
}

TEST(Printer, Numbers) {
  EXPECT_EQ(NumberText(0), "0");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(1), "1");
  EXPECT_EQ(NumberText(-1.5), "-1.5");
  EXPECT_EQ(NumberText(0.1), "0.1");
  EXPECT_EQ(NumberText(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(NumberText(1e15), "1000000000000000");
  EXPECT_EQ(NumberText(1e20), "1E+20");
  EXPECT_EQ(NumberText(1.5e300), "1.5E+300");
  EXPECT_EQ(NumberText(0.0001), "0.0001");
  EXPECT_EQ(NumberText(0.00001), "1E-05");
  EXPECT_EQ(NumberText(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(NumberText(123456789.123), "123456789.123");
}

}  // namespace
}  // namespace tolvane::engine
