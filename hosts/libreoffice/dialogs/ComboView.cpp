#include "hosts/libreoffice/dialogs/ComboView.h"

#include <algorithm>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XComboBox.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <utility>

#include "hosts/libreoffice/dialogs/ControlEars.h"
#include "hosts/libreoffice/dialogs/FormDialog.h"
#include "hosts/libreoffice/dialogs/Notation.h"

namespace tolvane::libreoffice {

namespace {

constexpr int kNarrowest = 12, kWidest = 40;  // in characters, where the form does not say
constexpr Extent kFrame{34, 11};
constexpr int kOpenLines = 12;

}  // namespace

void ComboView::Furnish() {
  model()->setPropertyValue("Dropdown", Any(true));
  model()->setPropertyValue("LineCount", Any(sal_Int16{kOpenLines}));
  if (isEditable_) model()->setPropertyValue("Autocomplete", Any(false));
}

void ComboView::Listen() {
  if (isEditable_) {
    Native<css::awt::XTextComponent>()->addTextListener(ears().get());
    Native<css::awt::XComboBox>()->addItemListener(ears().get());
  } else {
    Native<css::awt::XListBox>()->addItemListener(ears().get());
  }
}

void ComboView::ShowItems() {
  std::vector<std::string> items;
  for (int i = 0; i < box_.ListCount(); ++i) items.push_back(box_.List(i));
  if (items == items_) return;
  Sequence<OUString> list(static_cast<sal_Int32>(items.size()));
  std::transform(items.begin(), items.end(), list.getArray(), [](const std::string& item) { return ToUno(item); });
  model()->setPropertyValue("StringItemList", Any(list));
  items_ = std::move(items);
}

void ComboView::Show() {
  ShowItems();
  ShowBackColour(box_.BackColour(), host::Colour::Kind::Window);
  if (isEditable_) {
    const auto text = Native<css::awt::XTextComponent>();
    if (ToUtf8(text->getText()) != box_.Text()) text->setText(ToUno(box_.Text()));
    return;
  }
  const auto list = Native<css::awt::XListBox>();
  const int shown = list->getSelectedItemPos();
  if (shown == box_.ListIndex()) return;
  if (box_.ListIndex() == -1) {
    model()->setPropertyValue("SelectedItems", Any(Sequence<sal_Int16>()));
  } else {
    list->selectItemPos(static_cast<sal_Int16>(box_.ListIndex()), true);
  }
}

Need ComboView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  std::size_t longest = 0;
  for (const std::string& item : items_) longest = std::max(longest, item.size());
  const int width = std::clamp(static_cast<int>(longest), kNarrowest, kWidest) * measures.character + kFrame.width;
  return {.least = Sized(cell, {width, measures.lineControl}, kFrame), .fillsWidth = cell.width == 0};
}

void ComboView::ItemChanged(int index) {
  typed_.reset();
  dialog_.Report(*this, [this, index] { box_.UserPick(index); });
}

// Of a pick the office tells twice, of a new text first: only when nothing follows it was typed. Going through the
// closed list with the arrow keys is a pick, too, and told as a text only.
void ComboView::TextChanged() {
  if (dialog_.IsDrawing()) return;
  typed_ = ToUtf8(Native<css::awt::XTextComponent>()->getText());
  dialog_.ReportSoon(*this, nullptr);
}

void ComboView::CatchUp(bool) {
  const auto typed = std::exchange(typed_, std::nullopt);
  const bool byArrow = std::exchange(byArrow_, false);
  if (!typed) return;
  const auto item = std::find(items_.begin(), items_.end(), *typed);
  if (byArrow && item != items_.end()) {
    box_.UserPick(static_cast<int>(item - items_.begin()));
  } else {
    box_.UserType(*typed);
  }
}

void ComboView::KeyPressed(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  byArrow_ = typed_ && (event.KeyCode == key::UP || event.KeyCode == key::DOWN || event.KeyCode == key::PAGEUP ||
                        event.KeyCode == key::PAGEDOWN);
}

}  // namespace tolvane::libreoffice
