#include "tests/xlsx/RandomBook.h"

#include <array>
#include <cmath>
#include <utility>

#include "engine/formula/Parser.h"
#include "engine/model/StructuralChange.h"

namespace tolvane::xlsxtest {

using namespace engine;

namespace {

constexpr std::array<std::string_view, 8> kSheetNames = {"Accounts", "Sheet 1", "\xC3\x9Cn\xC3\xAF",   "A'B",
                                                         "2010",     "R1C1",    "Budget & plan <all>", "TRUE"};
constexpr std::array<std::string_view, 16> kPieces = {
    "a",        "Food", " ",       "\n",   "\r\n", "\t",  "&amp;",
    "<b>",      "\"",   "_x0041_", "\x01", "_x",   "]]>", "\xF0\x9F\x92\xB0",
    "\xC3\xA9", "=1+1"};
constexpr std::array<std::string_view, 14> kFormulas = {"=A1+B2*3",
                                                        "=SUM($A$1:B10)",
                                                        "=IF(A1>0,\"yes & no\",\"<no>\")",
                                                        "='A''B'!C3",
                                                        "=Accounts!$A:$A",
                                                        "=(1+2)%",
                                                        "=\"a\"\"b\"&TRUE",
                                                        "={1,2;3,\"x\"}",
                                                        "=VLOOKUP(A1,Accounts!$A$1:$C$20,2,FALSE)",
                                                        "=total*2",
                                                        "=#REF!+1",
                                                        "=-A1^2",
                                                        "=TEXTJOIN(\",\",TRUE,A1:A3)",
                                                        "=[Other.xlsx]Sheet1!$A$1"};

}  // namespace

std::string RandomBook::AnyText() {
  std::string text;
  for (int i = Below(5); i >= 0; --i) text += kPieces[static_cast<std::size_t>(Below(kPieces.size()))];
  return text;
}

Value RandomBook::AnyValue() {
  switch (Below(8)) {
    case 0:
      return Below(1000) - 500;
    case 1:
      return std::ldexp(static_cast<double>(random_()) - 2e9, Below(200) - 100);
    case 2:
      return Below(100000) / 100.0;
    case 3:
      return Chance(50);
    case 4:
      return std::array{ErrorCode::Null, ErrorCode::Div0, ErrorCode::Value, ErrorCode::Ref,
                        ErrorCode::Name, ErrorCode::Num,  ErrorCode::NA}[static_cast<std::size_t>(Below(7))];
    case 5:
      return std::string_view("Household and garden");
    default:
      return std::string_view(AnyText());
  }
}

Rect RandomBook::AnyArea(int rows, int columns) {
  const int top = 1 + Below(rows), left = 1 + Below(columns);
  return {top, left, top + Below(4), left + Below(3)};
}

Format RandomBook::AnyFormat() {
  Format format;
  if (Chance(50))
    format.numberFormat =
        std::array{"0.00", "m/d/yyyy", "#,##0.00 \"\xE2\x82\xAC\";[Red]-0", "@"}[static_cast<std::size_t>(Below(4))];
  if (Chance(50)) {
    format.font = {Chance(50) ? "Arial" : "Courier New",
                   8 + Below(10) / 2.0,
                   Chance(50),
                   Chance(30),
                   Chance(20),
                   static_cast<Underline>(Below(5)),
                   Chance(50) ? Colour(random_() & 0xFFFFFF) : Colour()};
  }
  if (Chance(40)) {
    format.alignment = {
        static_cast<HorizontalAlignment>(Below(8)), static_cast<VerticalAlignment>(Below(5)),  Chance(50), Chance(20),
        static_cast<std::uint8_t>(Below(4)),        static_cast<std::int16_t>(Below(181) - 90)};
  }
  if (Chance(40)) {
    for (Line& line : format.border) {
      line.style = static_cast<LineStyle>(Below(14));
      if (line.style != LineStyle::None && Chance(50)) line.colour = random_() & 0xFFFFFF;
    }
  }
  if (Chance(40)) format.fill = {FillPattern::Solid, random_() & 0xFFFFFF};
  if (Chance(20)) format.protection = {Chance(50), Chance(50)};
  return format;
}

CellFormat RandomBook::AnyCellFormat(FormatTable& formats) {
  CellFormat format;
  format.style = static_cast<StyleId>(Below(static_cast<int>(formats.styles().size())));
  format.format = formats.StyleAt(format.style).format;
  if (Chance(60)) {
    format.format = AnyFormat();
    format.direct = kAllFormatGroups;
  }
  return format;
}

ExpressionPtr RandomBook::AnyFormula(const Sheet& sheet, CellPos at) {
  const std::string_view text = kFormulas[static_cast<std::size_t>(Below(kFormulas.size()))];
  try {
    return ParseFormula(text, Notation::A1, {sheet.id(), at}, sheet.book());
  } catch (const ParseError&) {
    return ParseFormula("=A1&\"-\"", Notation::A1, {sheet.id(), at},
                        sheet.book());  // it names a sheet that is not there
  }
}

void RandomBook::FillSheet(Sheet& sheet) {
  CellStore& cells = sheet.cells();
  for (int i = Below(60); i > 0; --i) {
    const CellPos at{1 + Below(Chance(90) ? 90 : kMaxRow), 1 + Below(Chance(90) ? 12 : kMaxColumn)};
    if (cells.FormulaAt(at) != nullptr) continue;
    if (Chance(30)) {
      cells.SetFormula(at, {AnyFormula(sheet, at), std::nullopt, false});
      cells.StoreResult(at, AnyValue());
    } else {
      cells.SetValue(at, AnyValue());
    }
    if (Chance(40)) cells.SetFormat(at, sheet.book().formats.Intern(AnyCellFormat(sheet.book().formats)));
  }
  if (Chance(40)) {
    const Rect area{200, 3, 202, 4};
    sheet.SetArrayFormula(area, AnyFormula(sheet, area.topLeft()));
    for (int row = area.top; row <= area.bottom; ++row) {
      for (int column = area.left; column <= area.right; ++column) {
        sheet.StoreResult({row, column}, row);
        cells.FormulaAt({row, column})->dirty = false;
      }
    }
  }
  const FormatId format = sheet.book().formats.Intern(AnyCellFormat(sheet.book().formats));
  if (Chance(50)) sheet.columns.Change(2, 2 + Below(3), [&](Band& band) { band.format = format == 0 ? 0 : format; });
  if (Chance(50)) sheet.columns.Change(5, 6, [&](Band& band) { band.size = (10 + Below(300)) / 7 + 0.43; });
  if (Chance(50))
    sheet.columns.Change(7, 8, [](Band& band) {
      band.hidden = true;
      band.outline = 2;
    });
  if (Chance(50)) sheet.rows.Change(3, 3 + Below(5), [&](Band& band) { band.size = 10 + Below(40) * 0.75; });
  if (Chance(50)) sheet.rows.Change(20, 25, [&](Band& band) { band.format = format == 0 ? kPlainFormat : format; });
  if (Chance(50))
    sheet.rows.Change(60, 61, [](Band& band) {
      band.hidden = true;
      band.outline = 1;
    });
}

void RandomBook::AddParts(Sheet& sheet) {
  if (Chance(50)) sheet.merges = {{300, 1, 302, 2}, {305, 4, 305, 9}};
  for (int i = Below(3); i > 0; --i) {
    Validation rule;
    rule.ranges = {{400 + 10 * i, 1, 403 + 10 * i, 2}, {400 + 10 * i, 7, 400 + 10 * i, 7}};
    rule.kind = static_cast<Validation::Kind>(1 + Below(7));
    rule.alert = static_cast<Validation::Alert>(1 + Below(3));
    rule.comparison = static_cast<std::uint8_t>(Below(8));
    const FormulaHome home{sheet.id(), rule.ranges.front().topLeft()};
    rule.formula1 = ParseFormula(Chance(50) ? "=$A$1:$A$9" : "=\"Food,Car & house\"", Notation::A1, home, sheet.book());
    if (Chance(50)) rule.formula2 = ParseFormula("=B1+2", Notation::A1, home, sheet.book());
    rule.ignoreBlank = Chance(50);
    rule.inCellDropdown = Chance(50);
    rule.showInput = Chance(50);
    rule.showError = Chance(50);
    rule.inputTitle = "title <1>";
    rule.inputMessage = AnyText();
    rule.errorMessage = AnyText();
    sheet.AddValidation(std::move(rule));
  }
  if (Chance(50))
    sheet.hyperlinks.push_back({{500, 1, 500, 1}, "https://example.org/?a=1&b=2", "", "tip " + AnyText()});
  if (Chance(50)) sheet.hyperlinks.push_back({{501, 1, 502, 3}, "", "'A''B'!A1", ""});
  if (Chance(30)) sheet.printAreas = {{1, 1, 50, 8}, {60, 2, 70, 3}};
  if (Chance(30)) sheet.printAreas = {Rect::Columns(2, 4)};
  if (Chance(40)) {
    SheetProtection& p = sheet.protection;
    p.isProtected = Chance(70);
    for (bool* flag : {&p.objects, &p.scenarios, &p.formatCells, &p.formatColumns, &p.insertRows, &p.deleteRows,
                       &p.sort, &p.filter, &p.selectLocked, &p.selectUnlocked}) {
      *flag = Chance(50);
    }
  }
  if (Chance(40)) sheet.tabColour = random_() & 0xFFFFFF;
  if (Chance(40)) sheet.page = {Chance(50), Chance(50) ? 1 : 0, Chance(30) ? 2 : 0};
  if (Chance(20)) sheet.defaultRowHeight = 18;
  if (Chance(20)) sheet.defaultColumnWidth = 12.43;
}

void RandomBook::AddView(Sheet& sheet) {
  SheetView& view = sheet.view;
  view.zoom = Chance(50) ? 100 : 50 + Below(150);
  view.gridlines = Chance(70);
  if (Chance(50)) view.freeze = {Below(3), Below(3)};
  view.scrollRow = view.freeze.rows + 1 + Below(50);
  view.scrollColumn = view.freeze.columns + 1 + Below(5);
  view.activeCell = {1 + Below(20), 1 + Below(20)};
  view.selection = {Rect::Cell(view.activeCell)};
  if (Chance(30)) view.selection = {{1, 1, 2, 2}, Rect{view.activeCell.row, view.activeCell.column, 40, 40}};
}

void RandomBook::AddFilter(Sheet& sheet) {
  AutoFilter filter;
  filter.range = {600, 1, 620, 5};
  using Join = FilterCriteria::Join;
  if (Chance(60)) filter.criteria.push_back({1, Join::None, Chance(50) ? ">5" : "Food", std::nullopt, {}});
  if (Chance(60)) filter.criteria.push_back({2, Join::And, ">=1", "<9", {}});
  if (Chance(60)) filter.criteria.push_back({3, Join::Or, "=*x*", "<>", {}});
  if (Chance(60)) filter.criteria.push_back({5, Join::Values, "", std::nullopt, {"Food", "a&b"}});
  if (!filter.criteria.empty()) {
    sheet.rows.Change(603, 605, [](Band& band) { band.filtered = true; });
  }
  sheet.autoFilter = std::move(filter);
}

void RandomBook::AddNames(Workbook& book) {
  const auto add = [&](SheetId scope, const char* name, const char* text, bool hidden) {
    try {
      book.SetName(scope, {name, ParseFormula(text, Notation::A1, {scope, {}}, book), hidden});
    } catch (const ParseError&) {
    }
  };
  add(kOwnSheet, "total", "=Accounts!$A$1:$B$9", false);
  if (Chance(50)) add(kOwnSheet, "rate", "=0.19", Chance(50));
  if (Chance(50)) add(kOwnSheet, "_secret", "=\"a<b\"", true);
  const SheetId first = book.sheetAt(0).id();
  if (Chance(50)) add(first, "total", "=Accounts!$C$3", Chance(50));
  if (Chance(50)) add(first, "Print_Titles", "=Accounts!$1:$2", false);
}

std::unique_ptr<Workbook> RandomBook::Make() {
  auto book = std::make_unique<Workbook>();
  for (int i = Below(3); i > 0; --i) {
    NamedStyle style{"Style " + std::to_string(i), static_cast<FormatGroups>(Below(64)), AnyFormat()};
    book->formats.AddStyle(style);
  }
  const int sheets = 1 + Below(4);
  for (int i = 0; i < sheets; ++i) {
    const std::size_t name =
        i == 0 ? 0 : static_cast<std::size_t>((i * 3 + Below(2)) % static_cast<int>(kSheetNames.size()));
    if (book->FindSheet(kSheetNames[name]) == nullptr)
      book->AddSheet(std::string(kSheetNames[name]), book->sheetCount());
  }
  AddNames(*book);
  for (std::size_t i = 0; i < book->sheetCount(); ++i) {
    Sheet& sheet = book->sheetAt(i);
    FillSheet(sheet);
    AddParts(sheet);
    AddView(sheet);
    if (Chance(40)) AddFilter(sheet);
    if (i > 0 && Chance(30)) sheet.visibility = Chance(50) ? Visibility::Hidden : Visibility::VeryHidden;
    if (Chance(50)) sheet.codeName = "wks" + std::to_string(i);
  }
  book->structureProtected = Chance(20);
  book->date1904 = Chance(20);
  return book;
}

void RandomBook::Change(Workbook& book) {
  for (int i = 1 + Below(6); i > 0; --i) {
    Sheet& sheet = book.sheetAt(static_cast<std::size_t>(Below(static_cast<int>(book.sheetCount()))));
    const Run run{1 + Below(30), 1 + Below(4)};
    try {
      switch (Below(9)) {
        case 0:
          sheet.SetValue({1 + Below(50), 1 + Below(9)}, AnyValue());
          break;
        case 1:
          book.InsertRuns(sheet.id(), Axis::Rows, {&run, 1});
          break;
        case 2:
          book.DeleteRuns(sheet.id(), Axis::Rows, {&run, 1});
          break;
        case 3:
          book.InsertRuns(sheet.id(), Axis::Columns, {&run, 1});
          break;
        case 4: {
          const CellFormat format = AnyCellFormat(book.formats);
          sheet.ChangeFormat(AnyArea(40, 10), [&](FormatId) { return book.formats.Intern(format); });
          break;
        }
        case 5:
          book.SetName(kOwnSheet, {"added", ParseFormula("=1+1", Notation::A1, {kOwnSheet, {}}, book), false});
          break;
        case 6:
          if (book.sheetCount() < 6) book.AddSheet("New " + std::to_string(i), 0).SetValue({2, 2}, AnyValue());
          break;
        case 7:
          if (book.sheetCount() > 1) book.DeleteSheet(sheet.id());
          break;
        default: {
          NamedStyle style = book.formats.StyleAt(kNormalStyle);
          style.format.font.size = 9 + Below(3);
          book.formats.ChangeStyle(kNormalStyle, style);
          break;
        }
      }
    } catch (const std::invalid_argument&) {
      // What a workbook refuses leaves it as it was.
    }
  }
}

}  // namespace tolvane::xlsxtest
