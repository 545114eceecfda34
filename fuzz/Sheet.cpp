#include "engine/formula/Parser.h"
#include "engine/xlsx/Fingerprint.h"
#include "engine/xlsx/SheetReader.h"
#include "fuzz/Check.h"
#include "fuzz/PartInput.h"
#include "fuzz/Targets.h"

namespace tolvane::fuzz {

using namespace engine;
using namespace engine::xlsx;

namespace {

// A book with what sheets point at: another sheet, a name, formats, texts, a link.
struct Around {
  Around() {
    book.AddSheet("Data", 0);
    book.AddSheet("Other one", 1);
    book.SetName(kOwnSheet, {"total", ParseFormula("=Data!$A$1", Notation::A1, {}, book), false});
    for (std::uint32_t i = 0; i < 4; ++i) {
      CellFormat format;
      format.kept = i;
      format.format.font.bold = i == 2;
      data.xfs.push_back({format, book.formats.Intern(format)});
      data.strings.emplace_back("text " + std::to_string(i));
    }
    data.sheets.resize(1);
    data.sheets.front().id = book.sheetAt(0).id();
    data.sheets.front().path = "xl/worksheets/sheet1.xml";
    Link link;
    link.id = "rId1";
    link.target = "https://example.org/";
    link.external = true;
    data.sheets.front().links.push_back(link);
  }

  // False when it is refused.
  bool Read(XmlReader& reader, std::size_t size) {
    Budget budget(size, kFuzzBudget);
    try {
      ReadSheet(reader, {book, book.sheetAt(0), data, data.sheets.front(), budget});
    } catch (const XlsxError&) {
      return false;
    }
    return true;
  }

  Workbook book;
  PackageData data;
};

}  // namespace

void Sheet(std::string_view input) {
  Around whole;
  XmlReader reader(input, "xl/worksheets/sheet1.xml");
  const bool isRead = whole.Read(reader, input.size());

  // The same in small pieces, as a file gives it.
  const PartInput part("xl/worksheets/sheet1.xml", input);
  if (input.starts_with("\xFF\xFE") || input.starts_with("\xFE\xFF")) return;
  Around pieces;
  Budget budget(input.size());
  ZipEntryStream stream(part.archive(), part.entry(), budget);
  XmlReader piecewise(stream, part.path(), kTinyWindow);
  Check(pieces.Read(piecewise, input.size()) == isRead, "it does not matter how much is read at once");
  if (!isRead) return;
  Check(SheetFingerprint(whole.book.sheetAt(0)) == SheetFingerprint(pieces.book.sheetAt(0)),
        "a sheet is the same, however much is read at once");
  const auto& some = whole.data.sheets.front().pieces;
  const auto& others = pieces.data.sheets.front().pieces;
  Check(some.size() == others.size(), "as many pieces");
  for (std::size_t i = 0; i < some.size(); ++i) Check(some[i].xml == others[i].xml, "pieces are kept as they are");
}

}  // namespace tolvane::fuzz
