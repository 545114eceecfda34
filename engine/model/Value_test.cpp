#include "engine/model/Value.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvane::engine {
namespace {

TEST(Text, CopiesAreTheSameTextInMemory) {
  const Text text("Opening balance");
  const Text copy = text;
  EXPECT_TRUE(copy.IsSame(text));
  EXPECT_EQ(copy.view(), "Opening balance");
}

TEST(Text, IsEqualByItsBytes) {
  EXPECT_EQ(Text("a"), Text("a"));
  EXPECT_FALSE(Text("a") == Text("b"));
  EXPECT_TRUE(Text("").empty());
  EXPECT_EQ(Text(""), Text());
}

TEST(Value, KeepsWhatItWasGiven) {
  EXPECT_TRUE(Value().isEmpty());
  EXPECT_EQ(Value(2.5).number(), 2.5);
  EXPECT_TRUE(Value(true).boolean());
  EXPECT_EQ(Value(ErrorCode::NA).error(), ErrorCode::NA);
  EXPECT_EQ(Value("Rent").text().view(), "Rent");
}

TEST(Value, DiffersByKindAndContent) {
  const std::vector<Value> all{Value(), Value(0), Value(false), Value(""), Value(ErrorCode::Ref), Value(1), Value("x")};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (std::size_t j = 0; j < all.size(); ++j) EXPECT_EQ(all[i] == all[j], i == j) << i << " and " << j;
  }
}

TEST(Value, SurvivesCopyingMovingAndSelfAssignment) {
  Value text("Rent");
  Value copy = text;
  Value& alias = copy;
  copy = alias;
  EXPECT_EQ(copy, Value("Rent"));
  Value moved = std::move(copy);
  EXPECT_EQ(moved, Value("Rent"));
  EXPECT_EQ(text, Value("Rent"));
  moved = Value(3);
  EXPECT_EQ(moved, Value(3));
  moved = text;
  text = Value();
  EXPECT_EQ(moved, Value("Rent"));
}

TEST(Value, ErrorsHaveTheirTexts) {
  EXPECT_EQ(TextOf(ErrorCode::Div0), "#DIV/0!");
  EXPECT_EQ(TextOf(ErrorCode::NA), "#N/A");
  EXPECT_EQ(TextOf(ErrorCode::Name), "#NAME?");
}

}  // namespace
}  // namespace tolvane::engine
