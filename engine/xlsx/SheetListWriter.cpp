#include <algorithm>
#include <map>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/SheetParts.h"
#include "engine/xlsx/SheetWriter.h"
#include "engine/xlsx/ValidationNames.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

// Where the elements of a piece lie now, by their numbers; those without cells are not in it.
std::map<std::size_t, const Attachment*> ElementsNow(std::size_t piece, const SheetWriting& writing) {
  std::map<std::size_t, const Attachment*> now;
  for (const Attachment& attachment : writing.sheet.attachments) {
    if (attachment.key == 0 || attachment.key > writing.data.items.size()) continue;
    const KeptItem& item = writing.data.items[attachment.key - 1];
    const bool isHere = writing.record != nullptr && item.sheet == writing.recordNumber && item.piece == piece;
    if (isHere && item.kind == KeptItem::Kind::Element) now.emplace(item.index, &attachment);
  }
  return now;
}

std::string FormulaText(const ExpressionPtr& formula, const FormulaHome& home, const Workbook& book) {
  return formula == nullptr ? std::string() : PrintFileFormula(*formula, home, book);
}

}  // namespace

std::string WriteColumns(const SheetWriting& writing) {
  if (writing.sheet.columns.stretches().empty()) return {};
  std::string xml = "<cols>";
  for (const BandTable::Stretch& stretch : writing.sheet.columns.stretches()) {
    const Band& band = stretch.band;
    xml += "<col";
    AppendAttribute(xml, "min", std::to_string(stretch.first));
    AppendAttribute(xml, "max", std::to_string(stretch.last));
    AppendAttribute(xml, "width", FileWidthOf(band.size.value_or(writing.sheet.defaultColumnWidth)));
    if (band.format != 0) AppendAttribute(xml, "style", std::to_string(writing.styles.XfOf(band.format)));
    if (band.hidden) AppendFlag(xml, "hidden", true);
    if ((band.kept & kBestFit) != 0) AppendFlag(xml, "bestFit", true);
    if (band.size && band.kept >> kFlagBits << kFlagBits != FittedColumn(*band.size))
      AppendFlag(xml, "customWidth", true);
    if ((band.kept & kPhonetic) != 0) AppendFlag(xml, "phonetic", true);
    if (band.outline > 0) AppendAttribute(xml, "outlineLevel", std::to_string(band.outline));
    if ((band.kept & kCollapsed) != 0) AppendFlag(xml, "collapsed", true);
    xml += "/>";
  }
  return xml + "</cols>";
}

// --- validations
// ---------------------------------------------------------------------------------------------------------

namespace {

constexpr std::array<const char*, 11> kRuleAttributes = {
    "type",       "errorStyle", "operator",    "allowBlank", "showDropDown", "showInputMessage", "showErrorMessage",
    "errorTitle", "error",      "promptTitle", "prompt"};

// What makes a rule, apart from its cells.
std::string RuleKey(const pugi::xml_node& element) {
  std::string key;
  for (const char* name : kRuleAttributes) key.append(AttributeOf(element, name)).push_back('\n');
  key.append(ChildOf(element, "formula1").text().get()).push_back('\n');
  return key.append(ChildOf(element, "formula2").text().get());
}

void SetText(pugi::xml_node element, const char* name, const std::string& text) {
  if (text.empty()) return;
  std::string escaped;
  AppendText(escaped, text);
  // The tree escapes marks itself; what XML cannot hold must be gone before.
  const auto document = ParseDom("<t a=\"" + escaped + "\"/>", "text");
  SetAttribute(element, name, AttributeOf(document->document_element(), "a"));
}

void WriteRule(pugi::xml_node element, const Validation& rule, const SheetWriting& writing) {
  if (rule.kind != Validation::Kind::Any) SetAttribute(element, "type", NameOf(rule.kind));
  if (rule.alert != Validation::Alert::Stop) SetAttribute(element, "errorStyle", NameOf(rule.alert));
  if (rule.comparison != 0) SetAttribute(element, "operator", ComparisonName(rule.comparison));
  SetFlag(element, "allowBlank", rule.ignoreBlank, false);
  SetFlag(element, "showDropDown", !rule.inCellDropdown, false);
  SetFlag(element, "showInputMessage", rule.showInput, false);
  SetFlag(element, "showErrorMessage", rule.showError, false);
  SetText(element, "errorTitle", rule.errorTitle);
  SetText(element, "error", rule.errorMessage);
  SetText(element, "promptTitle", rule.inputTitle);
  SetText(element, "prompt", rule.inputMessage);
  const FormulaHome home{writing.sheet.id(), rule.ranges.front().topLeft()};
  const auto writeFormula = [&](std::string_view name, const ExpressionPtr& formula) {
    if (formula != nullptr)
      AddChild(element, name).text().set(FormulaText(formula, home, writing.sheet.book()).c_str());
  };
  writeFormula("formula1", rule.formula1);
  writeFormula("formula2", rule.formula2);
}

}  // namespace

std::string WriteValidations(const std::string& before, const SheetWriting& writing) {
  const auto document = ParseDom(before.empty() ? "<dataValidations/>" : before, "dataValidations");
  pugi::xml_node list = document->document_element();
  std::map<std::size_t, const Attachment*> kept;
  if (writing.record != nullptr) {
    const auto& pieces = writing.record->pieces;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      if (pieces[i].name == "dataValidations") kept = ElementsNow(i, writing);
    }
  }
  // Rules that are as they were keep their elements, and with them what the model does not know.
  std::multimap<std::string, pugi::xml_node> known;
  std::vector<pugi::xml_node> all;
  ForEachChild(list, "dataValidation", [&](const pugi::xml_node& element) { all.push_back(element); });
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (const auto found = kept.find(i); found != kept.end()) {
      SetAttribute(all[i], "sqref", xlsx::TextOf(found->second->ranges));
    } else {
      known.emplace(RuleKey(all[i]), all[i]);
    }
  }
  std::size_t count = kept.size();
  for (const Validation& rule : writing.sheet.validations) {
    if (rule.ranges.empty()) continue;
    ++count;
    pugi::xml_node element = AddChild(list, "dataValidation");
    WriteRule(element, rule, writing);
    if (const auto same = known.find(RuleKey(element)); same != known.end()) {
      list.remove_child(element);
      element = list.append_move(same->second);
      known.erase(same);
    }
    SetAttribute(element, "sqref", xlsx::TextOf(rule.ranges));
  }
  for (const auto& [key, element] : known) list.remove_child(element);
  if (count == 0) return {};
  SetAttribute(list, "count", std::to_string(count));
  return PrintDom(list);
}

// --- hyperlinks
// ------------------------------------------------------------------------------------------------------------

std::string WriteHyperlinks(const std::string& before, SheetWriting& writing) {
  const auto keyOf = [](std::string_view address, std::string_view place, std::string_view tip) {
    return std::string(address) + "\n" + std::string(place) + "\n" + std::string(tip);
  };
  const auto document = ParseDom(before.empty() ? "<hyperlinks/>" : before, "hyperlinks");
  pugi::xml_node list = document->document_element();
  std::multimap<std::string, pugi::xml_node> known;
  ForEachChild(list, "hyperlink", [&](const pugi::xml_node& element) {
    const Link* target = FindLink(writing.links, LinkIdOf(element));
    known.emplace(
        keyOf(target == nullptr ? std::string() : target->target, WithoutEscapes(AttributeOf(element, "location")),
              WithoutEscapes(AttributeOf(element, "tooltip"))),
        element);
  });
  std::map<std::string, Link> formerLinks;
  for (const Link& link : writing.links) {
    if (link.kind() == "hyperlink") formerLinks.emplace(link.target, link);
  }
  std::erase_if(writing.links, [](const Link& link) { return link.kind() == "hyperlink"; });
  if (writing.sheet.hyperlinks.empty()) return {};

  std::map<std::string, std::string> ids;  // by target
  std::size_t next = 1;
  const auto idOf = [&](const std::string& address) {
    const auto [entry, isNew] = ids.try_emplace(address);
    if (!isNew) return entry->second;
    Link link;
    if (const auto old = formerLinks.find(address); old != formerLinks.end()) {
      link = old->second;
    } else {
      do {
        link.id = "rIdLink" + std::to_string(next++);
      } while (FindLink(writing.links, link.id) != nullptr);
      link.type = std::string(writing.linkSpace()) + "/hyperlink";
      link.target = address;
      link.external = true;
    }
    writing.links.push_back(link);
    return entry->second = link.id;
  };
  for (const Hyperlink& link : writing.sheet.hyperlinks) {
    pugi::xml_node element;
    if (const auto same = known.find(keyOf(link.address, link.subAddress, link.screenTip)); same != known.end()) {
      element = list.append_move(same->second);
      known.erase(same);
      SetAttribute(element, "ref", xlsx::TextOf(link.range));
      if (!link.address.empty()) idOf(link.address);
      for (pugi::xml_attribute attribute : element.attributes()) {
        if (std::string_view(attribute.name()).ends_with(":id")) attribute.set_value(idOf(link.address).c_str());
      }
      continue;
    }
    element = AddChild(list, "hyperlink");
    SetAttribute(element, "ref", xlsx::TextOf(link.range));
    if (!link.address.empty()) {
      SetAttribute(element, "xmlns:r", writing.linkSpace());
      SetAttribute(element, "r:id", idOf(link.address));
    }
    SetText(element, "location", link.subAddress);
    SetText(element, "tooltip", link.screenTip);
  }
  for (const auto& [key, element] : known) list.remove_child(element);
  return PrintDom(list);
}

// --- filters
// -----------------------------------------------------------------------------------------------------------

namespace {

std::string FilterColumn(const FilterCriteria& criteria) {
  std::string xml = "<filterColumn colId=\"" + std::to_string(criteria.field - 1) + "\">";
  if (criteria.join == FilterCriteria::Join::Values) {
    const bool hasBlank = std::find(criteria.values.begin(), criteria.values.end(), "") != criteria.values.end();
    xml += hasBlank ? "<filters blank=\"1\">" : "<filters>";
    for (const std::string& value : criteria.values) {
      if (value.empty()) continue;
      xml += "<filter";
      AppendXAttribute(xml, "val", value);
      xml += "/>";
    }
    xml += "</filters>";
  } else {
    xml += criteria.join == FilterCriteria::Join::And ? "<customFilters and=\"1\">" : "<customFilters>";
    AppendCustomFilter(xml, criteria.criterion1);
    if (criteria.criterion2) AppendCustomFilter(xml, *criteria.criterion2);
    xml += "</customFilters>";
  }
  return xml + "</filterColumn>";
}

bool IsModelled(const pugi::xml_node& column) {
  const pugi::xml_node values = ChildOf(column, "filters");
  return (values && !ChildOf(values, "dateGroupItem")) || ChildOf(column, "customFilters");
}

}  // namespace

std::string WriteFilter(const std::string& before, const SheetWriting& writing) {
  if (!writing.sheet.autoFilter) return {};
  const AutoFilter& filter = *writing.sheet.autoFilter;
  const auto document = ParseDom(before.empty() ? "<autoFilter/>" : before, "autoFilter");
  pugi::xml_node element = document->document_element();
  const auto range = RectOf(AttributeOf(element, "ref"));
  const bool sameColumns = range && range->left == filter.range.left && range->right == filter.range.right;
  std::map<int, std::string> columns;  // by number from 0
  ForEachChild(element, "filterColumn", [&](const pugi::xml_node& column) {
    const int number = WholeOf(column, "colId", -1, 0, kMaxColumn);
    if (sameColumns && !IsModelled(column)) columns.emplace(number, PrintDom(column));
  });
  for (const FilterCriteria& criteria : filter.criteria) columns[criteria.field - 1] = FilterColumn(criteria);
  RemoveChildren(element, "filterColumn");
  SetAttribute(element, "ref", xlsx::TextOf(filter.range));
  pugi::xml_node last;
  for (const auto& [number, xml] : columns) {
    const auto parsed = ParseDom(xml, "autoFilter");
    const pugi::xml_node column = parsed->document_element();
    last = last ? element.insert_copy_after(column, last) : element.prepend_copy(column);
  }
  return PrintDom(element);
}

// --- what only moves
// -------------------------------------------------------------------------------------------------------

std::string MovePiece(const Piece& piece, const KeptItem& item, const Attachment& now, const SheetWriting& writing) {
  const FormulaHome home{writing.sheet.id(), now.ranges.front().topLeft()};
  std::map<std::size_t, std::string> changed;
  for (std::size_t i = 0; i < item.formulas.size() && i < now.formulas.size(); ++i) {
    std::string text = FormulaText(now.formulas[i], home, writing.sheet.book());
    if (text != item.formulas[i].printed) changed.emplace(item.formulas[i].at, std::move(text));
  }
  if (changed.empty() && now.ranges == item.ranges) return piece.xml;
  const auto document = ParseDom(piece.xml, piece.name);
  const pugi::xml_node element = document->document_element();
  SetAttribute(element, "sqref", xlsx::TextOf(now.ranges));
  std::size_t at = 0;
  ForEachChild(element, "cfRule", [&](const pugi::xml_node& rule) {
    ForEachChild(rule, "formula", [&](const pugi::xml_node& formula) {
      if (const auto found = changed.find(at); found != changed.end()) formula.text().set(found->second.c_str());
      ++at;
    });
  });
  return PrintDom(element);
}

std::string MoveElements(const Piece& piece, std::size_t number, const SheetWriting& writing) {
  const std::map<std::size_t, const Attachment*> now = ElementsNow(number, writing);
  const auto document = ParseDom(piece.xml, piece.name);
  pugi::xml_node list = document->document_element();
  std::vector<pugi::xml_node> elements;
  for (const pugi::xml_node& child : list.children()) {
    if (child.type() == pugi::node_element) elements.push_back(child);
  }
  bool changed = false;
  bool isEmpty = true;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const auto found = now.find(i);
    const auto before = RectsOf(AttributeOf(elements[i], "sqref"));
    const bool lay = before && !before->empty();
    if (lay && found == now.end()) {
      changed = true;
      list.remove_child(elements[i]);
      continue;
    }
    isEmpty = false;
    if (!lay || *before == found->second->ranges) continue;
    SetAttribute(elements[i], "sqref", xlsx::TextOf(found->second->ranges));
    changed = true;
  }
  if (isEmpty) return {};
  return changed ? PrintDom(list) : piece.xml;
}

}  // namespace tolvane::engine::xlsx
