#include "engine/xlsx/PartAnchors.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/XmlText.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

int WholeIn(const pugi::xml_node& parent, std::string_view local, int otherwise) {
  const pugi::xml_node child = ChildOf(parent, local);
  if (!child) return otherwise;
  return static_cast<int>(
      std::clamp<std::int64_t>(WholeOf(std::string_view(child.text().get())).value_or(otherwise), -1, kMaxRow));
}

// The elements of a part that lie on cells, in the order in which they are numbered.
std::vector<pugi::xml_node> ElementsOf(const pugi::xml_node& root, std::string_view linkKind) {
  std::vector<pugi::xml_node> elements;
  const auto add = [&](const pugi::xml_node& element) { elements.push_back(element); };
  if (linkKind == "comments") {
    ForEachChild(ChildOf(root, "commentList"), "comment", add);
  } else if (linkKind == "threadedComment") {
    ForEachChild(root, "threadedComment", add);
  } else if (linkKind == "vmlDrawing") {
    ForEachChild(root, "shape", add);
  } else if (linkKind == "drawing") {
    for (const pugi::xml_node& child : root.children()) {
      if (LocalName(child) == "twoCellAnchor" || LocalName(child) == "oneCellAnchor") add(child);
    }
  } else if (linkKind == "table") {
    add(root);
  }
  return elements;
}

std::optional<CellPos> MarkerOf(const pugi::xml_node& marker) {
  const CellPos at{WholeIn(marker, "row", -1) + 1, WholeIn(marker, "col", -1) + 1};
  if (!Rect::Cell(at).isValid()) return std::nullopt;
  return at;
}

std::optional<Rect> PlaceOf(const pugi::xml_node& element, std::string_view linkKind) {
  if (linkKind == "vmlDrawing") {
    const pugi::xml_node data = ChildOf(element, "ClientData");
    const CellPos at{WholeIn(data, "Row", -1) + 1, WholeIn(data, "Column", -1) + 1};
    return Rect::Cell(at).isValid() ? std::optional(Rect::Cell(at)) : std::nullopt;
  }
  if (linkKind == "drawing") {
    if (AttributeOf(element, "editAs") == "absolute") return std::nullopt;
    const auto from = MarkerOf(ChildOf(element, "from"));
    const pugi::xml_node end = ChildOf(element, "to");
    const auto to = end ? MarkerOf(end) : from;
    if (!from || !to) return std::nullopt;
    const Rect place{from->row, from->column, to->row, to->column};
    return place.isValid() ? std::optional(place) : std::nullopt;
  }
  return RectOf(AttributeOf(element, "ref"));
}

constexpr std::array<std::string_view, 5> kLinkKinds = {"comments", "threadedComment", "vmlDrawing", "drawing",
                                                        "table"};

void SetChildNumber(const pugi::xml_node& parent, std::string_view local, int number) {
  if (const pugi::xml_node child = ChildOf(parent, local)) child.text().set(number);
}

void MoveMarker(const pugi::xml_node& marker, CellPos to) {
  SetChildNumber(marker, "row", to.row - 1);
  SetChildNumber(marker, "col", to.column - 1);
}

// "left, offset, top, offset, right, offset, bottom, offset", in columns and rows from 0 and pixels.
std::string ShiftedBox(std::string_view text, int rows, int columns) {
  std::string shifted;
  int place = 0;
  for (std::size_t at = 0; at <= text.size(); ++place) {
    const std::size_t end = std::min(text.find(',', at), text.size());
    std::string_view number = text.substr(at, end - at);
    while (!number.empty() && (number.front() == ' ' || number.front() == '\n' || number.front() == '\r'))
      number.remove_prefix(1);
    while (!number.empty() && (number.back() == ' ' || number.back() == '\n' || number.back() == '\r'))
      number.remove_suffix(1);
    const auto value = WholeOf(number);
    if (!value) return std::string(text);
    const int shift = place % 4 == 0 ? columns : place % 4 == 2 ? rows : 0;
    if (!shifted.empty()) shifted += ", ";
    shifted += std::to_string(std::max<std::int64_t>(0, *value + shift));
    at = end + 1;
  }
  return shifted;
}

void MoveElement(pugi::xml_node element, std::string_view linkKind, const Rect& to) {
  const auto from = PlaceOf(element, linkKind);
  if (!from || *from == to) return;
  if (linkKind == "vmlDrawing") {
    const pugi::xml_node data = ChildOf(element, "ClientData");
    SetChildNumber(data, "Row", to.top - 1);
    SetChildNumber(data, "Column", to.left - 1);
    if (const pugi::xml_node box = ChildOf(data, "Anchor")) {
      box.text().set(ShiftedBox(box.text().get(), to.top - from->top, to.left - from->left).c_str());
    }
  } else if (linkKind == "drawing") {
    MoveMarker(ChildOf(element, "from"), to.topLeft());
    MoveMarker(ChildOf(element, "to"), {to.bottom, to.right});
  } else {
    SetAttribute(element, "ref", xlsx::TextOf(to));
  }
}

}  // namespace

void ReadPartAnchors(SheetReading& reading) {
  for (const Link& link : reading.record.links) {
    const std::string_view kind = link.kind();
    if (link.external || std::find(kLinkKinds.begin(), kLinkKinds.end(), kind) == kLinkKinds.end()) continue;
    const ZipEntry* entry = reading.data.archive.Find(link.path);
    if (entry == nullptr) continue;
    std::unique_ptr<pugi::xml_document> document;
    try {
      document = ParseDom(reading.data.archive.Read(*entry, reading.budget), link.path, reading.budget);
    } catch (const OverBudget&) {
      throw;
    } catch (const XlsxError&) {
      continue;  // boxes of comments need not even be XML; what cannot be read is kept as it is
    }
    std::size_t index = 0;
    reading.budget.ReadingPart(link.path);
    for (const pugi::xml_node& element : ElementsOf(document->document_element(), kind)) {
      KeptItem item;
      item.kind = KeptItem::Kind::PartElement;
      item.owner = link.path;
      item.text = kind;
      item.index = index++;
      const auto place = PlaceOf(element, kind);
      if (!place) continue;
      item.ranges = {*place};
      const bool isBlock = kind == "drawing" || kind == "table";
      reading.Attach(std::move(item), isBlock ? Attachment::Hold::Block : Attachment::Hold::Cells);
    }
  }
}

std::map<std::string, AnchorsOfPart> MovedAnchors(const Sheet& sheet, std::size_t record, const PackageData& data) {
  std::map<std::size_t, Rect> now;
  for (const Attachment& attachment : sheet.attachments) {
    if (attachment.key == 0 || attachment.key > data.items.size() || attachment.ranges.empty()) continue;
    now.emplace(attachment.key - 1, attachment.ranges.front());
  }
  std::map<std::string, AnchorsOfPart> parts;
  for (std::size_t i = 0; i < data.items.size(); ++i) {
    const KeptItem& item = data.items[i];
    if (item.kind != KeptItem::Kind::PartElement || item.sheet != record) continue;
    const auto found = now.find(i);
    if (found != now.end() && found->second == item.ranges.front()) continue;
    parts[item.owner][item.index] = found == now.end() ? std::nullopt : std::optional(found->second);
  }
  return parts;
}

std::string MoveAnchors(std::string_view xml, const std::string& part, std::string_view linkKind,
                        const AnchorsOfPart& anchors) {
  const auto document = ParseDom(xml, part);
  const std::vector<pugi::xml_node> elements = ElementsOf(document->document_element(), linkKind);
  for (const auto& [index, place] : anchors) {
    if (index >= elements.size()) continue;
    if (place) {
      MoveElement(elements[index], linkKind, *place);
    } else if (linkKind != "drawing") {  // a picture outlives its cells
      elements[index].parent().remove_child(elements[index]);
    }
  }
  return PrintDom(*document);
}

// --- tables ----------------------------------------------------------------------------------------------------------

namespace {

std::string HeaderAt(const Sheet& sheet, CellPos at) {
  const Value& value = sheet.ValueAt(at);
  return value.isText() ? std::string(value.text().view()) : std::string();
}

// As many columns as the area has, each named like its header cell.
bool FollowColumns(pugi::xml_node list, const Rect& area, const Sheet& sheet) {
  std::vector<pugi::xml_node> columns;
  std::set<std::string> names;
  int lastId = 0;
  ForEachChild(list, "tableColumn", [&](const pugi::xml_node& column) {
    columns.push_back(column);
    names.insert(platform::FoldCase(AttributeOf(column, "name")));
    lastId = std::max(lastId, WholeOf(column, "id", 0, 0, 1 << 30));
  });
  const auto width = static_cast<std::size_t>(area.columns());
  bool changed = false;
  if (columns.size() == width) {
    for (std::size_t i = 0; i < width; ++i) {
      const std::string header = HeaderAt(sheet, {area.top, area.left + static_cast<int>(i)});
      if (header.empty() || header == WithoutEscapes(AttributeOf(columns[i], "name"))) continue;
      SetAttribute(columns[i], "name", header);
      changed = true;
    }
    return changed;
  }
  // Columns came or went: those with their header still there are the ones that stayed.
  std::map<std::string, pugi::xml_node> byName;
  for (const pugi::xml_node& column : columns) byName.emplace(platform::FoldCase(AttributeOf(column, "name")), column);
  std::set<std::string> used;
  for (int column = area.left; column <= area.right; ++column) {
    std::string header = HeaderAt(sheet, {area.top, column});
    for (int number = 1; header.empty() || used.contains(platform::FoldCase(header)); ++number) {
      header = "Column" + std::to_string(number);
    }
    used.insert(platform::FoldCase(header));
    const auto known = byName.find(platform::FoldCase(header));
    if (known != byName.end()) {
      list.append_move(known->second);
      continue;
    }
    const pugi::xml_node added = AddChild(list, "tableColumn");
    SetAttribute(added, "id", std::to_string(++lastId));
    SetAttribute(added, "name", header);
  }
  for (const auto& [name, column] : byName) {
    if (!used.contains(name)) list.remove_child(column);
  }
  SetAttribute(list, "count", std::to_string(width));
  return true;
}

}  // namespace

std::string FollowTable(std::string_view xml, const std::string& part, const Sheet& sheet,
                        const std::optional<Rect>& moved) {
  const auto document = ParseDom(xml, part);
  pugi::xml_node table = document->document_element();
  const auto before = RectOf(AttributeOf(table, "ref"));
  if (!before) return {};
  const Rect area = moved.value_or(*before);
  bool changed = area != *before;
  if (changed) {
    SetAttribute(table, "ref", xlsx::TextOf(area));
    const pugi::xml_node filter = ChildOf(table, "autoFilter");
    if (const auto range = RectOf(AttributeOf(filter, "ref"))) {
      const Rect follows{area.top + (range->top - before->top), area.left,
                         area.bottom - (before->bottom - range->bottom), area.right};
      if (follows.isValid()) SetAttribute(filter, "ref", xlsx::TextOf(follows));
    }
  }
  if (WholeOf(table, "headerRowCount", 1, 0, 1) == 1) {
    changed = FollowColumns(ChildOf(table, "tableColumns"), area, sheet) || changed;
  }
  return changed ? PrintDom(*document) : std::string();
}

}  // namespace tolvane::engine::xlsx
