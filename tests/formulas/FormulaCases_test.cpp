// Runs the formula cases of the text files beside this one. A file reads from top to bottom, its fields parted by tabs:
//
//   # a comment; where the expected values come from
//   == a group                  begins with empty sheets
//   B3 <tab> 12                 a cell: a number, TRUE, a text ('12 for a text of digits) or a =formula
//   name total <tab> =Sheet1!$B$3
//   =B3+1 <tab> 13              a formula, and what a cell in General format shows of it, with 15 digits
//   {=SUM(A1:A3*2)} <tab> 12    the same as an array formula

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "engine/formula/FormulaFixture.h"

namespace tolvane::engine {
namespace {

std::vector<std::filesystem::path> CaseFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(TOLVANE_SOURCE_DIR "/tests/formulas")) {
    if (entry.path().extension() == ".txt" && entry.path().stem() != "CMakeLists") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

class CaseSheet : public FormulaFixture {
 public:
  void TestBody() override {}

  std::string Check(const std::string& formula) {
    const bool isArray = formula.starts_with('{') && formula.ends_with('}');
    try {
      if (!isArray) return Result(formula);
      SetArray("Z98", formula.substr(1, formula.size() - 2));
      return Text("Z98");
    } catch (const ParseError& error) {
      return error.what();
    }
  }
  void Put(const std::string& cell, const std::string& content) {
    constexpr std::string_view kName = "name ";
    if (cell.starts_with(kName)) {
      Name(cell.substr(kName.size()), content);
    } else {
      Set(cell, content);
    }
  }
};

class FormulaCases : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(FormulaCases, GiveWhatIsExpected) {
  std::ifstream file(GetParam());
  ASSERT_TRUE(file) << GetParam();
  auto sheet = std::make_unique<CaseSheet>();
  std::string line;
  int cases = 0;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with("== ")) {
      sheet = std::make_unique<CaseSheet>();
      continue;
    }
    const std::size_t tab = line.find('\t');
    ASSERT_NE(tab, std::string::npos) << GetParam().filename() << ":" << number << " has no tab: " << line;
    const std::string left = line.substr(0, tab);
    const std::string right = line.substr(tab + 1);
    if (left.starts_with('=') || left.starts_with('{')) {
      EXPECT_EQ(sheet->Check(left), right) << GetParam().filename().string() << ":" << number << "  " << left;
      ++cases;
    } else {
      ASSERT_NO_THROW(sheet->Put(left, right)) << GetParam().filename() << ":" << number << "  " << line;
    }
  }
  EXPECT_GT(cases, 0);
}

INSTANTIATE_TEST_SUITE_P(Files, FormulaCases, testing::ValuesIn(CaseFiles()),
                         [](const auto& file) { return file.param.stem().string(); });

}  // namespace
}  // namespace tolvane::engine
