#include "src/host/CellValue.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::host {
namespace {

using Kind = CellValue::Kind;

// Behind a call, so that the compiler cannot see that both are the same.
CellValue& Itself(CellValue& value) {
  return value;
}

std::string Letters(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('a' + i % 26);
  return text;
}

TEST(CellValue, Takes16Bytes) {
  EXPECT_EQ(sizeof(CellValue), 16u);
}

TEST(CellValue, IsEmptyWithoutAValue) {
  const CellValue value;
  EXPECT_EQ(value.kind(), Kind::Empty);
  EXPECT_TRUE(value.isEmpty());
  EXPECT_FALSE(value.isText() || value.isNumber() || value.isBoolean() || value.isError());
}

TEST(CellValue, HoldsEachKind) {
  EXPECT_EQ(CellValue(true).kind(), Kind::Boolean);
  EXPECT_TRUE(CellValue(true).boolean());
  EXPECT_FALSE(CellValue(false).boolean());
  EXPECT_EQ(CellValue(1.5).kind(), Kind::Number);
  EXPECT_EQ(CellValue(1.5).number(), 1.5);
  EXPECT_EQ(CellValue(-7).kind(), Kind::Number);
  EXPECT_EQ(CellValue(-7).number(), -7.0);
  EXPECT_EQ(CellValue(CellError::Ref).kind(), Kind::Error);
  EXPECT_EQ(CellValue(CellError::Ref).error(), CellError::Ref);
  EXPECT_EQ(CellValue("text").kind(), Kind::Text);
  EXPECT_EQ(CellValue(std::string("text")).text(), "text");
  EXPECT_EQ(CellValue(std::string_view("text")).text(), "text");
}

TEST(CellValue, KeepsNumbersExactly) {
  for (const double number : {0.1 + 0.2, std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
                              -std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(CellValue(number).number(), number);
  }
}

TEST(CellValue, TellsEmptyFromEmptyText) {
  EXPECT_TRUE(CellValue("").isText());
  EXPECT_EQ(CellValue("").text(), "");
  EXPECT_FALSE(CellValue("") == CellValue());
}

TEST(CellValue, KeepsTextsOfEveryLengthAroundThatOfTheValue) {
  for (std::size_t length = 0; length <= 40; ++length) {
    const std::string text = Letters(length);
    CellValue value(text);
    ASSERT_EQ(value.kind(), Kind::Text) << length;
    ASSERT_EQ(value.text(), text) << length;

    const CellValue copy = value;
    ASSERT_EQ(copy.text(), text) << length;
    const CellValue moved = std::move(value);
    ASSERT_EQ(moved.text(), text) << length;
    ASSERT_EQ(copy, moved) << length;
    ASSERT_FALSE(copy == CellValue(text + "x")) << length;
  }
}

TEST(CellValue, KeepsZeroBytesInTexts) {
  for (std::size_t length = 1; length <= 20; ++length) {
    for (std::size_t zero = 0; zero < length; ++zero) {
      std::string text = Letters(length);
      text[zero] = '\0';
      ASSERT_EQ(CellValue(text).text(), text) << length << " " << zero;
    }
  }
}

TEST(CellValue, IsEmptyAfterItWasMovedFrom) {
  CellValue value(Letters(30));
  const CellValue taken = std::move(value);
  EXPECT_TRUE(value.isEmpty());
  value = taken;
  EXPECT_EQ(value.text(), Letters(30));
}

TEST(CellValue, CanBeAssignedToItself) {
  for (const std::size_t length : {3u, 15u, 16u, 100u}) {
    CellValue value(Letters(length));
    value = Itself(value);
    EXPECT_EQ(value.text(), Letters(length));
    value = std::move(Itself(value));
    EXPECT_EQ(value.text(), Letters(length));
    value = CellValue(value.text());
    EXPECT_EQ(value.text(), Letters(length));
  }
}

TEST(CellValue, SharesLongTexts) {
  const CellValue first(Letters(100));
  const CellValue second = first;
  EXPECT_EQ(first.text().data(), second.text().data());
}

TEST(CellValue, ASharedTextLivesAsLongAsItsLastOwner) {
  CellValue last;
  {
    std::vector<CellValue> owners(50, CellValue(Letters(100)));
    last = owners[7];
    owners[7] = CellValue(1);
  }
  EXPECT_EQ(last.text(), Letters(100));
}

TEST(CellValue, IsEqualForTheSameKindAndContent) {
  EXPECT_EQ(CellValue(1), CellValue(1.0));
  EXPECT_EQ(CellValue(Letters(50)), CellValue(Letters(50)));
  EXPECT_EQ(CellValue(), CellValue());
  EXPECT_FALSE(CellValue(1) == CellValue(true));
  EXPECT_FALSE(CellValue(0) == CellValue());
  EXPECT_FALSE(CellValue("1") == CellValue(1));
  EXPECT_FALSE(CellValue("A") == CellValue("a"));
  EXPECT_FALSE(CellValue(CellError::NA) == CellValue(CellError::Ref));
  EXPECT_FALSE(CellValue(CellError::NA) == CellValue("#N/A"));
}

TEST(CellValue, NamesItsErrorsAsExcelDoes) {
  EXPECT_EQ(TextOf(CellError::Null), "#NULL!");
  EXPECT_EQ(TextOf(CellError::Div0), "#DIV/0!");
  EXPECT_EQ(TextOf(CellError::Value), "#VALUE!");
  EXPECT_EQ(TextOf(CellError::Ref), "#REF!");
  EXPECT_EQ(TextOf(CellError::Name), "#NAME?");
  EXPECT_EQ(TextOf(CellError::Num), "#NUM!");
  EXPECT_EQ(TextOf(CellError::NA), "#N/A");
  EXPECT_EQ(static_cast<int>(CellError::Value), 2015);
}

// Whatever is copied, moved and overwritten in a row of values, each holds what a plain string would.
TEST(CellValue, BehavesAsAStringDoes) {
  EXPECT_TRUE(rc::check([] {
    constexpr int kCount = 4;
    std::vector<CellValue> values(kCount, CellValue(""));
    std::vector<std::string> expected(kCount);
    const auto steps = *rc::gen::inRange(0, 60);
    for (int step = 0; step < steps; ++step) {
      const auto to = static_cast<std::size_t>(*rc::gen::inRange(0, kCount));
      const auto from = static_cast<std::size_t>(*rc::gen::inRange(0, kCount));
      switch (*rc::gen::inRange(0, 3)) {
        case 0:
          expected[to] = *rc::gen::arbitrary<std::string>();
          values[to] = CellValue(expected[to]);
          break;
        case 1:
          expected[to] = expected[from];
          values[to] = values[from];
          break;
        default:
          std::swap(values[to], values[from]);
          std::swap(expected[to], expected[from]);
          break;
      }
    }
    for (std::size_t i = 0; i < kCount; ++i) RC_ASSERT(values[i].text() == expected[i]);
  }));
}

}  // namespace
}  // namespace tolvane::host
