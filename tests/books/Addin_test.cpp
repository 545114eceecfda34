// The add-in workbook: its tables are what the program reads at its start, and the ribbon fits to them.
#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "platform/Files.h"
#include "platform/Text.h"
#include "tests/books/OpenBooks.h"

namespace tolvane::books {
namespace {

constexpr int kCommands = 39;
constexpr int kKinds = 12;

struct Command {
  int number = 0;
  std::string caption, ribbonId, image, sheets, screenTip, superTip;
  bool separator = false;
};
struct Kind {
  std::string codeName, label, group, image;
  bool enabled = false;
};

std::string At(const host::CellBlock& block, int row, int column) {
  const host::CellValue& value = block.at(row, column);
  return value.isText() ? std::string(value.text()) : std::string();
}

// As users read it.
std::string Plain(std::string caption) {
  std::erase(caption, '&');
  constexpr std::string_view ellipsis = "…";
  if (caption.ends_with(ellipsis)) caption.resize(caption.size() - ellipsis.size());
  return platform::FoldCase(caption);
}

// As the program tests it: an empty text is in none.
bool Has(const std::string& list, const std::string& word) {
  return !word.empty() && list.find(word) != std::string::npos;
}

class AddinBook : public OpenBooks {
 protected:
  void SetUp() override {
    book_ = Addin();
    data_ = book_.Worksheets().Item("wksData");
    bars_ = book_.Worksheets().Item("wksCommandBars");
    const host::CellBlock commands = data_.Range("rngCC").Value();
    ASSERT_EQ(commands.rows(), kCommands);
    ASSERT_GE(commands.columns(), 8);
    for (int row = 1; row <= kCommands; ++row) {
      ASSERT_TRUE(commands.at(row, 8).isBoolean());
      commands_.push_back({row, At(commands, row, 2), At(commands, row, 3), At(commands, row, 4), At(commands, row, 5),
                           At(commands, row, 6), At(commands, row, 7), commands.at(row, 8).boolean()});
    }
    const host::CellBlock kinds = data_.Range("rngBookSheetsData").Value();
    ASSERT_EQ(kinds.rows(), kKinds);
    ASSERT_GE(kinds.columns(), 8);
    for (int row = 1; row <= kKinds; ++row) {
      ASSERT_TRUE(kinds.at(row, 6).isBoolean());
      kinds_.push_back(
          {At(kinds, row, 4), At(kinds, row, 5), At(kinds, row, 7), At(kinds, row, 8), kinds.at(row, 6).boolean()});
    }
  }

  bool ShowsOn(const std::string& sheets, int kind) const {
    const Kind& each = kinds_[static_cast<std::size_t>(kind)];
    return Has(sheets, each.codeName) || Has(sheets, each.group);
  }
  const Command* CommandOf(const std::string& caption) const {
    const auto found =
        std::find_if(commands_.begin(), commands_.end(), [&](const Command& each) { return each.caption == caption; });
    return found == commands_.end() ? nullptr : &*found;
  }

  host::Workbook book_;
  host::Worksheet data_, bars_;
  std::vector<Command> commands_;
  std::vector<Kind> kinds_;
};

TEST_F(AddinBook, IsAnAddin) {
  EXPECT_TRUE(book_.IsAddin());
  EXPECT_EQ(application().Workbooks().Count(), 0);
  EXPECT_EQ(book_.Worksheets().Count(), 2);
}

// A click finds its command by the caption, and the selection looks for captions within captions.
TEST_F(AddinBook, NoCaptionIsAPartOfAnother) {
  for (const Command& a : commands_) {
    EXPECT_FALSE(a.caption.empty()) << a.number;
    for (const Command& b : commands_) {
      if (a.number == b.number) continue;
      EXPECT_EQ(b.caption.find(a.caption), std::string::npos) << a.caption << " in " << b.caption;
      EXPECT_EQ(Plain(b.caption).find(Plain(a.caption)), std::string::npos) << a.caption << " in " << b.caption;
    }
  }
}

TEST_F(AddinBook, CommandsHaveIdsAndTips) {
  std::set<std::string> ids;
  for (const Command& each : commands_) {
    SCOPED_TRACE(each.caption);
    EXPECT_TRUE(ids.insert(each.ribbonId).second);
    EXPECT_THAT(each.ribbonId, ::testing::MatchesRegex("rx[A-Z][A-Za-z]+"));
    EXPECT_EQ(each.caption.find('&'), each.caption.rfind('&'));  // one access key at most
    if (each.number != 4) {
      EXPECT_EQ(platform::FoldCase(each.screenTip), Plain(each.caption));
      EXPECT_THAT(each.superTip, ::testing::EndsWith("."));
    }
    // These go into the ribbon's XML as they are.
    for (const std::string* text : {&each.ribbonId, &each.image, &each.screenTip, &each.superTip}) {
      EXPECT_EQ(text->find_first_of("&<>\""), std::string::npos) << *text;
    }
    EXPECT_EQ(each.caption.find_first_of("<>\""), std::string::npos);
    const std::size_t key = each.caption.find('&');
    EXPECT_TRUE(key == std::string::npos || std::isalpha(static_cast<unsigned char>(each.caption[key + 1])) != 0);
  }
}

// On which kinds of sheets the menu of the ribbon shows which commands.
TEST_F(AddinBook, CommandsBelongToTheirSheets) {
  const std::map<int, std::vector<int>> expected = {
      {1, {24, 27, 38}},
      {2, {22, 24, 27, 28}},
      {3, {10, 12, 13, 14, 15, 16, 17, 23}},
      {4, {25, 33, 34, 35, 38, 39}},
      {5, {26, 33, 35, 38, 39}},
      {9, {10, 12, 13, 14, 18, 19, 20, 21, 23}},
      {10, {11, 33, 35, 39}},
  };
  for (int kind = 0; kind < kKinds; ++kind) {
    SCOPED_TRACE(kind);
    std::vector<int> shown;
    for (const Command& each : commands_) {
      if (ShowsOn(each.sheets, kind)) shown.push_back(each.number);
    }
    const auto found = expected.find(kind);
    EXPECT_EQ(shown, found == expected.end() ? std::vector<int>() : found->second);
    EXPECT_EQ(kinds_[static_cast<std::size_t>(kind)].enabled, found != expected.end());
  }
}

TEST_F(AddinBook, KindsOfSheets) {
  const char* const codeNames[] = {"",
                                   "wksAccounts",
                                   "wksBalanceSheet",
                                   "wksIncomeStatement",
                                   "",
                                   "wksAdjustments",
                                   "wksLists",
                                   "wksTechnical",
                                   "wksSheetTemplate",
                                   "wksBudgets",
                                   "wksBreakdown",
                                   ""};
  std::vector<std::string> words;
  for (int kind = 0; kind < kKinds; ++kind) {
    const Kind& each = kinds_[static_cast<std::size_t>(kind)];
    EXPECT_EQ(each.codeName, codeNames[kind]);
    EXPECT_FALSE(each.label.empty()) << kind;
    EXPECT_FALSE(each.image.empty()) << kind;
    if (!each.codeName.empty()) words.push_back(each.codeName);
    if (!each.group.empty() && !::testing::Value(words, ::testing::Contains(each.group))) words.push_back(each.group);
  }
  EXPECT_FALSE(kinds_[4].group.empty());  // the sheets of accounts have no code name of their own
  for (const std::string& a : words) {
    for (const std::string& b : words) {
      EXPECT_TRUE(a == b || b.find(a) == std::string::npos) << a << " in " << b;
    }
  }
  const host::Workbook accounts = AccountsBook();
  for (const int kind : {1, 2, 3, 5, 6, 7, 8, 9}) SheetOf(accounts, codeNames[kind]);
}

TEST_F(AddinBook, BarsHaveTheirColumns) {
  const host::Range start = bars_.Range("TableStart");
  EXPECT_EQ(start.Address(), "$A$1");
  for (const char* name :
       {"Position", "IsMenubar",    "Visible",     "Width",        "Protection", "IsTemporary", "IsEnabled",
        "OnAction", "ControlID",    "ControlType", "ControlStyle", "FaceID",     "BeginGroup",  "Before",
        "Tooltip",  "ShortcutText", "Tag",         "Parameter",    "State",      "ListRange"}) {
    const host::Range heading = bars_.Range(name);
    EXPECT_EQ(heading.Row(), start.Row()) << name;
    EXPECT_GT(heading.Column(), start.Column() + 2) << name;
    EXPECT_EQ(TextOf(heading), name);
  }
}

TEST_F(AddinBook, BarsHoldTheirControls) {
  const host::Range start = bars_.Range("TableStart");
  const auto textAt = [&](int row, const char* name) { return TextOf(bars_.Cells(row, ColumnOf(bars_, name))); };
  std::map<std::string, std::vector<std::pair<int, std::string>>> controls;  // of each bar: row and caption
  std::string bar;
  int lastBar = 0;
  for (int row = start.Row() + 1; row < 400; ++row) {
    const std::string name = TextOf(bars_.Cells(row, 1));
    if (!name.empty()) {
      EXPECT_GT(row, lastBar + 1) << name << " stands right below another bar";
      bar = name;
      lastBar = row;
      controls[bar];
    }
    const std::string control = TextOf(bars_.Cells(row, 2));
    const std::string item = TextOf(bars_.Cells(row, 3));
    if (!control.empty()) controls[bar].push_back({row, control});
    if (control.empty() && item.empty()) continue;
    const std::string caption = item.empty() ? control : item;
    SCOPED_TRACE(bar + ": " + caption);
    if (textAt(row, "Tag") == "apfButton") {
      const Command* command = CommandOf(caption);
      ASSERT_NE(command, nullptr);
      // What the ribbon shows on a sheet, its menu does too.
      for (int kind = 1; kind < kKinds && !item.empty(); ++kind) {
        EXPECT_TRUE(!ShowsOn(command->sheets, kind) || ShowsOn(textAt(row, "Parameter"), kind)) << kind;
      }
    } else if (item.empty() &&
               bars_.Cells(row, ColumnOf(bars_, "ControlType")).Value().single() != host::CellValue(10)) {
      EXPECT_THAT(textAt(row, "OnAction"), ::testing::StartsWith("AccountsDo"));
    }
  }
  ASSERT_EQ(TextOf(start.Offset(1, 0)), "Tolvane Accounts");
  ASSERT_EQ(controls.size(), 4U);
  ASSERT_EQ(controls["Tolvane Accounts"].size(), 3U);  // the second is the menu of the book, the third of the sheet
  EXPECT_EQ(controls["Tolvane Accounts"][1].second, "Active &Book");
  EXPECT_EQ(controls["Tolvane Accounts"][2].second, "Active &Sheet");
  const auto captionsOf = [&](const char* name) {
    std::vector<int> numbers;
    for (const auto& [row, caption] : controls[name]) numbers.push_back(CommandOf(caption)->number);
    return numbers;
  };
  EXPECT_EQ(captionsOf("Tolvane Accounts IS Edit"), (std::vector<int>{10, 13, 16}));
  EXPECT_EQ(captionsOf("Tolvane Accounts Budgets Edit"), (std::vector<int>{10, 13, 19}));
  for (const auto& [name, rows] : controls) {
    EXPECT_EQ(bars_.Cells(rows.front().first - 1, ColumnOf(bars_, "Position")).Value().single(),
              host::CellValue(name == "Tolvane Accounts" ? 1 : 5))
        << name;
    std::set<std::string> captions;
    for (const auto& [row, caption] : rows) EXPECT_TRUE(captions.insert(Plain(caption)).second) << caption;
  }
  // The commands that follow the selection are on the popup of every sheet that has them.
  const std::map<int, std::vector<int>> followed = {{1, {37, 38}},     {2, {27, 28}},     {3, {10, 13, 14, 16, 17}},
                                                    {4, {38, 39, 33}}, {5, {38, 39, 33}}, {9, {10, 13, 14, 19, 20, 21}},
                                                    {10, {39, 33}}};
  for (const auto& [kind, numbers] : followed) {
    for (const int number : numbers) {
      bool isThere = false;
      for (const auto& [row, caption] : controls["Tolvane Accounts Popup"]) {
        const Command* command = CommandOf(caption);
        isThere =
            isThere || (command != nullptr && command->number == number && ShowsOn(textAt(row, "Parameter"), kind));
      }
      EXPECT_TRUE(isThere) << "command " << number << " on kind " << kind;
    }
  }
}

// Answers as the add-in does, from the tables.
class Answers final : public host::RibbonCallbacks {
 public:
  std::string content;
  std::vector<std::string> clicked;
  void OnLoad(const host::RibbonUI& ribbon) override { ribbon_ = ribbon; }
  bool GetEnabled(const host::RibbonControl&) override { return true; }
  bool GetVisible(const host::RibbonControl&) override { return true; }
  std::string GetLabel(const host::RibbonControl&) override { return "Account Sheet"; }
  std::optional<host::Picture> GetImage(const host::RibbonControl&) override { return std::nullopt; }
  std::string GetContent(const host::RibbonControl&) override { return content; }
  void OnAction(const host::RibbonControl& control) override { clicked.push_back(control.id); }
  void OnCommand(const host::RibbonControl& control, bool& cancelDefault) override {
    clicked.push_back(control.id);
    cancelDefault = true;
  }

 private:
  host::RibbonUI ribbon_;
};

TEST_F(AddinBook, TheRibbonLoadsAndFitsToTheCommands) {
  const std::string definition = platform::ReadFile(SharePath("ribbon.xml"));
  Answers answers;
  host().LoadRibbon(definition, answers);
  EXPECT_THAT(definition, ::testing::HasSubstr("http://schemas.microsoft.com/office/2006/01/customui"));
  for (const char* id : {"SortAscendingExcel", "SortDescendingExcel", "SortDialog", "SheetProtect", "Copy", "Cut",
                         "Paste", "PasteNoBorders", "PasteFormulas", "PasteTranspose", "PasteSpecialDialog"}) {
    EXPECT_THAT(definition, ::testing::HasSubstr("<command idMso=\"" + std::string(id) + "\"")) << id;
  }
  EXPECT_THAT(definition, ::testing::HasSubstr("<menu id=\"rxMenuBook\" label=\"Active Book\""));
  EXPECT_THAT(definition, ::testing::HasSubstr("<dynamicMenu id=\"rxMenuSheet\""));
  // A button of the definition is a command, with its words; none of them may come again in the sheet's menu.
  int buttons = 0;
  for (const Command& each : commands_) {
    const std::string start = "<button id=\"" + each.ribbonId + "\"";
    const std::size_t at = definition.find(start);
    if (at == std::string::npos) continue;
    ++buttons;
    SCOPED_TRACE(each.caption);
    EXPECT_TRUE(each.sheets.empty());
    const std::string button = definition.substr(at, definition.find("/>", at) - at);
    std::string label = each.caption;
    std::erase(label, '&');
    EXPECT_THAT(button, ::testing::HasSubstr(" label=\"" + label + "\""));
    EXPECT_THAT(button, ::testing::HasSubstr(" onAction=\"rxButtonClicked\""));
    EXPECT_THAT(button, ::testing::HasSubstr(" screentip=\"" + each.screenTip + "\""));
    EXPECT_THAT(button, ::testing::HasSubstr(" supertip=\"" + each.superTip + "\""));
  }
  EXPECT_EQ(buttons, 8);  // 1, 3, 5, 6, 7, 8, 9, 36
  std::size_t all = 0;
  for (std::size_t at = definition.find("<button "); at != std::string::npos; at = definition.find("<button ", at + 1))
    ++all;
  EXPECT_EQ(all, 8U);
}

}  // namespace
}  // namespace tolvane::books
