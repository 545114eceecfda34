#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Program.h"
#include "hosts/shell/UserActions.h"

namespace tolvane::embedded {

// The user of the embedded host: goes through the same doors as the program does, but may do less.
class EmbeddedUserActions final : public shell::UserActions {
 public:
  EmbeddedUserActions(std::shared_ptr<Program> program, std::shared_ptr<shell::CommandBars> commandBars,
                      std::function<std::shared_ptr<shell::Ribbon>()> ribbon)
      : UserActions({program, std::move(commandBars), std::move(ribbon)}), program_(*program) {}

  void ActivateSheet(const host::Worksheet& sheet) override;
  void Select(const host::Range& range) override;
  void Type(const host::Range& cell, std::string_view text, bool asText) override;
  void PressDelete(const host::Range& range) override;
  void DoubleClick(const host::Range& cell) override;
  void RightClick(const host::Range& cell) override;
  void PutTextOnClipboard(std::string_view text) override;

 private:
  Program& program_;
};

}  // namespace tolvane::embedded
