#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "engine/formula/Parser.h"
#include "src/host/Errors.h"

namespace tolvane::embedded {

// What the spreadsheet itself refuses.
[[noreturn]] inline void Refuse(const std::string& text) {
  throw host::HostError(host::ErrorNumber::ApplicationDefined, text);
}

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
