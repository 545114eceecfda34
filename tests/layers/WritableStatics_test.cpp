#include "tests/layers/WritableStatics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace tolvane::layers {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
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

// All state of the logic lives in one object; which one is at work is the only thing that is remembered outside of it.
TEST(WritableStaticsTest, TheCoreRemembersOnlyWhichAddInIsAtWork) {
  EXPECT_THAT(WritableStatics(TOLVANE_CORE_LIBRARY), ElementsAre(HasSubstr("current")));
}

// Where LibreOffice's SDK is missing there is no such library.
TEST(WritableStaticsTest, TheLibreOfficeHostHasNoneButThoseOfUnoHeaders) {
  const std::string library = TOLVANE_LIBREOFFICE_LIBRARY;
  if (library.empty()) GTEST_SKIP() << "The LibreOffice host is left out of this build.";
  std::vector<std::string> found = WritableStatics(library);
  EXPECT_THAT(found, Contains(HasSubstr("cppu_detail_getUnoType"))) << "the exception must have something to except";
  std::erase_if(found, IsOfUnoHeaders);
  EXPECT_THAT(found, IsEmpty());
}

TEST(WritableStaticsTest, TheExceptionForUnoHeadersCoversNothingOfOurs) {
  EXPECT_TRUE(IsOfUnoHeaders("com::sun::star::uno::Sequence<rtl::OUString>::s_pType"));
  EXPECT_FALSE(IsOfUnoHeaders("com::sun::star::uno::Sequence<tolvane::libreoffice::Rect>::s_pType"));
  EXPECT_FALSE(IsOfUnoHeaders("tolvane::libreoffice::count"));
  EXPECT_FALSE(IsOfUnoHeaders("(anonymous namespace)::count"));
  EXPECT_FALSE(IsOfUnoHeaders("guard variable for tolvane::libreoffice::Table()::table"));
  for (const std::string& planted : WritableStatics(TOLVANE_PLANTED_OBJECT)) EXPECT_FALSE(IsOfUnoHeaders(planted));
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
