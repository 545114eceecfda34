#pragma once

#include "hosts/libreoffice/dialogs/ControlView.h"
#include "src/host/form/Buttons.h"

namespace tolvane::libreoffice {

class ButtonView final : public ControlView {
 public:
  ButtonView(FormDialog& dialog, host::Button& button) : ControlView(dialog, button), button_(button) {}
  Need NeedIn(const host::Layout& cell) override;
  void ActionPerformed() override;
  // Whether Enter presses it from anywhere on the form.
  void ShowDefault(bool isDefault);

 protected:
  const char* Service() const override { return "UnoControlButton"; }
  void Listen() override;
  void Show() override;

 private:
  host::Button& button_;
};

class CheckView final : public ControlView {
 public:
  CheckView(FormDialog& dialog, host::CheckBox& box) : ControlView(dialog, box), box_(box) {}
  Need NeedIn(const host::Layout& cell) override;
  void ItemChanged(int) override;

 protected:
  const char* Service() const override { return "UnoControlCheckBox"; }
  void Listen() override;
  void Show() override;

 private:
  host::CheckBox& box_;
};

class OptionView final : public ControlView {
 public:
  OptionView(FormDialog& dialog, host::OptionButton& button) : ControlView(dialog, button), button_(button) {}
  Need NeedIn(const host::Layout& cell) override;
  bool IsMovedBy(const ControlView& other) const override;
  void ItemChanged(int) override;

 protected:
  const char* Service() const override { return "UnoControlRadioButton"; }
  void Listen() override;
  void Show() override;

 private:
  host::OptionButton& button_;
};

class SpinView final : public ControlView {
 public:
  SpinView(FormDialog& dialog, host::Spin& spin) : ControlView(dialog, spin), spin_(spin) {}
  Need NeedIn(const host::Layout& cell) override;
  void ValueChanged() override;

 protected:
  const char* Service() const override { return "UnoControlSpinButton"; }
  void Furnish() override;
  void Listen() override;
  void Show() override;

 private:
  host::Spin& spin_;
};

}  // namespace tolvane::libreoffice
