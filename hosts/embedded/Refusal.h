#pragma once

#include <stdexcept>
#include <utility>

#include "engine/formula/Parser.h"
#include "hosts/shell/Refusal.h"

namespace tolvane::embedded {

using shell::Refuse;

// Runs a piece of work on the engine; its refusals become the port's.
template <class Work>
decltype(auto) Refusing(Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const std::invalid_argument& failure) {
    Refuse(failure.what());
  } catch (const engine::ParseError& failure) {
    Refuse(failure.what());
  }
}

}  // namespace tolvane::embedded
