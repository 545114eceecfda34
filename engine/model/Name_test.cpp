#include "engine/model/Name.h"

#include <gtest/gtest.h>

#include <vector>

#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

TEST(IsValidName, TakesWhatExcelTakes) {
  for (const char* name : {"total", "_x", "\\a", "rngType", "a.b?c\\d_1", "XFE1", "A1048577", "RC_", "R1C1a",
                           "Übersicht", "lnkA12345678", "ABCD1", "forTrnTypeList", "_xlnm.Print_Area", "R1048577C1"}) {
    EXPECT_TRUE(IsValidName(name)) << name;
  }
}

TEST(IsValidName, RefusesAddressesSignsAndLongNames) {
  for (const char* name : {"",
                           "1a",
                           ".a",
                           "?a",
                           "a b",
                           "a-b",
                           "A1",
                           "xfd1048576",
                           "R",
                           "c",
                           "rc",
                           "R1",
                           "C5",
                           "R1C1",
                           "R5C",
                           "RC16384",
                           "a!b",
                           "TRUE",
                           "false",
                           "a\xC2\xA0"
                           "b",
                           "\xFF",
                           "a'"}) {
    EXPECT_FALSE(IsValidName(name)) << name;
  }
  EXPECT_TRUE(IsValidName(std::string(255, 'a')));
  EXPECT_FALSE(IsValidName(std::string(256, 'a')));
}

TEST(NameTable, FindsIgnoringCaseAndKeepsTheSpelling) {
  NameTable names;
  EXPECT_TRUE(names.Set({"rngType", nullptr, false}));
  EXPECT_FALSE(names.Set({"RNGTYPE", nullptr, true}));
  ASSERT_NE(names.Find("rngtype"), nullptr);
  EXPECT_EQ(names.Find("rngtype")->name, "RNGTYPE");
  EXPECT_TRUE(names.Find("rngtype")->hidden);
  EXPECT_TRUE(names.Remove("rngType"));
  EXPECT_FALSE(names.Remove("rngType"));
}

TEST(NameTable, WalksInAlphabeticalOrder) {
  NameTable names;
  for (const char* name : {"beta", "Alpha", "_x", "Gamma"}) names.Set({name, nullptr, false});
  std::vector<std::string> walked;
  for (const auto& [folded, name] : names.byFoldedName()) walked.push_back(name.name);
  EXPECT_EQ(walked, (std::vector<std::string>{"_x", "Alpha", "beta", "Gamma"}));
}

}  // namespace
}  // namespace tolvane::engine
