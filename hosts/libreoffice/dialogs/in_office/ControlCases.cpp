#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/AccessibleStateType.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

#include "hosts/libreoffice/dialogs/in_office/DialogCase.h"

namespace tolvane::libreoffice {

namespace {

namespace role = css::accessibility::AccessibleRole;
namespace state = css::accessibility::AccessibleStateType;
namespace key = css::awt::Key;
constexpr sal_Int16 kCtrl = css::awt::KeyModifier::MOD1;
constexpr sal_Int16 kAlt = css::awt::KeyModifier::MOD2;

void TypesText(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    const Seen name = person.Part(window, role::TEXT, "Name:");
    EXPECT_EQ(person.Text(name), "Groceries");
    person.Focus(name);
    person.Key(key::END);
    Happens(person, window, form, "name key 35");
    person.Type("!?");
    Happens(person, window, form, "name Groceries!?");
    // In the middle of the text the cursor stays where the person has it.
    person.Key(key::LEFT);
    person.Type("x");
    Happens(person, window, form, "name Groceries!x?");
    person.Type("y");
    Happens(person, window, form, "name Groceries!xy?");
    person.OnMain([&] {
      EXPECT_EQ(form.txtName.Text(), "Groceries!xy?");
      EXPECT_EQ(form.txtName.SelectionStart(), 12U);
      EXPECT_EQ(form.txtName.SelectionLength(), 0U);
    });
    person.Key(key::A, kCtrl);
    person.Key(key::DELETE);
    Happens(person, window, form, "name ");
    EXPECT_EQ(person.Text(name), "");
    person.OnMain([&] { EXPECT_EQ(form.txtName.BackColour(), host::kInvalidMark); });
    EXPECT_EQ(person.BackColour(name), 0xFFFF00U);
    person.Type("b");
    Happens(person, window, form, "name b");
    EXPECT_EQ(person.BackColour(name), 0xFFFFFFU);
    person.Key(key::ESCAPE);
  });
}

void TypesLines(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Click(person.Part(window, role::SCROLL_PANE, "", 0));
    person.Until("the focus", [&] { return form.Focus() == &form.txtNotes; });
    person.Key(key::END, kCtrl);
    person.Key(key::RETURN);
    person.Type("two");
    Happens(person, window, form, "notes Two lines\nof notes\ntwo");
    person.OnMain([&] { EXPECT_TRUE(form.IsShown()); });
    person.Key(key::ESCAPE);
  });
}

void PicksFromLists(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    const Seen category = person.Part(window, role::COMBO_BOX, "Category:");
    EXPECT_EQ(person.Text(person.Part(category, role::TEXT, "")), "Food");
    person.Key(key::C, kAlt);
    person.Key(key::DOWN);
    Happens(person, window, form, "category Housing");
    EXPECT_EQ(person.Text(person.Part(category, role::TEXT, "")), "Housing");
    person.OnMain([&] {
      EXPECT_EQ(form.cboCategory.ListIndex(), 1);
      EXPECT_EQ(form.Focus(), &form.cboCategory);
    });
    // What the form changes by itself is seen as well.
    person.OnMain([&] { form.cmdAsk.SetCaption("&New caption"); });
    person.Key(key::DOWN);
    Happens(person, window, form, "category Leisure & Travel");
    person.Part(window, role::PUSH_BUTTON, "New caption");
    person.Key(key::ESCAPE);
  });
}

void TypesIntoALine(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    const Seen payee = person.Part(person.Part(window, role::COMBO_BOX, "Payee:"), role::TEXT, "");
    EXPECT_EQ(person.Text(payee), "Corner shop");
    person.Focus(payee);
    person.Key(key::A, kCtrl);
    person.Type("me");
    Happens(person, window, form, "payee typed me");
    person.OnMain([&] { EXPECT_EQ(form.cboPayee.ListIndex(), -1); });
    // The arrows go through the list below.
    person.Key(key::DOWN);
    Happens(person, window, form, "payee picked Baker");
    EXPECT_EQ(person.Text(payee), "Baker");
    person.OnMain([&] {
      EXPECT_EQ(form.cboPayee.ListIndex(), 0);
      EXPECT_EQ(std::count(form.events.begin(), form.events.end(), "payee typed Baker"), 0);
    });
    person.Key(key::ESCAPE);
  });
}

void ChecksAndChooses(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    const Seen check = person.Part(window, role::CHECK_BOX, "With notes:");
    const Seen notes = person.Part(window, role::SCROLL_PANE, "", 0);
    EXPECT_TRUE(person.Is(check, state::CHECKED));
    EXPECT_TRUE(person.Is(notes, state::ENABLED));
    person.Click(check);
    Happens(person, window, form, "without notes");
    EXPECT_FALSE(person.Is(check, state::CHECKED));
    EXPECT_FALSE(person.Is(notes, state::ENABLED));
    person.Key(key::T, kAlt);
    Happens(person, window, form, "with notes");
    EXPECT_TRUE(person.Is(check, state::CHECKED));
    EXPECT_TRUE(person.Is(notes, state::ENABLED));

    const auto isChosen = [&](const char* name) {
      return person.Is(person.Part(window, role::RADIO_BUTTON, name), state::CHECKED);
    };
    EXPECT_TRUE(isChosen("All") && isChosen("By date"));
    person.Click(person.Part(window, role::RADIO_BUTTON, "By amount"));
    Happens(person, window, form, "option optByAmount");
    EXPECT_TRUE(isChosen("All") && isChosen("By amount"));
    EXPECT_FALSE(isChosen("Open only") || isChosen("By date"));
    person.OnMain([&] { EXPECT_TRUE(form.optByAmount.Value() && form.optAll.Value() && !form.optByDate.Value()); });
    person.Key(key::E, kAlt);
    Happens(person, window, form, "option optOpen");
    EXPECT_TRUE(isChosen("Open only") && isChosen("By amount"));
    person.Key(key::ESCAPE);
  });
}

void SpinsWithinBounds(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    const Seen copies = person.Part(window, role::TEXT, "Copies:");
    const Box spin = person.Place(person.Part(window, role::SPIN_BOX, ""));
    const auto up = [&] { person.ClickAt(spin.x + spin.width / 2, spin.y + spin.height / 4); };
    up();
    Happens(person, window, form, "copies 2");
    EXPECT_EQ(person.Text(copies), "2");
    up();
    Happens(person, window, form, "copies 3");
    up();
    person.ClickAt(spin.x + spin.width / 2, spin.y + spin.height * 3 / 4);
    person.Until("the way back", [&] { return form.spnCopies.Value() == 2; });
    EXPECT_EQ(person.Text(copies), "2");
    person.OnMain([&] { EXPECT_EQ(form.events, (std::vector<std::string>{"copies 2", "copies 3", "copies 2"})); });
    person.Key(key::ESCAPE);
  });
}

void FollowsLinksAndMnemonics(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Click(person.Part(window, role::LABEL, "What is this?"));
    Happens(person, window, form, "more");
    // A label's mnemonic is that of what stands behind it.
    person.Key(key::C, kAlt);
    person.Until("the focus", [&] { return form.Focus() == &form.cboCategory; });
    person.Key(key::TAB);
    person.Until("the next in order", [&] { return form.Focus() == &form.cboPayee; });
    person.OnMain([&] { form.cboPayee.SetEnabled(false); });
    person.Key(key::K, kAlt);
    Happens(person, window, form, "ask");
    EXPECT_FALSE(person.Is(person.Part(window, role::COMBO_BOX, "Payee:"), state::ENABLED));
    person.Key(key::ESCAPE);
  });
}

}  // namespace

std::vector<DialogCase> ControlCases() {
  return {{"TypesText", TypesText},
          {"TypesLines", TypesLines},
          {"PicksFromLists", PicksFromLists},
          {"TypesIntoALine", TypesIntoALine},
          {"ChecksAndChooses", ChecksAndChooses},
          {"SpinsWithinBounds", SpinsWithinBounds},
          {"FollowsLinksAndMnemonics", FollowsLinksAndMnemonics}};
}

}  // namespace tolvane::libreoffice
