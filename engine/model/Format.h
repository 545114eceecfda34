#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tolvane::engine {

// A colour as 0xRRGGBB, or none (the automatic colour of what it is for).
using Colour = std::optional<std::uint32_t>;

enum class HorizontalAlignment : std::uint8_t {
  General,
  Left,
  Centre,
  Right,
  Fill,
  Justify,
  CentreAcross,
  Distributed
};
enum class VerticalAlignment : std::uint8_t { Bottom, Top, Centre, Justify, Distributed };
enum class LineStyle : std::uint8_t {
  None,
  Thin,
  Medium,
  Dashed,
  Dotted,
  Thick,
  Double,
  Hair,
  MediumDashed,
  DashDot,
  MediumDashDot,
  DashDotDot,
  MediumDashDotDot,
  SlantDashDot,
};
enum class FillPattern : std::uint8_t { None, Solid, Other };
enum class Underline : std::uint8_t { None, Single, Double, SingleAccounting, DoubleAccounting };

struct Line {
  LineStyle style = LineStyle::None;
  Colour colour;
  bool operator==(const Line&) const = default;
};

enum class Edge : std::uint8_t { Left, Right, Top, Bottom };

struct Font {
  std::string name = "Calibri";
  double size = 11;
  bool bold = false;
  bool italic = false;
  bool strikeout = false;
  Underline underline = Underline::None;
  Colour colour;
  bool operator==(const Font&) const = default;
};

struct Alignment {
  HorizontalAlignment horizontal = HorizontalAlignment::General;
  VerticalAlignment vertical = VerticalAlignment::Bottom;
  bool wrap = false;
  bool shrink = false;
  std::uint8_t indent = 0;
  std::int16_t rotation = 0;
  bool operator==(const Alignment&) const = default;
};

struct Fill {
  FillPattern pattern = FillPattern::None;
  Colour colour;
  bool operator==(const Fill&) const = default;
};

struct CellProtection {
  bool locked = true;
  bool formulaHidden = false;
  bool operator==(const CellProtection&) const = default;
};

// The six groups of properties that a named style may include and that a direct format may set over it.
enum class FormatGroup : std::uint8_t { Number = 1, Font = 2, Alignment = 4, Border = 8, Fill = 16, Protection = 32 };
using FormatGroups = std::uint8_t;
inline constexpr FormatGroups kAllFormatGroups = 63;

struct Format {
  std::string numberFormat = "General";
  Font font;
  Alignment alignment;
  std::array<Line, 4> border;  // by Edge
  Fill fill;
  CellProtection protection;
  bool operator==(const Format&) const = default;
};

// The groups in which two formats differ.
FormatGroups GroupsThatDiffer(const Format& a, const Format& b);

using StyleId = std::uint32_t;
inline constexpr StyleId kNormalStyle = 0;

struct NamedStyle {
  std::string name;
  FormatGroups includes = kAllFormatGroups;
  Format format;
  bool operator==(const NamedStyle&) const = default;
};

// A cell's format: a named style and, group by group, what was set directly over it.
struct CellFormat {
  StyleId style = kNormalStyle;
  FormatGroups direct = 0;  // groups set directly, which a change of the style leaves alone
  Format format;            // what counts, all groups filled in
  // The number of the record in the workbook's file that tells more of it than stands here (theme colours, gradients),
  // 0 for none. It goes along through changes, and keeps apart formats that are equal but for it.
  std::uint32_t kept = 0;
  bool operator==(const CellFormat&) const = default;
};

// A cell format's place in its workbook's table. 0 on a cell: nothing of its own, so its row's, else its column's, else
// the default format.
using FormatId = std::uint32_t;
inline constexpr FormatId kDefaultFormat = 0;
// The default format as a cell's own, where its row or column has another one.
inline constexpr FormatId kPlainFormat = 1;

// The named styles of a workbook ("Normal" is always there, as kNormalStyle) and the table of distinct cell formats.
class FormatTable {
 public:
  FormatTable();

  std::optional<StyleId> FindStyle(std::string_view name) const;  // ignoring case
  // Throws std::invalid_argument when the name is taken.
  StyleId AddStyle(NamedStyle style);
  const NamedStyle& StyleAt(StyleId id) const { return styles_[id]; }
  const std::vector<NamedStyle>& styles() const { return styles_; }
  // Changes a style and, with it, every cell format that follows it in the groups concerned.
  void ChangeStyle(StyleId id, const NamedStyle& style);

  // Holds until the table grows.
  const CellFormat& At(FormatId id) const { return formats_[id]; }
  // The number of an equal format, which is entered if there is none yet.
  FormatId Intern(const CellFormat& format);
  std::size_t size() const { return formats_.size(); }

  // `from` with the style put on: the groups that it includes are the style's, the others stay as they are.
  FormatId WithStyle(FormatId from, StyleId style);
  // `from` with a direct change of one group.
  template <class Change>
  FormatId With(FormatId from, FormatGroup group, Change&& change) {
    CellFormat copy = At(from);
    change(copy.format);
    copy.direct |= static_cast<FormatGroups>(group);
    return Intern(copy);
  }

 private:
  std::vector<NamedStyle> styles_;
  std::unordered_map<std::string, StyleId>
      styleByName_;  // by folded name; real books have been seen with 50,000 styles
  std::vector<CellFormat> formats_;
  // A hash table of the formats by content: open addressing, a power of two slots, at most half of them taken.
  std::vector<FormatId> slots_;

  std::size_t SlotOf(const CellFormat& format) const;  // where it stands, or the empty slot where it belongs
  void Rehash();
};

}  // namespace tolvane::engine
