#include <algorithm>
#include <array>
#include <set>
#include <unordered_map>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/SheetParts.h"
#include "engine/xlsx/SheetReader.h"
#include "engine/xlsx/ValidationNames.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

std::vector<Rect> RectsIn(const pugi::xml_node& element, const char* attribute) {
  return RectsOf(AttributeOf(element, attribute)).value_or(std::vector<Rect>{});
}

// --- before the cells
// ----------------------------------------------------------------------------------------------------

void ReadProperties(const pugi::xml_node& properties, SheetReading& reading) {
  reading.sheet.codeName = AttributeOf(properties, "codeName");
  reading.sheet.tabColour = reading.data.colours.Of(ChildOf(properties, "tabColor"));
  if (FlagOf(ChildOf(properties, "pageSetUpPr"), "fitToPage", false)) {
    reading.sheet.page.fitWide = 1;
    reading.sheet.page.fitTall = 1;
  }
}

}  // namespace

SheetView ReadView(const pugi::xml_node& views) {
  SheetView view;
  const pugi::xml_node element = ChildOf(views, "sheetView");
  if (!element) return view;
  view.gridlines = FlagOf(element, "showGridLines", true);
  view.zoom = WholeOf(element, "zoomScale", 100, 10, 400);
  CellPos corner = CellOf(AttributeOf(element, "topLeftCell")).value_or(CellPos{});
  const pugi::xml_node pane = ChildOf(element, "pane");
  const std::string state = AttributeOf(pane, "state");
  if (state == "frozen" || state == "frozenSplit") {
    view.freeze.rows = WholeOf(pane, "ySplit", 0, 0, kMaxRow - 1);
    view.freeze.columns = WholeOf(pane, "xSplit", 0, 0, kMaxColumn - 1);
    corner = CellOf(AttributeOf(pane, "topLeftCell")).value_or(CellPos{view.freeze.rows + 1, view.freeze.columns + 1});
  }
  view.scrollRow = corner.row;
  view.scrollColumn = corner.column;
  // Each pane has a selection; the one of the pane in front counts.
  const std::string active = pane ? AttributeOf(pane, "activePane") : std::string();
  pugi::xml_node chosen = ChildOf(element, "selection");
  ForEachChild(element, "selection", [&](const pugi::xml_node& selection) {
    if (AttributeOf(selection, "pane") == active) chosen = selection;
  });
  if (chosen) {
    view.activeCell = CellOf(AttributeOf(chosen, "activeCell")).value_or(CellPos{});
    std::vector<Rect> areas = RectsIn(chosen, "sqref");
    view.selection = areas.empty() ? std::vector<Rect>{Rect::Cell(view.activeCell)} : std::move(areas);
  }
  return view;
}

namespace {

void ReadFormatDefaults(const pugi::xml_node& element, SheetReading& reading) {
  reading.sheet.defaultRowHeight = NumberOf(element, "defaultRowHeight", reading.sheet.defaultRowHeight);
  if (HasAttribute(element, "defaultColWidth")) {
    reading.sheet.defaultColumnWidth = CharactersOf(std::clamp(NumberOf(element, "defaultColWidth", 0), 0.0, 255.0));
  }
}

// --- behind the cells
// ------------------------------------------------------------------------------------------------------

void ReadProtection(const pugi::xml_node& element, SheetReading& reading) {
  SheetProtection& to = reading.sheet.protection;
  to.isProtected = FlagOf(element, "sheet", false);
  to.objects = FlagOf(element, "objects", false);
  to.scenarios = FlagOf(element, "scenarios", false);
  for (const ProtectionFlag& flag : kProtectionFlags) to.*flag.member = !FlagOf(element, flag.attribute, flag.isDenied);
}

// The numbers of pages count only where the sheet's properties say that it is fitted.
void ReadPageSetup(const pugi::xml_node& element, SheetReading& reading) {
  PageSetup& page = reading.sheet.page;
  page.landscape = AttributeOf(element, "orientation") == "landscape";
  if (!page.isFitted()) return;
  page.fitWide = WholeOf(element, "fitToWidth", 1, 0, kMostPages);
  page.fitTall = WholeOf(element, "fitToHeight", 1, 0, kMostPages);
}

void ReadMerges(const pugi::xml_node& element, SheetReading& reading) {
  ForEachChild(element, "mergeCell", [&](const pugi::xml_node& merge) {
    const auto area = RectOf(AttributeOf(merge, "ref"));
    if (!area || area->isCell()) return;
    reading.budget.Spend(2 * sizeof(Rect));
    reading.sheet.merges.push_back(*area);
  });
}

void ReadFilter(const pugi::xml_node& element, SheetReading& reading) {
  const auto range = RectOf(AttributeOf(element, "ref"));
  if (!range) return;
  AutoFilter filter;
  filter.range = *range;
  bool isActive = false;
  ForEachChild(element, "filterColumn", [&](const pugi::xml_node& column) {
    FilterCriteria criteria;
    criteria.field = WholeOf(column, "colId", -1, 0, range->columns() - 1) + 1;
    if (column.first_child()) isActive = true;
    if (criteria.field < 1) return;
    if (const pugi::xml_node values = ChildOf(column, "filters"); values && !ChildOf(values, "dateGroupItem")) {
      criteria.join = FilterCriteria::Join::Values;
      ForEachChild(values, "filter", [&](const pugi::xml_node& value) {
        criteria.values.push_back(WithoutEscapes(AttributeOf(value, "val")));
        reading.budget.Spend(2 * sizeof(std::string) + criteria.values.back().size());
      });
      if (FlagOf(values, "blank", false)) criteria.values.emplace_back();
      filter.criteria.push_back(std::move(criteria));
    } else if (const pugi::xml_node custom = ChildOf(column, "customFilters")) {
      const pugi::xml_node first = ChildOf(custom, "customFilter");
      const pugi::xml_node second = first ? NextOf(first, "customFilter") : first;
      if (!first) return;
      criteria.criterion1 = CriterionOf(first);
      if (second) {
        criteria.criterion2 = CriterionOf(second);
        criteria.join = FlagOf(custom, "and", false) ? FilterCriteria::Join::And : FilterCriteria::Join::Or;
      }
      filter.criteria.push_back(std::move(criteria));
    }
  });
  if (isActive && range->top < range->bottom) {
    reading.sheet.rows.Change(range->top + 1, range->bottom, [](Band& band) {
      band.filtered = band.hidden;
      band.hidden = false;
    });
  }
  reading.sheet.autoFilter = std::move(filter);
}

void ReadHyperlinks(const pugi::xml_node& element, SheetReading& reading) {
  std::unordered_map<std::string_view, const Link*> targets;
  for (const Link& link : reading.record.links) targets.emplace(link.id, &link);
  ForEachChild(element, "hyperlink", [&](const pugi::xml_node& link) {
    const auto range = RectOf(AttributeOf(link, "ref"));
    if (!range) return;
    Hyperlink result;
    result.range = *range;
    result.subAddress = WithoutEscapes(AttributeOf(link, "location"));
    result.screenTip = WithoutEscapes(AttributeOf(link, "tooltip"));
    if (const std::string id = LinkIdOf(link); !id.empty()) {
      const auto target = targets.find(id);
      if (target == targets.end()) {
        throw XlsxError("The part " + reading.record.path + " of the file has a hyperlink whose target " + id +
                        " is not there");
      }
      result.address = target->second->target;
    }
    reading.budget.Spend(2 * sizeof(Hyperlink) + result.address.size() + result.subAddress.size() +
                         result.screenTip.size());
    reading.sheet.hyperlinks.push_back(std::move(result));
  });
}

// Elements that have cells, and that stay as they are but for those.
void AttachElements(std::size_t piece, const pugi::xml_node& list, SheetReading& reading) {
  std::size_t index = 0;
  for (const pugi::xml_node& element : list.children()) {
    if (element.type() != pugi::node_element) continue;
    KeptItem item;
    item.kind = KeptItem::Kind::Element;
    item.piece = piece;
    item.index = index++;
    item.ranges = RectsIn(element, "sqref");
    if (!item.ranges.empty()) reading.Attach(std::move(item), Attachment::Hold::Cells);
  }
}

void ReadValidations(std::size_t piece, const pugi::xml_node& list, SheetReading& reading) {
  std::size_t index = 0;
  ForEachChild(list, "dataValidation", [&](const pugi::xml_node& element) {
    const std::size_t own = index++;
    Validation rule;
    rule.ranges = RectsIn(element, "sqref");
    if (rule.ranges.empty()) return;
    rule.kind = ValidationKindOf(AttributeOf(element, "type"));
    rule.alert = ValidationAlertOf(AttributeOf(element, "errorStyle"));
    rule.comparison = ComparisonOf(AttributeOf(element, "operator"));
    rule.ignoreBlank = FlagOf(element, "allowBlank", false);
    rule.inCellDropdown = !FlagOf(element, "showDropDown", false);  // the flag says the contrary of its name
    rule.showInput = FlagOf(element, "showInputMessage", false);
    rule.showError = FlagOf(element, "showErrorMessage", false);
    rule.inputTitle = WithoutEscapes(AttributeOf(element, "promptTitle"));
    rule.inputMessage = WithoutEscapes(AttributeOf(element, "prompt"));
    rule.errorTitle = WithoutEscapes(AttributeOf(element, "errorTitle"));
    rule.errorMessage = WithoutEscapes(AttributeOf(element, "error"));
    const FormulaHome home{reading.sheet.id(), rule.ranges.front().topLeft()};
    bool isKnown = true;
    reading.budget.Spend(2 * sizeof(Validation) + 2 * sizeof(Rect) * rule.ranges.size() + rule.inputMessage.size() +
                         rule.errorMessage.size());
    const auto read = [&](std::string_view local, ExpressionPtr& formula) {
      const std::string text = WithoutEscapes(ChildOf(element, local).text().get());
      if (text.empty()) return;
      formula = ParseFileFormula(text, home, reading.book);
      reading.budget.Spend(CostOf(formula));
      isKnown = isKnown && formula != nullptr;
    };
    read("formula1", rule.formula1);
    read("formula2", rule.formula2);
    if (isKnown) {
      reading.sheet.validations.push_back(std::move(rule));
      return;
    }
    KeptItem item;
    item.kind = KeptItem::Kind::Element;
    item.piece = piece;
    item.index = own;
    item.ranges = std::move(rule.ranges);
    reading.Attach(std::move(item), Attachment::Hold::Cells);
  });
}

void ReadConditionalFormat(std::size_t piece, const pugi::xml_node& element, SheetReading& reading) {
  KeptItem item;
  item.kind = KeptItem::Kind::Piece;
  item.piece = piece;
  item.ranges = RectsIn(element, "sqref");
  if (item.ranges.empty()) return;
  const FormulaHome home{reading.sheet.id(), item.ranges.front().topLeft()};
  std::vector<ExpressionPtr> formulas;
  std::size_t at = 0;
  ForEachChild(element, "cfRule", [&](const pugi::xml_node& rule) {
    ForEachChild(rule, "formula", [&](const pugi::xml_node& formula) {
      if (ExpressionPtr parsed = ParseFileFormula(WithoutEscapes(formula.text().get()), home, reading.book)) {
        item.formulas.push_back({at, PrintFileFormula(*parsed, home, reading.book)});
        reading.budget.Spend(CostOf(parsed) + 2 * (sizeof(KeptItem::Formula) + item.formulas.back().printed.size()));
        formulas.push_back(std::move(parsed));
      }
      ++at;
    });
  });
  reading.Attach(std::move(item), Attachment::Hold::Cells, std::move(formulas));
}

}  // namespace

void ReadColumns(const std::string& xml, SheetReading& reading) {
  const auto document = ParseDom(xml, reading.record.path, reading.budget);
  int end = 0;
  ForEachChild(document->document_element(), "col", [&](const pugi::xml_node& column) {
    const int first = WholeOf(column, "min", 0, 1, kMaxColumn);
    const int last = WholeOf(column, "max", 0, 1, kMaxColumn);
    if (first < 1 || last < first || first <= end) {
      throw XlsxError("The part " + reading.record.path + " of the file defines columns " + AttributeOf(column, "min") +
                      " to " + AttributeOf(column, "max") + ", which is impossible there");
    }
    end = last;
    Band band;
    if (HasAttribute(column, "width")) {
      const double width = std::clamp(NumberOf(column, "width", 0), 0.0, 255.0 + 1);
      const bool isOwn = FlagOf(column, "customWidth", false);
      // Programs tell the usual width too where there is something else to tell.
      if (isOwn || CharactersOf(width) != reading.sheet.defaultColumnWidth) {
        band.size = CharactersOf(width);
        if (!isOwn) band.kept |= FittedColumn(*band.size);
      }
    }
    band.hidden = FlagOf(column, "hidden", false);
    band.outline = static_cast<std::uint8_t>(WholeOf(column, "outlineLevel", 0, 0, 7));
    if (FlagOf(column, "collapsed", false)) band.kept |= kCollapsed;
    if (FlagOf(column, "bestFit", false)) band.kept |= kBestFit;
    if (FlagOf(column, "phonetic", false)) band.kept |= kPhonetic;
    const int xf = WholeOf(column, "style", 0, 0, 1 << 30);
    if (xf > 0) {
      if (static_cast<std::size_t>(xf) >= reading.data.xfs.size()) {
        throw XlsxError("The part " + reading.record.path + " of the file uses the format " + std::to_string(xf) +
                        ", but the file has " + std::to_string(reading.data.xfs.size()));
      }
      band.format = reading.data.xfs[static_cast<std::size_t>(xf)].id;
    }
    reading.sheet.columns.Change(first, last, [&](Band& to) { to = band; });
  });
}

void ReadPieceBeforeCells(const Piece& piece, SheetReading& reading) {
  if (piece.name != "sheetPr" && piece.name != "sheetViews" && piece.name != "sheetFormatPr") return;
  const auto document = ParseDom(piece.xml, reading.record.path, reading.budget);
  const pugi::xml_node element = document->document_element();
  if (piece.name == "sheetPr") ReadProperties(element, reading);
  if (piece.name == "sheetViews") reading.sheet.view = ReadView(element);
  if (piece.name == "sheetFormatPr") ReadFormatDefaults(element, reading);
}

void ReadPieceAfterCells(std::size_t number, SheetReading& reading) {
  const Piece& piece = reading.record.pieces[number];
  constexpr std::array<std::string_view, 9> known = {"sheetProtection", "mergeCells",      "autoFilter",
                                                     "hyperlinks",      "dataValidations", "conditionalFormatting",
                                                     "protectedRanges", "ignoredErrors",   "pageSetup"};
  if (std::find(known.begin(), known.end(), piece.name) == known.end()) return;
  const auto document = ParseDom(piece.xml, reading.record.path, reading.budget);
  const pugi::xml_node element = document->document_element();
  if (piece.name == "sheetProtection") ReadProtection(element, reading);
  if (piece.name == "mergeCells") ReadMerges(element, reading);
  if (piece.name == "pageSetup") ReadPageSetup(element, reading);
  if (piece.name == "autoFilter") ReadFilter(element, reading);
  if (piece.name == "hyperlinks") ReadHyperlinks(element, reading);
  if (piece.name == "dataValidations") ReadValidations(number, element, reading);
  if (piece.name == "conditionalFormatting") ReadConditionalFormat(number, element, reading);
  if (piece.name == "protectedRanges") AttachElements(number, element, reading);
  if (piece.name == "ignoredErrors") AttachElements(number, element, reading);
}

}  // namespace tolvane::engine::xlsx
