// Shows thousands of values in number formats and compares with what LibreOffice Calc shows. Where the two differ, the
// file known_format_differences says why and what Excel shows. Where `soffice` is not installed this is skipped.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "engine/formula/NumberFormat.h"
#include "tests/formats/FormatCases.h"
#include "tests/formats/KnownFormatDifferences.h"
#include "tests/formats/OfficeTexts.h"

namespace tolvane::formatstest {
namespace {

std::string ReadFile(const std::string& name) {
  std::ifstream file(std::string(TOLVANE_SOURCE_DIR) + "/tests/formats/" + name, std::ios::binary);
  if (!file) throw std::runtime_error("Cannot read tests/formats/" + name + ".");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(NumberFormats, AreShownAsLibreOfficeShowsThem) {
  if (!IsOfficeInstalled()) GTEST_SKIP() << "soffice is not installed: nothing was compared with LibreOffice";
  constexpr unsigned kSeed = 20240315;
  constexpr int kGenerated = 560;
  constexpr std::size_t kFewestCases = 5000;
  std::vector<FormatCase> cases = ReadFormatCases(ReadFile("formats.txt"));
  for (FormatCase& made : GenerateFormatCases(kSeed, kGenerated)) cases.push_back(std::move(made));
  ASSERT_GE(cases.size(), kFewestCases);
  const std::vector<KnownFormatDifference> known = ReadKnownFormatDifferences(ReadFile("known_format_differences"));
  const std::vector<std::string> theirs = ShownByOffice(cases);

  std::vector<int> uses(known.size());
  int differing = 0;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const FormatCase& one = cases[i];
    const std::string ours = engine::FormatValue(one.value, one.format);
    if (ours == theirs[i]) continue;
    ++differing;
    bool isKnown = false;
    for (std::size_t k = 0; k < known.size(); ++k) {
      if (!known[k].Fits(one, ours, theirs[i])) continue;
      ++uses[k];
      isKnown = true;
    }
    EXPECT_TRUE(isKnown) << one.format << "  of  " << one.written << "\n  ours:   <" << ours << ">\n  theirs: <"
                         << theirs[i] << ">";
  }
  for (std::size_t k = 0; k < known.size(); ++k) {
    EXPECT_GT(uses[k], 0) << "This known difference is none any more: " << known[k].name;
  }
  std::cout << cases.size() << " cases, " << differing << " differ from LibreOffice, " << known.size()
            << " reasons for it are known\n";
}

}  // namespace
}  // namespace tolvane::formatstest
