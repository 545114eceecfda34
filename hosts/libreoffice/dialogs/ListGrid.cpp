#include "hosts/libreoffice/dialogs/ListGrid.h"

#include <algorithm>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>
#include <com/sun/star/awt/grid/DefaultGridColumnModel.hpp>
#include <com/sun/star/awt/grid/DefaultGridDataModel.hpp>
#include <com/sun/star/awt/grid/XGridColumn.hpp>
#include <com/sun/star/awt/grid/XGridColumnModel.hpp>
#include <com/sun/star/awt/grid/XGridControl.hpp>
#include <com/sun/star/awt/grid/XGridRowSelection.hpp>
#include <utility>

#include "hosts/libreoffice/dialogs/ControlEars.h"
#include "hosts/libreoffice/dialogs/FormDialog.h"
#include "hosts/libreoffice/dialogs/Notation.h"

namespace tolvane::libreoffice {

namespace {

namespace grid = css::awt::grid;

// In characters and lines, where the form does not say.
constexpr int kWidth = 40, kOpenColumn = 16, kLines = 8;
constexpr Extent kFrame{24, 4};
// In the dialog's own units, of which a character is four wide and eight high.
constexpr int kCharacter = 4, kCellPadding = 8, kRowHeight = 12, kHeaderHeight = 13;
constexpr int kUnitsOfLine = 8;

Sequence<Any> ToCells(const std::vector<std::string>& row) {
  Sequence<Any> cells(static_cast<sal_Int32>(row.size()));
  std::transform(row.begin(), row.end(), cells.getArray(), [](const std::string& text) { return Any(ToUno(text)); });
  return cells;
}

}  // namespace

void ListGrid::Furnish() {
  data_.set(grid::DefaultGridDataModel::create(dialog_.context()), UNO_QUERY_THROW);
  model()->setPropertyValue("ColumnModel", Any(grid::DefaultGridColumnModel::create(dialog_.context())));
  model()->setPropertyValue("GridDataModel", Any(Reference<grid::XGridDataModel>(data_, UNO_QUERY_THROW)));
  model()->setPropertyValue("ShowRowHeader", Any(false));
  model()->setPropertyValue("VScroll", Any(true));
  model()->setPropertyValue("RowHeight", Any(sal_Int32{kRowHeight}));
  model()->setPropertyValue("ColumnHeaderHeight", Any(sal_Int32{kHeaderHeight}));
  ShowColumns();
}

void ListGrid::Settle() {
  // What is selected is as easy to read while the focus is elsewhere.
  const auto style = As<css::awt::XStyleSettingsSupplier>(native()->getPeer())->getStyleSettings();
  model()->setPropertyValue("InactiveSelectionBackgroundColor", Any(style->getHighlightColor()));
  model()->setPropertyValue("InactiveSelectionTextColor", Any(style->getHighlightTextColor()));
  const auto size = window()->getPosSize();
  window()->setPosSize(0, 0, size.Width - 1, size.Height, css::awt::PosSize::SIZE);
  window()->setPosSize(0, 0, size.Width, size.Height, css::awt::PosSize::SIZE);
  const int seen = list_.MustSee() != -1 ? list_.MustSee() : list_.SelectedIndex();
  if (seen != -1) Native<grid::XGridControl>()->goToCell(0, seen);
}

void ListGrid::Listen() {
  Native<grid::XGridRowSelection>()->addSelectionListener(ears().get());
  window()->addMouseListener(ears().get());
}

void ListGrid::End() noexcept {
  ControlView::End();
  editor_.reset();
}

Need ListGrid::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  int width = 0;
  for (const auto& column : list_.Columns()) {
    width += (column.width == 0 ? kOpenColumn : column.width) * measures.character + kCellPadding * 2;
  }
  if (list_.Columns().empty()) width = kWidth * measures.character;
  const int lines = cell.lines > 0 ? cell.lines : kLines;
  Extent least = Sized(cell, {width + kFrame.width, 0}, kFrame);
  least.height = (lines * kRowHeight + kHeaderHeight) * measures.line / kUnitsOfLine + kFrame.height;
  return {.least = least, .fillsWidth = true, .fillsHeight = true};
}

// --- what is shown
// --------------------------------------------------------------------------------------------------------------

void ListGrid::Show() {
  ShowColumns();
  ShowRows();
  ShowSelection();
  ShowEditor();
}

void ListGrid::ShowColumns() {
  const auto isSame = [](const host::ListView::Column& a, const host::ListView::Column& b) {
    return a.caption == b.caption && a.width == b.width;
  };
  std::vector<host::ListView::Column> columns = list_.Columns();
  if (columns.empty()) columns.emplace_back();
  if (std::equal(columns.begin(), columns.end(), columns_.begin(), columns_.end(), isSame)) return;
  Reference<grid::XGridColumnModel> shown;
  model()->getPropertyValue("ColumnModel") >>= shown;
  while (shown->getColumnCount() > 0) shown->removeColumn(shown->getColumnCount() - 1);
  bool hasCaptions = false;
  for (const auto& column : columns) {
    const auto added = shown->createColumn();
    added->setTitle(ToUno(column.caption));
    const int width = column.width == 0 ? kOpenColumn : column.width;
    added->setColumnWidth(width * kCharacter + kCellPadding);
    added->setFlexibility(column.width == 0 ? 1 : 0);
    shown->addColumn(added);
    hasCaptions = hasCaptions || !column.caption.empty();
  }
  SetOther<bool>("ShowColumnHeader", hasCaptions);
  columns_ = std::move(columns);
  rows_.clear();
  data_->removeAllRows();
}

ListGrid::Row ListGrid::RowOf(int index) const {
  const host::ListItem& item = list_.Item(index);
  Row row(columns_.size());
  row[0] = item.text;
  for (std::size_t i = 1; i < row.size() && i <= item.subItems.size(); ++i) row[i] = item.subItems[i - 1];
  return row;
}

// Only what has changed between an unchanged start and an unchanged end is written: the grid keeps its place.
void ListGrid::ShowRows() {
  std::vector<Row> rows;
  for (int i = 0; i < list_.Count(); ++i) rows.push_back(RowOf(i));
  const auto common = std::min(rows.size(), rows_.size());
  std::size_t first = 0;
  while (first < common && rows[first] == rows_[first]) ++first;
  std::size_t same = 0;
  while (same < common - first && rows[rows.size() - 1 - same] == rows_[rows_.size() - 1 - same]) ++same;
  const std::size_t end = rows.size() - same;
  std::size_t oldEnd = rows_.size() - same;
  std::size_t next = first;
  Sequence<sal_Int32> all(static_cast<sal_Int32>(columns_.size()));
  for (sal_Int32 i = 0; i < all.getLength(); ++i) all.getArray()[i] = i;
  for (; next < end && next < oldEnd; ++next) {
    data_->updateRowData(all, static_cast<sal_Int32>(next), ToCells(rows[next]));
  }
  if (next == 0 && same == 0 && oldEnd > 0) {
    data_->removeAllRows();
  } else {
    while (oldEnd > next) data_->removeRow(static_cast<sal_Int32>(--oldEnd));
  }
  if (next < end) {
    Sequence<Sequence<Any>> added(static_cast<sal_Int32>(end - next));
    std::transform(rows.begin() + static_cast<std::ptrdiff_t>(next), rows.begin() + static_cast<std::ptrdiff_t>(end),
                   added.getArray(), ToCells);
    data_->insertRows(static_cast<sal_Int32>(next), Sequence<Any>(added.getLength()), added);
  }
  rows_ = std::move(rows);
}

int ListGrid::NativeSelection() const {
  const auto selected = Native<grid::XGridRowSelection>()->getSelectedRows();
  return selected.hasElements() ? selected[0] : -1;
}

void ListGrid::ShowSelection() {
  const auto control = Native<grid::XGridControl>();
  const auto selection = Native<grid::XGridRowSelection>();
  const int selected = list_.SelectedIndex();
  if (NativeSelection() != selected) {
    selection->deselectAllRows();
    if (selected != -1) {
      control->goToCell(0, selected);
      selection->selectRow(selected);
    }
  }
  if (const int seen = std::exchange(seen_, list_.MustSee()); seen_ != -1 && seen_ != seen) {
    control->goToCell(0, seen_);
  }
}

// --- editing
// --------------------------------------------------------------------------------------------------------------------

// The office tells which row lies at a point, but not where a row lies.
std::optional<Box> ListGrid::LabelBox(int row) const {
  const auto control = Native<grid::XGridControl>();
  const auto size = window()->getPosSize();
  Box box;
  while (box.y < size.Height && control->getRowAtPoint(1, box.y) != row) ++box.y;
  if (box.y == size.Height) return std::nullopt;
  while (box.y + box.height < size.Height && control->getRowAtPoint(1, box.y + box.height) == row) ++box.height;
  while (box.width < size.Width && control->getColumnAtPoint(box.width, box.y) == 0) ++box.width;
  return box;
}

void ListGrid::ShowEditor() {
  if (!list_.IsEditing()) {
    if (editor_ == nullptr) return;
    // It may be that the editor itself has brought this about.
    dialog_.Afterwards([gone = std::exchange(editor_, nullptr)] {});
    dialog_.SetEditing(false);
    return;
  }
  if (editor_ != nullptr) return;
  const int row = list_.EditedIndex();
  Native<grid::XGridControl>()->goToCell(0, row);
  const auto box = LabelBox(row);
  if (!box) return;
  dialog_.SetEditing(true);
  end_.reset();
  editor_ = std::make_shared<LabelEditor>(dialog_.context(), native()->getPeer(), *box, list_.Item(row).text,
                                          [this](LabelEditor::End end) {
                                            end_ = end;
                                            if (end == LabelEditor::End::GivenUp) dialog_.SpendEscape();
                                            dialog_.ReportSoon(*this, nullptr);
                                          });
}

// Whatever else the user does ends an edit.
void ListGrid::CatchUp(bool somethingFollows) {
  if (editor_ == nullptr || !list_.IsEditing() || (!end_ && !somethingFollows)) return;
  if (end_ == LabelEditor::End::GivenUp) {
    list_.UserAbandonLabelEdit();
  } else {
    list_.UserEndLabelEdit(editor_->Text());
  }
}

// --- what the user does
// --------------------------------------------------------------------------------------------------------

void ListGrid::SelectionChanged() {
  if (dialog_.IsDrawing()) return;
  clickTold_ = true;
  const int row = NativeSelection();
  if (row == -1 || row == list_.SelectedIndex()) return;
  dialog_.ReportSoon(*this, [this, row] { list_.UserSelect(row); });
}

// A click on what is selected already changes nothing that the office would tell of.
void ListGrid::MousePressed(const css::awt::MouseEvent& event) {
  const bool told = std::exchange(clickTold_, false);
  if (editor_ != nullptr || event.Buttons != css::awt::MouseButton::LEFT) return;
  const int row = Native<grid::XGridControl>()->getRowAtPoint(event.X, event.Y);
  if (row < 0 || row >= list_.Count()) return;
  if (event.ClickCount == 2) {
    dialog_.ReportSoon(*this, [this, row] { list_.UserDoubleClick(row); });
  } else if (!told) {
    dialog_.ReportSoon(*this, [this, row] { list_.UserSelect(row); });
  }
}

void ListGrid::KeyPressed(const css::awt::KeyEvent& event) {
  clickTold_ = false;
  const auto key = ToKey(event);
  if (editor_ != nullptr || !key || dialog_.IsFormKey(*key)) return;
  dialog_.ReportSoon(*this, [this, key = *key] { list_.UserPressKey(key); });
  if (key != host::Key::F2) return;
  dialog_.ReportSoon(*this, [this] {
    if (list_.LabelEdit() && !list_.IsEditing() && list_.SelectedIndex() != -1) list_.UserStartLabelEdit();
  });
}

}  // namespace tolvane::libreoffice
