#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tolvane::accounts {

// The reserved numbers of the failure protocol. Every other number is an unforeseen error of the spreadsheet program or
// of this one.
inline constexpr int kInterrupted = 18;    // the user broke off, or said No; silent
inline constexpr int kCallFailed = 9997;   // a routine that was called has reported already
inline constexpr int kUserMessage = 9998;  // the description is for the user

// An error raised by the add-in itself.
class AccountsError : public std::runtime_error {
 public:
  AccountsError(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
  int number() const { return number_; }

 private:
  int number_;
};

// The error that travels upwards: the first description survives until the entry point has shown it.
struct ErrorInFlight {
  std::string msErrorText;
  int mlErrorNumber = 0;  // 0: none
};

}  // namespace tolvane::accounts
