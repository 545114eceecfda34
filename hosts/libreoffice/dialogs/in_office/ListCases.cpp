#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/awt/Key.hpp>

#include "hosts/libreoffice/dialogs/in_office/DialogCase.h"

namespace tolvane::libreoffice {

namespace {

namespace role = css::accessibility::AccessibleRole;
namespace key = css::awt::Key;

// The n-th cell of the list on the screen, from 0, row by row.
Seen Cell(const Person& person, const Seen& window, int number) {
  return person.Part(window, role::TABLE_CELL, "", number);
}

void SelectsAndOpens(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Click(Cell(person, window, 6));
    Happens(person, window, form, "item Item 3");
    person.OnMain([&] {
      EXPECT_EQ(form.lvwItems.SelectedIndex(), 2);
      EXPECT_EQ(form.Focus(), &form.lvwItems);
      form.events.clear();
    });
    // Again: the office has nothing to tell of, the list does.
    person.Click(Cell(person, window, 7));
    Happens(person, window, form, "item Item 3");
    person.Key(key::UP);
    Happens(person, window, form, "item key 38");
    person.OnMain([&] { EXPECT_EQ(form.lvwItems.SelectedIndex(), 1); });
    person.Click(Cell(person, window, 0), 2);
    Happens(person, window, form, "item opened");
    person.OnMain([&] { EXPECT_EQ(form.lvwItems.SelectedIndex(), 0); });
    person.Key(key::ESCAPE);
  });
}

void FollowsTheForm(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Click(Cell(person, window, 3));
    Happens(person, window, form, "item Item 2");
    person.Key(key::DELETE);
    Happens(person, window, form, "item key 46");
    EXPECT_EQ(person.Text(Cell(person, window, 3)), "Item 3");
    EXPECT_EQ(person.Text(Cell(person, window, 4)), "30.00");
    person.OnMain([&] {
      form.lvwItems.SetSubItem(1, 2, "Changed");
      form.lvwItems.Add({"new", "First", {"0.00", "New"}}, 0);
      form.lvwItems.Select(0);
    });
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    Happens(person, window, form, "ask");
    EXPECT_EQ(person.Text(Cell(person, window, 0)), "First");
    EXPECT_EQ(person.Text(Cell(person, window, 8)), "Changed");
    person.OnMain([&] { form.lvwItems.Clear(); });
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    person.Until("an empty list", [&] { return form.events.back() == "ask" && form.lvwItems.Count() == 0; });
    person.Key(key::ESCAPE);
  });
}

void EditsALabel(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Click(Cell(person, window, 3));
    Happens(person, window, form, "item Item 2");
    const auto edit = [&](const char* text) {
      person.Key(key::F2);
      person.Until("the edit", [&] { return form.lvwItems.IsEditing(); });
      person.Type(text);
      person.Until("the text", [&] { return true; });
    };
    const auto isOver = [&] { person.Until("the end", [&] { return !form.lvwItems.IsEditing(); }); };

    // Enter keeps it, and presses no button.
    edit("renamed");
    person.Key(key::RETURN);
    isOver();
    Happens(person, window, form, "item label renamed");
    EXPECT_EQ(person.Text(Cell(person, window, 3)), "renamed");

    // Esc gives it up, and closes nothing.
    edit("never");
    person.Key(key::ESCAPE);
    isOver();
    Happens(person, window, form, "item label given up");
    const Seen again = person.Window(form.Title());
    EXPECT_EQ(person.Text(Cell(person, again, 3)), "renamed");
    person.OnMain([&] { EXPECT_TRUE(form.IsShown()); });

    // So does the form, for a text that it will not have.
    edit(" ");
    person.Key(key::BACKSPACE);
    person.Key(key::RETURN);
    isOver();
    Happens(person, again, form, "item label ");
    EXPECT_EQ(person.Text(Cell(person, again, 3)), "renamed");

    // Whatever else is done keeps it first.
    edit("clicked away");
    person.Click(person.Part(again, role::PUSH_BUTTON, "Ask"));
    Happens(person, again, form, "ask");
    person.OnMain([&] {
      EXPECT_EQ(form.lvwItems.Item(1).text, "clicked away");
      const auto& events = form.events;
      const auto end = std::find(events.begin(), events.end(), "item label clicked away");
      EXPECT_LT(end, std::find(events.begin(), events.end(), "ask"));
    });
    // After an edit Enter is the default button's again.
    person.Click(Cell(person, again, 0));
    person.Until("the focus", [&] { return form.Focus() == &form.lvwItems; });
    person.Key(key::RETURN);
    person.UntilGone(form.Title());
    EXPECT_EQ(form.events.back(), "ok");
  });
}

void EditsForTheForm(DialogWorld& world) {
  SampleForm form;
  form.onAsk = [&] { form.lvwItems.StartLabelEdit(); };
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    person.Until("the edit", [&] { return form.lvwItems.IsEditing(); });
    person.Type("by code");
    person.Key(key::RETURN);
    Happens(person, window, form, "item label by code");
    person.OnMain([&] { form.lvwItems.SetLabelEdit(false); });
    person.Click(Cell(person, window, 0));
    person.Until("the focus", [&] { return form.Focus() == &form.lvwItems; });
    person.Key(key::F2);
    Happens(person, window, form, "item key 113");
    person.OnMain([&] { EXPECT_FALSE(form.lvwItems.IsEditing()); });
    person.Key(key::ESCAPE);
  });
}

}  // namespace

std::vector<DialogCase> ListCases() {
  return {{"SelectsAndOpens", SelectsAndOpens},
          {"FollowsTheForm", FollowsTheForm},
          {"EditsALabel", EditsALabel},
          {"EditsForTheForm", EditsForTheForm}};
}

}  // namespace tolvane::libreoffice
