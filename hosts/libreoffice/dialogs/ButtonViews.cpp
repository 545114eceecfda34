#include "hosts/libreoffice/dialogs/ButtonViews.h"

#include <algorithm>
#include <com/sun/star/awt/ScrollBarOrientation.hpp>
#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XLayoutConstrains.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XSpinValue.hpp>

#include "hosts/libreoffice/dialogs/ControlEars.h"
#include "hosts/libreoffice/dialogs/FormDialog.h"
#include "hosts/libreoffice/dialogs/Notation.h"

namespace tolvane::libreoffice {

namespace {

constexpr int kButtonWidth = 11;   // in characters, so that a short "OK" is no stamp
constexpr int kButtonPadding = 2;  // the same, around a long caption

}  // namespace

void ButtonView::Listen() {
  Native<css::awt::XButton>()->addActionListener(ears().get());
}

void ButtonView::Show() {
  SetOther("Label", ToLabel(button_.Caption()));
}

void ButtonView::ShowDefault(bool isDefault) {
  SetOther<bool>("DefaultButton", isDefault);
}

Need ButtonView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  const auto bare = As<css::awt::XLayoutConstrains>(native()->getPeer())->getMinimumSize();
  const Extent natural{
      std::max<int>(bare.Width + kButtonPadding * measures.character, kButtonWidth * measures.character),
      std::max<int>(bare.Height, measures.lineControl)};
  return {.role = cell.width == 0 ? Need::Role::Button : Need::Role::Other, .least = Sized(cell, natural, {})};
}

void ButtonView::ActionPerformed() {
  dialog_.Report(*this, [this] { button_.UserClick(); });
}

void CheckView::Listen() {
  Native<css::awt::XCheckBox>()->addItemListener(ears().get());
}

void CheckView::Show() {
  SetOther("Label", ToLabel(box_.Caption()));
  SetOther("State", static_cast<sal_Int16>(box_.Value() ? 1 : 0));
}

Need CheckView::NeedIn(const host::Layout& cell) {
  return {.least = Sized(cell, Preferred(), {})};
}

void CheckView::ItemChanged(int state) {
  if ((state != 0) == box_.Value()) return;
  dialog_.Report(*this, [this] { box_.UserClick(); });
}

void OptionView::Listen() {
  Native<css::awt::XRadioButton>()->addItemListener(ears().get());
}

void OptionView::Show() {
  SetOther("Label", ToLabel(button_.Caption()));
  SetOther("State", static_cast<sal_Int16>(button_.Value() ? 1 : 0));
}

Need OptionView::NeedIn(const host::Layout& cell) {
  return {.least = Sized(cell, Preferred(), {})};
}

// The office takes the choice from others, too, which it groups by a rule of its own.
bool OptionView::IsMovedBy(const ControlView& other) const {
  return dynamic_cast<const OptionView*>(&other) != nullptr;
}

void OptionView::ItemChanged(int state) {
  if (state == 0 || button_.Value()) return;
  dialog_.Report(*this, [this] { button_.UserClick(); });
}

void SpinView::Furnish() {
  model()->setPropertyValue("Orientation", Any(sal_Int32{css::awt::ScrollBarOrientation::VERTICAL}));
  model()->setPropertyValue("Repeat", Any(true));
}

void SpinView::Listen() {
  Native<css::awt::XSpinValue>()->addAdjustmentListener(ears().get());
}

void SpinView::Show() {
  SetOther<sal_Int32>("SpinValueMin", spin_.Min());
  SetOther<sal_Int32>("SpinValueMax", spin_.Max());
  SetOther<sal_Int32>("SpinValue", spin_.Value());
}

Need SpinView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  return {.least = Sized(cell, {2 * measures.character + 2, measures.lineControl}, {})};
}

void SpinView::ValueChanged() {
  const sal_Int32 value = Native<css::awt::XSpinValue>()->getValue();
  if (value == spin_.Value()) return;
  dialog_.Report(*this, [this, up = value > spin_.Value()] { up ? spin_.UserUp() : spin_.UserDown(); });
}

}  // namespace tolvane::libreoffice
