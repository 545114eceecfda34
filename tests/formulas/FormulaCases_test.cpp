// Runs the formula cases of the text files beside this one; CaseFile.h tells how they are written.

#include <gtest/gtest.h>

#include <iostream>
#include <map>

#include "engine/formula/FormulaFixture.h"
#include "tests/formulas/CaseFile.h"

namespace tolvane::engine {
namespace {

using formulacases::CaseFiles;
using formulacases::Group;
using formulacases::Line;
using formulacases::ReadCaseFile;

class CaseSheet : public FormulaFixture {
 public:
  void TestBody() override {}

  std::string Check(const Line& line) {
    try {
      if (!line.isArray) return Result(line.left);
      SetArray("Z98", line.left);
      return Text("Z98");
    } catch (const ParseError& error) {
      return error.what();
    }
  }
  void Put(const Line& line) {
    if (line.kind == Line::Kind::Name) {
      Name(line.left, line.right);
    } else {
      Set(line.left, line.right);
    }
  }
};

class FormulaCases : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(FormulaCases, GiveWhatIsExpected) {
  int cases = 0;
  for (const Group& group : ReadCaseFile(GetParam())) {
    CaseSheet sheet;
    for (const Line& line : group.lines) {
      const std::string where = GetParam().filename().string() + ":" + std::to_string(line.number) + "  " + line.left;
      if (line.kind == Line::Kind::Case) {
        EXPECT_EQ(sheet.Check(line), line.right) << where;
        ++cases;
      } else {
        ASSERT_NO_THROW(sheet.Put(line)) << where;
      }
    }
  }
  EXPECT_GT(cases, 0);
}

INSTANTIATE_TEST_SUITE_P(Files, FormulaCases, testing::ValuesIn(CaseFiles()),
                         [](const auto& file) { return file.param.stem().string(); });

TEST(FormulaCaseSources, AreToldForEveryCase) {
  std::map<std::string, int> counts;
  int total = 0;
  for (const auto& path : CaseFiles()) {
    for (const Group& group : ReadCaseFile(path)) {
      for (const Line& line : group.lines) {
        if (line.kind != Line::Kind::Case) continue;
        ++counts[line.source];
        ++total;
      }
    }
  }
  std::cout << total << " formula cases, by where their expected values come from:\n";
  for (const auto& [source, count] : counts) std::cout << "  " << source << ": " << count << "\n";
  EXPECT_GT(total, 0);
}

}  // namespace
}  // namespace tolvane::engine
