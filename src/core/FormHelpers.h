#pragma once

#include "src/core/MGlobals.h"
#include "src/host/Form.h"

namespace tolvane::accounts {

// Shows a form as a dialog over the program.
inline void ShowOwned(host::Form& frm) {
  gxlApp().User().ShowForm(frm);
}

// A box and its label are usable together; a box that is not has the colour of the dialog.
template <class Box>
void EnableLabelled(bool bEnable, host::Label& lblCaption, Box& ctlBox) {
  lblCaption.SetEnabled(bEnable);
  ctlBox.SetEnabled(bEnable);
  ctlBox.SetTabStop(bEnable);
  ctlBox.SetBackColour(bEnable ? host::Colour::Window() : host::Colour::ButtonFace());
}

// Yellow marks what cannot stay as it is.
template <class Box>
void MarkValidity(Box& ctlBox, bool bValid) {
  ctlBox.SetBackColour(bValid ? host::Colour::Window() : host::kInvalidMark);
}

}  // namespace tolvane::accounts
