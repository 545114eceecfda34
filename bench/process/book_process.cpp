// One thing done to one workbook file by a process of its own, to be timed from outside (bench/side_by_side.py).
#include <array>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "bench/TableBook.h"
#include "engine/xlsx/Xlsx.h"
#include "engine/xlsx/Zip.h"
#include "platform/Files.h"

namespace tolvane::bench {
namespace {

constexpr int kUsage = 2;

int Make(int rows, const std::string& to) {
  engine::SaveXlsx(*TableBook(rows), engine::Package(), to, {.backups = 0});
  return EXIT_SUCCESS;
}

int Open(const std::string& file) {
  return engine::OpenXlsx(file).workbook->sheetCount() > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

// With one cell changed, so that the sheet is written again.
int Save(const std::string& file, const std::string& to) {
  const engine::XlsxBook book = engine::OpenXlsx(file);
  book.workbook->sheetAt(0).SetValue({5, 5}, -1.5);
  engine::SaveXlsx(*book.workbook, book.package, to, {.backups = 0});
  return EXIT_SUCCESS;
}

// What no way of opening and saving can go below: the archive's bytes inflated and, where `to` tells, deflated again.
int Unpack(const std::string& file, const std::string& to) {
  using namespace engine::xlsx;
  const ZipArchive archive(platform::ReadFile(platform::PathFromUtf8(file)));
  Budget budget(archive.bytes().size());
  ZipWriter writer;
  std::vector<char> block(std::size_t{64} << 10);
  for (const ZipEntry& entry : archive.entries()) {
    ZipEntryStream stream(archive, entry, budget);
    if (!to.empty()) writer.Begin(entry.name);
    while (const std::size_t size = stream.Read(block.data(), block.size())) {
      if (!to.empty()) writer.Write({block.data(), size});
    }
    if (!to.empty()) writer.End();
  }
  if (!to.empty()) platform::ReplaceFile(platform::PathFromUtf8(to), writer.Finish());
  return EXIT_SUCCESS;
}

int Run(const std::vector<std::string>& arguments) {
  const std::string_view action = arguments.empty() ? std::string_view() : arguments[0];
  if (action == "make" && arguments.size() == 3) return Make(std::atoi(arguments[1].c_str()), arguments[2]);
  if (action == "open" && arguments.size() == 2) return Open(arguments[1]);
  if (action == "save" && arguments.size() == 3) return Save(arguments[1], arguments[2]);
  if (action == "inflate" && arguments.size() == 2) return Unpack(arguments[1], "");
  if (action == "repack" && arguments.size() == 3) return Unpack(arguments[1], arguments[2]);
  std::cerr << "book_process make ROWS TO | open FILE | save FILE TO | inflate FILE | repack FILE TO\n";
  return kUsage;
}

}  // namespace
}  // namespace tolvane::bench

int main(int argc, char** argv) {
  try {
    return tolvane::bench::Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
