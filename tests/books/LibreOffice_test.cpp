// The templates in LibreOffice Calc: a copy that it opened and saved holds the same, as far as Calc can hold it. Where
// `soffice` is not installed this says so and is skipped.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "tests/books/OpenBooks.h"

namespace tolvane::books {
namespace {

namespace fs = std::filesystem;

class BooksInLibreOffice : public OpenBooks {
 protected:
  void SetUp() override {
    if (std::system("command -v soffice >/dev/null 2>&1") != 0) {
      GTEST_SKIP() << "soffice is not installed: nothing was checked against LibreOffice";
    }
  }

  // The template as Calc saves it as a workbook.
  host::Workbook Converted(const std::string& name) {
    const fs::path copy = folder_.Path() / "in" / (name + ".xltm");
    const fs::path out = folder_.Path() / "out";
    fs::create_directories(copy.parent_path());
    fs::copy_file(SharePath(name + ".xltm"), copy);
    const std::string command = "soffice -env:UserInstallation=file://" + (folder_.Path() / "profile").string() +
                                " --headless --convert-to xlsx --outdir " + out.string() + " \"" + copy.string() +
                                "\" >/dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return application().Workbooks().Open((out / (name + ".xlsx")).string());
  }

  static std::map<std::string, std::string> NamesOf(const host::Names& names) {
    std::map<std::string, std::string> all;
    for (const host::Name& name : names.All()) {
      const std::string text = name.NameText();
      std::string refersTo = name.RefersTo();
      if (refersTo == "=TRUE()" || refersTo == "=FALSE()") refersTo.resize(refersTo.size() - 2);  // as Calc writes them
      all[text.substr(text.rfind('!') + 1)] = refersTo;
    }
    return all;
  }

  // Calc quotes literal characters another way.
  static std::string PlainFormat(const host::Range& cell) {
    std::string format = cell.NumberFormat().value_or("");
    std::erase_if(format, [](char c) { return c == '\\' || c == '"'; });
    return format;
  }

  static void ExpectSameCells(const host::Worksheet& ours, const host::Worksheet& theirs) {
    constexpr int kRows = 15;
    constexpr int kColumns = 14;
    for (int row = 1; row <= kRows; ++row) {
      for (int column = 1; column <= kColumns; ++column) {
        const host::Range a = ours.Cells(row, column);
        const host::Range b = theirs.Cells(row, column);
        SCOPED_TRACE(a.Address());
        EXPECT_EQ(a.Formula(), b.Formula());
        EXPECT_EQ(a.Value(), b.Value()) << a.Text() << " against " << b.Text();
        // Calc forgets that an empty cell looks like any other while its column does not.
        if (a.Style() == "Normal" && a.Value().single().isEmpty()) continue;
        EXPECT_EQ(PlainFormat(a), PlainFormat(b));
        EXPECT_EQ(a.Locked(), b.Locked());
        EXPECT_EQ(a.MergeCells(), b.MergeCells());
        // What a merge covers takes on the look of its first cell there.
        EXPECT_TRUE(a.MergeCells() == true || a.Style() == b.Style());
        const auto rule = a.Validation().Rule();
        const auto theirRule = b.Validation().Rule();
        ASSERT_EQ(rule.has_value(), theirRule.has_value());
        if (!rule) continue;
        EXPECT_EQ(rule->source, theirRule->source);
        EXPECT_EQ(rule->alert, theirRule->alert);
        EXPECT_EQ(rule->inCellDropdown, theirRule->inCellDropdown);
        EXPECT_EQ(rule->showError, theirRule->showError);
        EXPECT_EQ(rule->errorTitle, theirRule->errorTitle);
      }
    }
    for (int column = 1; column <= kColumns; ++column) {
      const double width = ours.Cells(1, column).ColumnWidth().value_or(0);
      EXPECT_NEAR(width, theirs.Cells(1, column).ColumnWidth().value_or(0), 0.75) << column;
    }
  }

  void ExpectSame(const std::string& name) {
    const host::Workbook ours = Open(name + ".xltm");
    const host::Workbook theirs = Converted(name);
    ASSERT_EQ(ours.Worksheets().Count(), theirs.Worksheets().Count());
    const std::vector<std::string> styles = theirs.StyleNames();
    for (const std::string& style : ours.StyleNames()) EXPECT_THAT(styles, ::testing::Contains(style));
    EXPECT_EQ(NamesOf(ours.Names()), NamesOf(theirs.Names()));
    for (int i = 1; i <= ours.Worksheets().Count(); ++i) {
      const host::Worksheet a = ours.Worksheets().Item(i);
      const host::Worksheet b = theirs.Worksheets().Item(i);
      SCOPED_TRACE(a.Name());
      EXPECT_EQ(a.Name(), b.Name());
      EXPECT_EQ(a.CodeName(), b.CodeName());
      EXPECT_EQ(a.Visible(), b.Visible());
      EXPECT_EQ(a.ProtectContents(), b.ProtectContents());
      EXPECT_EQ(NamesOf(a.Names()), NamesOf(b.Names()));
      EXPECT_EQ(a.PageSetup(), b.PageSetup());
      ExpectSameCells(a, b);
    }
  }

 private:
  platform::TemporaryFolder folder_;
};

TEST_F(BooksInLibreOffice, TheAccountsBookSurvives) {
  ExpectSame("Accounts Book");
}

TEST_F(BooksInLibreOffice, TheBreakdownSurvives) {
  ExpectSame("Breakdown");
}

}  // namespace
}  // namespace tolvane::books
