#pragma once

#include <memory>

#include "hosts/libreoffice/CalcWorkbook.h"

namespace tolvane::libreoffice {

// Hears what the user does in a book and passes it on to the host: cells changed, sheets and cells selected, clicks,
// closing. What the host itself does meanwhile is not the user's doing and passes unheard.
class BookListener {
 public:
  explicit BookListener(const std::shared_ptr<CalcWorkbook>& book);
  ~BookListener();
  BookListener(const BookListener&) = delete;
  BookListener& operator=(const BookListener&) = delete;

 private:
  class Ears;
  Reference<css::uno::XInterface> kept_;  // of the ears: Calc holds references to them, too
  Ears* ears_;
};

}  // namespace tolvane::libreoffice
