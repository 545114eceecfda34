#pragma once

#include <string_view>

#include "hosts/excel/Com.h"

namespace tolvane::excel {

// Throws the HostError that a failed call of `member` is. Takes the texts of `exception` with it.
//
// The program tells its own failures by DISP_E_EXCEPTION with a code 0x800A0000 + number, where the number is that of
// the macro language; 0x800A03EC is 1004.
[[noreturn]] void ThrowFailure(HRESULT result, EXCEPINFO& exception, std::string_view member);

// Raised by members of the port that this host does not have yet.
[[noreturn]] void ThrowNotYet(std::string_view member);

}  // namespace tolvane::excel
