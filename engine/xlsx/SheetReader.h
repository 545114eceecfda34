#pragma once

#include <pugixml.hpp>

#include <string>

#include "engine/model/Workbook.h"
#include "engine/xlsx/PackageData.h"
#include "engine/xlsx/XmlReader.h"

namespace tolvane::engine::xlsx {

// What reading a sheet works on. All sheets of the workbook are there already, so that formulas can name them.
struct SheetReading {
  Workbook& book;
  Sheet& sheet;
  PackageData& data;
  SheetRecord& record;
  Budget& budget;

  std::size_t recordNumber() const { return static_cast<std::size_t>(&record - data.sheets.data()); }
  FormatId FormatOfXf(std::int64_t xf, const XmlReader& reader) const;
  // Puts something on the sheet whose place is to be followed.
  void Attach(KeptItem item, Attachment::Hold hold, std::vector<ExpressionPtr> formulas = {});
};

// Reads the part of a worksheet: its cells as they pass, its other elements as pieces.
void ReadSheet(XmlReader& reader, SheetReading reading);

// The rows and cells; the reader stands at the Start of sheetData.
void ReadSheetData(XmlReader& reader, SheetReading& reading);

// The pieces that the model knows something of. Those before the cells are read before them, the others after them.
void ReadPieceBeforeCells(const Piece& piece, SheetReading& reading);
void ReadPieceAfterCells(std::size_t piece, SheetReading& reading);

// From <sheetViews>: the first of them.
SheetView ReadView(const pugi::xml_node& views);

// The columns, from <cols>.
void ReadColumns(const std::string& xml, SheetReading& reading);

}  // namespace tolvane::engine::xlsx
