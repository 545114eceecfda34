#pragma once

#include <memory>
#include <utility>

#include "hosts/embedded/EmbeddedWorkbook.h"
#include "src/host/Window.h"

namespace tolvane::embedded {

// The one window that a workbook has. Nothing is drawn, so its size is a fixed number of cells.
class EmbeddedWindow final : public host::WindowBody {
 public:
  static constexpr int kRows = 40;
  static constexpr int kColumns = 15;

  explicit EmbeddedWindow(std::shared_ptr<EmbeddedWorkbook> book) : book_(std::move(book)) {}

  bool IsAlive() const noexcept override { return book_->IsAlive(); }
  host::Gate& gate() const noexcept override { return book_->gate(); }
  host::Range ActiveCell() const override;
  host::Range VisibleRange() const override;
  int ScrollRow() const override;
  void SetScrollRow(int row) override;
  int ScrollColumn() const override;
  void SetScrollColumn(int column) override;
  int Zoom() const override;
  void SetZoom(int percent) override;
  int SplitRow() const override;
  void SetSplitRow(int rows) override;
  int SplitColumn() const override;
  void SetSplitColumn(int columns) override;
  bool FreezePanes() const override;
  void SetFreezePanes(bool on) override;
  bool DisplayGridlines() const override;
  void SetDisplayGridlines(bool on) override;

 private:
  std::shared_ptr<EmbeddedWorkbook> book_;
};

}  // namespace tolvane::embedded
