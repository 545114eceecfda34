#include "src/host/form/ListView.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "src/host/Form.h"

namespace tolvane::host {

void ListView::SetColumns(std::vector<Column> columns) {
  columns_ = std::move(columns);
  Touch();
}

const ListItem& ListView::Item(int index) const {
  if (!Has(index)) {
    throw std::out_of_range("The list " + Name() + " has no item " + std::to_string(index) + "; it has " +
                            std::to_string(Count()) + ".");
  }
  return items_[static_cast<std::size_t>(index)];
}

int ListView::IndexOf(std::string_view key) const {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const ListItem& item) { return item.key == key; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ListView::Add(ListItem item, std::optional<int> index) {
  const int position = index.value_or(Count());
  if (position != Count()) Item(position);
  if (!item.key.empty() && !keys_.insert(item.key).second) {
    throw std::invalid_argument("The list " + Name() + " has an item with the key " + item.key + " already.");
  }
  items_.insert(items_.begin() + position, std::move(item));
  for (int* const kept : {&selected_, &mustSee_, &editing_, &ending_}) {
    if (*kept >= position) ++*kept;
  }
  Touch();
}

void ListView::Remove(int index) {
  keys_.erase(Item(index).key);
  items_.erase(items_.begin() + index);
  for (int* const kept : {&selected_, &mustSee_, &editing_, &ending_}) {
    if (*kept == index) {
      *kept = -1;
    } else if (*kept > index) {
      --*kept;
    }
  }
  Touch();
}

void ListView::Clear() {
  items_.clear();
  keys_.clear();
  selected_ = mustSee_ = editing_ = ending_ = -1;
  Touch();
}

void ListView::SetText(int index, std::string_view text) {
  Change(At(index).text, text);
}

void ListView::SetSubItem(int index, int column, std::string_view text) {
  if (column < 1) throw std::out_of_range("Column " + std::to_string(column) + " of " + Name() + " is no sub item.");
  std::vector<std::string>& subItems = At(index).subItems;
  if (subItems.size() < static_cast<std::size_t>(column)) subItems.resize(static_cast<std::size_t>(column));
  Change(subItems[static_cast<std::size_t>(column) - 1], text);
}

void ListView::Select(int index) {
  if (index != -1) Item(index);
  Change(selected_, index);
}

void ListView::EnsureVisible(int index) {
  Item(index);
  mustSee_ = index;
  Touch();
}

bool ListView::StartLabelEdit() {
  if (selected_ == -1 || IsEditing() || !form().IsShown()) return false;
  bool cancel = false;
  if (const auto handler = OnBeforeLabelEdit) handler(cancel);
  if (cancel || selected_ == -1 || !form().IsShown()) return false;
  Change(editing_, selected_);
  return true;
}

void ListView::DropLabelEdit() {
  Change(editing_, -1);
}

void ListView::EndEdit(const std::optional<std::string>& text) {
  ending_ = std::exchange(editing_, -1);
  Touch();
  bool cancel = false;
  if (const auto handler = OnAfterLabelEdit) handler(cancel, text);
  const int index = std::exchange(ending_, -1);
  if (text && !cancel && index != -1) SetText(index, *text);
}

void ListView::UserSelect(int index) {
  if (!Has(index)) Refuse("has no item " + std::to_string(index));
  BeginUserAction();
  Select(index);
  if (const auto handler = OnItemClick) handler(index);
}

void ListView::UserDoubleClick(int index) {
  if (!Has(index)) Refuse("has no item " + std::to_string(index));
  BeginUserAction();
  Select(index);
  Raise(OnDoubleClick);
}

void ListView::UserPressKey(Key key) {
  BeginUserAction();
  if (const auto handler = OnKeyDown) handler(key);
}

void ListView::UserStartLabelEdit() {
  if (!labelEdit_) Refuse("has items that cannot be edited");
  if (selected_ == -1) Refuse("has no item selected");
  BeginUserAction();
  StartLabelEdit();
}

void ListView::UserEndLabelEdit(std::string_view text) {
  if (!IsEditing()) Refuse("has no item that is being edited");
  EndEdit(std::string(text));
}

void ListView::UserAbandonLabelEdit() {
  if (!IsEditing()) Refuse("has no item that is being edited");
  EndEdit(std::nullopt);
}

}  // namespace tolvane::host
