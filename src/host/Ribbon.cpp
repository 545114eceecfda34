#include "src/host/Ribbon.h"

namespace tolvane::host {

void RibbonUI::Invalidate() const {
  Write("RibbonUI.Invalidate", &RibbonBody::Invalidate);
}
void RibbonUI::InvalidateControl(std::string_view id) const {
  Write("RibbonUI.InvalidateControl", &RibbonBody::InvalidateControl, id);
}

}  // namespace tolvane::host
