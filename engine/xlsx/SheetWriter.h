#pragma once

#include <string>
#include <vector>

#include "engine/model/Workbook.h"
#include "engine/xlsx/PackageData.h"
#include "engine/xlsx/SharedStrings.h"
#include "engine/xlsx/Styles.h"

namespace tolvane::engine::xlsx {

// What writing a sheet works on.
struct SheetWriting {
  const Sheet& sheet;
  const PackageData& data;
  const SheetRecord* record;  // null: a new sheet
  std::size_t recordNumber;   // where there is one
  StylesWriter& styles;
  SharedStringsWriter& strings;
  std::vector<Link> links;  // of the part; the writer keeps them right

  std::string_view mainSpace() const;
  std::string_view linkSpace() const;
};

// Writes the part of a worksheet as the present entry of the archive.
void WriteSheet(ZipWriter& zip, SheetWriting& writing);

// <sheetData>.
void WriteSheetData(ZipWriter& zip, SheetWriting& writing);

// The pieces with all that the model tells put into them, in the order of the format, without the cells.
std::vector<Piece> PiecesOf(SheetWriting& writing);

// Those of them that are lists of elements on cells. Empty: there are none.
std::string WriteColumns(const SheetWriting& writing);
std::string WriteValidations(const std::string& before, const SheetWriting& writing);
std::string WriteHyperlinks(const std::string& before, SheetWriting& writing);
std::string WriteFilter(const std::string& before, const SheetWriting& writing);
// Elements that lie on cells and are otherwise as they were.
std::string MovePiece(const Piece& piece, const KeptItem& item, const Attachment& now, const SheetWriting& writing);
std::string MoveElements(const Piece& piece, std::size_t number, const SheetWriting& writing);

}  // namespace tolvane::engine::xlsx
