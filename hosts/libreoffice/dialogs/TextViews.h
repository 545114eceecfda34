#pragma once

#include <cstddef>
#include <optional>

#include "hosts/libreoffice/dialogs/ControlView.h"
#include "src/host/form/TextControls.h"

namespace tolvane::libreoffice {

// A label, or a link.
class LabelView final : public ControlView {
 public:
  LabelView(FormDialog& dialog, host::Label& label) : ControlView(dialog, label), label_(label) {}
  Need NeedIn(const host::Layout& cell) override;
  void ActionPerformed() override;

 protected:
  const char* Service() const override;
  void Furnish() override;
  void Listen() override;
  void Show() override;

 private:
  host::Label& label_;
  bool isLink_ = label_.IsLink();
};

class TextView final : public ControlView {
 public:
  TextView(FormDialog& dialog, host::TextBox& box) : ControlView(dialog, box), box_(box) {}
  Need NeedIn(const host::Layout& cell) override;
  void CatchUp(bool somethingFollows) override;
  void TextChanged() override;
  void KeyPressed(const css::awt::KeyEvent& event) override;

 protected:
  const char* Service() const override { return "UnoControlEdit"; }
  void Furnish() override;
  void Listen() override;
  void Show() override;

 private:
  struct Marked {
    std::size_t start = 0;
    std::size_t length = 0;
    friend bool operator==(const Marked&, const Marked&) = default;
  };
  Marked NativeMark() const;  // in bytes

  host::TextBox& box_;
};

class ReportView final : public ControlView {
 public:
  ReportView(FormDialog& dialog, host::ReportBox& box) : ControlView(dialog, box), box_(box) {}
  Need NeedIn(const host::Layout& cell) override;
  void Settle() override { ScrollTo(box_.ScrollLine()); }

 protected:
  const char* Service() const override { return "UnoControlEdit"; }
  void Furnish() override;
  void Show() override;

 private:
  void ScrollTo(std::size_t line);

  host::ReportBox& box_;
};

class ColourBarView final : public ControlView {
 public:
  ColourBarView(FormDialog& dialog, host::ColourBar& bar) : ControlView(dialog, bar), bar_(bar) {}
  Need NeedIn(const host::Layout& cell) override;

 protected:
  const char* Service() const override { return "UnoControlFixedText"; }
  void Furnish() override;
  void Show() override;

 private:
  host::ColourBar& bar_;
};

}  // namespace tolvane::libreoffice
