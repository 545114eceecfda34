#include "hosts/libreoffice/dialogs/PopupMenus.h"

#include <com/sun/star/awt/PopupMenu.hpp>
#include <com/sun/star/awt/PopupMenuDirection.hpp>
#include <com/sun/star/awt/Rectangle.hpp>
#include <vector>

#include "hosts/libreoffice/dialogs/Notation.h"

namespace tolvane::libreoffice {

namespace {

// Deeper than any hand goes.
constexpr int kDeepest = 20;

class Menu {
 public:
  explicit Menu(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

  // Through the bodies: what the user looks at passes no gate.
  Reference<css::awt::XPopupMenu> Fill(const host::ControlsBody& controls, int depth) {
    const auto menu = css::awt::PopupMenu::create(context_);
    menu->hideDisabledEntries(false);
    menu->enableAutoMnemonics(false);
    for (const host::CommandBarControl& control : controls.ControlsAll()) {
      const host::ControlBody& body = *control.body();
      const bool isMenu = body.Type() == host::ControlType::Popup;
      if (!body.Visible() || (!isMenu && body.Type() != host::ControlType::Button) || depth >= kDeepest) continue;
      if (body.BeginGroup() && menu->getItemCount() > 0) menu->insertSeparator(-1);
      offered_.push_back(control);
      const auto id = static_cast<sal_Int16>(offered_.size());
      menu->insertItem(id, ToLabel(body.Caption()), 0, -1);
      menu->enableItem(id, body.Enabled());
      if (body.State() == host::ButtonState::Down) menu->checkItem(id, true);
      if (isMenu) menu->setPopupMenu(id, Fill(body, depth + 1));
    }
    return menu;
  }
  host::CommandBarControl Of(sal_Int16 id) const {
    if (id < 1 || static_cast<std::size_t>(id) > offered_.size()) return {};
    return offered_[static_cast<std::size_t>(id) - 1];
  }

 private:
  Reference<css::uno::XComponentContext> context_;
  std::vector<host::CommandBarControl> offered_;  // the first one has the id 1
};

}  // namespace

host::CommandBarControl ShowPopupMenu(const Reference<css::uno::XComponentContext>& context,
                                      const Reference<css::awt::XWindowPeer>& over, int x, int y,
                                      const host::CommandBar& popup) {
  return AtEdge([&] {
    Menu menu(context);
    const auto shown = menu.Fill(*popup.body(), 0);
    return menu.Of(shown->execute(over, css::awt::Rectangle(x, y, 1, 1), css::awt::PopupMenuDirection::EXECUTE_DOWN));
  });
}

}  // namespace tolvane::libreoffice
