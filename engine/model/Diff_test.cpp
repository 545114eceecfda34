#include "engine/model/Diff.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/model/DifferencePrinter.h"
#include "engine/model/ExpressionBuilder.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

using test::Area;
using test::At;
using test::PutSum;
using test::Sum;
using testing::ElementsAre;
using testing::IsEmpty;

// A book with something of everything.
void Fill(Workbook& book) {
  Sheet& data = book.AddSheet("Data", 0);
  Sheet& other = book.AddSheet("Other", 1);
  book.AddSheet("Third", 2);
  data.SetValue(At("A1"), "Rent");
  data.SetValue(At("A2"), 5);
  PutSum(data, "B1", "A2,Other!$A$1");
  data.StoreResult(At("B1"), 5);
  PutSum(other, "C9", "Data!A1:A9");
  data.SetArrayFormula(Area("E1:E3"), Sum("A1:A3", At("E1"), book));
  NamedStyle heading;
  heading.name = "Heading";
  book.formats.AddStyle(heading);
  data.ChangeFormat(Area("D1:D5"), [&](FormatId from) {
    return book.formats.With(from, FormatGroup::Font, [](Format& format) { format.font.bold = true; });
  });
  Validation rule;
  rule.ranges = {Area("C1:C9")};
  rule.kind = Validation::Kind::List;
  rule.formula1 = Sum("Other!$A$1:$A$5", At("C1"), book);
  data.AddValidation(rule);
  data.merges = {Area("F1:G2")};
  data.hyperlinks = {{Area("H1"), "", "total", "go"}};
  data.autoFilter = AutoFilter{Area("A1:C9"), {{1, FilterCriteria::Join::None, ">5", {}, {}}}};
  data.printAreas = {Area("A1:H20")};
  data.rows.Change(4, 6, [](Band& band) { band.size = 33; });
  book.SetName(kOwnSheet, {"all", Sum("Data!$A$1", At("A1"), book), false});
  book.SetName(data.id(), {"total", Sum("$A$1", At("A1"), book), false});
}

struct Planted {
  const char* what;
  const char* where;
  const char* kind;
  std::function<void(Workbook&)> plant;
};

std::string TestName(const testing::TestParamInfo<Planted>& info) {
  std::string name;
  for (const char c : std::string_view(info.param.what)) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
  }
  return name;
}

// How GoogleTest names a case.
void PrintTo(const Planted& planted, std::ostream* out) {
  *out << planted.what;
}

class PlantedDifference : public testing::TestWithParam<Planted> {};

TEST_P(PlantedDifference, IsFoundAndNothingElse) {
  Workbook book;
  Fill(book);
  const auto clone = book.Clone();
  ASSERT_THAT(Diff(book, *clone), IsEmpty());
  GetParam().plant(*clone);
  const std::vector<Difference> found = Diff(book, *clone);
  ASSERT_EQ(found.size(), 1u) << testing::PrintToString(found);
  EXPECT_EQ(found[0].where, GetParam().where);
  EXPECT_EQ(found[0].what, GetParam().kind);
  EXPECT_NE(found[0].left, found[0].right);
  // The same seen from the other side.
  const std::vector<Difference> mirrored = Diff(*clone, book);
  ASSERT_EQ(mirrored.size(), 1u) << testing::PrintToString(mirrored);
  EXPECT_EQ(mirrored[0].what, found[0].what);
  EXPECT_EQ(mirrored[0].left, found[0].right);
}

Sheet& Data(Workbook& book) {
  return *book.FindSheet("Data");
}

// A change of the format of D2.
std::function<void(Workbook&)> InFormat(FormatGroup group, std::function<void(Format&)> change) {
  return [group, change](Workbook& book) {
    Data(book).ChangeFormat(Area("D2"), [&](FormatId from) { return book.formats.With(from, group, change); });
  };
}

std::function<void(Workbook&)> OnData(std::function<void(Sheet&)> change) {
  return [change](Workbook& book) { change(Data(book)); };
}

const std::vector<Planted> kPlanted{
    // cells
    {"value", "Data!A2", "value", OnData([](Sheet& s) { s.SetValue(At("A2"), 6); })},
    {"kind of value", "Data!A2", "value", OnData([](Sheet& s) { s.SetValue(At("A2"), "5"); })},
    {"new value", "Data!Z99", "value", OnData([](Sheet& s) { s.SetValue(At("Z99"), 1); })},
    {"missing value", "Data!A1", "value", OnData([](Sheet& s) { s.SetValue(At("A1"), Value()); })},
    {"formula", "Data!B1", "formula", OnData([](Sheet& s) {
       PutSum(s, "B1", "A3,Other!$A$1");
       s.StoreResult(At("B1"), 5);
     })},
    {"formula to another sheet", "Data!B1", "formula", OnData([](Sheet& s) { PutSum(s, "B1", "A2,Third!$A$1"); })},
    {"absolute for relative", "Data!B1", "formula", OnData([](Sheet& s) { PutSum(s, "B1", "$A$2,Other!$A$1"); })},
    {"constant for formula", "Data!B1", "formula", OnData([](Sheet& s) { s.SetValue(At("B1"), 5); })},
    {"result", "Data!B1", "result", OnData([](Sheet& s) { s.StoreResult(At("B1"), 7); })},
    {"array formula", "Data!E1", "array formula", OnData([](Sheet& s) {
       s.ClearContents(Area("E1:E3"));
       s.SetArrayFormula(Area("E1:E2"), Sum("A1:A3", At("E1"), s.book()));
     })},
    {"new array formula", "Data!K1", "formula",
     OnData([](Sheet& s) { s.SetArrayFormula(Area("K1:K3"), Sum("A1:A3", At("K1"), s.book())); })},
    {"result within an array", "Data!E2", "result", OnData([](Sheet& s) { s.StoreResult(At("E2"), 7); })},
    // formats
    {"number format", "Data!D2", "number format",
     InFormat(FormatGroup::Number, [](Format& f) { f.numberFormat.assign("0.00"); })},
    {"font", "Data!D2", "font", InFormat(FormatGroup::Font, [](Format& f) { f.font.italic = true; })},
    {"font colour", "Data!D2", "font", InFormat(FormatGroup::Font, [](Format& f) { f.font.colour = 0xFF0000; })},
    {"fill", "Data!D2", "fill", InFormat(FormatGroup::Fill, [](Format& f) { f.fill.pattern = FillPattern::Solid; })},
    {"left border", "Data!D2", "left border",
     InFormat(FormatGroup::Border, [](Format& f) { f.border[0].style = LineStyle::Thin; })},
    {"right border", "Data!D2", "right border",
     InFormat(FormatGroup::Border, [](Format& f) { f.border[1].style = LineStyle::Thin; })},
    {"top border", "Data!D2", "top border",
     InFormat(FormatGroup::Border, [](Format& f) { f.border[2].style = LineStyle::Thin; })},
    {"bottom border", "Data!D2", "bottom border",
     InFormat(FormatGroup::Border, [](Format& f) { f.border[3].colour = 0x00FF00; })},
    {"alignment", "Data!D2", "alignment", InFormat(FormatGroup::Alignment, [](Format& f) { f.alignment.wrap = true; })},
    {"locked", "Data!D2", "locked", InFormat(FormatGroup::Protection, [](Format& f) { f.protection.locked = false; })},
    {"formula hidden", "Data!D2", "formula hidden",
     InFormat(FormatGroup::Protection, [](Format& f) { f.protection.formulaHidden = true; })},
    {"format of an empty cell", "Data!Z99", "font",
     OnData([](Sheet& s) { s.ChangeFormat(Area("Z99"), [&](FormatId) { return s.FormatAt(At("D1")); }); })},
    {"format of a row", "Data!40:42", "font",
     OnData([](Sheet& s) { s.ChangeFormat(Area("40:42"), [&](FormatId) { return s.FormatAt(At("D1")); }); })},
    {"format of a column", "Data!K:K", "font",
     OnData([](Sheet& s) { s.ChangeFormat(Area("K:K"), [&](FormatId) { return s.FormatAt(At("D1")); }); })},
    {"style of a cell", "Data!A1", "style",
     [](Workbook& b) {
       const StyleId heading = *b.formats.FindStyle("Heading");
       Data(b).ChangeFormat(Area("A1"), [&](FormatId from) { return b.formats.WithStyle(from, heading); });
     }},
    {"definition of a style", "style Heading", "font",
     [](Workbook& b) {
       const StyleId heading = *b.formats.FindStyle("Heading");
       NamedStyle changed = b.formats.StyleAt(heading);
       changed.format.font.size = 20;
       b.formats.ChangeStyle(heading, changed);
     }},
    {"groups of a style", "style Heading", "included groups",
     [](Workbook& b) {
       const StyleId heading = *b.formats.FindStyle("Heading");
       NamedStyle changed = b.formats.StyleAt(heading);
       changed.includes = 1;
       b.formats.ChangeStyle(heading, changed);
     }},
    {"new style", "style Total", "style",
     [](Workbook& b) {
       b.formats.AddStyle({"Total", 63, {}});
     }},
    // rows and columns
    {"column width", "Data!B:C", "column width",
     OnData([](Sheet& s) { s.columns.Change(2, 3, [](Band& b) { b.size = 20; }); })},
    {"row height", "Data!5:5", "row height",
     OnData([](Sheet& s) { s.rows.Change(5, 5, [](Band& b) { b.size = 20; }); })},
    {"hidden row", "Data!9:9", "hidden",
     OnData([](Sheet& s) { s.rows.Change(9, 9, [](Band& b) { b.hidden = true; }); })},
    {"hidden column", "Data!B:B", "hidden",
     OnData([](Sheet& s) { s.columns.Change(2, 2, [](Band& b) { b.hidden = true; }); })},
    {"filtered row", "Data!5:5", "filtered",
     OnData([](Sheet& s) { s.rows.Change(5, 5, [](Band& b) { b.filtered = true; }); })},
    {"outline", "Data!9:9", "outline level",
     OnData([](Sheet& s) { s.rows.Change(9, 9, [](Band& b) { b.outline = 1; }); })},
    {"default height", "sheet Data", "default row height", OnData([](Sheet& s) { s.defaultRowHeight = 12; })},
    {"default width", "sheet Data", "default column width", OnData([](Sheet& s) { s.defaultColumnWidth = 12; })},
    // parts of a sheet
    {"new merge", "Data!J1:K1", "merge", OnData([](Sheet& s) { s.merges.push_back(Area("J1:K1")); })},
    {"missing merge", "Data!F1:G2", "merge", OnData([](Sheet& s) { s.merges.clear(); })},
    {"rule of a validation", "Data!C1:C9", "validation", OnData([](Sheet& s) { s.validations[0].showError = false; })},
    {"formula of a validation", "Data!C1:C9", "validation",
     OnData([](Sheet& s) { s.validations[0].formula1 = Sum("Other!$A$1:$A$6", At("C1"), s.book()); })},
    {"range of a validation", "Data!C10:C12", "validation",
     OnData([](Sheet& s) { s.validations[0].ranges = {Area("C1:C12")}; })},
    {"hole in a validation", "Data!C4", "validation", OnData([](Sheet& s) { s.RemoveValidation(Area("C4")); })},
    {"hyperlink", "Data!H1", "hyperlink", OnData([](Sheet& s) { s.hyperlinks[0].subAddress = "all"; })},
    {"new hyperlink", "Data!H2", "hyperlink", OnData([](Sheet& s) {
       s.hyperlinks.push_back({Area("H2"), "", "x", ""});
     })},
    {"attachment", "Data!C4:C5", "attachment", OnData([](Sheet& s) {
       s.attachments.push_back({1, Attachment::Hold::Cells, {Area("C4:C5")}, {}});
     })},
    {"print area", "sheet Data", "print area", OnData([](Sheet& s) { s.printAreas = {Area("A1:H21")}; })},
    {"page", "sheet Data", "page", OnData([](Sheet& s) { s.page.landscape = true; })},
    {"range of the filter", "sheet Data", "auto filter", OnData([](Sheet& s) { s.autoFilter->range = Area("A1:C8"); })},
    {"no filter", "sheet Data", "auto filter", OnData([](Sheet& s) { s.autoFilter.reset(); })},
    {"criteria of the filter", "sheet Data", "auto filter criteria",
     OnData([](Sheet& s) { s.autoFilter->criteria[0].criterion1.assign(">6"); })},
    {"protection", "sheet Data", "protection", OnData([](Sheet& s) { s.protection.isProtected = true; })},
    {"protection flag", "sheet Data", "protection: insert rows",
     OnData([](Sheet& s) { s.protection.insertRows = true; })},
    {"freeze", "sheet Data", "frozen panes", OnData([](Sheet& s) { s.view.freeze.rows = 2; })},
    {"zoom", "sheet Data", "zoom", OnData([](Sheet& s) { s.view.zoom = 90; })},
    {"selection", "sheet Data", "selection", OnData([](Sheet& s) { s.view.selection = {Area("A1:B2")}; })},
    {"active cell", "sheet Data", "active cell", OnData([](Sheet& s) { s.view.activeCell = At("B2"); })},
    {"scrolling", "sheet Data", "scroll position", OnData([](Sheet& s) { s.view.scrollRow = 7; })},
    {"gridlines", "sheet Data", "gridlines", OnData([](Sheet& s) { s.view.gridlines = false; })},
    {"visibility", "sheet Data", "visibility", OnData([](Sheet& s) { s.visibility = Visibility::VeryHidden; })},
    {"tab colour", "sheet Data", "tab colour", OnData([](Sheet& s) { s.tabColour = 0; })},
    {"code name of a sheet", "sheet Data", "code name", OnData([](Sheet& s) { s.codeName.assign("shtData"); })},
    // names
    {"new name", "name fresh", "name",
     [](Workbook& b) {
       b.SetName(kOwnSheet, {"fresh", Sum("A1", At("A1"), b), false});
     }},
    {"missing name", "name all", "name", [](Workbook& b) { b.RemoveName(kOwnSheet, "all"); }},
    {"name refers elsewhere", "name all", "refers to",
     [](Workbook& b) {
       b.SetName(kOwnSheet, {"all", Sum("Other!$A$1", At("A1"), b), false});
     }},
    {"hidden name", "name all", "hidden",
     [](Workbook& b) {
       b.SetName(kOwnSheet, {"all", Sum("Data!$A$1", At("A1"), b), true});
     }},
    {"spelling of a name", "name all", "spelling",
     [](Workbook& b) {
       b.SetName(kOwnSheet, {"All", Sum("Data!$A$1", At("A1"), b), false});
     }},
    {"new name of a sheet", "name Data!fresh", "name", OnData([](Sheet& s) {
       s.book().SetName(s.id(), {"fresh", Sum("A1", At("A1"), s.book()), false});
     })},
    {"missing name of a sheet", "name Data!total", "name", OnData([](Sheet& s) { s.names.Remove("total"); })},
    {"name of a sheet refers elsewhere", "name Data!total", "refers to", OnData([](Sheet& s) {
       s.names.Set({"total", Sum("$A$2", At("A1"), s.book()), false});
     })},
    {"hidden name of a sheet", "name Data!total", "hidden", OnData([](Sheet& s) {
       s.names.Set({"total", Sum("$A$1", At("A1"), s.book()), true});
     })},
    // the workbook
    {"new sheet", "sheet Fourth", "sheet", [](Workbook& b) { b.AddSheet("Fourth", 3); }},
    {"missing sheet", "sheet Third", "sheet", [](Workbook& b) { b.DeleteSheet(b.FindSheet("Third")->id()); }},
    {"order of sheets", "workbook", "sheet order", [](Workbook& b) { b.MoveSheet(b.FindSheet("Third")->id(), 0); }},
    {"renamed sheet", "sheet Other", "name", [](Workbook& b) { b.RenameSheet(b.FindSheet("Other")->id(), "Lists"); }},
    {"structure protection", "workbook", "structure protection", [](Workbook& b) { b.structureProtected = true; }},
    {"1904 dates", "workbook", "1904 dates", [](Workbook& b) { b.date1904 = true; }},
    {"code name of the workbook", "workbook", "code name", [](Workbook& b) { b.codeName.assign("Book"); }},
};

INSTANTIATE_TEST_SUITE_P(Diff, PlantedDifference, testing::ValuesIn(kPlanted), TestName);

TEST(Diff, LeavesOutWhatItIsToldTo) {
  Workbook book;
  Fill(book);
  const auto clone = book.Clone();
  Data(*clone).view.zoom = 50;
  Data(*clone).StoreResult(At("B1"), 7);
  EXPECT_EQ(Diff(book, *clone).size(), 2u);
  DiffOptions options;
  options.views = false;
  EXPECT_EQ(Diff(book, *clone, options).size(), 1u);
  options.results = false;
  EXPECT_THAT(Diff(book, *clone, options), IsEmpty());
}

TEST(Diff, StopsWhenItHasFoundEnough) {
  Workbook book;
  Fill(book);
  const auto clone = book.Clone();
  const std::vector<Value> block(2000, Value(1));
  Data(*clone).SetValues(Area("P1:Q1000"), block);
  DiffOptions options;
  options.most = 10;
  EXPECT_EQ(Diff(book, *clone, options).size(), 10u);
}

TEST(Diff, IsNotMisledByNumbersOfSheetsAndFormats) {
  Workbook left;
  Fill(left);
  Workbook right;
  right.AddSheet("Gone", 0);  // so that the sheets get other numbers
  right.AddSheet("Stays", 0);
  right.DeleteSheet(right.FindSheet("Gone")->id());
  right.formats.With(kDefaultFormat, FormatGroup::Font, [](Format& format) { format.font.size = 77; });
  Fill(right);
  right.DeleteSheet(right.FindSheet("Stays")->id());
  for (const char* name : {"Data", "Other", "Third"}) right.FindSheet(name)->codeName = left.FindSheet(name)->codeName;
  EXPECT_THAT(Diff(left, right), IsEmpty());
}

TEST(Diff, ShowsBothSidesAsText) {
  Workbook book;
  Fill(book);
  const auto clone = book.Clone();
  PutSum(Data(*clone), "B1", "A3:$A$9");
  const auto found = Diff(book, *clone);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].left, "=SUM(A2,'Other'!$A$1)");
  EXPECT_EQ(found[0].right, "=SUM(A3:$A$9)");
}

TEST(Diff, AFormatInAColumnOrInItsCellsLooksTheSame) {
  Workbook book;
  Fill(book);
  const auto clone = book.Clone();
  for (Workbook* each : {&book, clone.get()}) {
    Data(*each).ChangeFormat(Area("K:K"), [&](FormatId) { return Data(*each).FormatAt(At("D1")); });
  }
  Data(*clone).cells().SetFormat(At("K7"), Data(*clone).FormatAt(At("K7")));
  EXPECT_THAT(Diff(book, *clone), IsEmpty());
}

}  // namespace
}  // namespace tolvane::engine
