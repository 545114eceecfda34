#include <algorithm>
#include <utility>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/FormatElements.h"
#include "engine/xlsx/NumberFormats.h"
#include "engine/xlsx/Styles.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

// Excel's own limit.
constexpr std::size_t kMostRecords = 65536;

struct GroupSwitch {
  FormatGroup group;
  const char* attribute;
};
constexpr std::array<GroupSwitch, 6> kSwitches = {{{FormatGroup::Number, "applyNumberFormat"},
                                                   {FormatGroup::Font, "applyFont"},
                                                   {FormatGroup::Alignment, "applyAlignment"},
                                                   {FormatGroup::Border, "applyBorder"},
                                                   {FormatGroup::Fill, "applyFill"},
                                                   {FormatGroup::Protection, "applyProtection"}}};

bool SameGroup(FormatGroup group, const Format& a, const Format& b) {
  switch (group) {
    case FormatGroup::Number:
      return a.numberFormat == b.numberFormat;
    case FormatGroup::Font:
      return a.font == b.font;
    case FormatGroup::Alignment:
      return a.alignment == b.alignment;
    case FormatGroup::Border:
      return a.border == b.border;
    case FormatGroup::Fill:
      return a.fill == b.fill;
    case FormatGroup::Protection:
      return a.protection == b.protection;
  }
  return true;
}

class StylesReader {
 public:
  StylesReader(const pugi::xml_node& root, FormatTable& formats, PackageData& data, Budget& budget)
      : root_(root),
        partName_(data.stylesPath),
        colours_(data.colours),
        formats_(formats),
        data_(data),
        budget_(budget) {}

  void Read() {
    ForEachChild(ChildOf(root_, "numFmts"), "numFmt", [&](const pugi::xml_node& format) {
      RequireFew(numberFormats_.size(), "numFmts");
      numberFormats_[WholeOf(format, "numFmtId", -1, 0, 1 << 30)] = WithoutEscapes(AttributeOf(format, "formatCode"));
    });
    ReadAll("fonts", "font", fonts_, ReadFont);
    ReadAll("fills", "fill", fills_, ReadFill);
    ReadAll("borders", "border", borders_, ReadBorder);
    ReadNamedStyles();
    ReadRecords();
  }

 private:
  template <class Group, class ReadGroup>
  void ReadAll(std::string_view list, std::string_view element, std::vector<Group>& groups, ReadGroup read) {
    ForEachChild(ChildOf(root_, list), element, [&](const pugi::xml_node& node) {
      RequireFew(groups.size(), list);
      groups.push_back(read(node, colours_));
    });
  }

  void RequireFew(std::size_t count, std::string_view list) const {
    if (count >= kMostRecords)
      throw XlsxError("The part " + partName_ + " of the file has too many " + std::string(list));
  }

  template <class Group>
  Group GroupOf(const pugi::xml_node& xf, const char* attribute, const std::vector<Group>& groups) const {
    const double number = NumberOf(xf, attribute, 0);
    if (number < 0 || number >= static_cast<double>(std::max<std::size_t>(groups.size(), 1))) {
      throw XlsxError("The part " + partName_ + " of the file has a format whose " + attribute + " " +
                      AttributeOf(xf, attribute) + " is not among the " + std::to_string(groups.size()) + " there are");
    }
    return groups.empty() ? Group{} : groups[static_cast<std::size_t>(number)];
  }

  Format FormatOf(const pugi::xml_node& xf) const {
    Format format;
    const int number = WholeOf(xf, "numFmtId", 0, 0, 1 << 30);
    if (const auto own = numberFormats_.find(number); own != numberFormats_.end()) {
      format.numberFormat = own->second;
    } else if (const auto builtIn = BuiltInNumberFormat(number)) {
      format.numberFormat = *builtIn;
    }
    format.font = GroupOf(xf, "fontId", fonts_);
    format.fill = GroupOf(xf, "fillId", fills_);
    format.border = GroupOf(xf, "borderId", borders_);
    format.alignment = ReadAlignment(xf);
    format.protection = ReadProtection(xf);
    // Each record holds its texts anew, in the workbook and beside it.
    budget_.Spend(3 * (sizeof(CellFormat) + format.numberFormat.size() + format.font.name.size()));
    return format;
  }

  void ReadNamedStyles() {
    std::vector<NamedStyle> styles;
    ForEachChild(ChildOf(root_, "cellStyleXfs"), "xf", [&](const pugi::xml_node& xf) {
      RequireFew(styles.size(), "cellStyleXfs");
      NamedStyle style;
      style.format = FormatOf(xf);
      for (const GroupSwitch& entry : kSwitches) {
        if (!FlagOf(xf, entry.attribute, true))
          style.includes &= static_cast<FormatGroups>(~static_cast<unsigned>(entry.group));
      }
      styles.push_back(std::move(style));
    });
    styleOfXf_.assign(styles.size(), kNormalStyle);
    std::vector<bool> isNamed(styles.size());
    ForEachChild(ChildOf(root_, "cellStyles"), "cellStyle", [&](const pugi::xml_node& element) {
      const int xf = WholeOf(element, "xfId", -1, 0, static_cast<int>(styles.size()) - 1);
      if (xf < 0) return;
      const auto at = static_cast<std::size_t>(xf);
      NamedStyle style = styles[at];
      style.name = WithoutEscapes(AttributeOf(element, "name"));
      const bool isNormal = AttributeOf(element, "builtinId") == "0" || style.name == "Normal";
      StyleId id = kNormalStyle;
      if (isNormal) {
        style.name = "Normal";
        formats_.ChangeStyle(kNormalStyle, style);
      } else if (style.name.empty() || formats_.FindStyle(style.name)) {
        return;  // one that cannot be told apart stays in the file alone
      } else {
        id = formats_.AddStyle(style);
      }
      if (!isNamed[at]) styleOfXf_[at] = id;
      isNamed[at] = true;
      data_.styles.push_back({std::move(style), id, xf});
    });
  }

  void ReadRecords() {
    ForEachChild(ChildOf(root_, "cellXfs"), "xf", [&](const pugi::xml_node& xf) {
      RequireFew(data_.xfs.size(), "cellXfs");
      CellFormat format;
      const int style = WholeOf(xf, "xfId", -1, 0, static_cast<int>(styleOfXf_.size()) - 1);
      if (style >= 0) format.style = styleOfXf_[static_cast<std::size_t>(style)];
      format.format = FormatOf(xf);
      format.kept = static_cast<std::uint32_t>(data_.xfs.size());
      const NamedStyle& named = formats_.StyleAt(format.style);
      for (const GroupSwitch& entry : kSwitches) {
        const bool differs = (named.includes & static_cast<FormatGroups>(entry.group)) != 0 &&
                             !SameGroup(entry.group, format.format, named.format);
        if (FlagOf(xf, entry.attribute, differs)) format.direct |= static_cast<FormatGroups>(entry.group);
      }
      const FormatId id = formats_.Intern(format);
      data_.xfs.push_back({std::move(format), id});
    });
  }

  const pugi::xml_node root_;
  const std::string& partName_;
  const Colours& colours_;
  FormatTable& formats_;
  PackageData& data_;
  Budget& budget_;
  std::unordered_map<int, std::string> numberFormats_;
  std::vector<Font> fonts_;
  std::vector<Fill> fills_;
  std::vector<std::array<Line, 4>> borders_;
  std::vector<StyleId> styleOfXf_;  // by the number among the records of named styles
};

}  // namespace

void ReadStyles(std::string_view xml, FormatTable& formats, PackageData& data, Budget& budget) {
  const std::string& partName = data.stylesPath;
  const auto document = ParseDom(xml, partName, budget);
  const pugi::xml_node root = document->document_element();
  if (LocalName(root) != "styleSheet") throw XlsxError("The part " + partName + " of the file does not hold styles");
  data.colours.ReadPalette(ChildOf(root, "colors"));
  StylesReader(root, formats, data, budget).Read();
}

}  // namespace tolvane::engine::xlsx
