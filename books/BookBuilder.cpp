#include "books/BookBuilder.h"

#include <vector>

#include "books/Lists.h"
#include "books/SheetBuilder.h"
#include "books/Styles.h"
#include "src/host/Errors.h"

namespace tolvane::books {

namespace {

host::SheetVisibility VisibilityOf(const Table::Row& row) {
  const std::string& shown = row["shown"];
  if (shown == "yes") return host::SheetVisibility::Visible;
  if (shown == "no") return host::SheetVisibility::Hidden;
  if (shown == "never") return host::SheetVisibility::VeryHidden;
  row.Fail("a sheet is shown yes, no or never (then no user can show it), not \"" + shown + "\".");
}

// What a protected sheet still allows, by the set that sheets.tsv names: reports let the user size rows and columns,
// tables let him sort and filter as well.
void Protect(const host::Worksheet& sheet, const Table::Row& row) {
  const std::string& set = row["protection"];
  if (set == "none") return;
  if (set != "report" && set != "table") row.Fail("a sheet's protection is report, table or none.");
  host::Protection allowed;
  allowed.allowFormattingColumns = true;
  allowed.allowFormattingRows = true;
  allowed.allowSorting = set == "table";
  allowed.allowFiltering = set == "table";
  sheet.Protect(allowed);
}

// `corner`: the first cell that scrolls. What is above and left of it stays in view.
void ArrangeWindow(const host::Application& application, const host::Worksheet& sheet, const Table::Row& row) {
  sheet.Activate();
  const host::Window window = application.ActiveWindow();
  window.SetDisplayGridlines(row["gridlines"] == "yes");
  if (!row["freeze"].empty()) {
    const host::Range corner = sheet.Range(row["freeze"]);
    window.SetSplitRow(corner.Row() - 1);
    window.SetSplitColumn(corner.Column() - 1);
    window.SetFreezePanes(true);
  }
  if (!row["cursor"].empty()) sheet.Range(row["cursor"]).Select();
}

void PreparePrint(const host::Worksheet& sheet, const Table::Row& row) {
  const host::PageSetup page{.landscape = row["paper"] == "landscape", .fitToPagesWide = 1};
  sheet.SetPageSetup(page);
  // The rows that are printed on every page are Excel's own name on the sheet.
  std::string quoted = "'";
  for (const char c : sheet.Name()) quoted.append(c == '\'' ? 2 : 1, c);
  sheet.Names().Add("Print_Titles", "=" + quoted + "'!" + row["titles"], true);
}

void DefineNames(const host::Workbook& book, const Table& names) {
  for (const Table::Row& row : names.rows()) {
    try {
      const std::string& sheet = row["sheet"];
      const host::Names scope = sheet.empty() ? book.Names() : book.Worksheets().Item(sheet).Names();
      scope.Add(row["name"], row["refers to"], false);
    } catch (const host::HostError& error) {
      row.Fail(row["name"] + ": " + error.what());
    }
  }
}

}  // namespace

host::Workbook BuildBook(const host::Application& application, const BookTables& tables, const std::string& folder) {
  const host::Workbook book = application.Workbooks().Add();
  const Formats formats(tables.Shared("formats"));
  const Lists lists(tables.Shared("lists"));
  const Table& list = tables.Of(folder, "sheets");
  DefineStyles(book, tables.Shared("styles"));

  std::vector<host::Worksheet> sheets;
  for (const Table::Row& row : list.rows()) {
    const bool isFirst = sheets.empty();
    sheets.push_back(isFirst ? book.Worksheets().Item(1) : book.Worksheets().Add());
    sheets.back().SetName(row["name"]);
    if (!row["code name"].empty()) sheets.back().SetCodeName(row["code name"]);
  }
  if (sheets.empty()) throw TableError(folder + "/sheets.tsv tells of no sheet.");

  // Names first, since formulas and other names refer to them.
  for (std::size_t i = 0; i < sheets.size(); ++i) NameCells(sheets[i], tables.Of(folder, sheets[i].Name()));
  DefineNames(book, tables.Of(folder, "names"));
  for (std::size_t i = 0; i < sheets.size(); ++i) {
    const Table::Row& row = list.rows()[i];
    ArrangeWindow(application, sheets[i], row);
    FillCells(sheets[i], tables.Of(folder, sheets[i].Name()), formats, lists);
    PreparePrint(sheets[i], row);
    Protect(sheets[i], row);
  }
  sheets.front().Activate();
  for (std::size_t i = 0; i < sheets.size(); ++i) sheets[i].SetVisible(VisibilityOf(list.rows()[i]));
  return book;
}

}  // namespace tolvane::books
