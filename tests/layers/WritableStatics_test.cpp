#include "tests/layers/WritableStatics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace tolvane::layers {
namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(WritableStaticsTest, TheLogicTheHostsAndTheModelHaveNone) {
  std::istringstream libraries(TOLVANE_LIBRARIES);
  std::string library;
  int count = 0;
  while (std::getline(libraries, library, '|')) {
    EXPECT_THAT(WritableStatics(library), IsEmpty()) << library;
    ++count;
  }
  EXPECT_GE(count, 3) << "the check must have something to look at";
}

TEST(WritableStaticsTest, FindsEveryKindThatWasPlanted) {
  const std::vector<std::string> found = WritableStatics(TOLVANE_PLANTED_OBJECT);
  EXPECT_THAT(found, Contains(HasSubstr("plantedGlobal")));
  EXPECT_THAT(found, Contains(HasSubstr("plantedFileStatic")));
  EXPECT_THAT(found, Contains(HasSubstr("plantedLocalStatic")));
  EXPECT_THAT(found, Contains(HasSubstr("plantedThreadLocal")));
  EXPECT_THAT(found, Each(Not(HasSubstr("allowed"))));
}

}  // namespace
}  // namespace tolvane::layers
