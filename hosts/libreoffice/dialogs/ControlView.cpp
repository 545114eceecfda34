#include "hosts/libreoffice/dialogs/ControlView.h"

#include <algorithm>
#include <com/sun/star/awt/XLayoutConstrains.hpp>

#include "hosts/libreoffice/dialogs/ControlEars.h"
#include "hosts/libreoffice/dialogs/FormDialog.h"

namespace tolvane::libreoffice {

ControlView::ControlView(FormDialog& dialog, host::Control& control) : dialog_(dialog), control_(control) {}

ControlView::~ControlView() {
  if (ears_.is()) ears_->Close();
}

void ControlView::Create(int tabIndex) {
  model_ = dialog_.NewModel(Service());
  Furnish();
  model_->setPropertyValue("TabIndex", Any(static_cast<sal_Int16>(tabIndex)));
  dialog_.Insert(ToUno(control_.Name()), model_);
}

void ControlView::Begin() {
  native_ = dialog_.Native(ToUno(control_.Name()));
  window_ = As<css::awt::XWindow>(native_);
  ears_ = new Ears(*this);
  window_->addFocusListener(ears_.get());
  window_->addKeyListener(ears_.get());
  Listen();
  Draw(true);
}

void ControlView::End() noexcept {
  if (ears_.is()) ears_->Close();
}

bool ControlView::Draw(bool anyway) {
  const std::uint64_t revision = control_.Revision();
  if (!anyway && drawn_ == revision) return false;
  drawn_ = revision;
  SetOther<bool>("Enabled", control_.Enabled());
  SetOther("HelpText", ToUno(control_.ToolTip()));
  if (model_->getPropertySetInfo()->hasPropertyByName("Tabstop")) {
    SetOther<bool>("Tabstop", control_.TabStop() && control_.CanHaveFocus());
  }
  window_->setVisible(control_.Visible());
  Show();
  return true;
}

void ControlView::ShowBackColour(host::Colour colour, host::Colour::Kind usual) {
  if (colour.kind == usual) {
    if (model_->getPropertyValue("BackgroundColor").hasValue()) model_->setPropertyValue("BackgroundColor", Any());
  } else {
    SetOther<sal_Int32>("BackgroundColor", dialog_.ToColour(colour));
  }
}

Extent ControlView::Preferred() const {
  const auto size = As<css::awt::XLayoutConstrains>(native_->getPeer())->getPreferredSize();
  return {size.Width, size.Height};
}

Extent ControlView::Sized(const host::Layout& cell, Extent natural, Extent frame) const {
  const Measures& measures = dialog_.measures();
  if (cell.width > 0) natural.width = cell.width * measures.character + frame.width;
  if (cell.lines > 0) natural.height = std::max(cell.lines * measures.line + frame.height, measures.lineControl);
  return natural;
}

void ControlView::FocusGained() {
  dialog_.FocusCame(*this);
}

void ControlView::KeyDown(const css::awt::KeyEvent& event) {
  dialog_.KeyCame(event);
  KeyPressed(event);
}

}  // namespace tolvane::libreoffice
