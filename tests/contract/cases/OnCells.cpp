#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::AlertStyle;
using host::CellBlock;
using host::CellValue;
using host::HyperlinkTarget;
using host::ValidationRule;

constexpr std::string_view kValidationPage = "learn.microsoft.com: Validation.Add method (Excel)";
constexpr std::string_view kHyperlinksPage = "learn.microsoft.com: Hyperlinks.Add method (Excel)";

// A list Food, Rent in D1:D2, called lstCategories.
Sheet WithList(HostUnderTest& t) {
  const Sheet s = t.NewSheet();
  s.SetName("Data");
  s("D1:D2").SetValue(CellBlock{{"Food"}, {"Rent"}});
  s.Parent().Names().Add("lstCategories", "=Data!$D$1:$D$2");
  return s;
}

}  // namespace

// Validation and hyperlinks.
std::vector<ContractCase> OnCellsCases() {
  Cases cases("OnCells");

  cases.Add("ARuleComesBack", {"Validation.Add", "Validation.Rule"}, kValidationPage, [](HostUnderTest& t) {
    const Sheet s = WithList(t);
    EXPECT_FALSE(s("A1").Validation().Rule().has_value());
    ValidationRule rule;
    rule.alert = AlertStyle::Warning;
    rule.source = "=lstCategories";
    rule.ignoreBlank = false;
    rule.inCellDropdown = false;
    rule.showInput = false;
    rule.inputTitle = "in";
    rule.inputMessage = "choose";
    rule.errorTitle = "Tolvane Accounts";
    rule.errorMessage = "first line\r\nsecond line";
    s("A1:A3").Validation().Add(rule);
    ASSERT_TRUE(s("A2").Validation().Rule().has_value());
    EXPECT_EQ(*s("A1:A3").Validation().Rule(), rule);
    EXPECT_FALSE(s("A3:A4").Validation().Rule().has_value());
  });

  cases.Add("ASecondRuleIsRefused", {"Validation.Add"}, kPort, [](HostUnderTest& t) {
    const Sheet s = WithList(t);
    s("A2").Validation().Add(ListRule("=lstCategories"));
    EXPECT_TRUE(Refused([&] { s("A1:A3").Validation().Add(ListRule("=$D$1:$D$2")); }));
    EXPECT_FALSE(s("A1").Validation().Rule().has_value());
    EXPECT_EQ(s("A2").Validation().Rule()->source, "=lstCategories");
  });

  cases.Add("DeletedRulesAreGone", {"Validation.Delete"}, "learn.microsoft.com: Validation.Delete method (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = WithList(t);
              s("A1:A5").Validation().Add(ListRule("=lstCategories"));
              s("A2:A3").Validation().Delete();
              s("F9").Validation().Delete();
              EXPECT_FALSE(s("A2").Validation().Rule().has_value());
              EXPECT_TRUE(s("A1").Validation().Rule().has_value());
              EXPECT_TRUE(s("A4:A5").Validation().Rule().has_value());
              s("A2").Validation().Add(ListRule("=lstCategories"));
              EXPECT_TRUE(s("A1:A2").Validation().Rule().has_value());
            });

  cases.Add("ASourceThatIsNoneIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = WithList(t);
    for (const char* source : {"=", "=(", "=noSuchName", ""}) {
      EXPECT_TRUE(Refused([&] { s("A1").Validation().Add(ListRule(source)); })) << source;
    }
    EXPECT_FALSE(s("A1").Validation().Rule().has_value());
  });

  cases.Add("TheUserIsHeldToTheListAProgramIsNot", {"Validation.Add", "Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = WithList(t);
    s("A1").Validation().Add(ListRule("=lstCategories"));
    t.user().Type(s("A1"), "Rent");
    EXPECT_EQ(s.Value("A1"), "Rent");
    EXPECT_TRUE(Refused([&] { t.user().Type(s("A1"), "Travel"); }));
    EXPECT_EQ(s.Value("A1"), "Rent");
    s("A1").SetValue(CellValue("Travel"));
    EXPECT_EQ(s.Value("A1"), "Travel");
  });

  cases.Add("RulesAndTheirSourcesFollow", {"Validation.Rule", "Range.Insert"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = WithList(t);
    s("A5:A6").Validation().Add(ListRule("=$D$1:$D$2"));
    s("1:1").Insert();
    EXPECT_EQ(s("A6:A7").Validation().Rule()->source, "=$D$2:$D$3");
    EXPECT_FALSE(s("A5").Validation().Rule().has_value());
    s("6:6").Delete();
    EXPECT_TRUE(s("A6").Validation().Rule().has_value());
    EXPECT_FALSE(s("A7").Validation().Rule().has_value());
    s("6:6").Delete();
    EXPECT_FALSE(s("A6").Validation().Rule().has_value());
  });

  cases.Add("ALinkWithAText", {"Hyperlinks.Add", "Hyperlinks.Items"}, kHyperlinksPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    HyperlinkTarget target = LinkTo("lnkA1");
    target.screenTip = "Go to this account's data sheet";
    s("B2").Hyperlinks().Add(target, "Savings");
    EXPECT_EQ(s.Value("B2"), "Savings");
    ASSERT_EQ(s("B2").Hyperlinks().Items().size(), 1u);
    EXPECT_EQ(s("B2").Hyperlinks().Items()[0], target);
    EXPECT_EQ(s("A1:C3").Hyperlinks().Items().size(), 1u);
    EXPECT_TRUE(s("C3").Hyperlinks().Items().empty());
  });

  cases.Add("ALinkWithoutATextKeepsTheFormula", {"Hyperlinks.Add"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:B1", CellBlock{{"=1+1", 7}});
    s("A1").Hyperlinks().Add(LinkTo("'My Sheet'!A1"));
    HyperlinkTarget outside;
    outside.address = "https://example.com/";
    s("B1").Hyperlinks().Add(outside);
    EXPECT_EQ(s("A1:B1").Formula(), (CellBlock{{"=1+1", 7}}));
    EXPECT_EQ(s("B1").Hyperlinks().Items()[0].address, "https://example.com/");
  });

  cases.Add("ALinkTakesOnTheStyleOfTheBook", {"Hyperlinks.Add", "Hyperlinks.Delete", "Range.Style"}, kPort,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              host::StyleDefinition style;
              style.name = "Hyperlink";
              style.font.emplace().colour = 0x0563C1;
              s.Parent().DefineStyle(style);
              s("A1").Hyperlinks().Add(LinkTo("A1"), "x");
              EXPECT_EQ(s("A1").Style(), "Hyperlink");
              s("A1").Hyperlinks().Delete();
              EXPECT_EQ(s("A1").Style(), "Normal");
            });

  cases.Add("ASecondLinkReplacesTheFirst", {"Hyperlinks.Add"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").Hyperlinks().Add(LinkTo("A2"), "one");
    s("A1").Hyperlinks().Add(LinkTo("A3"), "two");
    ASSERT_EQ(s("A1").Hyperlinks().Items().size(), 1u);
    EXPECT_EQ(s("A1").Hyperlinks().Items()[0].subAddress, "A3");
  });

  cases.Add("DeletedLinksLeaveTheContents", {"Hyperlinks.Delete"},
            "learn.microsoft.com: Hyperlinks.Delete method (Excel)", [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s("A1").Hyperlinks().Add(LinkTo("A2"), "kept");
              s("A2").Hyperlinks().Add(LinkTo("A2"), "other");
              s("A1").Hyperlinks().Delete();
              s("C1").Hyperlinks().Delete();
              EXPECT_TRUE(s("A1").Hyperlinks().Items().empty());
              EXPECT_EQ(s("A2").Hyperlinks().Items().size(), 1u);
              EXPECT_EQ(s.Value("A1"), "kept");
            });

  cases.Add("LinksFollowTheirCells", {"Hyperlinks.Items", "Range.Insert", "Range.Delete"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s("B2").Hyperlinks().Add(LinkTo("A1"), "x");
              s("1:1").Insert();
              EXPECT_TRUE(s("B2").Hyperlinks().Items().empty());
              EXPECT_EQ(s("B3").Hyperlinks().Items().size(), 1u);
              s("A:A").Delete();
              EXPECT_EQ(s("A3").Hyperlinks().Items().size(), 1u);
              s("3:3").Delete();
              EXPECT_TRUE(s.Cells().Hyperlinks().Items().empty());
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
