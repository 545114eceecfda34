#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/libreoffice/CalcProgram.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/shell/UserActions.h"

namespace tolvane::libreoffice {

// The user of Calc, for tests and recorded work: types and deletes through the commands of Calc itself.
class CalcUserActions final : public shell::UserActions {
 public:
  CalcUserActions(std::shared_ptr<CalcProgram> program, std::shared_ptr<shell::CommandBars> commandBars,
                  std::function<std::shared_ptr<shell::Ribbon>()> ribbon)
      : UserActions({program, commandBars, std::move(ribbon)}),
        program_(*program),
        commandBars_(std::move(commandBars)) {}

  void ActivateSheet(const host::Worksheet& sheet) override;
  void Select(const host::Range& range) override;
  void Type(const host::Range& cell, std::string_view text, bool asText) override;
  void PressDelete(const host::Range& range) override;
  void DoubleClick(const host::Range& cell) override;
  void RightClick(const host::Range& cell) override;
  void PutTextOnClipboard(std::string_view text) override;

 private:
  CalcProgram& program_;
  std::shared_ptr<shell::CommandBars> commandBars_;
};

}  // namespace tolvane::libreoffice
