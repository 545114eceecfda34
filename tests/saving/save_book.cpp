// A process that has a book open or saves it: to be killed or let down by the system in the middle of that (faults.py),
// and to be met by LibreOffice (locks_with_libreoffice.py).
//   save_book make FILE          a book of version 1
//   save_book change FILE        opens it, gives all cells the next version, saves it with backups
//   save_book version FILE       opens it and prints its version; fails when its cells are of several
//   save_book refused FILE       opens it as change does; fails unless that is refused since the book is open elsewhere
//   save_book hold FILE          opens it, says "open", and keeps it open until its input ends
#include <cstdlib>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "engine/xlsx/BookLock.h"
#include "engine/xlsx/Xlsx.h"
#include "hosts/files/XlsxFiles.h"

namespace tolvane {
namespace {

constexpr int kSheets = 2;
constexpr int kRows = 300;
constexpr int kUsage = 2;

void GiveVersion(engine::Workbook& book, double version) {
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    for (int row = 1; row <= kRows; ++row) book.sheetAt(i).SetValue({row, 1}, version);
  }
}

double VersionOf(const engine::Workbook& book) {
  const double version = book.sheetAt(0).ValueAt({1, 1}).number();
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    for (int row = 1; row <= kRows; ++row) {
      if (book.sheetAt(i).ValueAt({row, 1}) != engine::Value(version)) throw engine::XlsxError("a mix of versions");
    }
  }
  return version;
}

int Run(std::string_view action, const std::string& path) {
  engine::SystemLockWorld world;
  files::XlsxFiles files(world, {.backups = 2, .onlyReads = action == "version"});
  if (action == "make") {
    engine::Workbook book;
    for (int i = 0; i < kSheets; ++i) book.AddSheet("Sheet" + std::to_string(i + 1), static_cast<std::size_t>(i));
    GiveVersion(book, 1);
    files.Save(book, path);
  } else if (action == "change") {
    const auto opened = files.Open(path);
    GiveVersion(*opened.book, VersionOf(*opened.book) + 1);
    files.Save(*opened.book, path);
  } else if (action == "version") {
    std::cout << VersionOf(*files.Open(path).book) << '\n';
  } else if (action == "refused") {
    try {
      files.Open(path);
    } catch (const host::HostError& error) {
      std::cout << error.what() << '\n';
      return std::string_view(error.what()).find("is open by") != std::string_view::npos ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    return EXIT_FAILURE;
  } else if (action == "hold") {
    const auto opened = files.Open(path);
    std::cout << "open" << std::endl;
    std::cin.ignore(std::numeric_limits<std::streamsize>::max());
  } else {
    return kUsage;
  }
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace tolvane

int main(int argc, char** argv) {
  try {
    return argc == 3 ? tolvane::Run(argv[1], argv[2]) : tolvane::kUsage;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
