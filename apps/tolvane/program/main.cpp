#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "apps/tolvane/TableCommand.h"
#include "apps/tolvane/TextTable.h"

// Exit status: 0 done, 1 done but some cell shows an error, 2 the call or a file cannot be used.
int main(int argc, char** argv) {
  CLI::App app{"Tolvane Accounts: a person's finances in one workbook."};
  app.set_version_flag("--version", TOLVANE_VERSION);
  app.require_subcommand(1);
  app.footer("Example:  tolvane table examples/household.tsv");

  tolvane::app::TableRequest request;
  CLI::App* table = app.add_subcommand("table", "Calculate a table or a workbook, and print or save it");
  table
      ->add_option("FILE", request.file,
                   "A workbook (.xlsx .xlsm .xltx .xltm .xlam), else a table; - for standard input")
      ->required();
  table->add_option("--sheet", request.sheet, "The sheet of the workbook that is printed; the first one otherwise");
  table->add_option("--save", request.saveAs,
                    "Save it as this workbook instead of printing it; a file that is there is kept as NAME.bak1");
  table->footer(
      "A table is a text with a row on each line and tabs between the cells. A cell that begins with = is a formula;\n"
      "numbers, dates (2009-03-15) and texts are recognised; a cell that begins with an apostrophe is a text.\n"
      "Examples:  printf '2\\t3\\t=A1*B1\\n' | tolvane table -\n"
      "           tolvane table examples/household.tsv --save household.xlsx\n"
      "           tolvane table household.xlsx");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  }
  try {
    return tolvane::app::RunTable(request, std::cin, std::cout);
  } catch (const std::exception& error) {
    std::cerr << "tolvane: " << tolvane::app::VisibleText(error.what()) << '\n';
    return 2;
  }
}
