#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "src/host/form/Colour.h"
#include "src/host/form/Control.h"

namespace tolvane::host {

// A text that the user reads; the mnemonic in it is that of the next control in tab order.
class Label : public Control {
 public:
  Label(Form& form, std::string name, std::string_view caption = {})
      : Control(form, std::move(name)), caption_(caption) {}

  const std::string& Caption() const { return caption_; }  // with its "&"
  void SetCaption(std::string_view caption) { Change(caption_, caption); }
  // For a text that comes from the user's data and may contain an "&".
  void SetPlainCaption(std::string_view text);

  // A link can be clicked.
  bool IsLink() const { return link_; }
  void SetLink(bool link) { Change(link_, link); }
  std::function<void()> OnClick;
  void UserClick();

  bool CanHaveFocus() const override { return link_; }
  std::string_view MnemonicCaption() const override { return caption_; }
  // A link is clicked, any other label hands the focus to the next control.
  void UserPressMnemonic() override;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  std::string caption_;
  bool link_ = false;
};

// A box to type into. Texts are UTF-8, lines end in LF.
class TextBox : public Control {
 public:
  TextBox(Form& form, std::string name) : Control(form, std::move(name)) {}

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);  // the cursor goes to the start
  bool MultiLine() const { return multiLine_; }
  void SetMultiLine(bool multiLine) { Change(multiLine_, multiLine); }
  bool Locked() const { return locked_; }  // can be read and marked, not typed into
  void SetLocked(bool locked) { Change(locked_, locked); }
  Colour BackColour() const { return backColour_; }
  void SetBackColour(Colour colour) { Change(backColour_, colour); }

  // What is selected, in bytes of the text; of length 0 where the cursor stands. Cut off at the end of the text.
  std::size_t SelectionStart() const { return selectionStart_; }
  std::size_t SelectionLength() const { return selectionLength_; }
  void SetSelection(std::size_t start, std::size_t length);
  void SelectAll() { SetSelection(0, text_.size()); }

  std::function<void()> OnChange;
  std::function<void(Key)> OnKeyDown;
  // The text is now this one; the cursor stands at its end. OnChange is raised when it differs from before.
  void UserType(std::string_view text);
  void UserSelect(std::size_t start, std::size_t length);  // raises nothing
  // A key that types nothing: an arrow, a function key.
  void UserPressKey(Key key);

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  std::string text_;
  std::size_t selectionStart_ = 0;
  std::size_t selectionLength_ = 0;
  Colour backColour_;
  bool multiLine_ = false;
  bool locked_ = false;
};

// Many lines to read; scrolled by the user where they do not fit.
class ReportBox : public Control {
 public:
  ReportBox(Form& form, std::string name) : Control(form, std::move(name)) {}

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text) { Change(text_, text); }
  void Append(std::string_view text);

  // Which line is to stand on top when the box is shown the next time, from 0; a renderer takes it up once.
  void ScrollTo(std::size_t line);
  std::size_t ScrollLine() const { return scrollLine_; }

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  std::string text_;
  std::size_t scrollLine_ = 0;
};

// A patch of colour. A renderer without colours shows its tool tip.
class ColourBar : public Control {
 public:
  ColourBar(Form& form, std::string name) : Control(form, std::move(name)) {}

  Colour BackColour() const { return backColour_; }
  void SetBackColour(Colour colour) { Change(backColour_, colour); }

  bool CanHaveFocus() const override { return false; }
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  Colour backColour_ = Colour::ButtonFace();
};

}  // namespace tolvane::host
