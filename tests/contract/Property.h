#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace tolvane::contract {

// Tries a property on generated examples, always the same ones; a failure tells the smallest counterexample found. How
// many: what makes sheets is slow on a host in another process.
::testing::AssertionResult Holds(const std::string& description, int examples, const std::function<void()>& property);

}  // namespace tolvane::contract
