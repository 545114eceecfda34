#include <algorithm>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/WorkbookPart.h"
#include "engine/xlsx/XmlNames.h"
#include "engine/xlsx/XmlText.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

class WorkbookWriter {
 public:
  WorkbookWriter(pugi::xml_node root, const Workbook& book, const PackageData& data,
                 const std::vector<SheetEntry>& sheets)
      : root_(root), book_(book), data_(data), sheets_(sheets) {}

  void Write(std::optional<SheetId> activeSheet) {
    const std::initializer_list<std::string_view> behindProperties = {"workbookProtection", "bookViews", "sheets"};
    const pugi::xml_node properties = ObtainChild(root_, "workbookPr", behindProperties);
    SetFlag(properties, "date1904", book_.date1904, false);
    if (!book_.codeName.empty()) SetAttribute(properties, "codeName", book_.codeName);
    WriteProtection();
    const std::size_t active = ActiveTab(activeSheet);
    WriteSheets();
    const pugi::xml_node views = ObtainChild(root_, "bookViews", {"sheets"});
    pugi::xml_node view = ObtainChild(views, "workbookView", {"extLst"});
    if (active > 0) {
      SetAttribute(view, "activeTab", std::to_string(active));
    } else {
      view.remove_attribute("activeTab");
    }
    if (NumberOf(view, "firstSheet", 0) > static_cast<double>(active)) view.remove_attribute("firstSheet");
    WriteNames();
  }

 private:
  void WriteProtection() {
    const pugi::xml_node before = ChildOf(root_, "workbookProtection");
    if (FlagOf(before, "lockStructure", false) == book_.structureProtected) return;
    pugi::xml_node element = ObtainChild(root_, "workbookProtection", {"bookViews", "sheets"});
    SetFlag(element, "lockStructure", book_.structureProtected, false);
    if (book_.structureProtected) return;
    for (const char* gone :
         {"workbookPassword", "workbookAlgorithmName", "workbookHashValue", "workbookSaltValue", "workbookSpinCount"}) {
      element.remove_attribute(gone);
    }
    if (!element.first_attribute()) root_.remove_child(element);
  }

  // The place of a sheet in the new order; by its record where it is none of the workbook's.
  std::optional<std::size_t> PlaceOf(const SheetRecord& record) const {
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
      if (sheets_[i].record == &record) return i;
    }
    return std::nullopt;
  }

  std::size_t ActiveTab(std::optional<SheetId> wanted) const {
    for (std::size_t i = 0; wanted && i < sheets_.size(); ++i) {
      if (sheets_[i].id == *wanted) return i;
    }
    const pugi::xml_node view = ChildOf(ChildOf(root_, "bookViews"), "workbookView");
    const int before = WholeOf(view, "activeTab", 0, 0, static_cast<int>(data_.sheets.size()) - 1);
    if (static_cast<std::size_t>(before) < data_.sheets.size()) {
      if (const auto place = PlaceOf(data_.sheets[static_cast<std::size_t>(before)])) return *place;
    }
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
      const Sheet* sheet = book_.FindSheet(sheets_[i].id);
      if (sheet != nullptr && sheet->visibility == Visibility::Visible) return i;
    }
    return 0;
  }

  void WriteSheets() {
    pugi::xml_node list =
        ObtainChild(root_, "sheets", {"functionGroups", "externalReferences", "definedNames", "calcPr", "extLst"});
    std::int64_t number = 0;
    for (const SheetRecord& record : data_.sheets) number = std::max(number, WholeOf(record.number).value_or(0));
    RemoveChildren(list, "sheet");
    for (const SheetEntry& entry : sheets_) {
      const Sheet* sheet = book_.FindSheet(entry.id);
      if (entry.record != nullptr) {
        const auto parsed = ParseDom(entry.record->sheetXml, data_.workbookPath);
        const pugi::xml_node element = list.append_copy(parsed->document_element());
        if (sheet != nullptr) Describe(element, *sheet);
        continue;
      }
      pugi::xml_node element = AddChild(list, "sheet");
      SetAttribute(element, "name", "");
      SetAttribute(element, "sheetId", std::to_string(++number));
      Describe(element, *sheet);
      SetAttribute(element, "xmlns:r", data_.isStrict ? kStrictLinkSpace : kLinkSpace);
      SetAttribute(element, "r:id", entry.linkId);
    }
  }

  static void Describe(pugi::xml_node element, const Sheet& sheet) {
    SetAttribute(element, "name", sheet.name());
    if (sheet.visibility == Visibility::Visible) {
      element.remove_attribute("state");
    } else {
      SetAttribute(element, "state", sheet.visibility == Visibility::Hidden ? "hidden" : "veryHidden");
    }
  }

  // --- names
  // -------------------------------------------------------------------------------------------------------------

  static constexpr int kNoScope = -2;  // of names that the file did not have

  const KeptName* KeptOf(int scope, const std::string& folded) const {
    for (const KeptName& name : data_.names) {
      if (name.scope == scope && name.foldedName == folded && name.isModelled) return &name;
    }
    return nullptr;
  }

  int RecordNumber(const SheetRecord* record) const {
    return record == nullptr ? kNoScope : static_cast<int>(record - data_.sheets.data());
  }

  pugi::xml_node AddName(const std::string& name, int scope, std::optional<std::size_t> tab, const std::string& text,
                         bool hidden) {
    const KeptName* kept = KeptOf(scope, platform::FoldCase(name));
    pugi::xml_node element;
    if (kept != nullptr) {
      const auto parsed = ParseDom(kept->xml, data_.workbookPath);
      element = names_.append_copy(parsed->document_element());
    } else {
      element = AddChild(names_, "definedName");
    }
    const bool isBuiltIn = tab && (IsBuiltInName(name) || name == "Print_Area" || name == "_FilterDatabase");
    SetAttribute(element, "name", isBuiltIn ? std::string(kBuiltInPrefix) + name : name);
    if (tab) SetAttribute(element, "localSheetId", std::to_string(*tab));
    SetFlag(element, "hidden", hidden, false);
    element.text().set(text.c_str());
    return element;
  }

  void AddNames(const NameTable& names, SheetId scopeId, int scope, std::optional<std::size_t> tab) {
    for (const auto& [folded, name] : names.byFoldedName()) {
      if (name.refersTo == nullptr) continue;
      AddName(name.name, scope, tab, PrintFileFormula(*name.refersTo, {scopeId, CellPos{}}, book_), name.hidden);
    }
  }

  void AddKeepsake(std::string_view name, std::optional<std::size_t> tab, const Facts& facts) {
    if (!facts.empty()) AddName(std::string(name), kNoScope, tab, FormulaOf(facts), true);
  }

  void WriteNames() {
    names_ = ObtainChild(root_, "definedNames",
                         {"calcPr", "oleSize", "customWorkbookViews", "pivotCaches", "smartTagPr", "smartTagTypes",
                          "webPublishing", "fileRecoveryPr", "webPublishObjects", "extLst"});
    names_.remove_children();
    AddNames(book_.names, kOwnSheet, -1, std::nullopt);
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
      const Sheet* sheet = book_.FindSheet(sheets_[i].id);
      if (sheet == nullptr) continue;
      const int scope = RecordNumber(sheets_[i].record);
      AddNames(sheet->names, sheet->id(), scope, i);
      if (!sheet->printAreas.empty()) AddName("Print_Area", scope, i, AreasText(*sheet, sheet->printAreas), false);
      if (sheet->autoFilter) AddName("_FilterDatabase", scope, i, AreasText(*sheet, {sheet->autoFilter->range}), true);
      AddKeepsake(kSheetKeepsake, i, FactsAbout(*sheet));
    }
    AddKeepsake(kBookKeepsake, std::nullopt, FactsAbout(book_, data_.bookFacts));
    for (const KeptName& name : data_.names) KeepName(name);
    if (!names_.first_child()) root_.remove_child(names_);
  }

  // What the grammar does not know stays, unless the workbook has a name of its own there by now.
  void KeepName(const KeptName& name) {
    if (name.isModelled) return;
    std::optional<std::size_t> tab;
    if (name.scope >= 0) {
      tab = PlaceOf(data_.sheets[static_cast<std::size_t>(name.scope)]);
      if (!tab) return;
      const Sheet* sheet = book_.FindSheet(sheets_[*tab].id);
      if (sheet != nullptr) {
        if (sheet->names.byFoldedName().contains(name.foldedName)) return;
        if (name.foldedName == "_filterdatabase" && sheet->autoFilter) return;
        if (name.foldedName == "print_area" && !sheet->printAreas.empty()) return;
      }
    } else if (book_.names.byFoldedName().contains(name.foldedName)) {
      return;
    }
    const auto parsed = ParseDom(name.xml, data_.workbookPath);
    const pugi::xml_node element = names_.append_copy(parsed->document_element());
    if (tab) SetAttribute(element, "localSheetId", std::to_string(*tab));
  }

  static std::string AreasText(const Sheet& sheet, const std::vector<Rect>& areas) {
    const std::string prefix = QuotedName(sheet.name()) + "!";
    std::string text;
    for (const Rect& area : areas) {
      if (!text.empty()) text.push_back(',');
      text += prefix;
      if (area.isWholeRows()) {
        text.append("$").append(std::to_string(area.top)).append(":$").append(std::to_string(area.bottom));
        continue;
      }
      AppendAbsolute(text, area.topLeft(), !area.isWholeColumns());
      if (area.isCell()) continue;
      text.push_back(':');
      AppendAbsolute(text, {area.bottom, area.right}, !area.isWholeColumns());
    }
    return text;
  }
  static void AppendAbsolute(std::string& text, CellPos at, bool withRow) {
    text.push_back('$');
    AppendColumn(text, at.column);
    if (withRow) text.append("$").append(std::to_string(at.row));
  }
  static std::string QuotedName(const std::string& name) {
    std::string quoted = "'";
    for (const char c : name) quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + "'";
  }

  pugi::xml_node root_;
  const Workbook& book_;
  const PackageData& data_;
  const std::vector<SheetEntry>& sheets_;
  pugi::xml_node names_;
};

}  // namespace

std::string WriteWorkbookPart(std::string_view xml, const Workbook& book, const PackageData& data,
                              const std::vector<SheetEntry>& sheets, std::optional<SheetId> activeSheet,
                              bool recalculates) {
  constexpr std::string_view empty =
      "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><workbookPr/>"
      "<bookViews><workbookView/></bookViews><sheets/></workbook>";
  const auto document = ParseDom(xml.empty() ? empty : xml, data.workbookPath);
  WorkbookWriter(document->document_element(), book, data, sheets).Write(activeSheet);
  if (recalculates) {
    const pugi::xml_node calculation =
        ObtainChild(document->document_element(), "calcPr",
                    {"oleSize", "customWorkbookViews", "pivotCaches", "smartTagPr", "smartTagTypes", "webPublishing",
                     "fileRecoveryPr", "webPublishObjects", "extLst"});
    SetFlag(calculation, "fullCalcOnLoad", true, false);
  }
  return PrintDom(*document);
}

}  // namespace tolvane::engine::xlsx
