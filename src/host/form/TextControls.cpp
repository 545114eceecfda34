#include "src/host/form/TextControls.h"

#include <algorithm>

#include "src/host/Form.h"
#include "src/host/form/Caption.h"

namespace tolvane::host {

void Label::SetPlainCaption(std::string_view text) {
  SetCaption(CaptionOf(text));
}

void Label::UserClick() {
  if (!link_) Refuse("is no link");
  BeginUserAction();
  Raise(OnClick);
}

void Label::UserPressMnemonic() {
  if (link_) {
    UserClick();
    return;
  }
  Control* const next = form().NextInOrder(*this);
  if (next == nullptr || !next->Usable()) Refuse("stands before no control that can be used");
  form().UserFocus(*next);
}

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  selectionStart_ = 0;
  selectionLength_ = 0;
  Touch();
}

void TextBox::SetSelection(std::size_t start, std::size_t length) {
  Change(selectionStart_, std::min(start, text_.size()));
  Change(selectionLength_, std::min(length, text_.size() - selectionStart_));
}

void TextBox::UserType(std::string_view text) {
  if (locked_) Refuse("is locked");
  if (!multiLine_ && text.find('\n') != std::string_view::npos) Refuse("takes one line only");
  BeginUserAction();
  if (text_ == text) return;
  text_ = text;
  selectionStart_ = text_.size();
  selectionLength_ = 0;
  Touch();
  Raise(OnChange);
}

void TextBox::UserSelect(std::size_t start, std::size_t length) {
  BeginUserAction();
  SetSelection(start, length);
}

void TextBox::UserPressKey(Key key) {
  BeginUserAction();
  if (const auto handler = OnKeyDown) handler(key);
}

void ReportBox::Append(std::string_view text) {
  if (text.empty()) return;
  text_ += text;
  Touch();
}

void ReportBox::ScrollTo(std::size_t line) {
  scrollLine_ = line;
  Touch();
}

}  // namespace tolvane::host
