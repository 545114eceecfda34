#include "tests/xlsx/Mutation.h"

#include <array>
#include <random>
#include <stdexcept>
#include <vector>

#include "engine/xlsx/Xlsx.h"
#include "engine/xlsx/Zip.h"
#include "tests/xlsx/RandomBook.h"

namespace tolvane::xlsxtest {

using namespace engine;

namespace {

constexpr FileKind kBook{BookKind::Book, false};
constexpr std::array<std::string_view, 12> kTokens = {
    "\"0\"", "\"-1\"", "\"99999999999\"", "<",   ">",      "\"",
    "&amp;", "</row>", "<c r=\"A1\">",    "ref", "A1:B2 ", "\"rId1\""};

void MutateText(std::string& text, std::mt19937& random) {
  const auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
  const std::size_t at = below(text.size());
  const std::size_t size = 1 + below(20);
  switch (below(6)) {
    case 0:
      if (!text.empty()) text[at] = static_cast<char>(random());
      break;
    case 1:
      text.erase(at, size);
      break;
    case 2:
      text.insert(at, text.substr(below(text.size()), size));
      break;
    case 3:
      text.insert(at, kTokens[below(kTokens.size())]);
      break;
    case 4: {
      // Another number in some attribute.
      const std::size_t digit = text.find_first_of("0123456789", at);
      if (digit != std::string::npos) text[digit] = static_cast<char>('0' + below(10));
      break;
    }
    default:
      text.resize(at);
      break;
  }
}

}  // namespace

std::string MutatedFile(std::uint32_t seed) {
  std::mt19937 random(seed);
  std::string bytes = WriteXlsx(*RandomBook(seed % 50).Make(), Package(), kBook);
  if (seed % 5 == 0) {
    for (int i = 0; i < 3; ++i) MutateText(bytes, random);
    return bytes;
  }
  const xlsx::ZipArchive archive(bytes);
  xlsx::Budget budget(bytes.size());
  const std::size_t chosen = random() % archive.entries().size();
  xlsx::ZipWriter zip;
  for (std::size_t i = 0; i < archive.entries().size(); ++i) {
    std::string part = archive.Read(archive.entries()[i], budget);
    for (std::uint32_t change = random() % 3 + 1; i == chosen && change > 0; --change) MutateText(part, random);
    zip.Add(archive.entries()[i].name, part);
  }
  return zip.Finish();
}

std::string FileWithPart(std::size_t number, const std::string& content) {
  const std::string bytes = WriteXlsx(*RandomBook(7).Make(), Package(), kBook);
  const xlsx::ZipArchive archive(bytes);
  xlsx::ZipWriter zip;
  for (std::size_t i = 0; i < archive.entries().size(); ++i) {
    if (i == number % archive.entries().size()) {
      zip.Add(archive.entries()[i].name, content);
    } else {
      zip.Copy(archive, archive.entries()[i]);
    }
  }
  return zip.Finish();
}

bool OpensOrRefuses(const std::string& bytes) {
  XlsxBook book;
  try {
    book = ReadXlsx(bytes);
  } catch (const XlsxError&) {
    return false;
  }
  Sheet& sheet = book.workbook->sheetAt(0);
  const Run run{2, 1};
  try {
    book.workbook->InsertRuns(sheet.id(), Axis::Rows, {&run, 1});
  } catch (const std::invalid_argument&) {
    // It may be full to its last row.
  }
  try {
    sheet.SetValue({1, 1}, "changed");
  } catch (const std::invalid_argument&) {
    // It may be part of an array formula.
  }
  ReadXlsx(WriteXlsx(*book.workbook, book.package, kBook));
  return true;
}

}  // namespace tolvane::xlsxtest
