#include "engine/xlsx/SheetWriter.h"

#include <algorithm>
#include <map>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/SheetParts.h"
#include "engine/xlsx/SheetReader.h"
#include "engine/xlsx/ValidationNames.h"
#include "engine/xlsx/XmlNames.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

std::string_view SheetWriting::mainSpace() const {
  return data.isStrict ? kStrictMainSpace : kMainSpace;
}
std::string_view SheetWriting::linkSpace() const {
  return data.isStrict ? kStrictLinkSpace : kLinkSpace;
}

namespace {

// The root as it was, without a prefix on its own name: the elements that are written here have none.
std::string RootOf(const SheetWriting& writing) {
  std::string root = writing.record == nullptr ? "worksheet" : writing.record->rootTag;
  const std::size_t nameEnd = std::min(root.find_first_of(" \t\r\n"), root.size());
  root.replace(0, nameEnd, "worksheet");
  if (root.find("xmlns=") == std::string::npos) AppendAttribute(root, "xmlns", writing.mainSpace());
  if (root.find("xmlns:r=") == std::string::npos) AppendAttribute(root, "xmlns:r", writing.linkSpace());
  return root;
}

std::string WithDom(const std::string& xml, const SheetWriting& writing, auto&& change) {
  const auto document = ParseDom(xml, writing.record == nullptr ? "worksheet" : writing.record->path);
  change(document->document_element());
  return PrintDom(document->document_element());
}

std::string WriteProperties(const std::string& before, const SheetWriting& writing) {
  const Sheet& sheet = writing.sheet;
  if (before.empty() && sheet.codeName.empty() && !sheet.tabColour && !sheet.page.isFitted()) return {};
  return WithDom(before.empty() ? "<sheetPr/>" : before, writing, [&](pugi::xml_node element) {
    if (!sheet.codeName.empty()) SetAttribute(element, "codeName", sheet.codeName);
    if (FlagOf(ChildOf(element, "pageSetUpPr"), "fitToPage", false) != sheet.page.isFitted()) {
      SetFlag(ObtainChild(element, "pageSetUpPr", {}), "fitToPage", sheet.page.isFitted(), false);
    }
    const pugi::xml_node colour = ChildOf(element, "tabColor");
    if (writing.data.colours.Of(colour) == sheet.tabColour) return;
    RemoveChildren(element, "tabColor");
    if (sheet.tabColour) SetColour(ObtainChild(element, "tabColor", {"outlinePr", "pageSetUpPr"}), sheet.tabColour);
  });
}

void WritePane(pugi::xml_node element, const SheetView& view) {
  const bool wasFrozen = AttributeOf(ChildOf(element, "pane"), "state").starts_with("frozen");
  const bool isFrozen = view.freeze != Freeze{};
  const CellPos corner{std::max(view.scrollRow, view.freeze.rows + 1),
                       std::max(view.scrollColumn, view.freeze.columns + 1)};
  if (isFrozen) {
    if (!wasFrozen) element.remove_attribute("topLeftCell");
    pugi::xml_node pane = ObtainChild(element, "pane", {"selection", "pivotSelection", "extLst"});
    pane.remove_attributes();
    if (view.freeze.columns > 0) SetAttribute(pane, "xSplit", std::to_string(view.freeze.columns));
    if (view.freeze.rows > 0) SetAttribute(pane, "ySplit", std::to_string(view.freeze.rows));
    SetAttribute(pane, "topLeftCell", xlsx::TextOf(Rect::Cell(corner)));
    SetAttribute(pane, "activePane",
                 view.freeze.rows == 0      ? "topRight"
                 : view.freeze.columns == 0 ? "bottomLeft"
                                            : "bottomRight");
    SetAttribute(pane, "state", "frozen");
    return;
  }
  if (wasFrozen) RemoveChildren(element, "pane");
  if (corner == CellPos{}) {
    element.remove_attribute("topLeftCell");
  } else {
    SetAttribute(element, "topLeftCell", xlsx::TextOf(Rect::Cell(corner)));
  }
}

std::string WriteViews(const std::string& before, const SheetWriting& writing) {
  const SheetView& view = writing.sheet.view;
  return WithDom(before.empty() ? "<sheetViews/>" : before, writing, [&](pugi::xml_node views) {
    const bool isNew = !ChildOf(views, "sheetView");
    if (!isNew && ReadView(views) == view) return;
    pugi::xml_node element = ObtainChild(views, "sheetView", {"extLst"});
    if (isNew) SetAttribute(element, "workbookViewId", "0");
    SetFlag(element, "showGridLines", view.gridlines, true);
    if (view.zoom == 100) {
      element.remove_attribute("zoomScale");
      element.remove_attribute("zoomScaleNormal");
    } else {
      SetAttribute(element, "zoomScale", std::to_string(view.zoom));
      SetAttribute(element, "zoomScaleNormal", std::to_string(view.zoom));
    }
    WritePane(element, view);
    RemoveChildren(element, "selection");
    const pugi::xml_node selection = ObtainChild(element, "selection", {"pivotSelection", "extLst"});
    if (const pugi::xml_node pane = ChildOf(element, "pane"); HasAttribute(pane, "activePane")) {
      SetAttribute(selection, "pane", AttributeOf(pane, "activePane"));
    }
    SetAttribute(selection, "activeCell", xlsx::TextOf(Rect::Cell(view.activeCell)));
    std::size_t area = 0;
    while (area + 1 < view.selection.size() && !view.selection[area].contains(view.activeCell)) ++area;
    if (area > 0) SetAttribute(selection, "activeCellId", std::to_string(area));
    SetAttribute(selection, "sqref", xlsx::TextOf(view.selection));
  });
}

std::string WriteFormatDefaults(const std::string& before, const SheetWriting& writing) {
  const Sheet& sheet = writing.sheet;
  constexpr double kUsualWidth = 8.43;
  return WithDom(before.empty() ? "<sheetFormatPr/>" : before, writing, [&](pugi::xml_node element) {
    if (!HasAttribute(element, "defaultRowHeight") ||
        NumberOf(element, "defaultRowHeight", 15) != sheet.defaultRowHeight) {
      SetNumber(element, "defaultRowHeight", sheet.defaultRowHeight);
      SetFlag(element, "customHeight", sheet.defaultRowHeight != 15, false);
    }
    const double told =
        HasAttribute(element, "defaultColWidth") ? CharactersOf(NumberOf(element, "defaultColWidth", 0)) : kUsualWidth;
    if (told != sheet.defaultColumnWidth) SetNumber(element, "defaultColWidth", FileWidthOf(sheet.defaultColumnWidth));
  });
}

std::string WriteProtection(const std::string& before, const SheetWriting& writing) {
  const SheetProtection& from = writing.sheet.protection;
  if (from == SheetProtection{}) return {};
  return WithDom(before.empty() ? "<sheetProtection/>" : before, writing, [&](pugi::xml_node element) {
    SetFlag(element, "sheet", from.isProtected, false);
    SetFlag(element, "objects", from.objects, false);
    SetFlag(element, "scenarios", from.scenarios, false);
    for (const ProtectionFlag& flag : kProtectionFlags)
      SetFlag(element, flag.attribute, !(from.*flag.member), flag.isDenied);
    if (from.isProtected) return;
    // A password that protects nothing would be one that nobody knows of.
    for (const char* gone : {"password", "algorithmName", "hashValue", "saltValue", "spinCount"})
      element.remove_attribute(gone);
  });
}

std::string WritePageSetup(const std::string& before, const SheetWriting& writing) {
  const PageSetup& page = writing.sheet.page;
  if (before.empty() && page == PageSetup{}) return {};
  return WithDom(before.empty() ? "<pageSetup/>" : before, writing, [&](pugi::xml_node element) {
    if ((AttributeOf(element, "orientation") == "landscape") != page.landscape) {
      SetAttribute(element, "orientation", page.landscape ? "landscape" : "portrait");
    }
    if (!page.isFitted()) return;
    const auto setPages = [&element](const char* name, int pages) {
      if (WholeOf(element, name, 1, 0, kMostPages) != pages) SetAttribute(element, name, std::to_string(pages));
    };
    setPages("fitToWidth", page.fitWide);
    setPages("fitToHeight", page.fitTall);
  });
}

// Without the tables whose parts have gone.
std::string WriteTables(const std::string& before, const SheetWriting& writing) {
  const auto document = ParseDom(before, "tableParts");
  pugi::xml_node list = document->document_element();
  std::vector<pugi::xml_node> gone;
  std::size_t count = 0;
  ForEachChild(list, "tablePart", [&](const pugi::xml_node& table) {
    const bool isThere = FindLink(writing.links, LinkIdOf(table)) != nullptr;
    if (!isThere) gone.push_back(table);
    count += isThere ? 1 : 0;
  });
  if (gone.empty()) return before;
  if (count == 0) return {};
  for (const pugi::xml_node& table : gone) list.remove_child(table);
  SetAttribute(list, "count", std::to_string(count));
  return PrintDom(list);
}

std::string WriteMerges(const SheetWriting& writing) {
  if (writing.sheet.merges.empty()) return {};
  std::string xml = "<mergeCells count=\"" + std::to_string(writing.sheet.merges.size()) + "\">";
  for (const Rect& merge : writing.sheet.merges) {
    xml += "<mergeCell ref=\"";
    AppendRect(xml, merge);
    xml += "\"/>";
  }
  return xml + "</mergeCells>";
}

}  // namespace

std::vector<Piece> PiecesOf(SheetWriting& writing) {
  std::vector<Piece> pieces;
  const std::vector<Piece> none;
  const std::vector<Piece>& before = writing.record == nullptr ? none : writing.record->pieces;
  const auto original = [&before](std::string_view name) {
    const auto found =
        std::find_if(before.begin(), before.end(), [&](const Piece& piece) { return piece.name == name; });
    return found == before.end() ? std::string() : found->xml;
  };
  const auto add = [&pieces](std::string_view name, std::string xml) {
    if (!xml.empty()) pieces.push_back({RankOf(name), std::string(name), std::move(xml)});
  };
  constexpr std::array<std::string_view, 9> rewritten = {"sheetPr",         "sheetViews", "sheetFormatPr",
                                                         "sheetProtection", "autoFilter", "mergeCells",
                                                         "dataValidations", "hyperlinks", "pageSetup"};

  // What lies on cells, by the piece that it belongs to.
  std::map<std::size_t, const Attachment*> moved;
  std::vector<std::pair<const KeptItem*, const Attachment*>> fromOtherSheets;
  for (const Attachment& attachment : writing.sheet.attachments) {
    if (attachment.key == 0 || attachment.key > writing.data.items.size()) continue;
    const KeptItem& item = writing.data.items[attachment.key - 1];
    if (item.kind != KeptItem::Kind::Piece) continue;
    if (writing.record != nullptr && item.sheet == writing.recordNumber) {
      moved.emplace(item.piece, &attachment);
    } else {
      fromOtherSheets.emplace_back(&item, &attachment);  // this sheet is a copy of that one
    }
  }
  std::vector<bool> hasItem(before.size());
  for (const KeptItem& item : writing.data.items) {
    const bool isHere = writing.record != nullptr && item.sheet == writing.recordNumber;
    if (isHere && item.kind == KeptItem::Kind::Piece) hasItem[item.piece] = true;
  }
  for (std::size_t i = 0; i < before.size(); ++i) {
    const Piece& piece = before[i];
    if (std::find(rewritten.begin(), rewritten.end(), piece.name) != rewritten.end()) continue;
    if (const auto found = moved.find(i); found != moved.end()) {
      add(piece.name, MovePiece(piece, writing.data.items[found->second->key - 1], *found->second, writing));
    } else if (hasItem[i]) {
      continue;  // its cells are gone
    } else if (piece.name == "protectedRanges" || piece.name == "ignoredErrors") {
      add(piece.name, MoveElements(piece, i, writing));
    } else if (piece.name == "tableParts") {
      add(piece.name, WriteTables(piece.xml, writing));
    } else {
      pieces.push_back(piece);
    }
  }
  for (const auto& [item, attachment] : fromOtherSheets) {
    const Piece& piece = writing.data.sheets[item->sheet].pieces[item->piece];
    add(piece.name, MovePiece(piece, *item, *attachment, writing));
  }
  add("sheetPr", WriteProperties(original("sheetPr"), writing));
  if (const auto used = writing.sheet.UsedRange()) add("dimension", "<dimension ref=\"" + xlsx::TextOf(*used) + "\"/>");
  add("sheetViews", WriteViews(original("sheetViews"), writing));
  add("sheetFormatPr", WriteFormatDefaults(original("sheetFormatPr"), writing));
  add("cols", WriteColumns(writing));
  add("sheetProtection", WriteProtection(original("sheetProtection"), writing));
  add("autoFilter", WriteFilter(original("autoFilter"), writing));
  add("mergeCells", WriteMerges(writing));
  add("dataValidations", WriteValidations(original("dataValidations"), writing));
  add("hyperlinks", WriteHyperlinks(original("hyperlinks"), writing));
  add("pageSetup", WritePageSetup(original("pageSetup"), writing));
  std::stable_sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) { return a.rank < b.rank; });
  return pieces;
}

void WriteSheet(ZipWriter& zip, SheetWriting& writing) {
  const std::vector<Piece> pieces = PiecesOf(writing);
  zip.Write(std::string(kXmlDeclaration) + "<" + RootOf(writing) + ">");
  std::size_t next = 0;
  for (; next < pieces.size() && pieces[next].rank < kSheetDataRank; ++next) zip.Write(pieces[next].xml);
  WriteSheetData(zip, writing);
  for (; next < pieces.size(); ++next) zip.Write(pieces[next].xml);
  zip.Write("</worksheet>");
}

}  // namespace tolvane::engine::xlsx
