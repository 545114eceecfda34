// The kept seeds, with the ordinary compiler: what the fuzzers check holds of them.
#include <gtest/gtest.h>

#include <filesystem>

#include "fuzz/SeedFile.h"
#include "fuzz/Targets.h"

namespace tolvane::fuzz {
namespace {

namespace fs = std::filesystem;

// The number of seeds that there are.
int RunSeeds(const char* folder, void (*target)(std::string_view)) {
  int count = 0;
  for (const auto& file : fs::directory_iterator(fs::path(TOLVANE_SOURCE_DIR) / "fuzz/seeds" / folder)) {
    SCOPED_TRACE(file.path().string());
    target(ReadSeed(file.path()));
    ++count;
  }
  return count;
}

TEST(Seeds, OfEveryTargetKeepWhatTheFuzzersCheck) {
  EXPECT_GE(RunSeeds("package", Package), 8);
  EXPECT_GE(RunSeeds("sheet", Sheet), 4);
  EXPECT_GE(RunSeeds("styles", Styles), 3);
  EXPECT_GE(RunSeeds("strings", Strings), 2);
  EXPECT_GE(RunSeeds("formula", Formula), 20);
  EXPECT_GE(RunSeeds("number_format", NumberFormat), 10);
}

TEST(Seeds, HexIsRead) {
  EXPECT_EQ(FromHex("504b\n 0aFF\n"), "PK\n\xFF");
}

}  // namespace
}  // namespace tolvane::fuzz
