#include "testing/excel/WindowObject.h"

#include "testing/excel/Property.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::Window;

std::span<const WindowObject::Member> WindowObject::Members() {
  static constexpr Member kMembers[] = {
      {"ActiveCell", [](WindowObject& w, const Call&) { return w.world()->Of(w.handle.ActiveCell()); }},
      {"VisibleRange", [](WindowObject& w, const Call&) { return w.world()->Of(w.handle.VisibleRange()); }},
      {"ScrollRow", Property<&Window::ScrollRow, &Window::SetScrollRow>},
      {"ScrollColumn", Property<&Window::ScrollColumn, &Window::SetScrollColumn>},
      {"Zoom", Property<&Window::Zoom, &Window::SetZoom>},
      {"SplitRow", Property<&Window::SplitRow, &Window::SetSplitRow>},
      {"SplitColumn", Property<&Window::SplitColumn, &Window::SetSplitColumn>},
      {"FreezePanes", Property<&Window::FreezePanes, &Window::SetFreezePanes>},
      {"DisplayGridlines", Property<&Window::DisplayGridlines, &Window::SetDisplayGridlines>},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
