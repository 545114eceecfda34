#pragma once

#include "hosts/libreoffice/CalcWorkbook.h"

namespace tolvane::libreoffice {

// While this lives Calc keeps no record of changes, which would cost more than the changes: for every row deleted a
// copy of all formulas. What the user could undo before is forgotten, as Excel forgets it when a macro writes.
class WithoutUndo {
 public:
  explicit WithoutUndo(const CalcWorkbook& book);
  ~WithoutUndo();
  WithoutUndo(const WithoutUndo&) = delete;
  WithoutUndo& operator=(const WithoutUndo&) = delete;

 private:
  Reference<css::frame::XModel> model_;
  bool wasOn_ = true;
};

}  // namespace tolvane::libreoffice
