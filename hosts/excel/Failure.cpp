#include "hosts/excel/Failure.h"

#include <cstdint>
#include <optional>
#include <string>

#include "src/host/Errors.h"

namespace tolvane::excel {

using host::ErrorNumber;
using host::HostError;

namespace {

constexpr std::uint32_t kMacroFacility = 0x800A0000;

// The errors that the port has by these numbers.
constexpr ErrorNumber kNumbers[] = {
    ErrorNumber::InvalidCall,      ErrorNumber::OutOfMemory,        ErrorNumber::SubscriptOutOfRange,
    ErrorNumber::TypeMismatch,     ErrorNumber::UserInterrupt,      ErrorNumber::FileNotFound,
    ErrorNumber::PermissionDenied, ErrorNumber::PathNotFound,       ErrorNumber::ObjectNotSet,
    ErrorNumber::ObjectRequired,   ErrorNumber::ApplicationDefined,
};

ErrorNumber NumberOf(HRESULT code) {
  const auto bits = static_cast<std::uint32_t>(code);
  if ((bits & 0xFFFF0000) == kMacroFacility) {
    for (const ErrorNumber number : kNumbers) {
      if (static_cast<std::uint32_t>(number) == (bits & 0xFFFF)) return number;
    }
    return ErrorNumber::ApplicationDefined;
  }
  switch (code) {
    case DISP_E_TYPEMISMATCH:
      return ErrorNumber::TypeMismatch;
    case DISP_E_BADINDEX:
      return ErrorNumber::SubscriptOutOfRange;
    case E_OUTOFMEMORY:
      return ErrorNumber::OutOfMemory;
    case E_INVALIDARG:
      return ErrorNumber::InvalidCall;
    case RPC_E_DISCONNECTED:
    case CO_E_OBJNOTCONNECTED:
      return ErrorNumber::ObjectRequired;
    default:
      return ErrorNumber::ApplicationDefined;
  }
}

std::string TakeText(BSTR& text) {
  if (text == nullptr) return {};
  std::string taken = ToUtf8({text, SysStringLen(text)});
  SysFreeString(text);
  text = nullptr;
  return taken;
}

std::string Hexadecimal(HRESULT code) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[(static_cast<std::uint32_t>(code) >> shift) & 0xF];
  return text;
}

}  // namespace

void ThrowFailure(HRESULT result, EXCEPINFO& exception, std::string_view member) {
  HRESULT code = result;
  std::string text;
  if (result == DISP_E_EXCEPTION) {
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    TakeText(exception.bstrSource);
    TakeText(exception.bstrHelpFile);
    text = TakeText(exception.bstrDescription);
    // A program that fills in no code gives a number of its own instead.
    code = exception.scode != 0 ? exception.scode : static_cast<HRESULT>(kMacroFacility | exception.wCode);
  }
  const ErrorNumber number = NumberOf(code);
  if (number == ErrorNumber::ObjectRequired) throw HostError(number, host::kObjectRequiredText);
  if (text.empty()) text = "Excel refused " + std::string(member) + " (" + Hexadecimal(code) + ").";
  throw HostError(number, text);
}

void ThrowNotYet(std::string_view member) {
  throw HostError(ErrorNumber::ApplicationDefined,
                  std::string(member) + " is not written for Excel yet: see hosts/excel/README.md.");
}

}  // namespace tolvane::excel
