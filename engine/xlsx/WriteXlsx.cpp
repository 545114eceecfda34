#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "engine/xlsx/FileKinds.h"
#include "engine/xlsx/Fingerprint.h"
#include "engine/xlsx/NotComputed.h"
#include "engine/xlsx/PackageData.h"
#include "engine/xlsx/PackageGraph.h"
#include "engine/xlsx/PartAnchors.h"
#include "engine/xlsx/SheetWriter.h"
#include "engine/xlsx/WorkbookPart.h"
#include "engine/xlsx/XmlNames.h"

namespace tolvane::engine {

namespace xlsx {

namespace {

constexpr std::string_view kSheetType = "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";
constexpr std::string_view kStylesType = "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml";
constexpr std::string_view kStringsType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml";
constexpr std::string_view kLinksType = "application/vnd.openxmlformats-package.relationships+xml";
constexpr std::string_view kTypesPath = "[Content_Types].xml";

class BookWriter {
 public:
  BookWriter(const Workbook& book, const PackageData& data, FileKind kind, std::optional<SheetId> activeSheet)
      : book_(book),
        data_(data),
        kind_(kind),
        activeSheet_(activeSheet),
        budget_(data.archive.bytes().size()),
        types_(data.types),
        workbookLinks_(data.workbookLinks),
        fileLinks_(data.links),
        workbookPath_(data.workbookPath.empty() ? "xl/workbook.xml" : data.workbookPath),
        styles_(book.formats, data, budget_) {}

  std::string Write() {
    PlanSheets();
    const bool isNew = data_.archive.entries().empty();
    const bool sheetsChange =
        std::any_of(plans_.begin(), plans_.end(), [](const Plan& plan) { return plan.isWritten; });
    const bool isOther = activeSheet_ && data_.activeSheet != activeSheet_;
    bool bookChanges = isNew || isOther || WorkbookFingerprint(book_) != data_.workbookFingerprint;
    const bool anyChanges = bookChanges || sheetsChange || styles_.isChanged() || gone_.size() > 0;
    if (!anyChanges && kind_ == data_.kind) return data_.archive.bytes();
    recalculates_ = sheetsChange && HoldsNotComputed(book_);
    bookChanges = bookChanges || recalculates_ || (anyChanges && !data_.tellsCodeNames);

    if (sheetsChange) {
      strings_ = std::make_unique<SharedStringsWriter>(book_, data_);
      PlanAnchors();
    }
    PlanParts(isNew, sheetsChange);
    WriteParts(bookChanges, sheetsChange);
    return zip_.Finish();
  }

 private:
  // One tab of the file to be written.
  struct Plan {
    SheetEntry entry;
    const Sheet* sheet = nullptr;  // null: a sheet without cells
    std::string path;
    bool isWritten = false;
    std::vector<Link> links;
  };

  std::size_t NumberOf(const SheetRecord* record) const {
    return static_cast<std::size_t>(record - data_.sheets.data());
  }

  void PlanSheets() {
    std::map<SheetId, const SheetRecord*> records;
    for (const SheetRecord& record : data_.sheets) {
      if (record.id != kOwnSheet) records.emplace(record.id, &record);
    }
    for (std::size_t i = 0; i < book_.sheetCount(); ++i) {
      const Sheet& sheet = book_.sheetAt(i);
      Plan plan;
      plan.sheet = &sheet;
      plan.entry.id = sheet.id();
      if (const auto found = records.find(sheet.id()); found != records.end()) {
        plan.entry.record = found->second;
        plan.path = found->second->path;
        plan.links = found->second->links;
        plan.isWritten = SheetFingerprint(sheet) != found->second->fingerprint;
        records.erase(found);
      } else {
        plan.isWritten = true;
      }
      plans_.push_back(std::move(plan));
    }
    for (const auto& [id, record] : records) gone_.insert(record->path);
    // Sheets without cells stay behind the sheet that they stood behind.
    std::size_t place = 0;
    for (const SheetRecord& record : data_.sheets) {
      if (record.id != kOwnSheet) {
        for (std::size_t i = 0; i < plans_.size(); ++i) {
          if (plans_[i].entry.record == &record) place = i + 1;
        }
        continue;
      }
      Plan plan;
      plan.entry.record = &record;
      plan.path = record.path;
      plans_.insert(plans_.begin() + static_cast<std::ptrdiff_t>(place++), std::move(plan));
    }
  }

  std::string ReadPart(const std::string& path) {
    const ZipEntry* entry = data_.archive.Find(path);
    return entry == nullptr ? std::string() : data_.archive.Read(*entry, budget_);
  }

  // Comments, drawings and tables of the sheets that are written follow their cells.
  void PlanAnchors() {
    for (Plan& plan : plans_) {
      if (!plan.isWritten || plan.entry.record == nullptr) continue;
      const auto moved = MovedAnchors(*plan.sheet, NumberOf(plan.entry.record), data_);
      std::vector<std::string> goneTables;
      for (const Link& link : plan.links) {
        const auto anchors = moved.find(link.path);
        if (link.external || data_.archive.Find(link.path) == nullptr) continue;
        if (link.kind() == "table") {
          const bool isMoved = anchors != moved.end() && !anchors->second.empty();
          if (isMoved && !anchors->second.begin()->second) {
            goneTables.push_back(link.id);
            gone_.insert(link.path);
            continue;
          }
          std::string table = FollowTable(ReadPart(link.path), link.path, *plan.sheet,
                                          isMoved ? anchors->second.begin()->second : std::nullopt);
          if (!table.empty()) replaced_[link.path] = std::move(table);
        } else if (anchors != moved.end()) {
          replaced_[link.path] = MoveAnchors(ReadPart(link.path), link.path, link.kind(), anchors->second);
        }
      }
      std::erase_if(plan.links, [&](const Link& link) {
        return std::find(goneTables.begin(), goneTables.end(), link.id) != goneTables.end();
      });
    }
  }

  std::string FreePath(const std::string& stem) const {
    for (int number = 1;; ++number) {
      std::string path = stem + std::to_string(number) + ".xml";
      const bool isPlanned =
          std::any_of(plans_.begin(), plans_.end(), [&](const Plan& plan) { return plan.path == path; });
      if (data_.archive.Find(path) == nullptr && !isPlanned) return path;
    }
  }

  std::string Folder() const { return workbookPath_.substr(0, workbookPath_.rfind('/') + 1); }

  // Links of the kind that lead nowhere, as in damaged files, give way.
  std::string AddBookLink(std::string_view kind, const std::string& path) {
    std::erase_if(workbookLinks_, [&](const Link& old) {
      const bool isPlanned =
          std::any_of(plans_.begin(), plans_.end(), [&](const Plan& plan) { return plan.path == old.path; });
      return old.kind() == kind && !old.external && !isPlanned && data_.archive.Find(old.path) == nullptr;
    });
    Link link;
    link.id = FreeLinkId(workbookLinks_);
    link.type = std::string(data_.isStrict ? kStrictLinkSpace : kLinkSpace) + "/" + std::string(kind);
    link.target = TargetFrom(workbookPath_, path);
    link.path = path;
    workbookLinks_.push_back(link);
    return link.id;
  }

  // Which parts there will be, before any is written: the first one lists them.
  void PlanParts(bool isNew, bool sheetsChange) {
    if (isNew) {
      types_.defaults = {{"rels", std::string(kLinksType)}, {"xml", "application/xml"}};
      Link link;
      link.id = "rId1";
      link.type = std::string(kLinkSpace) + "/officeDocument";
      link.target = workbookPath_;
      fileLinks_.push_back(link);
    }
    types_.Set(workbookPath_, TypeOfKind(kind_));
    for (Plan& plan : plans_) {
      if (plan.entry.record != nullptr) continue;
      plan.path = FreePath(Folder() + "worksheets/sheet");
      plan.entry.linkId = AddBookLink("worksheet", plan.path);
      types_.Set(plan.path, kSheetType);
    }
    stylesPath_ = data_.stylesPath;
    stringsPath_ = data_.stringsPath;
    if (stylesPath_.empty() && (sheetsChange || styles_.isChanged())) {
      stylesPath_ = FreePlainPath(Folder() + "styles.xml");
      AddBookLink("styles", stylesPath_);
      types_.Set(stylesPath_, kStylesType);
      styles_.XfOf(kDefaultFormat);
    }
    if (stringsPath_.empty() && sheetsChange) {
      stringsPath_ = FreePlainPath(Folder() + "sharedStrings.xml");
      AddBookLink("sharedStrings", stringsPath_);
      types_.Set(stringsPath_, kStringsType);
    }
    // The order of calculation is one that programs work out again; a wrong one makes them complain.
    if (const Link* chain = FindLinkOfKind(workbookLinks_, "calcChain"); sheetsChange && chain != nullptr)
      gone_.insert(chain->path);
    if (gone_.empty()) return;
    gone_ = WithPartsOf(gone_, data_.archive, budget_);
    for (const std::string& path : gone_) types_.Remove(path);
    std::erase_if(workbookLinks_, [&](const Link& link) { return !link.external && gone_.contains(link.path); });
  }

  std::string FreePlainPath(const std::string& path) const {
    return data_.archive.Find(path) == nullptr ? path : FreePath(path.substr(0, path.size() - 4));
  }

  void WriteParts(bool bookChanges, bool sheetsChange) {
    zip_.Add(kTypesPath, WriteContentTypes(types_));
    std::map<std::string, const Plan*> sheets;
    for (const Plan& plan : plans_) {
      if (plan.isWritten) sheets.emplace(plan.path, &plan);
    }
    if (data_.archive.entries().empty()) zip_.Add(LinksPathOf(""), WriteLinks(fileLinks_));
    const std::string bookLinksPath = LinksPathOf(workbookPath_);
    std::set<std::string> late{std::string(kTypesPath)};  // written at another time, or not at all
    if (bookChanges) late.insert(workbookPath_);
    if (LinksDiffer()) late.insert(bookLinksPath);
    if (sheetsChange || styles_.isChanged()) late.insert({stylesPath_, stringsPath_});
    for (const auto& [path, plan] : sheets) late.insert({path, LinksPathOf(path)});
    for (const std::string& path : gone_) late.insert({path, LinksPathOf(path)});

    for (const ZipEntry& entry : data_.archive.entries()) {
      if (late.contains(entry.name)) continue;
      if (const auto found = replaced_.find(entry.name); found != replaced_.end()) {
        zip_.Add(entry.name, found->second);
      } else {
        zip_.Copy(data_.archive, entry);
      }
    }
    if (bookChanges) WriteBookPart();
    if (late.contains(bookLinksPath)) zip_.Add(bookLinksPath, WriteLinks(workbookLinks_));
    for (Plan& plan : plans_) {
      if (plan.isWritten) WriteSheetPart(plan);
    }
    if (late.contains(stylesPath_)) WriteSharedParts();
  }

  bool LinksDiffer() const {
    return workbookLinks_.size() != data_.workbookLinks.size() ||
           !std::equal(workbookLinks_.begin(), workbookLinks_.end(), data_.workbookLinks.begin(),
                       [](const Link& a, const Link& b) { return a.id == b.id && a.target == b.target; });
  }

  void WriteBookPart() {
    std::vector<SheetEntry> entries;
    for (const Plan& plan : plans_) entries.push_back(plan.entry);
    zip_.Add(workbookPath_,
             WriteWorkbookPart(ReadPart(workbookPath_), book_, data_, entries, activeSheet_, recalculates_));
  }

  void WriteSheetPart(Plan& plan) {
    const std::size_t number = plan.entry.record == nullptr ? 0 : NumberOf(plan.entry.record);
    SheetWriting writing{*plan.sheet, data_, plan.entry.record, number, styles_, *strings_, plan.links};
    zip_.Begin(plan.path);
    WriteSheet(zip_, writing);
    zip_.End();
    if (!writing.links.empty()) zip_.Add(LinksPathOf(plan.path), WriteLinks(writing.links));
  }

  // Those that the sheets have added to.
  void WriteSharedParts() {
    if (styles_.isChanged()) {
      zip_.Add(stylesPath_, styles_.Finish());
    } else {
      zip_.Copy(data_.archive, *data_.archive.Find(stylesPath_));
    }
    if (stringsPath_.empty()) return;
    const ZipEntry* before = data_.archive.Find(stringsPath_);
    if (before != nullptr && (strings_ == nullptr || !strings_->isChanged())) {
      zip_.Copy(data_.archive, *before);
      return;
    }
    zip_.Begin(stringsPath_);
    strings_->Write(zip_);
    zip_.End();
  }

  const Workbook& book_;
  const PackageData& data_;
  const FileKind kind_;
  const std::optional<SheetId> activeSheet_;
  bool recalculates_ = false;  // whoever opens the file works out what could not be worked out here
  Budget budget_;
  ContentTypes types_;
  std::vector<Link> workbookLinks_;
  std::vector<Link> fileLinks_;
  std::string workbookPath_;
  std::string stylesPath_;
  std::string stringsPath_;
  StylesWriter styles_;
  std::unique_ptr<SharedStringsWriter> strings_;
  std::vector<Plan> plans_;
  std::set<std::string> gone_;                   // parts
  std::map<std::string, std::string> replaced_;  // parts that followed their cells
  ZipWriter zip_;
};

}  // namespace

}  // namespace xlsx

std::string WriteXlsx(const Workbook& workbook, const Package& package, FileKind kind,
                      std::optional<SheetId> activeSheet) {
  if (package.hasMacros() && !kind.macros) {
    throw XlsxError("The workbook has macros, which a file of this kind cannot hold. Save it as .xlsm, .xltm or .xlam");
  }
  if (workbook.sheetCount() == 0) throw XlsxError("A workbook without sheets cannot be saved");
  return xlsx::BookWriter(workbook, package.data(), kind, activeSheet).Write();
}

}  // namespace tolvane::engine
