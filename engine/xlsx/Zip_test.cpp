#include "engine/xlsx/Zip.h"
#include "engine/xlsx/ZipFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace tolvane::engine::xlsx {
namespace {

using ::testing::HasSubstr;

std::string ReadAll(const ZipArchive& archive, std::string_view name) {
  Budget budget(archive.bytes().size());
  return archive.Read(*archive.Find(name), budget);
}

TEST(Zip, WhatIsWrittenIsRead) {
  EXPECT_TRUE(rc::check("read(write(parts)) are the parts", [](const std::vector<std::string>& parts) {
    ZipWriter zip;
    for (std::size_t i = 0; i < parts.size(); ++i) zip.Add("part" + std::to_string(i), parts[i]);
    const ZipArchive archive(zip.Finish());
    RC_ASSERT(archive.entries().size() == parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) RC_ASSERT(ReadAll(archive, "PART" + std::to_string(i)) == parts[i]);
  }));
}

TEST(Zip, LongPartsGoInPieces) {
  std::string content;
  for (int i = 0; i < 200000; ++i) content += std::to_string(i * 7919);
  ZipWriter zip;
  zip.Begin("long");
  for (std::size_t at = 0; at < content.size(); at += 1000) zip.Write(std::string_view(content).substr(at, 1000));
  zip.End();
  zip.Add("short", "x");
  const ZipArchive archive(zip.Finish());
  EXPECT_EQ(ReadAll(archive, "long"), content);
  EXPECT_EQ(ReadAll(archive, "short"), "x");
}

TEST(Zip, CopiesAreTheSameBytes) {
  ZipWriter zip;
  zip.Add("a", "some content, some content, some content");
  const ZipArchive first(zip.Finish());
  ZipWriter second;
  second.Copy(first, first.entries()[0]);
  EXPECT_EQ(second.Finish(), first.bytes());
}

TEST(Zip, ChecksumsAndSizesThatLieAreFound) {
  ZipWriter zip;
  zip.Add("a", std::string(1000, 'x'));
  const std::string good = zip.Finish();
  const std::size_t directory = good.rfind("PK\x01\x02");
  const auto problem = [&](std::size_t at, char change) {
    std::string bad = good;
    bad[at] = static_cast<char>(bad[at] ^ change);
    try {
      const ZipArchive archive(bad);
      ReadAll(archive, "a");
    } catch (const XlsxError& error) {
      return std::string(error.what());
    }
    return std::string("none");
  };
  EXPECT_THAT(problem(directory + 16, 1), HasSubstr("checksum"));
  EXPECT_THAT(problem(directory + 24, 1), HasSubstr("than it says"));
  EXPECT_THAT(problem(directory + 25, 2), HasSubstr("longer than it says"));
  EXPECT_THAT(problem(directory + 10, 1), HasSubstr("unknown way"));
  EXPECT_THAT(problem(directory + 8, 1), HasSubstr("encrypted"));
}

// What is kept must be writable again.
TEST(Zip, PartsBeyondFourGigabytesAreRefused) {
  ZipWriter zip;
  zip.Add("a", "x");
  std::string bad = zip.Finish();
  const std::size_t directory = bad.rfind("PK\x01\x02"), end = bad.rfind("PK\x05\x06");
  bad.replace(directory + 24, 4, "\xFF\xFF\xFF\xFF");
  std::string extra("\x01\x00\x08\x00", 4);
  AppendNumber(extra, std::uint64_t{5} << 30, 8);
  bad[directory + 30] = static_cast<char>(extra.size());
  bad.insert(directory + 46 + 1, extra);
  bad[end + extra.size() + 12] = static_cast<char>(bad[end + extra.size() + 12] + static_cast<char>(extra.size()));
  try {
    const ZipArchive archive(bad);
    FAIL() << "it was taken";
  } catch (const XlsxError& error) {
    EXPECT_THAT(error.what(), HasSubstr("part a is larger than 4 gigabytes"));
  }
}

TEST(Zip, ABudgetEndsWhatInflatesWithoutEnd) {
  ZipWriter zip;
  zip.Begin("bomb");
  const std::string zeros(1'000'000, '\0');
  for (int i = 0; i < 300; ++i) zip.Write(zeros);
  zip.End();
  const ZipArchive archive(zip.Finish());
  Budget budget(archive.bytes().size());
  ZipEntryStream stream(archive, archive.entries()[0], budget);
  std::string block(65536, '\0');
  EXPECT_THROW(
      {
        while (stream.Read(block.data(), block.size()) > 0) {
        }
      },
      XlsxError);
}

}  // namespace
}  // namespace tolvane::engine::xlsx
