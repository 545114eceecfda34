#include <algorithm>
#include <set>
#include <utility>

#include "engine/xlsx/FileKinds.h"
#include "engine/xlsx/Fingerprint.h"
#include "engine/xlsx/PackageData.h"
#include "engine/xlsx/PartAnchors.h"
#include "engine/xlsx/SharedStrings.h"
#include "engine/xlsx/SheetReader.h"
#include "engine/xlsx/Styles.h"
#include "engine/xlsx/WorkbookPart.h"
#include "engine/xlsx/Xlsx.h"
#include "platform/Text.h"

namespace tolvane::engine {

namespace xlsx {

namespace {

class BookReader {
 public:
  explicit BookReader(std::string bytes) : data_(std::make_shared<PackageData>()), budget_(bytes.size()) {
    budget_.Spend(bytes.size());
    data_->archive = ZipArchive(std::move(bytes));
  }

  XlsxBook Read() {
    FindWorkbookPart();
    auto book = std::make_unique<Workbook>();
    std::vector<Facts> facts;
    ReadWorkbookPart(ReadPart(data_->workbookPath), *book, *data_, facts, budget_);
    ReadColoursAndStyles(*book);
    ReadStrings();
    for (SheetRecord& record : data_->sheets) ReadOneSheet(*book, record);
    GiveCodeNames(*book, facts);
    if (data_->isSavedByCalc) PutBackAll(*book, facts);
    for (SheetRecord& record : data_->sheets) {
      if (record.id != kOwnSheet) record.fingerprint = SheetFingerprint(*book->FindSheet(record.id));
    }
    data_->workbookFingerprint = WorkbookFingerprint(*book);
    return {std::move(book), Package(std::move(data_))};
  }

 private:
  std::string ReadPart(const std::string& path) {
    const ZipEntry* entry = data_->archive.Find(path);
    if (entry == nullptr) throw XlsxError("The file is no workbook, or damaged: its part " + path + " is missing");
    return data_->archive.Read(*entry, budget_);
  }

  std::vector<Link> LinksOf(const std::string& part) {
    const ZipEntry* entry = data_->archive.Find(LinksPathOf(part));
    return entry == nullptr ? std::vector<Link>() : ReadLinks(data_->archive.Read(*entry, budget_), part, budget_);
  }

  void FindWorkbookPart() {
    data_->types = ReadContentTypes(ReadPart("[Content_Types].xml"), budget_);
    data_->links = LinksOf("");
    const Link* link = FindLinkOfKind(data_->links, "officeDocument");
    if (link == nullptr || link->external) throw XlsxError("The file is no workbook: nothing in it says where one is");
    const ZipEntry* entry = data_->archive.Find(link->path);
    if (entry == nullptr)
      throw XlsxError("The file is no workbook, or damaged: its part " + link->path + " is missing");
    data_->workbookPath = entry->name;
    const std::string type = data_->types.TypeOf(data_->workbookPath);
    const auto kind = KindOfType(type);
    if (!kind) {
      throw XlsxError("The file is of the type \"" + type +
                      "\", which is not read here. Open it with Excel and save it as .xlsx or .xlsm");
    }
    data_->kind = *kind;
    data_->workbookLinks = LinksOf(data_->workbookPath);
  }

  const ZipEntry* LinkedPart(std::string_view kind) const {
    const Link* link = FindLinkOfKind(data_->workbookLinks, kind);
    return link == nullptr || link->external ? nullptr : data_->archive.Find(link->path);
  }

  void ReadColoursAndStyles(Workbook& book) {
    if (const ZipEntry* theme = LinkedPart("theme")) {
      try {
        data_->colours.ReadTheme(data_->archive.Read(*theme, budget_), budget_);
      } catch (const OverBudget&) {
        throw;
      } catch (const XlsxError&) {
        // Its colours are then the usual ones; the part itself is kept.
      }
    }
    const ZipEntry* styles = LinkedPart("styles");
    if (styles == nullptr) return;
    data_->stylesPath = styles->name;
    const std::string xml = data_->archive.Read(*styles, budget_);
    ReadStyles(xml, book.formats, *data_, budget_);
  }

  void ReadStrings() {
    const ZipEntry* entry = LinkedPart("sharedStrings");
    if (entry == nullptr) return;
    data_->stringsPath = entry->name;
    ZipEntryStream stream(data_->archive, *entry, budget_);
    XmlReader reader(stream, data_->stringsPath);
    ReadSharedStrings(reader, budget_, *data_);
  }

  void ReadOneSheet(Workbook& book, SheetRecord& record) {
    record.links = LinksOf(record.path);
    if (record.id == kOwnSheet) return;
    SheetReading reading{book, *book.FindSheet(record.id), *data_, record, budget_};
    ZipEntryStream stream(data_->archive, *data_->archive.Find(record.path), budget_);
    XmlReader reader(stream, record.path);
    ReadSheet(reader, reading);
    ReadPartAnchors(reading);
  }

  void PutBackAll(Workbook& book, const std::vector<Facts>& facts) {
    for (std::size_t i = 0; i < data_->sheets.size(); ++i) {
      if (Sheet* sheet = book.FindSheet(data_->sheets[i].id)) PutBack(facts[i], *sheet);
    }
    PutBack(data_->bookFacts, book);
  }

  // The sheet's own part first, then the name that keeps it, then a free one.
  void GiveCodeNames(Workbook& book, const std::vector<Facts>& facts) {
    std::set<std::string> taken;
    const auto give = [&taken](Sheet& sheet, const std::string& name) {
      const bool isFree = !name.empty() && taken.insert(platform::FoldCase(name)).second;
      sheet.codeName = isFree ? name : std::string();
      return isFree;
    };
    std::vector<Sheet*> without;
    for (std::size_t i = 0; i < data_->sheets.size(); ++i) {
      Sheet* sheet = book.FindSheet(data_->sheets[i].id);
      if (sheet == nullptr) continue;
      const auto kept = facts[i].find("code");
      if (give(*sheet, std::string(sheet->codeName)) || (kept != facts[i].end() && give(*sheet, kept->second)))
        continue;
      without.push_back(sheet);
    }
    int number = 0;
    for (Sheet* sheet : without) {
      while (!give(*sheet, "Sheet" + std::to_string(++number))) {
      }
    }
  }

  std::shared_ptr<PackageData> data_;
  Budget budget_;
};

}  // namespace

}  // namespace xlsx

Package::Package() : data_(std::make_shared<xlsx::PackageData>()) {}
FileKind Package::kind() const {
  return data_->kind;
}
std::optional<SheetId> Package::activeSheet() const {
  return data_->activeSheet;
}
bool Package::hasMacros() const {
  return xlsx::FindLinkOfKind(data_->workbookLinks, "vbaProject") != nullptr;
}

XlsxBook ReadXlsx(std::string bytes) {
  return xlsx::BookReader(std::move(bytes)).Read();
}

}  // namespace tolvane::engine
