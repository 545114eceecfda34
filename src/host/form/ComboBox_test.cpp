#include "src/host/form/ComboBox.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "src/host/Form.h"

namespace tolvane::host {
namespace {

class PeriodForm : public Form {
 public:
  PeriodForm() : Form("FPeriod", "Period") {
    for (ComboBox* const box : {&list, &edit}) {
      for (const char* const month : {"2009 Jan", "2009 Feb", "2009 Mar"}) box->AddItem(month);
      box->OnClick = [this] { events.push_back("click"); };
      box->OnChange = [this] { events.push_back("change"); };
    }
    BeginShow();
  }
  ComboBox& list = Add<ComboBox>("list");
  ComboBox& edit = Add<ComboBox>("edit", ComboBox::Style::Editable);
  std::vector<std::string> events;
};

struct ComboBoxes : testing::Test {
  PeriodForm form;
  ComboBox& list = form.list;
  ComboBox& edit = form.edit;
};

TEST_F(ComboBoxes, HaveNothingPickedAtFirst) {
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.Text(), "");
  EXPECT_EQ(list.ListCount(), 3);
  EXPECT_EQ(list.List(1), "2009 Feb");
}

TEST_F(ComboBoxes, RaiseNothingWhenTheLogicPicks) {
  list.SetListIndex(2);
  EXPECT_EQ(list.Text(), "2009 Mar");
  list.SetListIndex(-1);
  EXPECT_EQ(list.Text(), "");
  EXPECT_TRUE(form.events.empty());
}

TEST_F(ComboBoxes, RaiseClickWhenTheUserPicksBeItTheSameAgain) {
  list.UserPick(1);
  list.UserPick(1);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(form.events, (std::vector<std::string>{"click", "click"}));
  EXPECT_EQ(form.Focus(), &list);
}

TEST_F(ComboBoxes, RefuseWhatTheUserCannotDo) {
  EXPECT_THROW(list.UserPick(3), ActionRefused);
  EXPECT_THROW(list.UserPick(-1), ActionRefused);
  EXPECT_THROW(list.UserType("2010 Jan"), ActionRefused);
  EXPECT_THROW(edit.UserType("two\nlines"), ActionRefused);
  edit.SetEnabled(false);
  EXPECT_THROW(edit.UserPick(0), ActionRefused);
  EXPECT_THROW(edit.UserType("x"), ActionRefused);
  EXPECT_EQ(edit.Text(), "");
  EXPECT_TRUE(form.events.empty());
}

TEST_F(ComboBoxes, TakeAnyTextWhenEditable) {
  edit.UserPick(0);
  edit.UserType("soon");
  EXPECT_EQ(edit.ListIndex(), -1);
  EXPECT_EQ(edit.Text(), "soon");
  edit.UserType("soon");
  EXPECT_EQ(form.events, (std::vector<std::string>{"click", "change"}));
  edit.SetText("later");
  EXPECT_EQ(edit.Text(), "later");
  EXPECT_EQ(form.events.size(), 2u);
  EXPECT_THROW(list.SetText("later"), std::logic_error);
}

TEST_F(ComboBoxes, KeepTheSamePickedItemWhenOthersComeAndGo) {
  list.SetListIndex(1);
  list.InsertItem(0, "2008 Dec");
  EXPECT_EQ(list.ListIndex(), 2);
  EXPECT_EQ(list.Text(), "2009 Feb");
  list.RemoveItem(0);
  list.RemoveItem(2);
  EXPECT_EQ(list.ListIndex(), 1);
  list.InsertItem(2, "2009 Apr");
  EXPECT_EQ(list.ListIndex(), 1);
  list.RemoveItem(1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.Text(), "");
  EXPECT_EQ(list.List(1), "2009 Apr");
}

TEST_F(ComboBoxes, KeepDataWithTheirItems) {
  list.Clear();
  list.AddItem("Food", 7);
  list.AddItem("Rent", 9);
  list.InsertItem(0, "Books", 3);
  EXPECT_EQ(list.ItemData(1), 7);
  list.RemoveItem(1);
  EXPECT_EQ(list.ItemData(1), 9);
  list.SetItemData(1, 11);
  EXPECT_EQ(list.ItemData(1), 11);
}

TEST_F(ComboBoxes, ShowTheNewTextOfThePickedItem) {
  list.SetListIndex(0);
  list.SetList(0, "2010 Jan");
  list.SetList(1, "2010 Feb");
  EXPECT_EQ(list.Text(), "2010 Jan");
}

TEST_F(ComboBoxes, ThrowOutsideOfTheListAndChangeNothing) {
  EXPECT_THROW(list.List(3), std::out_of_range);
  EXPECT_THROW(list.ItemData(-1), std::out_of_range);
  EXPECT_THROW(list.RemoveItem(3), std::out_of_range);
  EXPECT_THROW(list.InsertItem(4, "x"), std::out_of_range);
  EXPECT_THROW(list.InsertItem(-1, "x"), std::out_of_range);
  EXPECT_THROW(list.SetListIndex(3), std::out_of_range);
  EXPECT_THROW(list.SetListIndex(-2), std::out_of_range);
  EXPECT_EQ(list.ListCount(), 3);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ComboBoxes, CanBeRefilledFromTheirOwnClick) {
  list.AddItem("more");
  list.OnClick = [this] {
    if (list.Text() != "more") return;
    list.Clear();
    for (int i = 1; i <= 60; ++i) list.AddItem(std::to_string(i));
    list.OnClick = nullptr;
  };
  list.UserPick(3);
  EXPECT_EQ(list.ListCount(), 60);
  EXPECT_EQ(list.ListIndex(), -1);
  list.UserPick(59);
  EXPECT_EQ(list.Text(), "60");
}

TEST_F(ComboBoxes, CountTheirChanges) {
  const auto before = list.Revision();
  list.SetListIndex(-1);
  EXPECT_EQ(list.Revision(), before);
  list.SetListIndex(0);
  EXPECT_GT(list.Revision(), before);
}

}  // namespace
}  // namespace tolvane::host
