#include "engine/model/Format.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tolvane::engine {
namespace {

FormatId Bold(FormatTable& table, FormatId from) {
  return table.With(from, FormatGroup::Font, [](Format& format) { format.font.bold = true; });
}

NamedStyle Heading() {
  NamedStyle style;
  style.name = "Heading";
  style.includes = static_cast<FormatGroups>(FormatGroup::Font) | static_cast<FormatGroups>(FormatGroup::Fill);
  style.format.font.size = 15;
  style.format.fill = {FillPattern::Solid, 0xFFCC00};
  style.format.numberFormat = "dd/mm/yyyy hh:mm";  // not included
  return style;
}

TEST(FormatTable, EqualFormatsAreOne) {
  FormatTable table;
  const FormatId bold = Bold(table, kDefaultFormat);
  EXPECT_NE(bold, kDefaultFormat);
  EXPECT_EQ(Bold(table, kDefaultFormat), bold);
  EXPECT_EQ(table.Intern(CellFormat{}), kDefaultFormat);
}

TEST(FormatTable, HoldsManyFormatsApart) {
  FormatTable table;
  std::vector<FormatId> ids;
  const auto sized = [&](int size) {
    return table.With(kDefaultFormat, FormatGroup::Font, [&](Format& format) { format.font.size = size; });
  };
  for (int size = 100; size < 1100; ++size) ids.push_back(sized(size));
  for (int size = 100; size < 1100; ++size) EXPECT_EQ(sized(size), ids[static_cast<std::size_t>(size - 100)]);
  EXPECT_EQ(table.size(), 1002u);  // with the default format and the plain one
}

TEST(FormatTable, EveryPropertyCounts) {
  const auto differs = [](auto&& change) {
    FormatTable table;
    CellFormat format;
    change(format.format);
    return table.Intern(format) != kDefaultFormat;
  };
  EXPECT_TRUE(differs([](Format& f) { f.numberFormat = "#,##0.00;(#,##0.00)"; }));
  EXPECT_TRUE(differs([](Format& f) { f.font.name = "Liberation Sans Narrow"; }));
  EXPECT_TRUE(differs([](Format& f) { f.font.colour = 0; }));
  EXPECT_TRUE(differs([](Format& f) { f.font.underline = Underline::Double; }));
  EXPECT_TRUE(differs([](Format& f) { f.alignment.rotation = -90; }));
  EXPECT_TRUE(differs([](Format& f) { f.border[3].style = LineStyle::Hair; }));
  EXPECT_TRUE(differs([](Format& f) { f.fill.colour = 0x00FF00; }));
  EXPECT_TRUE(differs([](Format& f) { f.protection.locked = false; }));
}

TEST(FormatTable, StylesAreFoundIgnoringCase) {
  FormatTable table;
  const StyleId heading = table.AddStyle(Heading());
  EXPECT_EQ(table.FindStyle("hEADING"), heading);
  EXPECT_EQ(table.FindStyle("normal"), kNormalStyle);
  EXPECT_FALSE(table.FindStyle("Total"));
  EXPECT_THROW(table.AddStyle(Heading()), std::invalid_argument);
}

TEST(FormatTable, AStyleReplacesTheGroupsItIncludesAndLeavesTheOthers) {
  FormatTable table;
  const StyleId heading = table.AddStyle(Heading());
  FormatId format = Bold(table, kDefaultFormat);
  format = table.With(format, FormatGroup::Number, [](Format& f) { f.numberFormat = "0.00%;(0.00%);-;@"; });
  const CellFormat& styled = table.At(table.WithStyle(format, heading));
  EXPECT_EQ(styled.style, heading);
  EXPECT_FALSE(styled.format.font.bold);
  EXPECT_EQ(styled.format.font.size, 15);
  EXPECT_EQ(styled.format.numberFormat, "0.00%;(0.00%);-;@");
  EXPECT_EQ(styled.direct, static_cast<FormatGroups>(FormatGroup::Number));
}

TEST(FormatTable, AChangedStyleReachesTheFormatsThatFollowIt) {
  FormatTable table;
  const StyleId heading = table.AddStyle(Heading());
  const FormatId plain = table.WithStyle(kDefaultFormat, heading);
  const FormatId filled = table.With(plain, FormatGroup::Fill, [](Format& f) {
    f.fill = {FillPattern::Solid, 0x0000FF};
  });
  const FormatId other = Bold(table, kDefaultFormat);
  NamedStyle changed = Heading();
  changed.format.font.size = 20;
  changed.format.fill = {FillPattern::Solid, 0x111111};
  table.ChangeStyle(heading, changed);
  EXPECT_EQ(table.At(plain).format.font.size, 20);
  EXPECT_EQ(table.At(plain).format.fill.colour, 0x111111u);
  EXPECT_EQ(table.At(filled).format.font.size, 20);
  EXPECT_EQ(table.At(filled).format.fill.colour, 0x0000FFu);
  EXPECT_EQ(table.At(other).format.font.size, 11);
  // Formats are found by what they have become.
  EXPECT_EQ(table.Intern(table.At(filled)), filled);
}

TEST(FormatTable, ChangingNormalChangesTheDefaultFormat) {
  FormatTable table;
  NamedStyle normal = table.StyleAt(kNormalStyle);
  normal.format.font.name = "Liberation Sans Narrow";
  table.ChangeStyle(kNormalStyle, normal);
  EXPECT_EQ(table.At(kDefaultFormat).format.font.name, "Liberation Sans Narrow");
  EXPECT_EQ(table.At(kPlainFormat).format.font.name, "Liberation Sans Narrow");
  EXPECT_EQ(table.Intern(table.At(kPlainFormat)), kDefaultFormat);
}

TEST(Format, TellsTheGroupsThatDiffer) {
  Format a;
  Format b;
  EXPECT_EQ(GroupsThatDiffer(a, b), 0);
  b.border[0].style = LineStyle::Thin;
  b.numberFormat = "d mmmm yyyy hh:mm";
  EXPECT_EQ(GroupsThatDiffer(a, b), static_cast<int>(FormatGroup::Border) | static_cast<int>(FormatGroup::Number));
}

}  // namespace
}  // namespace tolvane::engine
