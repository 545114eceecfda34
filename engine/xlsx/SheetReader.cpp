#include "engine/xlsx/SheetReader.h"

#include <utility>

#include "engine/xlsx/SheetParts.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

// Conditional formats may stand in thousands of elements; more pieces than this are not made by anyone's work.
constexpr std::size_t kMostPieces = 200000;

}  // namespace

FormatId SheetReading::FormatOfXf(std::int64_t xf, const XmlReader& reader) const {
  if (xf == 0 && data.xfs.empty()) return kDefaultFormat;
  if (xf < 0 || xf >= static_cast<std::int64_t>(data.xfs.size())) {
    reader.Fail("uses the format " + std::to_string(xf) + ", but the file has " + std::to_string(data.xfs.size()));
  }
  return data.xfs[static_cast<std::size_t>(xf)].id;
}

void SheetReading::Attach(KeptItem item, Attachment::Hold hold, std::vector<ExpressionPtr> formulas) {
  budget.Spend(sizeof(KeptItem) + sizeof(Attachment) + item.text.size() + item.ranges.size() * 2 * sizeof(Rect));
  Attachment attachment;
  attachment.hold = hold;
  attachment.ranges = item.ranges;
  attachment.formulas = std::move(formulas);
  item.sheet = recordNumber();
  data.items.push_back(std::move(item));
  attachment.key = static_cast<std::uint32_t>(data.items.size());
  sheet.attachments.push_back(std::move(attachment));
}

void ReadSheet(XmlReader& reader, SheetReading reading) {
  if (reader.Next() != XmlReader::Event::Start || !reader.IsMain("worksheet")) reader.Fail("does not hold a worksheet");
  reading.record.rootTag = reader.rootTag();
  std::vector<Piece>& pieces = reading.record.pieces;
  bool hasData = false;
  int rank = 0;
  std::size_t dataAt = 0;
  for (auto event = reader.Next(); event != XmlReader::Event::Eof; event = reader.Next()) {
    if (event != XmlReader::Event::Start) continue;
    if (reader.IsMain("sheetData")) {
      if (std::exchange(hasData, true)) reader.Fail("has its cells twice");
      rank = kSheetDataRank;
      dataAt = pieces.size();
      ReadSheetData(reader, reading);
      continue;
    }
    const std::string name = reader.space() == XmlReader::Space::Main ? std::string(reader.local()) : std::string();
    const int own = name.empty() ? -1 : RankOf(name);
    if (own >= 0) rank = own;
    if (pieces.size() == kMostPieces) reader.Fail("has too many elements");
    std::string xml = reader.SkipAndCapture();
    reading.budget.Spend(2 * xml.size());
    if (name == "cols") {
      if (!hasData) ReadColumns(xml, reading);
      continue;
    }
    if (name == "dimension") continue;  // worked out from the cells
    pieces.push_back({rank, name, std::move(xml)});
    if (!hasData) ReadPieceBeforeCells(pieces.back(), reading);
  }
  for (std::size_t i = hasData ? dataAt : 0; i < pieces.size(); ++i) ReadPieceAfterCells(i, reading);
}

}  // namespace tolvane::engine::xlsx
