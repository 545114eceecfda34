#pragma once

#include <memory>

#include "tests/contract/HostUnderTest.h"

namespace tolvane::contract {

// The Excel host, calling a program that looks like Excel through COM: the embedded host behind Excel's object model.
std::unique_ptr<HostUnderTest> MakeExcelUnderTest();

}  // namespace tolvane::contract
