#pragma once

#include <memory>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include "src/core/ErrorInFlight.h"
#include "src/core/MGlobals.h"
#include "src/core/Seams.h"

namespace tolvane::accounts {

// One add-in at work: everything that it remembers from call to call. Modules keep no variables of their own; they
// reach theirs through the current add-in, so that a test makes a fresh one and nothing is left behind.
class AddIn {
 public:
  AddIn() = default;
  AddIn(const AddIn&) = delete;
  AddIn& operator=(const AddIn&) = delete;

  MGlobals globals;
  ErrorInFlight error;
  SavedModes savedModes;
  Seams seams;

  // The state of a module further up, made when it is first asked for: StateOf<Journal>().
  template <class State>
  State& StateOf() {
    std::shared_ptr<void>& slot = states_[std::type_index(typeid(State))];
    if (slot == nullptr) slot = std::make_shared<State>();
    return *static_cast<State*>(slot.get());
  }

  // The one whose code runs; std::logic_error outside of every scope.
  static AddIn& Current();

 private:
  std::unordered_map<std::type_index, std::shared_ptr<void>> states_;
};

// Makes an add-in the current one for as long as it lives. Scopes nest.
class AddInScope {
 public:
  explicit AddInScope(AddIn& addIn);
  ~AddInScope();
  AddInScope(const AddInScope&) = delete;
  AddInScope& operator=(const AddInScope&) = delete;

 private:
  AddIn* outer_;
};

}  // namespace tolvane::accounts
