#include "tests/formulas/differential/Calc.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace tolvane::formulacases {

namespace fs = std::filesystem;

namespace {

// OOXMLRecalcMode 0: always. StringConversion 3: texts of numbers and dates in the locale's way, as in Excel; an empty
// text is no zero.
constexpr const char* kSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema"
           xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Calc/Formula/Load"><prop oor:name="OOXMLRecalcMode" oor:op="fuse"><value>0</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Formula/Calculation"><prop oor:name="StringConversion" oor:op="fuse"><value>3</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Formula/Calculation"><prop oor:name="EmptyStringAsZero" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Setup/L10N"><prop oor:name="ooSetupSystemLocale" oor:op="fuse"><value>en-US</value></prop></item>
</oor:items>
)";

}  // namespace

bool HasCalc() {
  return std::system("command -v soffice >/dev/null 2>&1") == 0;
}

std::vector<fs::path> RecalculatedByCalc(const std::vector<fs::path>& files, const fs::path& folder) {
  const fs::path profile = folder / "profile";
  const fs::path out = folder / "recalculated";
  fs::create_directories(profile / "user");
  fs::create_directories(out);
  std::ofstream(profile / "user" / "registrymodifications.xcu") << kSettings;
  std::string command = "timeout 300 soffice -env:UserInstallation=file://" + profile.string() +
                        " --headless --convert-to 'xlsx:Calc MS Excel 2007 XML' --outdir " + out.string();
  for (const fs::path& file : files) command += " " + file.string();
  command += " >" + (folder / "soffice.log").string() + " 2>&1";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("LibreOffice failed: " + command);
  std::vector<fs::path> results;
  for (const fs::path& file : files) {
    results.push_back(out / file.filename());
    if (!fs::exists(results.back())) throw std::runtime_error("LibreOffice did not open " + file.string());
  }
  return results;
}

}  // namespace tolvane::formulacases
