#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Session.h"
#include "src/host/Window.h"

namespace tolvane::excel {

class ExcelWindow final : public host::WindowBody, public ObjectBody {
 public:
  ExcelWindow(std::shared_ptr<Session> session, Dispatch window)
      : ObjectBody(std::move(session), std::move(window), "Zoom") {}

  bool IsAlive() const noexcept override { return Answers(); }
  host::Gate& gate() const noexcept override { return session().gate(); }

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
};

}  // namespace tolvane::excel
