#include "hosts/shell/Palette.h"

#include <gtest/gtest.h>

#include "src/host/Errors.h"

namespace tolvane::shell {
namespace {

TEST(Palette, EveryColourLeadsToAnIndexOfThatColour) {
  for (int index = 1; index <= 56; ++index) {
    const std::optional<std::uint32_t> colour = ColourOf(index);
    ASSERT_TRUE(colour);
    EXPECT_EQ(ColourOf(NearestIndex(*colour)), colour) << index;
    EXPECT_GE(NearestIndex(*colour), index);
  }
}

TEST(Palette, OtherColoursLeadToTheNearest) {
  EXPECT_EQ(NearestIndex(0x010101), 1);
  EXPECT_EQ(NearestIndex(0xFEFEFE), 2);
  EXPECT_EQ(NearestIndex(0xBFBFBF), 15);
}

TEST(Palette, NoneAndAutomaticAreNoColours) {
  EXPECT_FALSE(ColourOf(host::kColorIndexNone));
  EXPECT_FALSE(ColourOf(host::kColorIndexAutomatic));
  EXPECT_THROW(ColourOf(0), host::HostError);
  EXPECT_THROW(ColourOf(57), host::HostError);
}

}  // namespace
}  // namespace tolvane::shell
