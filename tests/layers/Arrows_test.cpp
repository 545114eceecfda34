#include "tests/layers/Arrows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::layers {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Check(const std::string& path, const std::string& text) {
  return ForbiddenIncludes({{path, text}});
}

TEST(ArrowsTest, HoldThroughoutTheTree) {
  const std::vector<Source> tree = ReadTree(TOLVANE_SOURCE_DIR);
  ASSERT_GT(tree.size(), 50u) << "the check must have something to look at";
  EXPECT_THAT(ForbiddenIncludes(tree), IsEmpty());
}

TEST(ArrowsTest, LogicMaySeeNeitherEngineNorHosts) {
  EXPECT_THAT(Check("src/core/X.cpp", "#include \"engine/model/Workbook.h\"\n"),
              ElementsAre("src/core/X.cpp:1: src/ may not include \"engine/model/Workbook.h\""));
  EXPECT_THAT(Check("src/core/X.h", "#pragma once\n  #  include \"hosts/embedded/EmbeddedHost.h\"\n"),
              ElementsAre("src/core/X.h:2: src/ may not include \"hosts/embedded/EmbeddedHost.h\""));
  EXPECT_THAT(Check("src/core/X.cpp", "#include \"src/host/Range.h\"\n#include \"platform/Text.h\"\n"), IsEmpty());
}

TEST(ArrowsTest, LogicKnowsTheStandardLibraryAndFmtOnly) {
  EXPECT_THAT(Check("src/core/X.cpp", "#include <vector>\n#include <fmt/format.h>\n"), IsEmpty());
  EXPECT_THAT(Check("src/core/X.cpp", "#include <pugixml.hpp>\n"),
              ElementsAre("src/core/X.cpp:1: <pugixml.hpp> is not a library that src/ may know"));
  EXPECT_THAT(Check("src/core/X.cpp", "#include <unistd.h>\n").size(), 1u);
  EXPECT_THAT(Check("src/core/X_test.cpp", "#include <gtest/gtest.h>\n"), IsEmpty());
}

TEST(ArrowsTest, PortKnowsTheStandardLibraryOnly) {
  EXPECT_THAT(Check("src/host/Range.h", "#include <vector>\n#include \"src/host/Handle.h\"\n"), IsEmpty());
  EXPECT_THAT(Check("src/host/Range.h", "#include <fmt/format.h>\n").size(), 1u);
  EXPECT_THAT(Check("src/host/Range.h", "#include \"src/core/MGlobals.h\"\n").size(), 1u);
  EXPECT_THAT(Check("src/host/Range.h", "#include \"platform/Text.h\"\n").size(), 1u);
}

TEST(ArrowsTest, EngineKnowsNothingOfThePort) {
  EXPECT_THAT(Check("engine/model/Sheet.h", "#include \"src/host/CellValue.h\"\n").size(), 1u);
  EXPECT_THAT(Check("engine/model/Sheet.cpp", "#include \"engine/formula/Parser.h\"\n").size(), 1u);
  EXPECT_THAT(Check("engine/formula/Parser.cpp", "#include \"engine/model/Sheet.h\"\n"), IsEmpty());
}

TEST(ArrowsTest, WhatTheHostsShareKnowsNoHostAndNoEngine) {
  EXPECT_THAT(Check("hosts/shell/X.cpp", "#include \"engine/model/Value.h\"\n").size(), 1u);
  EXPECT_THAT(Check("hosts/shell/X.cpp", "#include \"hosts/embedded/Program.h\"\n").size(), 1u);
  EXPECT_THAT(Check("hosts/libreoffice/X.cpp", "#include \"hosts/shell/Desk.h\"\n"), IsEmpty());
  EXPECT_THAT(Check("hosts/libreoffice/X.cpp", "#include \"hosts/embedded/Program.h\"\n").size(), 1u);
  EXPECT_THAT(Check("hosts/libreoffice/X.cpp", "#include \"engine/model/Value.h\"\n").size(), 1u);
}

TEST(ArrowsTest, NothingButTestsKnowsTheTestTools) {
  EXPECT_THAT(Check("hosts/embedded/X.cpp", "#include \"testing/ScriptedDesk.h\"\n").size(), 1u);
  EXPECT_THAT(Check("hosts/embedded/X_test.cpp", "#include \"testing/ScriptedDesk.h\"\n"), IsEmpty());
}

TEST(ArrowsTest, AFileOutsideOfEveryRoomIsFound) {
  EXPECT_THAT(Check("misc/X.cpp", ""), ElementsAre("misc/X.cpp: stands in no room that the architecture knows"));
}

TEST(ArrowsTest, IncludesAreNamedFromTheRoot) {
  EXPECT_THAT(Check("engine/model/Sheet.cpp", "#include \"Sheet.h\"\n").size(), 1u);
}

}  // namespace
}  // namespace tolvane::layers
