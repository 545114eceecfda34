#include "engine/xlsx/SharedStrings.h"
#include "fuzz/Check.h"
#include "fuzz/PartInput.h"
#include "fuzz/Targets.h"

namespace tolvane::fuzz {

using namespace engine;
using namespace engine::xlsx;

namespace {

constexpr const char* kPath = "xl/sharedStrings.xml";

bool Read(XmlReader& reader, std::size_t size, PackageData& data) {
  Budget budget(size, kFuzzBudget);
  try {
    ReadSharedStrings(reader, budget, data);
  } catch (const XlsxError&) {
    return false;
  }
  return true;
}

std::string Written(const SharedStringsWriter& writer) {
  ZipWriter zip;
  zip.Begin(kPath);
  writer.Write(zip);
  zip.End();
  const ZipArchive archive(zip.Finish());
  Budget budget(archive.bytes().size());
  return archive.Read(archive.entries().front(), budget);
}

// Cells that use some of the texts, and one that has a text of its own.
void CheckWriting(const PackageData& data) {
  Workbook book;
  engine::Sheet& sheet = book.AddSheet("Data", 0);
  for (std::size_t i = 0; i < data.strings.size(); i += 2) {
    sheet.cells().SetValue({static_cast<int>(i) + 1, 1}, data.strings[i]);
  }
  SharedStringsWriter writer(book, data);
  const Text own("a text of its own _x0041_ \x01");
  const std::size_t number = writer.NumberOf(own);
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < data.strings.size(); i += 2) numbers.push_back(writer.NumberOf(data.strings[i]));

  const std::string xml = Written(writer);
  PackageData again;
  XmlReader reader(xml, kPath);
  Check(Read(reader, xml.size() + (std::size_t{1} << 20), again), "texts that were written are read");
  Check(number < again.strings.size() && again.strings[number] == own, "a new text is written");
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const Text& text = data.strings[2 * i];
    Check(numbers[i] < again.strings.size(), "a text has a number");
    // Bytes that are no UTF-8 are not written as they are.
    const bool isPlain =
        std::all_of(text.view().begin(), text.view().end(), [](char c) { return c >= ' ' && c < 127; });
    if (isPlain) Check(again.strings[numbers[i]] == text, "a text that is used stays");
  }
}

}  // namespace

void Strings(std::string_view input) {
  PackageData whole;
  XmlReader reader(input, kPath);
  const bool isRead = Read(reader, input.size(), whole);

  if (input.starts_with("\xFF\xFE") || input.starts_with("\xFE\xFF")) return;
  const PartInput part(kPath, input);
  PackageData pieces;
  Budget budget(input.size());
  ZipEntryStream stream(part.archive(), part.entry(), budget);
  XmlReader piecewise(stream, kPath, kTinyWindow);
  Check(Read(piecewise, input.size(), pieces) == isRead, "it does not matter how much is read at once");
  if (!isRead) return;
  Check(whole.strings == pieces.strings && whole.richXml == pieces.richXml,
        "texts are the same, however much is read at once");
  CheckWriting(whole);
}

}  // namespace tolvane::fuzz
