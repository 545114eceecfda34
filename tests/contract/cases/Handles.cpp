#include "tests/contract/cases/Handles.h"

#include "src/host/Gate.h"
#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::ErrorNumber;

template <class HandleType>
void EveryMemberRaises(ErrorNumber number, std::span<const MemberCall<HandleType>> members, const HandleType& handle,
                       std::string_view why) {
  for (const MemberCall<HandleType>& member : members) {
    EXPECT_TRUE(Raises(number, [&] { member.call(handle); })) << member.member << " " << member.access << ", " << why;
  }
}

template <class HandleType>
void NothingRaises(std::span<const MemberCall<HandleType>> members) {
  EXPECT_TRUE(HandleType().IsNothing());
  EXPECT_FALSE(HandleType().IsAlive());
  EveryMemberRaises(ErrorNumber::ObjectNotSet, members, HandleType(), "on Nothing");
}

template <class HandleType>
void DeadRaises(std::span<const MemberCall<HandleType>> members, const HandleType& handle, std::string_view why) {
  EXPECT_FALSE(handle.IsNothing()) << why;
  ASSERT_FALSE(handle.IsAlive()) << why;
  EveryMemberRaises(ErrorNumber::ObjectRequired, members, handle, why);
}

// One handle of each kind that dies with a book.
struct Belongings {
  host::Workbook book;
  host::Worksheet sheet;
  host::Range range;
  host::Range areas;
  host::Names names;
  host::Names sheetNames;
  host::Name name;
  host::Name sheetName;

  explicit Belongings(const host::Workbook& of) : book(of), sheet(of.Worksheets().Add()) {
    range = sheet.Range("B2:C3");
    areas = sheet.Range("A1,C3");
    names = book.Names();
    sheetNames = sheet.Names();
    name = names.Add("ofBook", "=1");
    sheetName = sheetNames.Add("ofSheet", "=1");
  }
};

class CountingHook : public host::GateHook {
 public:
  int before = 0, after = 0;
  void Before(const host::GateCall&) override { ++before; }
  void After(const host::GateCall&) override { ++after; }
};

}  // namespace

// Rules that hold for every member of every handle.
std::vector<ContractCase> HandlesCases() {
  Cases cases("Handles");

  cases.Add("EveryMemberOfNothingRaises91", {}, kPort, [](HostUnderTest&) {
    NothingRaises(RangeMembers());
    NothingRaises(WorksheetMembers());
    NothingRaises(WorkbookMembers());
    NothingRaises(NameMembers());
    NothingRaises(NamesMembers());
    NothingRaises(WindowMembers());
    NothingRaises(CommandBarMembers());
    NothingRaises(ControlMembers());
    NothingRaises(CommandBarsMembers());
    NothingRaises(RibbonMembers());
    NothingRaises(ApplicationMembers());
    NothingRaises(UserMembers());
  });

  cases.Add("EveryMemberOfWhatWentWithItsBookRaises424", {}, kPort, [](HostUnderTest& t) {
    t.NewBook();
    const Belongings gone(t.NewBook());
    const host::Window window = gone.book.Windows()[0];
    gone.book.Close(false);
    DeadRaises(WorkbookMembers(), gone.book, "closed book");
    DeadRaises(WorksheetMembers(), gone.sheet, "closed book");
    DeadRaises(RangeMembers(), gone.range, "closed book");
    DeadRaises(RangeMembers(), gone.areas, "closed book");
    DeadRaises(NamesMembers(), gone.names, "closed book");
    DeadRaises(NamesMembers(), gone.sheetNames, "closed book");
    DeadRaises(NameMembers(), gone.name, "closed book");
    DeadRaises(NameMembers(), gone.sheetName, "closed book");
    DeadRaises(WindowMembers(), window, "closed book");
  });

  cases.Add("EveryMemberOfWhatWentWithItsSheetRaises424", {}, kPort, [](HostUnderTest& t) {
    t.application().SetDisplayAlerts(false);
    const Belongings gone(t.NewBook());
    gone.sheet.Delete();
    EXPECT_TRUE(gone.book.IsAlive());
    EXPECT_TRUE(gone.name.IsAlive());
    DeadRaises(WorksheetMembers(), gone.sheet, "deleted sheet");
    DeadRaises(RangeMembers(), gone.range, "deleted sheet");
    DeadRaises(NamesMembers(), gone.sheetNames, "deleted sheet");
    DeadRaises(NameMembers(), gone.sheetName, "deleted sheet");
  });

  cases.Add("EveryMemberOfDeletedCellsRaises424", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const host::Range range = s("B2:C3"), areas = s("B2,C3"), row = s("3:3");
    s("2:3").Delete();
    DeadRaises(RangeMembers(), range, "deleted cells");
    DeadRaises(RangeMembers(), areas, "deleted cells");
    DeadRaises(RangeMembers(), row, "deleted cells");
  });

  cases.Add("EveryMemberOfADeletedNameRaises424", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const host::Name name = s.Names().Add("own", "=1");
    const host::Name same = s.Names().Item("own");
    name.Delete();
    DeadRaises(NameMembers(), name, "deleted name");
    DeadRaises(NameMembers(), same, "deleted name");
  });

  cases.Add("EveryMemberOfDeletedBarsAndControlsRaises424", {}, kPort, [](HostUnderTest& t) {
    const host::CommandBar bar = t.application().CommandBars().Add({.name = "Bar"});
    const host::CommandBarControl button = bar.Controls().Add({});
    const host::CommandBarControl popup = bar.Controls().Add(NewOf(host::ControlType::Popup));
    const host::CommandBarControl inner = popup.Controls().Add({});
    button.Delete();
    DeadRaises(ControlMembers(), button, "deleted control");
    bar.Delete();
    DeadRaises(CommandBarMembers(), bar, "deleted bar");
    DeadRaises(ControlMembers(), inner, "control of a deleted bar");
  });

  cases.Add("CopiesPointAtTheSame", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const host::Range one = s("A1");
    const host::Range two = one;
    s("1:1").Insert();
    EXPECT_EQ(two.Address(), "$A$2");
    two.SetValue(host::CellValue(1));
    EXPECT_EQ(one.Value().single(), 1);
  });

  cases.Add("EqualSheetsAndBooks", {"Worksheet.Parent"}, kPort, [](HostUnderTest& t) {
    const host::Workbook book = t.NewBook(), other = t.NewBook();
    EXPECT_TRUE(book.Worksheets().Item(1) == book.Worksheets().Item(1));
    EXPECT_FALSE(book.Worksheets().Item(1) == other.Worksheets().Item(1));
    EXPECT_TRUE(book.Worksheets().Item(1).Parent() == book);
    EXPECT_FALSE(book == other);
    EXPECT_FALSE(book == host::Workbook());
    EXPECT_TRUE(host::Workbook() == host::Workbook());
    other.Close(false);
    EXPECT_FALSE(book == other);
  });

  cases.Add("EveryCallPassesTheGateOnce", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const host::Range range = s("A1:B2");
    host::Gate& gate = t.application().body()->gate();
    CountingHook hook;
    {
      const host::HookScope scope(gate, hook);
      range.SetValue(host::CellValue(1));
      range.Value();
      EXPECT_EQ(hook.before, 2);
      EXPECT_EQ(hook.after, 2);
      EXPECT_TRUE(Refused([&] { s.Cells(0, 0); }));
      EXPECT_EQ(hook.before, 3);
      EXPECT_EQ(hook.after, 2);
    }
    range.Value();
    EXPECT_EQ(hook.before, 3);
  });

  // No table's place is known but by its names, and it is asked for anew at the start of every command: so a name must
  // cost three calls, however many there are, and stay cheap beside a table of thousands of rows.
  cases.Add("ASheetsLayoutTakesThreeCallsAName", {"Worksheet.Range", "Range.Row", "Range.Column"}, kPort,
            [](HostUnderTest& t) {
              constexpr int kNames = 30;
              const Sheet s = t.NewSheet();
              s("A1:I3000").SetValue(host::CellValue(1));
              for (int i = 1; i <= kNames; ++i) {
                s.Names().AddR1C1("ptrColumn" + std::to_string(i) + "_",
                                  "=" + s.Name() + "!R" + std::to_string(i) + "C" + std::to_string(2 * i), false);
              }
              CountingHook hook;
              const host::HookScope scope(t.application().body()->gate(), hook);
              for (int i = 1; i <= kNames; ++i) {
                const host::Range anchor = s.Range("ptrColumn" + std::to_string(i) + "_");
                EXPECT_EQ(anchor.Row(), i);
                EXPECT_EQ(anchor.Column(), 2 * i);
              }
              EXPECT_EQ(hook.before, 3 * kNames);
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
