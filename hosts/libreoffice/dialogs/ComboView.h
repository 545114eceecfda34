#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/libreoffice/dialogs/ControlView.h"
#include "src/host/form/ComboBox.h"

namespace tolvane::libreoffice {

// A list to pick from under one line, or one whose line can be typed into.
class ComboView final : public ControlView {
 public:
  ComboView(FormDialog& dialog, host::ComboBox& box)
      : ControlView(dialog, box), box_(box), isEditable_(box.ListStyle() == host::ComboBox::Style::Editable) {}
  Need NeedIn(const host::Layout& cell) override;
  void CatchUp(bool somethingFollows) override;
  void TextChanged() override;
  void ItemChanged(int index) override;
  void KeyPressed(const css::awt::KeyEvent& event) override;

 protected:
  const char* Service() const override { return isEditable_ ? "UnoControlComboBox" : "UnoControlListBox"; }
  void Furnish() override;
  void Listen() override;
  void Show() override;

 private:
  void ShowItems();

  host::ComboBox& box_;
  const bool isEditable_;
  std::vector<std::string> items_;    // as they are shown
  std::optional<std::string> typed_;  // not told yet
  bool byArrow_ = false;              // it came by going through the closed list
};

}  // namespace tolvane::libreoffice
