#pragma once

#include <com/sun/star/accessibility/XAccessibleContext.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/Uno.h"
#include "hosts/libreoffice/dialogs/FormLayout.h"

namespace tolvane::libreoffice {

// Something on the screen, as a screen reader sees it.
using Seen = Reference<css::accessibility::XAccessibleContext>;

// What the person waits for does not come.
class NotSeen : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Someone in front of the office: sees what assistive technology sees, and presses keys and the mouse. Works on a
// thread of its own, with each look and each act on the office's main thread, also while a dialog is up there. What
// does not appear within a bounded time is NotSeen.
class Person {
 public:
  explicit Person(const Reference<css::uno::XComponentContext>& context);

  // Runs `work` here, on the main thread, and `script` beside it, until both have ended. When the script fails, what it
  // waits for will never end: the program is left at once, with the reason.
  void Do(const std::function<void()>& work, const std::function<void(Person&)>& script);

  // Waits for something done on the main thread; what it throws comes out here.
  void OnMain(const std::function<void()>& work) const;
  // Asks again and again until it is so.
  void Until(std::string_view what, const std::function<bool()>& isSo) const;

  // --- looking ------------------------------------------------------------------------------------------------------
  Seen Window(std::string_view title) const;
  void UntilGone(std::string_view title) const;
  // The one of a kind (accessibility::AccessibleRole) within something; the n-th from 0 in the order of the tree, with
  // that name unless it is empty.
  Seen Part(const Seen& within, sal_Int16 role, std::string_view name, int number = 0) const;
  static Seen PartNow(const Seen& within, sal_Int16 role, std::string_view name, int number = 0);  // on the main thread
  // The window that has such a part, for one without a title.
  Seen WindowWith(sal_Int16 role, std::string_view name) const;
  std::vector<Seen> Children(const Seen& seen) const;
  std::string Text(const Seen& seen) const;
  bool Is(const Seen& seen, sal_Int16 state) const;
  Box Place(const Seen& seen) const;  // on the screen
  std::uint32_t BackColour(const Seen& seen) const;
  std::string Tree() const;  // all that is there, for a reader

  // --- acting; the front window takes the keys ----------------------------------------------------------------------
  void Act(const Seen& seen, int action = 0) const;  // its n-th action: a button's is to be pressed
  void Focus(const Seen& seen) const;
  void Type(std::string_view text) const;  // ASCII
  void Key(sal_Int16 code, sal_Int16 modifiers = 0) const;
  void Click(const Seen& seen, int times = 1) const;
  void Resize(const Seen& window, int width, int height) const;
  void ClickAt(int x, int y, int times = 1) const;  // on the screen

 private:
  void Post(const std::function<void()>& work) const;  // does not wait: it may bring up a dialog
  Reference<css::awt::XWindow> FrontWindow() const;
  std::vector<Seen> TopWindows() const;
  Seen Keep(const Seen& seen) const;

  Reference<css::uno::XComponentContext> context_;
  Reference<css::awt::XExtendedToolkit> toolkit_;
  mutable std::vector<Seen> kept_;  // what was handed out: the office wants it to go on the main thread
};

}  // namespace tolvane::libreoffice
