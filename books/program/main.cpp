// Makes the add-in workbook and the templates of the tables in books/.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <string>
#include <utility>

#include "apps/tolvane/BatchDesk.h"
#include "books/BookBuilder.h"
#include "engine/xlsx/BookLock.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "hosts/files/XlsxFiles.h"
#include "platform/Files.h"

namespace tolvane::books {
namespace {

namespace fs = std::filesystem;

class Maker {
 public:
  Maker(const fs::path& tables, fs::path out) : tables_(tables), out_(std::move(out)) {}

  void Make() {
    fs::create_directories(out_);
    Save(BuildAddin(host_.application(), tables_), "Tolvane Accounts.xlam");
    MakeTemplate("accounts", "Accounts Book");
    MakeTemplate("breakdown", "Breakdown");
    platform::ReplaceFile(out_ / "ribbon.xml", tables_.Text("addin", "ribbon.xml"));
    LetAllRead(out_ / "ribbon.xml");
  }

 private:
  // Programs before the ribbon ask for the template by the older name; what it holds is the same.
  void MakeTemplate(const std::string& folder, const std::string& name) {
    Save(BuildBook(host_.application(), tables_, folder), name + ".xltm");
    fs::copy_file(out_ / (name + ".xltm"), out_ / (name + ".xlt"), fs::copy_options::overwrite_existing);
    LetAllRead(out_ / (name + ".xlt"));
  }

  void Save(const host::Workbook& book, const std::string& name) {
    book.SaveAs(platform::PathToUtf8(out_ / name));
    book.Close(false);
    LetAllRead(out_ / name);
  }

  // A workbook is saved for its user alone; these are everybody's.
  static void LetAllRead(const fs::path& file) {
    fs::permissions(file, fs::perms::group_read | fs::perms::others_read, fs::perm_options::add);
  }

  BookTables tables_;
  fs::path out_;
  app::BatchDesk desk_;
  engine::SystemLockWorld locks_;
  files::XlsxFiles files_{locks_, {.backups = 0}};
  embedded::EmbeddedHost host_{desk_, files_};
};

}  // namespace
}  // namespace tolvane::books

int main(int argc, char** argv) {
  CLI::App program{"Makes the add-in workbook and the templates."};
  std::string tables;
  std::string out;
  program.add_option("--tables", tables, "The folder of the tables")->required();
  program.add_option("--out", out, "The folder to write the workbooks to")->required();
  CLI11_PARSE(program, argc, argv);
  try {
    tolvane::books::Maker(tolvane::platform::PathFromUtf8(tables), tolvane::platform::PathFromUtf8(out)).Make();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "make_books: " << error.what() << '\n';
    return 2;
  }
}
