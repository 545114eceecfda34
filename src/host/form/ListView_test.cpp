#include "src/host/form/ListView.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "src/host/Form.h"

namespace tolvane::host {
namespace {

class CategoryForm : public Form {
 public:
  CategoryForm() : Form("FCategories", "Categories") {
    list.SetColumns({{"Category", 0}, {"Change", 10}});
    list.Add({"old1", "Food", {}});
    list.Add({"old2", "Rent", {}});
    list.Add({"old3", "Travel", {}});
    list.OnItemClick = [this](int index) { events.push_back("click " + std::to_string(index)); };
    list.OnDoubleClick = [this] { events.push_back("double click"); };
    list.OnKeyDown = [this](Key key) { events.push_back("key " + std::to_string(static_cast<int>(key))); };
    list.OnBeforeLabelEdit = [this](bool& cancel) {
      events.push_back("before");
      cancel = refuseStart;
    };
    list.OnAfterLabelEdit = [this](bool& cancel, const std::optional<std::string>& text) {
      events.push_back("after " + text.value_or("(given up)"));
      cancel = refuseEnd;
    };
    BeginShow();
  }
  ListView& list = Add<ListView>("list");
  Button& ok = Add<Button>("ok", "&OK");
  std::vector<std::string> events;
  bool refuseStart = false;
  bool refuseEnd = false;
};

struct Lists : testing::Test {
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (int i = 0; i < list.Count(); ++i) texts.push_back(list.Item(i).text);
    return texts;
  }
  CategoryForm form;
  ListView& list = form.list;
};

TEST_F(Lists, KeepItemsInTheOrderOfTheirPlaces) {
  list.Add({"new", "Books", {"Added"}}, 1);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Food", "Books", "Rent", "Travel"}));
  EXPECT_EQ(list.IndexOf("old2"), 2);
  EXPECT_EQ(list.IndexOf("old9"), -1);
  list.Remove(0);
  EXPECT_EQ(list.Item(0).subItems, std::vector<std::string>{"Added"});
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
}

TEST_F(Lists, KeysAreUniqueAndFreeAgainAfterwards) {
  EXPECT_THROW(list.Add({"old1", "Again", {}}), std::invalid_argument);
  EXPECT_EQ(list.Count(), 3);
  list.Remove(0);
  list.Add({"old1", "Again", {}}, 0);
  list.Add({"", "no key", {}});
  list.Add({"", "no key either", {}});
  list.Clear();
  list.Add({"old1", "Food", {}});
  EXPECT_EQ(list.Count(), 1);
}

TEST_F(Lists, TheSelectedItemStaysSelected) {
  list.Select(1);
  list.Add({"new", "Books", {}}, 0);
  EXPECT_EQ(list.SelectedIndex(), 2);
  list.Remove(0);
  EXPECT_EQ(list.SelectedIndex(), 1);
  list.Remove(2);
  EXPECT_EQ(list.SelectedIndex(), 1);
  list.Remove(1);
  EXPECT_EQ(list.SelectedIndex(), -1);
  EXPECT_TRUE(form.events.empty());
}

TEST_F(Lists, SubItemsComeIntoBeingWhenTheyAreSet) {
  list.SetSubItem(0, 2, "second");
  EXPECT_EQ(list.Item(0).subItems, (std::vector<std::string>{"", "second"}));
  EXPECT_THROW(list.SetSubItem(0, 0, "x"), std::out_of_range);
}

TEST_F(Lists, ThrowOutsideOfTheList) {
  EXPECT_THROW(list.Item(3), std::out_of_range);
  EXPECT_THROW(list.Remove(-1), std::out_of_range);
  EXPECT_THROW(list.Add({"x", "x", {}}, 4), std::out_of_range);
  EXPECT_EQ(list.IndexOf("x"), -1);
  EXPECT_THROW(list.Select(3), std::out_of_range);
  EXPECT_THROW(list.EnsureVisible(3), std::out_of_range);
}

TEST_F(Lists, TellWhatMustBeSeen) {
  list.EnsureVisible(2);
  EXPECT_EQ(list.MustSee(), 2);
  list.Remove(0);
  EXPECT_EQ(list.MustSee(), 1);
}

TEST_F(Lists, TheUserSelectsAndClicks) {
  list.UserSelect(1);
  list.UserDoubleClick(2);
  list.UserPressKey(Key::Delete);
  EXPECT_EQ(list.SelectedIndex(), 2);
  EXPECT_EQ(form.events, (std::vector<std::string>{"click 1", "double click", "key 46"}));
  EXPECT_THROW(list.UserSelect(3), ActionRefused);
  list.SetEnabled(false);
  EXPECT_THROW(list.UserSelect(0), ActionRefused);
  EXPECT_EQ(list.SelectedIndex(), 2);
}

TEST_F(Lists, AnEditGivesTheItemItsNewText) {
  list.Select(1);
  list.UserStartLabelEdit();
  EXPECT_EQ(list.EditedIndex(), 1);
  list.UserEndLabelEdit("Housing");
  EXPECT_FALSE(list.IsEditing());
  EXPECT_EQ(list.Item(1).text, "Housing");
  EXPECT_EQ(form.events, (std::vector<std::string>{"before", "after Housing"}));
}

TEST_F(Lists, AnEditThatIsCancelledOrGivenUpChangesNothing) {
  list.Select(1);
  form.refuseEnd = true;
  ASSERT_TRUE(list.StartLabelEdit());
  list.UserEndLabelEdit("Housing");
  EXPECT_EQ(list.Item(1).text, "Rent");
  form.refuseEnd = false;
  ASSERT_TRUE(list.StartLabelEdit());
  list.UserAbandonLabelEdit();
  EXPECT_EQ(list.Item(1).text, "Rent");
  EXPECT_EQ(form.events.back(), "after (given up)");
}

TEST_F(Lists, AnEditNeedsASelectedItemAndLeave) {
  EXPECT_FALSE(list.StartLabelEdit());
  EXPECT_THROW(list.UserStartLabelEdit(), ActionRefused);
  EXPECT_THROW(list.UserEndLabelEdit("x"), ActionRefused);
  EXPECT_THROW(list.UserAbandonLabelEdit(), ActionRefused);
  list.Select(0);
  form.refuseStart = true;
  EXPECT_FALSE(list.StartLabelEdit());
  EXPECT_FALSE(list.IsEditing());
  form.refuseStart = false;
  list.SetLabelEdit(false);
  EXPECT_THROW(list.UserStartLabelEdit(), ActionRefused);
  EXPECT_TRUE(list.StartLabelEdit());  // the logic may
}

TEST_F(Lists, NothingElseCanBeDoneDuringAnEdit) {
  list.Select(0);
  ASSERT_TRUE(list.StartLabelEdit());
  EXPECT_FALSE(list.StartLabelEdit());
  EXPECT_THROW(form.ok.UserClick(), ActionRefused);
  EXPECT_THROW(list.UserSelect(1), ActionRefused);
  EXPECT_THROW(form.UserPressEnter(), ActionRefused);
  EXPECT_THROW(form.UserPressTab(), ActionRefused);
  EXPECT_THROW(form.UserPressMnemonic('o'), ActionRefused);
  list.UserEndLabelEdit("Meals");
  form.ok.UserClick();
}

TEST_F(Lists, ClosingGivesAnEditUpAndHidingDropsIt) {
  list.Select(0);
  ASSERT_TRUE(list.StartLabelEdit());
  EXPECT_TRUE(form.UserClose());
  EXPECT_FALSE(list.IsEditing());
  EXPECT_EQ(form.events.back(), "after (given up)");
  EXPECT_FALSE(list.StartLabelEdit());  // not up
  form.BeginShow();
  ASSERT_TRUE(list.StartLabelEdit());
  form.events.clear();
  form.Hide();
  EXPECT_FALSE(list.IsEditing());
  EXPECT_TRUE(form.events.empty());
}

TEST_F(Lists, TheHandlerOfAnEditMayRearrangeTheList) {
  list.Select(2);
  list.OnAfterLabelEdit = [this](bool&, const std::optional<std::string>&) { list.Remove(0); };
  ASSERT_TRUE(list.StartLabelEdit());
  list.UserEndLabelEdit("Journeys");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Rent", "Journeys"}));
  list.OnAfterLabelEdit = [this](bool&, const std::optional<std::string>&) { list.Remove(1); };
  list.Select(1);
  ASSERT_TRUE(list.StartLabelEdit());
  list.UserEndLabelEdit("gone");
  EXPECT_EQ(Texts(), std::vector<std::string>{"Rent"});
}

TEST_F(Lists, TheHandlerOfAnEditMayStartTheNext) {
  list.Select(0);
  bool again = true;
  list.OnAfterLabelEdit = [&](bool& cancel, const std::optional<std::string>&) {
    cancel = again;
    if (std::exchange(again, false)) {
      EXPECT_TRUE(list.StartLabelEdit());
    }
  };
  ASSERT_TRUE(list.StartLabelEdit());
  list.UserEndLabelEdit("");
  EXPECT_TRUE(list.IsEditing());
  list.UserEndLabelEdit("Meals");
  EXPECT_EQ(list.Item(0).text, "Meals");
}

TEST_F(Lists, AnItemThatGoesTakesItsEditAlong) {
  list.Select(0);
  ASSERT_TRUE(list.StartLabelEdit());
  list.Remove(0);
  EXPECT_FALSE(list.IsEditing());
  form.ok.UserClick();
}

}  // namespace
}  // namespace tolvane::host
