#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/shell/ControlHolder.h"
#include "src/host/CommandBars.h"

namespace tolvane::shell {

// A toolbar, a menu bar or a context menu. Where it stands and how large it is are told as they were set: nothing is
// laid out.
class Bar final : public host::CommandBarBody, public ControlHolder, public std::enable_shared_from_this<Bar> {
  struct Key {};

 public:
  static std::shared_ptr<Bar> MakeOwn(std::shared_ptr<CommandBarWorld> world, const host::NewCommandBar& bar);
  static std::shared_ptr<Bar> MakeBuiltIn(std::shared_ptr<CommandBarWorld> world, const BuiltInBar& bar);
  Bar(Key, std::shared_ptr<CommandBarWorld> world, std::string name, host::BarPosition position, bool builtIn,
      bool temporary);

  const std::string& FoldedName() const noexcept { return foldedName_; }
  bool IsTemporary() const noexcept { return temporary_; }
  void Kill() noexcept;

  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override;

  void RequireWithinReach() const override;
  const ControlHolder* HeldBy() const noexcept override { return nullptr; }

  std::vector<host::CommandBarControl> ControlsAll() const override { return AllHandles(); }
  host::CommandBarControl ControlsItem(int index) const override { return HandleAt(index); }
  host::CommandBarControl ControlsItem(std::string_view caption) const override { return HandleCalled(caption); }
  host::CommandBarControl ControlsAdd(const host::NewControl& control) override { return AddControl(control); }

  std::string Name() const override { return name_; }
  bool BuiltIn() const override { return builtIn_; }
  bool Visible() const override { return visible_; }
  void SetVisible(bool visible) override;  // a context menu is shown by ShowPopup only: ApplicationDefined
  bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  host::BarPosition Position() const override { return position_; }
  void SetPosition(host::BarPosition position) override;  // to or from Popup: ApplicationDefined
  int Protection() const override { return protection_; }
  void SetProtection(int bits) override { protection_ = bits; }
  int RowIndex() const override { return rowIndex_; }
  void SetRowIndex(int row) override { rowIndex_ = row; }
  int Left() const override { return left_; }
  void SetLeft(int left) override { left_ = left; }
  int Top() const override { return top_; }
  void SetTop(int top) override { top_ = top; }
  int Width() const override { return width_; }
  void SetWidth(int width) override;  // of a docked bar: without effect
  int Height() const override { return height_; }
  void SetHeight(int height) override { height_ = height; }
  void Delete() override;
  void ShowPopup() override;

 private:
  const std::string name_;
  const std::string foldedName_;
  const bool builtIn_;
  const bool temporary_;
  bool alive_ = true;
  bool visible_ = false;
  bool enabled_ = true;
  host::BarPosition position_;
  int protection_ = 0;
  int rowIndex_ = 1;
  int left_ = 0;
  int top_ = 0;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace tolvane::shell
