#include "src/host/form/ComboBox.h"

#include <cstddef>
#include <stdexcept>

namespace tolvane::host {

const ComboBox::Item& ComboBox::At(int index) const {
  if (!Has(index)) {
    throw std::out_of_range("The list " + Name() + " has no item " + std::to_string(index) + "; it has " +
                            std::to_string(ListCount()) + ".");
  }
  return items_[static_cast<std::size_t>(index)];
}

void ComboBox::SetList(int index, std::string_view text) {
  Change(At(index).text, text);
  if (index == listIndex_) Change(text_, text);
}

void ComboBox::InsertItem(int index, std::string_view text, int data) {
  if (index != ListCount()) At(index);
  items_.insert(items_.begin() + index, Item{std::string(text), data});
  if (listIndex_ >= index) ++listIndex_;
  Touch();
}

void ComboBox::RemoveItem(int index) {
  At(index);
  items_.erase(items_.begin() + index);
  if (listIndex_ == index) {
    listIndex_ = -1;
    text_.clear();
  } else if (listIndex_ > index) {
    --listIndex_;
  }
  Touch();
}

void ComboBox::Clear() {
  items_.clear();
  listIndex_ = -1;
  text_.clear();
  Touch();
}

void ComboBox::SetListIndex(int index) {
  const std::string text = index == -1 ? std::string() : At(index).text;
  Change(listIndex_, index);
  Change(text_, text);
}

void ComboBox::SetText(std::string_view text) {
  if (style_ != Style::Editable) throw std::logic_error("The text of the list " + Name() + " cannot be edited.");
  Change(listIndex_, -1);
  Change(text_, text);
}

void ComboBox::UserPick(int index) {
  if (!Has(index)) Refuse("has no item " + std::to_string(index));
  BeginUserAction();
  SetListIndex(index);
  Raise(OnClick);
}

void ComboBox::UserType(std::string_view text) {
  if (style_ != Style::Editable) Refuse("can be picked from, not typed into");
  if (text.find('\n') != std::string_view::npos) Refuse("takes one line only");
  BeginUserAction();
  if (text_ == text) return;
  SetText(text);
  Raise(OnChange);
}

}  // namespace tolvane::host
