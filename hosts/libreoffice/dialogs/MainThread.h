#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>

#include "hosts/libreoffice/Uno.h"

namespace tolvane::libreoffice {

// Has the office do something on its main thread, after what waits there already; also from inside of a dialog. May be
// called on any thread. `work` must not throw; it never runs when the office ends before.
void PostToMainThread(const Reference<css::uno::XComponentContext>& context, std::function<void()> work);

}  // namespace tolvane::libreoffice
