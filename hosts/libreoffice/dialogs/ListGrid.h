#pragma once

#include <com/sun/star/awt/grid/XMutableGridDataModel.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/libreoffice/dialogs/ControlView.h"
#include "hosts/libreoffice/dialogs/LabelEditor.h"
#include "src/host/form/ListView.h"

namespace tolvane::libreoffice {

// A list in columns as a grid of the office. The grid has no editing in place: a line to type into is laid over the
// label.
class ListGrid final : public ControlView {
 public:
  ListGrid(FormDialog& dialog, host::ListView& list) : ControlView(dialog, list), list_(list) {}
  Need NeedIn(const host::Layout& cell) override;
  void Settle() override;
  void CatchUp(bool somethingFollows) override;
  void SelectionChanged() override;
  void KeyPressed(const css::awt::KeyEvent& event) override;
  void MousePressed(const css::awt::MouseEvent& event) override;
  void End() noexcept override;

 protected:
  const char* Service() const override { return "grid.UnoControlGrid"; }
  void Furnish() override;
  void Listen() override;
  void Show() override;

 private:
  using Row = std::vector<std::string>;
  void ShowColumns();
  void ShowRows();
  void ShowSelection();
  void ShowEditor();
  Row RowOf(int index) const;
  int NativeSelection() const;                 // -1: none
  std::optional<Box> LabelBox(int row) const;  // none: out of sight

  host::ListView& list_;
  Reference<css::awt::grid::XMutableGridDataModel> data_;
  std::vector<host::ListView::Column> columns_;  // as they are shown
  std::vector<Row> rows_;                        // the same
  int seen_ = -1;                                // what was brought into sight last
  bool clickTold_ = false;                       // the click that goes on has selected something
  std::shared_ptr<LabelEditor> editor_;
  std::optional<LabelEditor::End> end_;  // how the edit has ended
};

}  // namespace tolvane::libreoffice
