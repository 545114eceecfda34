#include "tests/xlsx/Soffice.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace tolvane::xlsxtest {

namespace fs = std::filesystem;

bool Soffice::IsThere() {
  return std::system("command -v soffice >/dev/null 2>&1") == 0;
}

fs::path Soffice::NewFolder() {
  fs::path out = folder_.Path() / ("out" + std::to_string(++conversions_));
  fs::create_directory(out);
  return out;
}

void Soffice::Run(const std::string& arguments) {
  const std::string command = "soffice -env:UserInstallation=file://" + (folder_.Path() / "profile").string() +
                              " --headless --norestore " + arguments + " >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

fs::path Soffice::ConvertAll(const std::vector<fs::path>& files, const std::string& kind) {
  fs::path out = NewFolder();
  std::string arguments = "--convert-to " + kind + " --outdir " + out.string();
  for (const fs::path& file : files) arguments += " " + file.string();
  Run(arguments);
  return out;
}

fs::path Soffice::Convert(const fs::path& file, const std::string& kind) {
  fs::path result = ConvertAll({file}, kind) / (file.stem().string() + "." + kind.substr(0, kind.find(':')));
  if (!fs::exists(result)) throw std::runtime_error("LibreOffice did not open " + file.string());
  return result;
}

fs::path Soffice::ConvertChanged(const fs::path& file, const std::string& basic) {
  const fs::path library = folder_.Path() / "profile/user/basic/Standard";
  if (!fs::exists(library)) Convert(file, "csv");  // makes the profile, which would replace what lay there before
  constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  std::ofstream(library / "script.xlb")
      << head
      << "<library:library xmlns:library=\"http://openoffice.org/2000/library\" library:name=\"Standard\" "
         "library:readonly=\"false\" library:passwordprotected=\"false\"><library:element "
         "library:name=\"Change\"/></library:library>\n";
  std::ofstream(library / "Change.xba")
      << head
      << "<script:module xmlns:script=\"http://openoffice.org/2000/script\" script:name=\"Change\" "
         "script:language=\"StarBasic\">\nSub Run(source As String, target As String)\n"
         "Dim hidden(0) As New com.sun.star.beans.PropertyValue\nhidden(0).Name = \"Hidden\"\nhidden(0).Value = True\n"
         "book = StarDesktop.loadComponentFromURL(source, \"_blank\", 0, hidden())\n"
      << basic
      << "\nDim filter(0) As New com.sun.star.beans.PropertyValue\nfilter(0).Name = \"FilterName\"\n"
         "filter(0).Value = \"Calc MS Excel 2007 XML\"\nbook.storeToURL(target, filter())\nbook.close(True)\n"
         "End Sub\n</script:module>\n";
  fs::path result = NewFolder() / file.filename();
  Run("'macro:///Standard.Change.Run(\"file://" + file.string() + "\",\"file://" + result.string() + "\")'");
  if (!fs::exists(result)) throw std::runtime_error("LibreOffice did not change " + file.string());
  return result;
}

}  // namespace tolvane::xlsxtest
