#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "src/host/form/Control.h"

namespace tolvane::host {

struct ListItem {
  std::string key;  // empty, or unlike any other key of the list
  std::string text;
  std::vector<std::string> subItems;  // for the columns behind the first
  friend bool operator==(const ListItem&, const ListItem&) = default;
};

// A list of items in columns, one of which may be selected and its text edited in place.
class ListView final : public Control {
 public:
  struct Column {
    std::string caption;
    int width = 0;  // in characters; 0: what is left
  };

  ListView(Form& form, std::string name) : Control(form, std::move(name)) {}

  const std::vector<Column>& Columns() const { return columns_; }
  void SetColumns(std::vector<Column> columns);

  // --- items; positions from 0, std::out_of_range outside of the list -----------------------------------------------
  int Count() const { return static_cast<int>(items_.size()); }
  const ListItem& Item(int index) const;
  int IndexOf(std::string_view key) const;  // -1: none
  // At a position, or at the end. std::invalid_argument for a key that is there already.
  void Add(ListItem item, std::optional<int> index = std::nullopt);
  // The selected item stays selected when another one goes. Ends an edit of the item that goes, without an event.
  void Remove(int index);
  void Clear();
  void SetText(int index, std::string_view text);
  void SetSubItem(int index, int column, std::string_view text);  // `column` from 1: the one behind the first
  int SelectedIndex() const { return selected_; }                 // -1: none
  void Select(int index);
  void EnsureVisible(int index);
  // What was last asked to be in sight; a renderer takes it up when the list has changed. -1: nothing.
  int MustSee() const { return mustSee_; }

  // --- editing ------------------------------------------------------------------------------------------------------
  bool LabelEdit() const { return labelEdit_; }  // may the user start an edit by himself?
  void SetLabelEdit(bool may) { Change(labelEdit_, may); }
  // Opens the selected item for editing, as if the user had; false when there is none, the form is
  // not up, or OnBeforeLabelEdit refuses.
  bool StartLabelEdit();
  void DropLabelEdit();  // gives the edit up without telling anyone
  bool IsEditing() const { return editing_ != -1; }
  int EditedIndex() const { return editing_; }

  // --- events -------------------------------------------------------------------------------------------------------
  std::function<void(int index)> OnItemClick;
  std::function<void()> OnDoubleClick;
  std::function<void(Key)> OnKeyDown;
  std::function<void(bool& cancel)> OnBeforeLabelEdit;
  // The edit is over; `text` is what was typed, or nothing when the user gave it up. The item takes on the text after
  // the handler unless that cancels it.
  std::function<void(bool& cancel, const std::optional<std::string>& text)> OnAfterLabelEdit;

  // --- what the user does -------------------------------------------------------------------------------------------
  // A renderer reports the end of an edit before anything else that the user did: until then all else is refused.
  void UserSelect(int index);
  void UserDoubleClick(int index);  // selects as well
  void UserPressKey(Key key);
  void UserStartLabelEdit();  // of the selected item
  void UserEndLabelEdit(std::string_view text);
  void UserAbandonLabelEdit();

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  bool Has(int index) const { return index >= 0 && index < Count(); }
  ListItem& At(int index) { return const_cast<ListItem&>(Item(index)); }
  void EndEdit(const std::optional<std::string>& text);

  std::vector<Column> columns_;
  std::vector<ListItem> items_;
  std::unordered_set<std::string> keys_;
  int selected_ = -1;
  int mustSee_ = -1;
  int editing_ = -1;
  int ending_ = -1;  // the item whose edit is over, while the handler is told
  bool labelEdit_ = true;
};

}  // namespace tolvane::host
