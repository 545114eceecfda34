#include <algorithm>
#include <array>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/WorkbookPart.h"
#include "engine/xlsx/XmlNames.h"
#include "engine/xlsx/XmlText.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::size_t kMostSheets = 2000;
constexpr std::array<std::string_view, 6> kBuiltInNames = {"Print_Titles", "Criteria",         "Extract",
                                                           "Database",     "Consolidate_Area", "Sheet_Title"};

class WorkbookReader {
 public:
  WorkbookReader(const pugi::xml_node& root, Workbook& book, PackageData& data, std::vector<Facts>& facts)
      : root_(root), book_(book), data_(data), facts_(facts) {}

  void Read() {
    const pugi::xml_node properties = ChildOf(root_, "workbookPr");
    book_.date1904 = FlagOf(properties, "date1904", false);
    if (HasAttribute(properties, "codeName")) book_.codeName = AttributeOf(properties, "codeName");
    data_.isSavedByCalc = AttributeOf(ChildOf(root_, "fileVersion"), "appName") == "Calc";
    book_.structureProtected = FlagOf(ChildOf(root_, "workbookProtection"), "lockStructure", false);
    ForEachChild(ChildOf(root_, "sheets"), "sheet", [&](const pugi::xml_node& sheet) { ReadSheetEntry(sheet); });
    if (book_.sheetCount() == 0) Fail("has no sheet with cells");
    facts_.resize(data_.sheets.size());
    ReadActiveSheet();
    ForEachChild(ChildOf(root_, "definedNames"), "definedName", [&](const pugi::xml_node& name) { ReadName(name); });
  }

 private:
  [[noreturn]] void Fail(const std::string& why) const {
    throw XlsxError("The part " + data_.workbookPath + " of the file " + why);
  }

  void ReadSheetEntry(const pugi::xml_node& element) {
    if (data_.sheets.size() == kMostSheets) Fail("has too many sheets");
    SheetRecord record;
    record.sheetXml = PrintDom(element);
    record.number = AttributeOf(element, "sheetId");
    const std::string name = WithoutEscapes(AttributeOf(element, "name"));
    const Link* link = FindLink(data_.workbookLinks, LinkIdOf(element));
    if (link == nullptr || link->external || data_.archive.Find(link->path) == nullptr) {
      Fail("has the sheet " + name + ", whose part is missing");
    }
    record.path = data_.archive.Find(link->path)->name;
    if (std::any_of(data_.sheets.begin(), data_.sheets.end(),
                    [&](const SheetRecord& other) { return other.path == record.path; })) {
      Fail("has two sheets in one part, " + record.path);
    }
    if (link->kind() == "worksheet") {
      try {
        Sheet& sheet = book_.AddSheet(name, book_.sheetCount());
        const std::string state = AttributeOf(element, "state");
        if (state == "hidden") sheet.visibility = Visibility::Hidden;
        if (state == "veryHidden") sheet.visibility = Visibility::VeryHidden;
        sheet.codeName.clear();
        record.id = sheet.id();
      } catch (const std::invalid_argument& refused) {
        Fail(std::string("cannot be read: ") + refused.what());
      }
    }
    data_.sheets.push_back(std::move(record));
  }

  void ReadActiveSheet() {
    const pugi::xml_node view = ChildOf(ChildOf(root_, "bookViews"), "workbookView");
    const int active = WholeOf(view, "activeTab", 0, 0, static_cast<int>(data_.sheets.size()) - 1);
    const SheetId id = data_.sheets[static_cast<std::size_t>(active)].id;
    if (id != kOwnSheet) data_.activeSheet = id;
  }

  void ReadName(const pugi::xml_node& element) {
    std::string name = WithoutEscapes(AttributeOf(element, "name"));
    const int scope = WholeOf(element, "localSheetId", -1, 0, static_cast<int>(data_.sheets.size()) - 1);
    Sheet* sheet = nullptr;
    if (HasAttribute(element, "localSheetId")) {
      if (scope < 0) Fail("has the name " + name + " on a sheet that is not there");
      sheet = book_.FindSheet(data_.sheets[static_cast<std::size_t>(scope)].id);
    }
    const std::string text = WithoutEscapes(element.text().get());
    const bool isBuiltIn = name.starts_with(kBuiltInPrefix);
    if (isBuiltIn) name.erase(0, kBuiltInPrefix.size());

    const bool isOnSheet = scope >= 0;
    bool isKnown = false;
    if (!isOnSheet || sheet != nullptr) {
      const FormulaHome home{sheet == nullptr ? kOwnSheet : sheet->id(), CellPos{}};
      ExpressionPtr formula = ParseFileFormula(text, home, book_);
      if (formula == nullptr) {
        isKnown = false;
      } else if (IsKeepsake(name) && TakeFacts(*formula, scope)) {
        return;
      } else if (isBuiltIn && name == "Print_Area" && sheet != nullptr) {
        isKnown = ReadPrintArea(*formula, *sheet);
      } else if (isBuiltIn && !IsBuiltInName(name)) {
        isKnown = false;  // _FilterDatabase, and whatever programs make up
      } else if (IsValidName(name)) {
        NameTable& names = sheet == nullptr ? book_.names : sheet->names;
        isKnown = true;
        names.Set({name, std::move(formula), FlagOf(element, "hidden", false)});
      }
    }
    KeptName kept;
    kept.scope = scope;
    kept.foldedName = platform::FoldCase(name);
    kept.isModelled = isKnown;
    kept.xml = PrintDom(element);
    if (!isKnown && !isBuiltIn) (sheet == nullptr ? book_.names : sheet->names).unread.insert(kept.foldedName);
    data_.names.push_back(std::move(kept));
  }

  bool TakeFacts(const Expression& formula, int scope) {
    const auto facts = FactsOf(formula);
    if (!facts) return false;
    if (scope < 0) {
      data_.bookFacts = *facts;
    } else {
      facts_[static_cast<std::size_t>(scope)] = *facts;
      data_.tellsCodeNames = true;
    }
    return true;
  }

  // Areas of the sheet itself, joined by commas.
  static bool ReadPrintArea(const Expression& formula, Sheet& sheet) {
    std::vector<Rect> areas;
    for (const Node& node : formula.nodes) {
      const bool joins = node.kind == Node::Kind::Binary && node.op == Operator::Union;
      if (node.kind != Node::Kind::Reference && node.kind != Node::Kind::Parenthesis && !joins) return false;
    }
    for (const Reference& reference : formula.references) {
      const auto area = reference.At(CellPos{});
      if (!area || reference.isThreeD() || (reference.sheet != sheet.id() && reference.sheet != kOwnSheet))
        return false;
      areas.push_back(*area);
    }
    sheet.printAreas = std::move(areas);
    return true;
  }

  const pugi::xml_node root_;
  Workbook& book_;
  PackageData& data_;
  std::vector<Facts>& facts_;
};

}  // namespace

bool IsBuiltInName(std::string_view name) {
  return std::find(kBuiltInNames.begin(), kBuiltInNames.end(), name) != kBuiltInNames.end();
}

void ReadWorkbookPart(std::string_view xml, Workbook& book, PackageData& data, std::vector<Facts>& facts) {
  const auto document = ParseDom(xml, data.workbookPath);
  const pugi::xml_node root = document->document_element();
  if (LocalName(root) != "workbook") throw XlsxError("The part " + data.workbookPath + " of the file is no workbook");
  data.isStrict = xml.find(kStrictMainSpace) != std::string_view::npos;
  WorkbookReader(root, book, data, facts).Read();
}

}  // namespace tolvane::engine::xlsx
