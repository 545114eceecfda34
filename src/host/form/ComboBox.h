#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/form/Colour.h"
#include "src/host/form/Control.h"

namespace tolvane::host {

// A list that opens under one line: to pick from only, or to pick from or type.
class ComboBox : public Control {
 public:
  enum class Style { List, Editable };
  ComboBox(Form& form, std::string name, Style style = Style::List) : Control(form, std::move(name)), style_(style) {}

  Style ListStyle() const { return style_; }

  // --- the list; positions from 0, std::out_of_range outside of it --------------------------------------------------
  int ListCount() const { return static_cast<int>(items_.size()); }
  const std::string& List(int index) const { return At(index).text; }
  void SetList(int index, std::string_view text);
  // A number that the logic keeps with the item.
  int ItemData(int index) const { return At(index).data; }
  void SetItemData(int index, int data) { At(index).data = data; }
  void AddItem(std::string_view text, int data = 0) { InsertItem(ListCount(), text, data); }
  void InsertItem(int index, std::string_view text, int data = 0);
  // The picked item stays picked when another one goes; when it goes itself, none is and the text is empty.
  void RemoveItem(int index);
  void Clear();

  // --- what is picked -----------------------------------------------------------------------------------------------
  int ListIndex() const { return listIndex_; }  // -1: none
  void SetListIndex(int index);                 // raises nothing; the text becomes the item's, or empty
  // Of a list: the picked item's. Of an editable one: what stands in its line.
  const std::string& Text() const { return text_; }
  // Editable only (std::logic_error): no item is picked afterwards.
  void SetText(std::string_view text);

  Colour BackColour() const { return backColour_; }
  void SetBackColour(Colour colour) { Change(backColour_, colour); }

  std::function<void()> OnClick;   // an item was picked, be it the same one again
  std::function<void()> OnChange;  // a text was typed
  void UserPick(int index);
  void UserType(std::string_view text);

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  struct Item {
    std::string text;
    int data = 0;
  };
  bool Has(int index) const { return index >= 0 && index < ListCount(); }
  const Item& At(int index) const;
  Item& At(int index) { return const_cast<Item&>(std::as_const(*this).At(index)); }

  Style style_;
  std::vector<Item> items_;
  int listIndex_ = -1;
  std::string text_;
  Colour backColour_;
};

}  // namespace tolvane::host
