#include <rapidcheck.h>

#include "engine/formula/FormulaFixture.h"

namespace tolvane::engine {
namespace {

class Lookups : public FormulaFixture {
 public:
  void TestBody() override {}
  using FormulaFixture::Set;
  using FormulaFixture::Text;
};

std::string Cell(char column, std::size_t row) {
  return column + std::to_string(row);
}

// The first lookups of a range walk it, later ones use an index; both must give the same.
TEST(LookupsProperty, GiveTheSameWithAndWithoutAnIndex) {
  EXPECT_TRUE(rc::check([] {
    const std::vector<std::string> kinds = {"1", "2", "2.5", "'1", "'2", "x", "X", "y", "TRUE", "", "0.1", "-0"};
    const auto keys = *rc::gen::nonEmpty(rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(kinds)));
    Lookups sheet;
    const std::string last = std::to_string(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
      sheet.Set(Cell('A', i + 1), keys[i]);
      sheet.Set(Cell('B', i + 1), static_cast<double>(i + 1));
    }
    for (const char* wanted : {"1", "\"1\"", "2", "\"x\"", "\"Y\"", "TRUE", "0", "0.3-0.2", "\"none\""}) {
      for (const std::string formula : {std::string("=MATCH(") + wanted + ",A1:A" + last + ",0)",
                                        std::string("=COUNTIF(A1:A") + last + "," + wanted + ")",
                                        std::string("=SUMIF(A1:A") + last + "," + wanted + ",B1:B" + last + ")",
                                        std::string("=XMATCH(") + wanted + ",A1:A" + last + ",0,-1)"}) {
        constexpr std::size_t kRepeats = 5;
        for (std::size_t i = 1; i <= kRepeats; ++i) sheet.Set(Cell('D', i), formula);
        const std::string walked = sheet.Text("D1");
        for (std::size_t i = 2; i <= kRepeats; ++i) RC_ASSERT(sheet.Text(Cell('D', i)) == walked);
      }
    }
  }));
}

TEST(LookupsInOneCalculation, SeeResultsOfTheSameCalculation) {
  Lookups sheet;
  for (std::size_t row = 1; row <= 20; ++row) {
    sheet.Set(Cell('A', row), "=ROW()*$F$1");
    sheet.Set(Cell('C', row), "=MATCH(" + std::to_string(row) + "*$F$1,A$1:A$20,0)");
  }
  sheet.Set("F1", 1);
  EXPECT_EQ(sheet.Text("C20"), "20");
  sheet.Set("F1", 3);
  for (std::size_t row = 1; row <= 20; ++row) EXPECT_EQ(sheet.Text(Cell('C', row)), std::to_string(row));
  sheet.Set("A7", 1000);
  EXPECT_EQ(sheet.Text("C7"), "#N/A");
  EXPECT_EQ(sheet.Text("C8"), "8");
}

}  // namespace
}  // namespace tolvane::engine
