#include "hosts/libreoffice/WithoutUndo.h"

#include <com/sun/star/document/XUndoManagerSupplier.hpp>

namespace tolvane::libreoffice {

WithoutUndo::WithoutUndo(const CalcWorkbook& book) : model_(book.model()) {
  wasOn_ = Get<bool>(model_, "IsUndoEnabled", true);
  if (!wasOn_) return;
  AtEdge([&] { As<css::document::XUndoManagerSupplier>(model_)->getUndoManager()->clear(); });
  Set(model_, "IsUndoEnabled", false);
}

WithoutUndo::~WithoutUndo() {
  if (!wasOn_) return;
  try {
    Set(model_, "IsUndoEnabled", true);
  } catch (const host::HostError&) {
    // The document is gone.
  }
}

}  // namespace tolvane::libreoffice
