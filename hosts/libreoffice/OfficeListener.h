#pragma once

#include <memory>

#include "hosts/libreoffice/CalcProgram.h"

namespace tolvane::libreoffice {

// Hears what happens to the office's documents by another hand than ours: workbooks that the user opens or makes are
// adopted, the one that the user goes to becomes the active one, and what Calc cannot hold is put into the files that
// the user saves. Workbooks that are open already are adopted at once.
class OfficeListener {
 public:
  explicit OfficeListener(const std::shared_ptr<CalcProgram>& program);
  ~OfficeListener();
  OfficeListener(const OfficeListener&) = delete;
  OfficeListener& operator=(const OfficeListener&) = delete;

 private:
  class Ears;
  Reference<css::uno::XInterface> kept_;  // of the ears: the office holds references to them, too
  Ears* ears_;
};

}  // namespace tolvane::libreoffice
