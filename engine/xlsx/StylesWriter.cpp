#include <algorithm>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/FormatElements.h"
#include "engine/xlsx/NumberFormats.h"
#include "engine/xlsx/Styles.h"
#include "engine/xlsx/XmlNames.h"

namespace tolvane::engine::xlsx {

namespace {

// What the part is before anything is put into it. The first two fills are reserved by the format.
constexpr std::string_view kEmptyStyles =
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts/>"
    "<fills><fill><patternFill patternType=\"none\"/></fill><fill><patternFill patternType=\"gray125\"/></fill></fills>"
    "<borders><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
    "<cellStyleXfs/><cellXfs/><cellStyles/><dxfs/></styleSheet>";

void SetId(pugi::xml_node xf, const char* name, int id) {
  SetAttribute(xf, name, std::to_string(id));
}

}  // namespace

// One list of the part, of elements of one name: others in it have no number. New elements are found again by their
// XML.
struct StylesWriter::Collection {
  pugi::xml_node list;
  std::vector<pugi::xml_node> elements;
  std::unordered_map<std::string, int> added;

  Collection(pugi::xml_node root, std::string_view name, std::string_view element,
             std::initializer_list<std::string_view> before)
      : list(ObtainChild(root, name, before)) {
    ForEachChild(list, element, [this](const pugi::xml_node& child) { elements.push_back(child); });
  }
  pugi::xml_node At(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < elements.size() ? elements[at] : pugi::xml_node();
  }
  pugi::xml_node Append(const pugi::xml_node& like, std::string_view name) {
    elements.push_back(like ? list.append_copy(like) : AddChild(list, name));
    return elements.back();
  }
  // The number of the last element, or of an equal one that was added before; then the last one goes.
  int Settle() {
    const auto [known, isNew] = added.try_emplace(PrintDom(elements.back()), static_cast<int>(elements.size()) - 1);
    if (!isNew) {
      list.remove_child(elements.back());
      elements.pop_back();
    }
    return known->second;
  }
  void Count() const { SetAttribute(list, "count", std::to_string(elements.size())); }
};

StylesWriter::StylesWriter(const FormatTable& formats, const PackageData& data, Budget& budget)
    : formats_(formats),
      data_(data),
      budget_(budget),
      xfOfFormat_(formats.size(), -1),
      styleXfOf_(formats.styles().size(), -1),
      xfCount_(static_cast<int>(data.xfs.size())) {
  for (const StyleRecord& record : data.styles) styleXfOf_[record.id] = record.xf;
  for (std::size_t i = data.xfs.size(); i-- > 0;) xfOfFormat_[data.xfs[i].id] = static_cast<int>(i);
  ChangeStyles();
  ChangeRecords();
}

StylesWriter::~StylesWriter() = default;

void StylesWriter::Load() {
  if (document_ != nullptr) return;
  const ZipEntry* entry = data_.stylesPath.empty() ? nullptr : data_.archive.Find(data_.stylesPath);
  document_ = entry == nullptr ? ParseDom(kEmptyStyles, "styles")
                               : ParseDom(data_.archive.Read(*entry, budget_), data_.stylesPath);
  const pugi::xml_node root = document_->document_element();
  if (entry == nullptr && data_.isStrict) SetAttribute(root, "xmlns", kStrictMainSpace);
  fonts_ = std::make_unique<Collection>(
      root, "fonts", "font", std::initializer_list<std::string_view>{"fills", "borders", "cellStyleXfs", "cellXfs"});
  fills_ = std::make_unique<Collection>(root, "fills", "fill",
                                        std::initializer_list<std::string_view>{"borders", "cellStyleXfs", "cellXfs"});
  borders_ = std::make_unique<Collection>(root, "borders", "border",
                                          std::initializer_list<std::string_view>{"cellStyleXfs", "cellXfs"});
  styleXfs_ =
      std::make_unique<Collection>(root, "cellStyleXfs", "xf", std::initializer_list<std::string_view>{"cellXfs"});
  xfs_ = std::make_unique<Collection>(
      root, "cellXfs", "xf",
      std::initializer_list<std::string_view>{"cellStyles", "dxfs", "tableStyles", "colors", "extLst"});
  // Records that tell no font mean the first: a list that has none gets the usual one before any other.
  const Format plain;
  if (fonts_->elements.empty()) WriteFont(fonts_->Append({}, "font"), plain.font, plain.font);
  if (fills_->elements.empty()) WriteFill(fills_->Append({}, "fill"), Fill{FillPattern::None, 0}, plain.fill);
  if (borders_->elements.empty()) WriteBorder(borders_->Append({}, "border"), plain.border, plain.border);
  nextNumberFormat_ = kFirstOwnNumberFormat;
  ForEachChild(ChildOf(root, "numFmts"), "numFmt", [&](const pugi::xml_node& format) {
    const int id = WholeOf(format, "numFmtId", -1, 0, 1 << 30);
    if (id < 0) return;
    numberFormats_.emplace(AttributeOf(format, "formatCode"), id);
    takenNumberFormats_.insert(id);
  });
  // Records may tell numbers that nothing defines; a new format must not become theirs.
  for (const Collection* records : {styleXfs_.get(), xfs_.get()}) {
    for (const pugi::xml_node& xf : records->elements) {
      takenNumberFormats_.insert(WholeOf(xf, "numFmtId", 0, 0, 1 << 30));
    }
  }
}

int StylesWriter::NumberFormatIdOf(const std::string& format) {
  if (const auto known = numberFormats_.find(format); known != numberFormats_.end()) return known->second;
  if (const auto builtIn = BuiltInNumberFormatId(format)) return *builtIn;
  while (takenNumberFormats_.contains(nextNumberFormat_)) ++nextNumberFormat_;
  const pugi::xml_node list = ObtainChild(document_->document_element(), "numFmts", {"fonts"});
  const pugi::xml_node element = AddChild(list, "numFmt");
  SetId(element, "numFmtId", nextNumberFormat_);
  SetAttribute(element, "formatCode", format);
  SetAttribute(list, "count", std::to_string(WholeOf(list, "count", 0, 0, 1 << 30) + 1));
  return numberFormats_[format] = nextNumberFormat_++;
}

// Groups that are as they were read keep their elements.
void StylesWriter::WriteXf(pugi::xml_node xf, const Format& to, const Format* from) {
  const Format plain;
  if (from == nullptr || from->numberFormat != to.numberFormat)
    SetId(xf, "numFmtId", NumberFormatIdOf(to.numberFormat));
  if (from == nullptr || from->font != to.font) {
    const pugi::xml_node like = from == nullptr ? pugi::xml_node() : fonts_->At(WholeOf(xf, "fontId", 0, 0, 1 << 30));
    const pugi::xml_node font = fonts_->Append(like, "font");
    WriteFont(font, like ? from->font : plain.font, to.font);
    SetId(xf, "fontId", fonts_->Settle());
  }
  // The first of each list is plain, in all but damaged files.
  if (from == nullptr && to.fill == plain.fill && ReadFill(fills_->At(0), data_.colours) == plain.fill) {
    SetId(xf, "fillId", 0);
  } else if (from == nullptr || from->fill != to.fill) {
    const pugi::xml_node like = from == nullptr ? pugi::xml_node() : fills_->At(WholeOf(xf, "fillId", 0, 0, 1 << 30));
    const pugi::xml_node fill = fills_->Append(like, "fill");
    if (like) {
      WriteFill(fill, from->fill, to.fill);
    } else {
      WriteFill(fill, Fill{FillPattern::None, 0}, to.fill);
    }
    SetId(xf, "fillId", fills_->Settle());
  }
  if (from == nullptr && to.border == plain.border && ReadBorder(borders_->At(0), data_.colours) == plain.border) {
    SetId(xf, "borderId", 0);
  } else if (from == nullptr || from->border != to.border) {
    const pugi::xml_node like =
        from == nullptr ? pugi::xml_node() : borders_->At(WholeOf(xf, "borderId", 0, 0, 1 << 30));
    const pugi::xml_node border = borders_->Append(like, "border");
    WriteBorder(border, like ? from->border : plain.border, to.border);
    SetId(xf, "borderId", borders_->Settle());
  }
  WriteAlignment(xf, to.alignment);
  WriteProtection(xf, to.protection);
}

namespace {

void WriteSwitches(pugi::xml_node xf, FormatGroups groups) {
  const auto set = [&](FormatGroup group, const char* name) {
    SetAttribute(xf, name, (groups & static_cast<FormatGroups>(group)) != 0 ? "1" : "0");
  };
  set(FormatGroup::Number, "applyNumberFormat");
  set(FormatGroup::Font, "applyFont");
  set(FormatGroup::Fill, "applyFill");
  set(FormatGroup::Border, "applyBorder");
  set(FormatGroup::Alignment, "applyAlignment");
  set(FormatGroup::Protection, "applyProtection");
}

}  // namespace

// --- named styles
// --------------------------------------------------------------------------------------------------------

void StylesWriter::ChangeStyles() {
  for (const StyleRecord& record : data_.styles) {
    const NamedStyle& now = formats_.StyleAt(record.id);
    if (now == record.asRead) continue;
    Load();
    const pugi::xml_node xf = styleXfs_->At(record.xf);
    WriteXf(xf, now.format, &record.asRead.format);
    if (now.includes != record.asRead.includes) WriteSwitches(xf, now.includes);
    if (now.name == record.asRead.name) continue;
    ForEachChild(ChildOf(document_->document_element(), "cellStyles"), "cellStyle", [&](pugi::xml_node element) {
      if (WholeOf(element, "xfId", -1, 0, 1 << 30) == record.xf) SetAttribute(element, "name", now.name);
    });
  }
  // A file need not name the style that all others build on; one that does not is not changed for it alone.
  for (StyleId id = data_.xfs.empty() ? kNormalStyle : kNormalStyle + 1; id < styleXfOf_.size(); ++id) {
    if (styleXfOf_[id] < 0) AddStyle(id);
  }
}

int StylesWriter::StyleXfOf(StyleId id) {
  if (styleXfOf_[id] < 0) AddStyle(id);
  return styleXfOf_[id];
}

void StylesWriter::AddStyle(StyleId id) {
  Load();
  const NamedStyle& style = formats_.StyleAt(id);
  const pugi::xml_node xf = styleXfs_->Append({}, "xf");
  WriteXf(xf, style.format, nullptr);
  WriteSwitches(xf, style.includes);
  styleXfOf_[id] = static_cast<int>(styleXfs_->elements.size()) - 1;
  const pugi::xml_node list =
      ObtainChild(document_->document_element(), "cellStyles", {"dxfs", "tableStyles", "colors", "extLst"});
  const pugi::xml_node element = AddChild(list, "cellStyle");
  SetAttribute(element, "name", style.name);
  SetId(element, "xfId", styleXfOf_[id]);
  if (id == kNormalStyle) SetId(element, "builtinId", 0);
}

// --- cell formats
// ------------------------------------------------------------------------------------------------------

void StylesWriter::WriteGroups(pugi::xml_node xf, const CellFormat& to, const CellFormat* from) {
  WriteXf(xf, to.format, from == nullptr ? nullptr : &from->format);
  if (from == nullptr || from->style != to.style) SetId(xf, "xfId", StyleXfOf(to.style));
  if (from == nullptr || from->direct != to.direct || from->style != to.style) WriteSwitches(xf, to.direct);
}

void StylesWriter::ChangeRecords() {
  for (std::size_t i = 0; i < data_.xfs.size(); ++i) {
    const XfRecord& record = data_.xfs[i];
    const CellFormat& now = formats_.At(record.id);
    // Two records may have become one format (the default one); the first speaks for it.
    if (now == record.asRead || now.kept != record.asRead.kept) continue;
    Load();
    WriteGroups(xfs_->At(static_cast<int>(i)), now, &record.asRead);
  }
}

int StylesWriter::AddXf(const CellFormat& format) {
  Load();
  if (xfCount_ == 0 && !(format == formats_.At(kDefaultFormat)))
    XfOf(kDefaultFormat);  // cells without one use the first
  const XfRecord* like = format.kept < data_.xfs.size() ? &data_.xfs[format.kept] : nullptr;
  const pugi::xml_node xf =
      xfs_->Append(like == nullptr ? pugi::xml_node() : xfs_->At(static_cast<int>(format.kept)), "xf");
  // The record that it was made from may itself have been changed by now.
  WriteGroups(xf, format, like == nullptr ? nullptr : &formats_.At(like->id));
  return xfCount_++;
}

int StylesWriter::XfOf(FormatId id) {
  if (id == kPlainFormat) id = kDefaultFormat;
  if (xfOfFormat_[id] < 0) xfOfFormat_[id] = AddXf(formats_.At(id));
  return xfOfFormat_[id];
}

std::string StylesWriter::Finish() {
  for (const Collection* collection : {fonts_.get(), fills_.get(), borders_.get(), styleXfs_.get(), xfs_.get()}) {
    collection->Count();
  }
  const pugi::xml_node list = ChildOf(document_->document_element(), "cellStyles");
  int count = 0;
  ForEachChild(list, "cellStyle", [&count](const pugi::xml_node&) { ++count; });
  if (list) SetAttribute(list, "count", std::to_string(count));
  return PrintDom(*document_);
}

}  // namespace tolvane::engine::xlsx
