#include "src/core/AddIn.h"

#include <stdexcept>

namespace tolvane::accounts {

namespace {

// The only variable under src/ that outlives a call. The add-in and its host have one thread.
AddIn* current = nullptr;

}  // namespace

AddIn& AddIn::Current() {
  if (current == nullptr) throw std::logic_error("no add-in is at work here");
  return *current;
}

AddInScope::AddInScope(AddIn& addIn) : outer_(current) {
  current = &addIn;
}

AddInScope::~AddInScope() {
  current = outer_;
}

}  // namespace tolvane::accounts
