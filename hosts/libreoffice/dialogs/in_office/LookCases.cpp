#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <utility>

#include "hosts/libreoffice/dialogs/in_office/DialogCase.h"

namespace tolvane::libreoffice {

namespace {

namespace role = css::accessibility::AccessibleRole;
namespace key = css::awt::Key;

bool Overlap(const Box& a, const Box& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}
bool Contains(const Box& outer, const Box& inner) {
  return outer.x <= inner.x && outer.y <= inner.y && inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

struct Shown {
  std::string name;
  sal_Int16 role = 0;
  Box box;
};

std::vector<Shown> ControlsOf(const Person& person, const Seen& window) {
  std::vector<Shown> shown;
  for (const Seen& child : person.Children(window)) {
    Shown one;
    person.OnMain([&] {
      one.name = ToUtf8(child->getAccessibleName());
      one.role = child->getAccessibleRole();
    });
    one.box = person.Place(child);
    shown.push_back(std::move(one));
  }
  return shown;
}

void ExpectGoodLook(const Person& person, const Seen& window) {
  const Box inside = person.Place(window);
  const auto shown = ControlsOf(person, window);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    EXPECT_TRUE(Contains(inside, shown[i].box)) << shown[i].name << " is cut off";
    for (std::size_t k = 0; k < i; ++k) {
      if (shown[i].role == role::GROUP_BOX || shown[k].role == role::GROUP_BOX) continue;
      EXPECT_FALSE(Overlap(shown[i].box, shown[k].box)) << shown[i].name << " lies on " << shown[k].name;
    }
  }
}

void NothingOverlaps(DialogWorld& world) {
  SampleForm form;
  world.Show(form, [&](Person& person, const Seen& window) {
    // All controls but the timer, and two frames.
    EXPECT_EQ(person.Children(window).size(), form.Controls().size() - 1 + 2);
    ExpectGoodLook(person, window);
    const Box small = person.Place(window);
    const Box list = person.Place(person.Part(window, role::PANEL, "Grid control"));
    person.Resize(window, small.width + 100, small.height + 80);
    person.Until("a larger list", [&] {
      const auto size =
          As<css::accessibility::XAccessibleComponent>(person.PartNow(window, role::PANEL, "Grid control"))->getSize();
      return size.Width == list.width + 100 && size.Height == list.height + 80;
    });
    ExpectGoodLook(person, window);
    person.Key(key::ESCAPE);
  });
}

void MakesRoomForWhatChanges(DialogWorld& world) {
  SampleForm form;
  const std::string status =
      "A status that is a great deal longer than the one that the form has come up with, and that goes on "
      "over a second line";
  form.onAsk = [&] {
    form.lblStatus.SetCaption(status);
    form.rptReport.SetVisible(false);
    form.SetTitle("Another Title");
  };
  world.Show(form, [&](Person& person, const Seen& window) {
    const Box before = person.Place(window);
    person.Act(person.Part(window, role::PUSH_BUTTON, "Ask"));
    const Seen after = person.Window("Another Title");
    const Box label = person.Place(person.Part(after, role::LABEL, status));
    EXPECT_GT(label.width * label.height, static_cast<int>(status.size()) * 5 * 13);
    EXPECT_LT(person.Place(after).height, before.height);
    EXPECT_GT(person.Place(after).width, before.width);
    ExpectGoodLook(person, after);
    person.Key(key::ESCAPE);
  });
}

void OpensPopupMenus(DialogWorld& world) {
  const auto bar = world.application.CommandBars().Add({.name = "Menu", .position = host::BarPosition::Popup});
  const auto add = [](const host::CommandBarControls& controls, const char* caption, host::ControlType type) {
    const auto control = controls.Add({.type = type});
    control.SetCaption(caption);
    return control;
  };
  add(bar.Controls(), "&First", host::ControlType::Button);
  add(bar.Controls(), "Disabled", host::ControlType::Button).SetEnabled(false);
  const auto more = add(bar.Controls(), "&More", host::ControlType::Popup);
  const auto deep = add(more.Controls(), "&Deep", host::ControlType::Button);
  int clicks = 0;
  const auto heard = deep.AdviseClick([&](const host::CommandBarControl&, bool&) { ++clicks; });
  world.person.Do([&] { bar.ShowPopup(); },
                  [&](Person& person) {
                    const Seen menu = person.WindowWith(role::MENU, "More");
                    person.Part(menu, role::MENU_ITEM, "First");
                    person.Key(key::M);
                    person.WindowWith(role::MENU_ITEM, "Deep");
                    person.Key(key::D);
                  });
  EXPECT_EQ(clicks, 1);
  bar.Delete();
}

}  // namespace

std::vector<DialogCase> LookCases() {
  return {{"NothingOverlaps", NothingOverlaps},
          {"MakesRoomForWhatChanges", MakesRoomForWhatChanges},
          {"OpensPopupMenus", OpensPopupMenus}};
}

}  // namespace tolvane::libreoffice
