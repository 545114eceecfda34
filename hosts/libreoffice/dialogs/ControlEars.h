#pragma once

#include <com/sun/star/awt/XActionListener.hpp>
#include <com/sun/star/awt/XAdjustmentListener.hpp>
#include <com/sun/star/awt/XFocusListener.hpp>
#include <com/sun/star/awt/XItemListener.hpp>
#include <com/sun/star/awt/XKeyListener.hpp>
#include <com/sun/star/awt/XMouseListener.hpp>
#include <com/sun/star/awt/XTextListener.hpp>
#include <com/sun/star/awt/grid/XGridSelectionListener.hpp>
#include <cppuhelper/implbase8.hxx>

#include "hosts/libreoffice/dialogs/ControlView.h"

namespace tolvane::libreoffice {

// All that a control of the office may tell, passed on to a view for as long as there is one.
class ControlView::Ears final
    : public cppu::WeakImplHelper8<css::awt::XActionListener, css::awt::XTextListener, css::awt::XItemListener,
                                   css::awt::XKeyListener, css::awt::XFocusListener, css::awt::XMouseListener,
                                   css::awt::XAdjustmentListener, css::awt::grid::XGridSelectionListener> {
 public:
  explicit Ears(ControlView& view) : view_(&view) {}
  void Close() { view_ = nullptr; }

  void SAL_CALL actionPerformed(const css::awt::ActionEvent&) override {
    if (view_ != nullptr) view_->ActionPerformed();
  }
  void SAL_CALL textChanged(const css::awt::TextEvent&) override {
    if (view_ != nullptr) view_->TextChanged();
  }
  void SAL_CALL itemStateChanged(const css::awt::ItemEvent& event) override {
    if (view_ != nullptr) view_->ItemChanged(event.Selected);
  }
  void SAL_CALL keyPressed(const css::awt::KeyEvent& event) override {
    if (view_ != nullptr) view_->KeyDown(event);
  }
  void SAL_CALL keyReleased(const css::awt::KeyEvent&) override {}
  void SAL_CALL focusGained(const css::awt::FocusEvent&) override {
    if (view_ != nullptr) view_->FocusGained();
  }
  void SAL_CALL focusLost(const css::awt::FocusEvent&) override {}
  void SAL_CALL mousePressed(const css::awt::MouseEvent& event) override {
    if (view_ != nullptr) view_->MousePressed(event);
  }
  void SAL_CALL mouseReleased(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseEntered(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseExited(const css::awt::MouseEvent&) override {}
  void SAL_CALL adjustmentValueChanged(const css::awt::AdjustmentEvent&) override {
    if (view_ != nullptr) view_->ValueChanged();
  }
  void SAL_CALL selectionChanged(const css::awt::grid::GridSelectionEvent&) override {
    if (view_ != nullptr) view_->SelectionChanged();
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  ControlView* view_;
};

}  // namespace tolvane::libreoffice
