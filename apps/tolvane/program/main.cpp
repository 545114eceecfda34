#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "apps/tolvane/TableCommand.h"

// Exit status: 0 done, 1 done but some cell shows an error, 2 the call or a file cannot be used.
int main(int argc, char** argv) {
  CLI::App app{"Tolvane Accounts: a person's finances in one workbook."};
  app.set_version_flag("--version", TOLVANE_VERSION);
  app.require_subcommand(1);
  app.footer("Example:  tolvane table examples/household.tsv");

  std::string file;
  CLI::App* table = app.add_subcommand("table", "Calculate a tab-separated table and print it");
  table->add_option("FILE", file, "The table: cells apart by tabs, one row a line; - for standard input")->required();
  table->footer(
      "A cell that begins with = is a formula; numbers, dates (2009-03-15) and texts are recognised; a cell that "
      "begins\n"
      "with an apostrophe is a text.\n"
      "Example:  printf '2\\t3\\t=A1*B1\\n' | tolvane table -");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  }
  try {
    return tolvane::app::RunTable(file, std::cin, std::cout);
  } catch (const std::exception& error) {
    std::cerr << "tolvane: " << error.what() << '\n';
    return 2;
  }
}
