#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/model/Format.h"
#include "engine/model/Geometry.h"
#include "engine/model/Reference.h"
#include "engine/model/Text.h"
#include "engine/xlsx/Colours.h"
#include "engine/xlsx/Keepsakes.h"
#include "engine/xlsx/Links.h"
#include "engine/xlsx/Xlsx.h"
#include "engine/xlsx/Zip.h"

namespace tolvane::engine::xlsx {

// A child of a worksheet's root, as it was written. `rank` is its place in the order that the format asks for.
struct Piece {
  int rank = 0;
  std::string name;
  std::string xml;
};

// A sheet as its file has it. Sheets without cells (of charts, of dialogs) are kept, but are none of the workbook's.
struct SheetRecord {
  SheetId id = kOwnSheet;  // kOwnSheet: not in the workbook
  std::string path;
  std::string sheetXml;  // its element in the workbook part
  std::string number;    // its sheetId there
  std::vector<Link> links;
  std::string rootTag;
  std::vector<Piece> pieces;  // all but the cells
  std::uint64_t fingerprint = 0;
};

// What an Attachment's key stands for (key = place in the list + 1).
struct KeptItem {
  enum class Kind : std::uint8_t {
    Piece,           // a child of the worksheet that lies on cells: `piece` is its place in the pieces
    Element,         // the same for the `index`th element within such a child
    CellAttributes,  // `text` stands in the cell's tag
    PartElement,     // the `index`th element of the part `owner` (a comment, an anchor of a drawing)
  };
  Kind kind = Kind::Piece;
  std::size_t sheet = 0;  // in PackageData::sheets
  std::size_t piece = 0;
  std::size_t index = 0;
  std::string owner;
  std::string text;
  std::vector<Rect> ranges;  // as read
  struct Formula {
    std::size_t at = 0;   // which of the element's formulas
    std::string printed;  // as the grammar spells it
  };
  std::vector<Formula> formulas;  // those that could be read, in the order of the attachment's
};

// A record of the styles part: what it meant when it was read, and which of the workbook's formats it became.
struct XfRecord {
  CellFormat asRead;
  FormatId id = kDefaultFormat;
};
struct StyleRecord {
  NamedStyle asRead;
  StyleId id = kNormalStyle;
  int xf = 0;  // among the records of named styles
};

// A defined name that the grammar does not know, or what a known one has beyond its modelled properties.
struct KeptName {
  int scope = -1;  // the sheet in `sheets`; -1: the workbook
  std::string foldedName;
  std::string xml;  // the whole element
  bool isModelled = false;
};

struct PackageData {
  FileKind kind;
  ZipArchive archive;
  ContentTypes types;
  std::vector<Link> links;  // of the file
  std::string workbookPath;
  std::vector<Link> workbookLinks;
  std::string stylesPath;   // empty: none
  std::string stringsPath;  // empty: none
  bool isStrict = false;
  Colours colours;
  std::optional<SheetId> activeSheet;
  std::uint64_t workbookFingerprint = 0;
  bool tellsCodeNames = false;  // the names that keep code names are there
  bool isSavedByCalc = false;   // by LibreOffice, last
  Facts bookFacts;

  std::vector<SheetRecord> sheets;  // in tab order
  std::vector<KeptItem> items;
  std::vector<KeptName> names;

  std::string stringsRootSpaces;                         // declarations of prefixes on the part's root
  std::vector<Text> strings;                             // the shared texts
  std::unordered_map<std::size_t, std::string> richXml;  // the elements of those that are more than a text
  // Texts with runs that stood in cells themselves, and their XML.
  std::vector<std::pair<Text, std::string>> inlineRich;

  std::vector<XfRecord> xfs;
  std::vector<StyleRecord> styles;
};

}  // namespace tolvane::engine::xlsx
