#include "src/host/form/Control.h"

#include "src/host/Form.h"

namespace tolvane::host {

void Control::UserPressMnemonic() {
  BeginUserAction();
}

void Control::BeginUserAction() {
  form_.UserFocus(*this);
}

void Control::Refuse(std::string_view why) const {
  throw ActionRefused("The control " + name_ + " of the form " + form_.Name() + " " + std::string(why) + ".");
}

}  // namespace tolvane::host
