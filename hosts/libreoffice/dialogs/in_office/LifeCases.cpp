#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <stdexcept>

#include "hosts/libreoffice/dialogs/in_office/DialogCase.h"

namespace tolvane::libreoffice {

namespace {

namespace role = css::accessibility::AccessibleRole;
namespace key = css::awt::Key;
namespace message = host::message;

// To the office, Esc with Shift is the button in the window's corner.
void PressCloseBox(const Person& person) {
  person.Key(key::ESCAPE, css::awt::KeyModifier::SHIFT);
}

void EnterAndEscPressButtons(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    person.Focus(person.Part(window, role::TEXT, "Name:"));
    person.Key(key::RETURN);
  });
  EXPECT_EQ(form.events, std::vector<std::string>{"ok"});
  EXPECT_FALSE(form.IsShown());
  // Shown again, it holds what it held.
  form.txtName.SetText("Kept");
  world.Show(form, [&](Person& person, const Seen& window) {
    EXPECT_EQ(person.Text(person.Part(window, role::TEXT, "Name:")), "Kept");
    person.Key(key::ESCAPE);
  });
  EXPECT_EQ(form.events.back(), "cancel");
}

void ClosesByTheWindowAsTheFormSays(DialogWorld& world) {
  SampleForm form;
  int asked = 0;
  form.OnClose = [&](host::CloseReason reason, bool& cancel) {
    EXPECT_EQ(reason, host::CloseReason::User);
    EXPECT_EQ(world.user.MsgBox("Close?", message::kYesNo | message::kQuestion, "Sure"),
              ++asked == 1 ? host::MessageResult::No : host::MessageResult::Yes);
    cancel = asked == 1;
  };
  world.Show(form, [&](Person& person, const Seen&) {
    PressCloseBox(person);
    person.Act(person.Part(person.Window("Sure"), role::PUSH_BUTTON, "No"));
    person.UntilGone("Sure");
    const Seen window = person.Window(form.Title());
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    Happens(person, window, form, "ask");
    PressCloseBox(person);
    person.Act(person.Part(person.Window("Sure"), role::PUSH_BUTTON, "Yes"));
  });
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(form.events, std::vector<std::string>{"ask"});
}

void EscWithoutACancelButtonDoesNothing(DialogWorld& world) {
  SampleForm form;
  form.cmdCancel.SetEnabled(false);
  world.Show(form, [&](Person& person, const Seen&) {
    person.Key(key::ESCAPE);  // where it presses nothing, it is a key like others
    const Seen window = person.Window(form.Title());
    Happens(person, window, form, "name key 27");
    person.Act(person.Part(window, role::PUSH_BUTTON, "OK"));
  });
  EXPECT_EQ(form.events, (std::vector<std::string>{"name key 27", "ok"}));
}

void HandlersShowMessagesAndForms(DialogWorld& world) {
  SampleForm outer;
  SampleForm inner;
  inner.SetTitle("The Form Above");
  outer.onAsk = [&] {
    outer.txtName.SetText("Before the question");
    const auto answer = world.user.MsgBox("Go on?", message::kYesNoCancel, "Question");
    outer.txtName.SetText(answer == host::MessageResult::Yes ? "Yes" : "Not yes");
    world.user.ShowForm(inner);
    outer.Hide();
  };
  inner.onAsk = [&] { outer.lblName.SetCaption("Changed from above:"); };
  world.Show(outer, [&](Person& person, const Seen& window) {
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    const Seen box = person.Window("Question");
    EXPECT_EQ(person.Text(person.Part(window, role::TEXT, "Name:")), "Before the question");
    person.Act(person.Part(box, role::PUSH_BUTTON, "Yes"));
    const Seen above = person.Window("The Form Above");
    EXPECT_EQ(person.Text(person.Part(window, role::TEXT, "Name:")), "Yes");
    person.Act(person.Part(above, role::PUSH_BUTTON, "Ask"));
    person.Part(window, role::LABEL, "Changed from above:");
    person.Key(key::ESCAPE);
  });
  EXPECT_EQ(inner.events, (std::vector<std::string>{"ask", "cancel"}));
  EXPECT_EQ(outer.txtName.Text(), "Yes");
}

void FailuresComeOutWhereTheFormWasShown(DialogWorld& world) {
  SampleForm form;
  form.onAsk = [] { throw std::runtime_error("The handler fails."); };
  std::string failure;
  world.person.Do(
      [&] {
        try {
          world.user.ShowForm(form);
        } catch (const std::runtime_error& error) {
          failure = error.what();
        }
      },
      [&](Person& person) {
        person.Act(person.Part(person.Window(form.Title()), role::PUSH_BUTTON, "Ask"));
        person.UntilGone(form.Title());
      });
  EXPECT_EQ(failure, "The handler fails.");
  EXPECT_FALSE(form.IsShown());
}

void HiddenWhileLoadingItIsNotShown(DialogWorld& world) {
  SampleForm form;
  form.OnLoad = [&] { form.Hide(); };
  world.user.ShowForm(form);
  EXPECT_FALSE(form.IsShown());
}

void TimersTick(DialogWorld& world) {
  SampleForm form;
  const auto tick = form.tmrTick.OnTick;
  int ticks = 0;
  bool nested = false;
  form.tmrTick.OnTick = [&] {
    tick();
    EXPECT_FALSE(nested);
    if (++ticks == 3) form.tmrTick.SetEnabled(false);
  };
  form.onAsk = [&] {
    form.tmrTick.SetEnabled(true);
    nested = true;
    world.user.MsgBox("Wait", message::kOkOnly, "Meanwhile");
    nested = false;
  };
  world.Show(form, [&](Person& person, const Seen& window) {
    person.OnMain([&] { form.tmrTick.SetEnabled(true); });
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    person.Act(person.Part(person.Window("Meanwhile"), role::PUSH_BUTTON, "OK"));
    Happens(person, window, form, "tick");
    person.Until("the third", [&] { return ticks == 3; });
    person.OnMain([&] { EXPECT_FALSE(form.tmrTick.Enabled()); });
    person.Key(key::ESCAPE);
  });
  EXPECT_EQ(ticks, 3);
}

void OtherWindowsWait(DialogWorld& world) {
  world.application.Workbooks().Add();
  const auto enabledWindows = [&] {
    const auto frames = css::frame::Desktop::create(world.context)->getFrames();
    int enabled = 0;
    for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
      Reference<css::frame::XFrame> frame;
      frames->getByIndex(i) >>= frame;
      enabled += As<css::awt::XWindow2>(frame->getContainerWindow())->isEnabled() ? 1 : 0;
    }
    return enabled;
  };
  const int before = enabledWindows();
  ASSERT_GE(before, 2);
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen&) {
    person.OnMain([&] { EXPECT_EQ(enabledWindows(), 1); });
    person.Key(key::ESCAPE);
  });
  EXPECT_EQ(enabledWindows(), before);
}

}  // namespace

std::vector<DialogCase> LifeCases() {
  return {{"EnterAndEscPressButtons", EnterAndEscPressButtons},
          {"ClosesByTheWindowAsTheFormSays", ClosesByTheWindowAsTheFormSays},
          {"EscWithoutACancelButtonDoesNothing", EscWithoutACancelButtonDoesNothing},
          {"HandlersShowMessagesAndForms", HandlersShowMessagesAndForms},
          {"FailuresComeOutWhereTheFormWasShown", FailuresComeOutWhereTheFormWasShown},
          {"HiddenWhileLoadingItIsNotShown", HiddenWhileLoadingItIsNotShown},
          {"TimersTick", TimersTick},
          {"OtherWindowsWait", OtherWindowsWait}};
}

}  // namespace tolvane::libreoffice
