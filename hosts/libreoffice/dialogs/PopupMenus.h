#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

#include "hosts/libreoffice/Uno.h"
#include "src/host/CommandBars.h"

namespace tolvane::libreoffice {

// Shows a popup bar as a menu over a window, at a point in it, until the user has chosen or left it. The control that
// was chosen; Nothing when none was. Boxes to type into or to pick from have no place in a menu and are left out.
host::CommandBarControl ShowPopupMenu(const Reference<css::uno::XComponentContext>& context,
                                      const Reference<css::awt::XWindowPeer>& over, int x, int y,
                                      const host::CommandBar& popup);

}  // namespace tolvane::libreoffice
