#include <gtest/gtest.h>

#include "src/core/CodeTables.h"
#include "src/core/Dates.h"
#include "src/core/ErrorInFlight.h"
#include "src/core/FileText.h"
#include "src/core/StringTools.h"

namespace tolvane::accounts {
namespace {

TEST(StringTools, AccountNumbersAreComparedWithoutPunctuation) {
  EXPECT_EQ(sAlphanumericOnly("12-34 ab.Z/9"), "1234ABZ9");
  EXPECT_EQ(sAlphanumericOnly("\xC3\xA9t\xC3\xA9 1"), "T1");
}

TEST(StringTools, PatternsOfOneCharacter) {
  EXPECT_EQ(sFilterChars("a1b22", "#"), "122");
  EXPECT_EQ(sFilterChars("a1b22", "?"), "a1b22");
  EXPECT_EQ(sFilterChars("a1.-b", "[0-9.-]"), "1.-");
  EXPECT_EQ(sFilterChars("a1.-b", "[!0-9]"), "a.-b");
  EXPECT_EQ(sFilterChars("\xC3\xA9x\xC3\xA9", "[\xC3\xA0-\xC3\xBF]"), "\xC3\xA9\xC3\xA9");
  EXPECT_EQ(sFilterChars("axa", "x"), "x");
  EXPECT_EQ(sFilterChars("ab", ""), "");
}

TEST(StringTools, BlanksAfterBlanksGo) {
  EXPECT_EQ(sCollapseBlanks("a   b  c "), "a b c ");
}

TEST(StringTools, TheLastPartOfAPath) {
  EXPECT_EQ(sLastPathPart("C:\\books\\mine.xls"), "mine.xls");
  EXPECT_EQ(sLastPathPart("/home/me/mine.xlsx"), "mine.xlsx");
  EXPECT_EQ(sLastPathPart("mine.xls"), "mine.xls");
}

struct Measured {
  int rows;
  int columns;
  bool operator==(const Measured&) const = default;
};
Measured Measure(std::string_view text) {
  Measured measured{-1, -1};
  MeasureClipboardText(text, measured.rows, measured.columns);
  return measured;
}

TEST(StringTools, TheSizeOfClipboardText) {
  EXPECT_EQ(Measure("a\tb\r\nc"), (Measured{2, 2}));
  EXPECT_EQ(Measure(""), (Measured{0, 0}));
  EXPECT_EQ(Measure("a\rb\rc"), (Measured{3, 1}));
  EXPECT_EQ(Measure("a\nb\t\tc\n"), (Measured{2, 3}));
  EXPECT_EQ(Measure("a\r\n"), (Measured{1, 1}));
  EXPECT_EQ(Measure("\r\n\r\n"), (Measured{2, 1}));
}

TEST(StringTools, NamesInFormulasDoubleTheirApostrophes) {
  EXPECT_EQ(sQuoted("O'Neil"), "'O''Neil'");
}

TEST(Dates, SerialsAreThoseOfTheSpreadsheet) {
  EXPECT_EQ(lDateFromYMD("20090315"), 39887);
  EXPECT_EQ(lDateFromYMD("19000301"), 61);
  EXPECT_EQ(lDateFromYMD("20090230"), std::nullopt);
  EXPECT_EQ(lDateFromYMD("2009031"), std::nullopt);
  EXPECT_EQ(lDateFromYMD("2009031x"), std::nullopt);
  EXPECT_EQ(lDateFromFields("2009-3-15"), 39887);
  EXPECT_EQ(lDateFromFields("2009/03/15"), 39887);
  EXPECT_EQ(lDateFromFields("2009-3-15x"), std::nullopt);
  EXPECT_EQ(lDateFromFields("2009--3-15"), std::nullopt);
  EXPECT_EQ(lDateFromFields("2009-3-99999999999"), std::nullopt);
  EXPECT_EQ(DayOfSerial(39887).day, 15);
}

TEST(Dates, TheLogHasTheMonthFirst) {
  EXPECT_EQ(sLogTime(39886 + (18 * 3600 + 22 * 60 + 5) / 86400.0), "03/14/09 18:22:05");
  EXPECT_EQ(sLogTime(39886.9999999), "03/14/09 23:59:59");
}

TEST(CodeTables, EachTextGivesItsNumberAgain) {
  for (int type = 0; type <= 3; ++type) EXPECT_EQ(lAccountTypeFromText(sAccountTypeText(type)), type);
  for (int type = 1; type <= 3; ++type) EXPECT_EQ(lTrnTypeFromText(sTrnTypeText(type)), type);
  for (int kind = 0; kind <= 6; ++kind) EXPECT_EQ(lCategoryKindFromText(sCategoryKindText(kind)), kind);
}

TEST(CodeTables, WhatIsUnknown) {
  EXPECT_EQ(sAccountTypeText(4), "");
  EXPECT_THROW(lAccountTypeFromText("banking"), AccountsError);
  EXPECT_EQ(sTrnTypeText(0), "Error");
  EXPECT_EQ(sTrnTypeText(9), "Error");
  EXPECT_EQ(lTrnTypeFromText("accrual"), 0);
  EXPECT_EQ(lCategoryKindFromText("Total4"), 0);
  EXPECT_EQ(sCategoryKindCaption(2), "Group header");
  EXPECT_EQ(sCategoryKindCaption(6), "");
}

TEST(FileText, TheByteOrderMarkDecides) {
  using namespace std::string_literals;
  EXPECT_EQ(DecodeText("\xFF\xFE\xE9\x00\x41\x00"s),
            "\xC3\xA9"
            "A");
  EXPECT_EQ(DecodeText("\xFE\xFF\x00\xE9\x00\x41"s),
            "\xC3\xA9"
            "A");
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xC3\xA9"), "\xC3\xA9");
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xE9"), "\xC3\xA9");
  EXPECT_EQ(DecodeText("\xE9"), "\xC3\xA9");
  EXPECT_EQ(DecodeText(""), "");
}

}  // namespace
}  // namespace tolvane::accounts
