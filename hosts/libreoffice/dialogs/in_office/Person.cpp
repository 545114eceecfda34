#include "hosts/libreoffice/dialogs/in_office/Person.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/AccessibleStateType.hpp>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleAction.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/accessibility/XAccessibleText.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XReschedule.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/awt/XToolkitRobot.hpp>
#include <cstdlib>
#include <future>
#include <iostream>
#include <memory>
#include <thread>
#include <utility>

#include "hosts/libreoffice/dialogs/MainThread.h"

// What the toolkit has for looking at windows is all called deprecated, and there is nothing else.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace tolvane::libreoffice {

namespace {

namespace a11y = css::accessibility;

constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::milliseconds kLook{15};
constexpr int kDeepest = 30, kMostChildren = 200;

// Depth first, in the order of the tree, until `visit` says that it is enough.
bool Walk(const Seen& seen, const std::function<bool(const Seen&, int)>& visit, int depth = 0) {
  if (!seen.is() || depth > kDeepest) return false;
  if (visit(seen, depth)) return true;
  // A sheet has more cells than anyone looks at.
  const sal_Int32 count = std::min<sal_Int32>(seen->getAccessibleChildCount(), kMostChildren);
  for (sal_Int32 i = 0; i < count; ++i) {
    const auto child = seen->getAccessibleChild(i);
    if (child.is() && Walk(child->getAccessibleContext(), visit, depth + 1)) return true;
  }
  return false;
}

bool IsShowing(const Seen& seen) {
  const auto states = seen->getAccessibleStateSet();
  return states.is() && states->contains(a11y::AccessibleStateType::SHOWING);
}

bool IsDocument(const Seen& window) {
  return window->getAccessibleRole() == a11y::AccessibleRole::ROOT_PANE;
}

Seen Search(const Seen& within, sal_Int16 role, std::string_view name, int number) {
  Seen found;
  const OUString wanted = ToUno(name);
  Walk(within, [&](const Seen& seen, int) {
    if (seen->getAccessibleRole() != role || !IsShowing(seen)) return false;
    if (!wanted.isEmpty() && seen->getAccessibleName() != wanted) return false;
    if (number-- > 0) return false;
    found = seen;
    return true;
  });
  return found;
}

}  // namespace

Person::Person(const Reference<css::uno::XComponentContext>& context)
    : context_(context), toolkit_(css::awt::Toolkit::create(context), UNO_QUERY_THROW) {}

void Person::Do(const std::function<void()>& work, const std::function<void(Person&)>& script) {
  std::promise<void> workEnds;
  std::atomic<bool> scriptHasEnded = false;
  std::thread beside([&, workHasEnded = workEnds.get_future()] {
    try {
      script(*this);
      scriptHasEnded = true;
      if (workHasEnded.wait_for(kPatience) != std::future_status::ready) throw NotSeen("Something is still up.");
    } catch (const std::exception& failure) {
      ADD_FAILURE() << failure.what();
      std::cerr << Tree() << std::flush;
      std::_Exit(1);
    }
  });
  work();
  workEnds.set_value();
  // The script may go on looking at what is left.
  const auto office = As<css::awt::XReschedule>(toolkit_);
  while (!scriptHasEnded) {
    office->reschedule();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  beside.join();
  kept_.clear();
}

void Person::Post(const std::function<void()>& work) const {
  PostToMainThread(context_, [work] {
    try {
      work();
    } catch (const css::uno::Exception& failure) {
      ADD_FAILURE() << ToUtf8(failure.Message);
    } catch (const std::exception& failure) {
      ADD_FAILURE() << failure.what();
    }
  });
}

void Person::OnMain(const std::function<void()>& work) const {
  const auto task = std::make_shared<std::packaged_task<void()>>([work] { AtEdge(work); });
  auto done = task->get_future();
  PostToMainThread(context_, [task] { (*task)(); });
  if (done.wait_for(kPatience) != std::future_status::ready) throw NotSeen("The office does not answer.");
  done.get();
}

void Person::Until(std::string_view what, const std::function<bool()>& isSo) const {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (true) {
    bool so = false;
    // What is looked at may be going away this moment.
    try {
      OnMain([&] { so = isSo(); });
    } catch (const host::HostError&) {
    }
    if (so) return;
    if (std::chrono::steady_clock::now() > end) throw NotSeen("Has not come about: " + std::string(what));
    std::this_thread::sleep_for(kLook);
  }
}

// A dialog, if there is one. Without a screen, the one below gets the focus back late or never when one closes.
Reference<css::awt::XWindow> Person::FrontWindow() const {
  Reference<css::awt::XWindow> front(toolkit_->getActiveTopWindow(), UNO_QUERY);
  const auto isDialog = [](const Reference<css::awt::XWindow>& window) {
    const Reference<a11y::XAccessible> accessible(window, UNO_QUERY);
    const Seen seen = accessible.is() ? accessible->getAccessibleContext() : nullptr;
    return seen.is() && !IsDocument(seen) && IsShowing(seen);
  };
  if (isDialog(front)) return front;
  for (sal_Int32 i = 0; i < toolkit_->getTopWindowCount(); ++i) {
    const Reference<css::awt::XWindow> window(toolkit_->getTopWindow(i), UNO_QUERY);
    if (isDialog(window) || !front.is()) front = window;
  }
  return front;
}

std::vector<Seen> Person::TopWindows() const {
  std::vector<Seen> windows;
  for (sal_Int32 i = 0; i < toolkit_->getTopWindowCount(); ++i) {
    const Reference<a11y::XAccessible> window(toolkit_->getTopWindow(i), UNO_QUERY);
    const Seen seen = window.is() ? window->getAccessibleContext() : nullptr;
    if (seen.is() && IsShowing(seen)) windows.push_back(seen);
  }
  return windows;
}

Seen Person::Keep(const Seen& seen) const {
  if (seen.is()) kept_.push_back(seen);
  return seen;
}

Seen Person::Window(std::string_view title) const {
  Seen found;
  Until("a window " + std::string(title), [&] {
    for (const Seen& window : TopWindows()) {
      if (ToUtf8(window->getAccessibleName()) == title) found = Keep(window);
    }
    return found.is();
  });
  return found;
}

void Person::UntilGone(std::string_view title) const {
  Until("no window " + std::string(title), [&] {
    const auto windows = TopWindows();
    return std::none_of(windows.begin(), windows.end(),
                        [&](const Seen& window) { return ToUtf8(window->getAccessibleName()) == title; });
  });
}

Seen Person::Part(const Seen& within, sal_Int16 role, std::string_view name, int number) const {
  Seen found;
  Until("a part \"" + std::string(name) + "\" in the role " + std::to_string(role), [&] {
    found = Keep(Search(within, role, name, number));
    return found.is();
  });
  return found;
}

Seen Person::PartNow(const Seen& within, sal_Int16 role, std::string_view name, int number) {
  return Search(within, role, name, number);
}

Seen Person::WindowWith(sal_Int16 role, std::string_view name) const {
  Seen found;
  Until("a window with a part " + std::string(name), [&] {
    for (const Seen& window : TopWindows()) {
      if (!IsDocument(window) && Search(window, role, name, 0).is()) found = Keep(window);
    }
    return found.is();
  });
  return found;
}

std::vector<Seen> Person::Children(const Seen& seen) const {
  std::vector<Seen> children;
  OnMain([&] {
    for (sal_Int32 i = 0; i < seen->getAccessibleChildCount(); ++i) {
      const auto child = seen->getAccessibleChild(i)->getAccessibleContext();
      if (IsShowing(child)) children.push_back(Keep(child));
    }
  });
  return children;
}

std::uint32_t Person::BackColour(const Seen& seen) const {
  std::uint32_t colour = 0;
  OnMain(
      [&] { colour = static_cast<std::uint32_t>(As<a11y::XAccessibleComponent>(seen)->getBackground()) & 0xFFFFFF; });
  return colour;
}

std::string Person::Text(const Seen& seen) const {
  std::string text;
  OnMain([&] { text = ToUtf8(As<a11y::XAccessibleText>(seen)->getText()); });
  return text;
}

bool Person::Is(const Seen& seen, sal_Int16 state) const {
  bool is = false;
  OnMain([&] { is = seen->getAccessibleStateSet()->contains(state); });
  return is;
}

Box Person::Place(const Seen& seen) const {
  Box box;
  OnMain([&] {
    const auto component = As<a11y::XAccessibleComponent>(seen);
    const auto at = component->getLocationOnScreen();
    const auto size = component->getSize();
    box = {at.X, at.Y, size.Width, size.Height};
  });
  return box;
}

std::string Person::Tree() const {
  std::string tree;
  try {
    OnMain([&] {
      for (const Seen& window : TopWindows()) {
        if (IsDocument(window)) continue;
        Walk(window, [&](const Seen& seen, int depth) {
          tree += std::string(static_cast<std::size_t>(2 * depth), ' ') + std::to_string(seen->getAccessibleRole()) +
                  " \"" + ToUtf8(seen->getAccessibleName()) + "\"\n";
          return false;
        });
      }
    });
  } catch (const std::exception& failure) {
    tree += failure.what();
  }
  return tree;
}

void Person::Act(const Seen& seen, int action) const {
  Post([seen, action] { As<a11y::XAccessibleAction>(seen)->doAccessibleAction(action); });
}

void Person::Focus(const Seen& seen) const {
  OnMain([&] { As<a11y::XAccessibleComponent>(seen)->grabFocus(); });
}

void Person::Key(sal_Int16 code, sal_Int16 modifiers) const {
  Post([this, code, modifiers] {
    css::awt::KeyEvent event;
    event.Source = FrontWindow();
    event.KeyCode = code;
    event.Modifiers = modifiers;
    // A mnemonic is known by its letter.
    const bool isLetter = code >= css::awt::Key::A && code <= css::awt::Key::Z;
    if (isLetter && modifiers != css::awt::KeyModifier::MOD1) {
      event.KeyChar = static_cast<sal_Unicode>('a' + code - css::awt::Key::A);
    }
    const auto robot = As<css::awt::XToolkitRobot>(toolkit_);
    robot->keyPress(event);
    robot->keyRelease(event);
  });
}

void Person::Type(std::string_view text) const {
  for (const char character : text) {
    Post([this, character] {
      css::awt::KeyEvent event;
      event.Source = FrontWindow();
      event.KeyChar = static_cast<sal_Unicode>(character);
      if (character >= 'a' && character <= 'z') {
        event.KeyCode = static_cast<sal_Int16>(css::awt::Key::A + character - 'a');
      }
      const auto robot = As<css::awt::XToolkitRobot>(toolkit_);
      robot->keyPress(event);
      robot->keyRelease(event);
    });
  }
}

void Person::Click(const Seen& seen, int times) const {
  const Box box = Place(seen);
  ClickAt(box.x + box.width / 2, box.y + box.height / 2, times);
}

void Person::Resize(const Seen& window, int width, int height) const {
  const Box box = Place(window);
  OnMain([&] {
    const auto front = FrontWindow();
    const auto size = front->getPosSize();
    front->setPosSize(0, 0, size.Width + width - box.width, size.Height + height - box.height, css::awt::PosSize::SIZE);
  });
}

void Person::ClickAt(int x, int y, int times) const {
  // Some controls only know where they are once they have been painted.
  OnMain([&] { As<css::awt::XToolkitExperimental>(toolkit_)->processEventsToIdle(); });
  Post([this, x, y, times] {
    const auto window = FrontWindow();
    const Reference<a11y::XAccessible> accessible(window, UNO_QUERY_THROW);
    const auto corner = As<a11y::XAccessibleComponent>(accessible->getAccessibleContext())->getLocationOnScreen();
    const auto robot = As<css::awt::XToolkitRobot>(toolkit_);
    for (int i = 1; i <= times; ++i) {
      css::awt::MouseEvent event;
      event.Source = window;
      event.X = x - corner.X;
      event.Y = y - corner.Y;
      event.Buttons = css::awt::MouseButton::LEFT;
      event.ClickCount = i;
      robot->mousePress(event);
      robot->mouseRelease(event);
    }
  });
}

}  // namespace tolvane::libreoffice
