#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "engine/model/Diff.h"
#include "engine/xlsx/Xlsx.h"
#include "tests/xlsx/RandomBook.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;

constexpr FileKind kBook{BookKind::Book, false};

void RequireSame(const Workbook& left, const Workbook& right) {
  for (const Difference& d : Diff(left, right)) RC_FAIL(d.where + ", " + d.what + ": " + d.left + " | " + d.right);
}

TEST(RoundTrip, WhatIsSavedIsOpened) {
  EXPECT_TRUE(rc::check("open(save(book)) is the book", [](std::uint32_t seed) {
    const auto book = RandomBook(seed).Make();
    const XlsxBook opened = ReadXlsx(WriteXlsx(*book, Package(), kBook));
    RequireSame(*book, *opened.workbook);
    for (std::size_t i = 0; i < book->sheetCount(); ++i) {
      RC_ASSERT(opened.workbook->sheetAt(i).codeName == book->sheetAt(i).codeName);
    }
  }));
}

TEST(RoundTrip, WhatNobodyTouchedIsTheSameFile) {
  EXPECT_TRUE(rc::check("save(open(file)) is the file", [](std::uint32_t seed) {
    const std::string bytes = WriteXlsx(*RandomBook(seed).Make(), Package(), kBook);
    const XlsxBook opened = ReadXlsx(bytes);
    RC_ASSERT(WriteXlsx(*opened.workbook, opened.package, kBook) == bytes);
  }));
}

TEST(RoundTrip, ChangesAreSavedOverWhatWasThere) {
  EXPECT_TRUE(rc::check("open(save(change(open(file)))) is the changed book", [](std::uint32_t seed) {
    RandomBook random(seed);
    XlsxBook opened = ReadXlsx(WriteXlsx(*random.Make(), Package(), kBook));
    // Several saves with the one package.
    for (int round = 0; round < 3; ++round) {
      random.Change(*opened.workbook);
      const XlsxBook again = ReadXlsx(WriteXlsx(*opened.workbook, opened.package, kBook));
      RequireSame(*opened.workbook, *again.workbook);
    }
    // A clone is saved like its original.
    RC_ASSERT(WriteXlsx(*opened.workbook->Clone(), opened.package, kBook) ==
              WriteXlsx(*opened.workbook, opened.package, kBook));
  }));
}

}  // namespace
}  // namespace tolvane::xlsxtest
