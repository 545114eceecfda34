#pragma once

#include <stdexcept>
#include <string>

namespace tolvane::host {

// Excel's and its macro language's fixed error numbers, as far as the port raises them. A host translates its own
// failures into one of these at its edge.
enum class ErrorNumber : int {
  InvalidCall = 5,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,  // no such workbook, sheet, control, index
  TypeMismatch = 13,
  UserInterrupt = 18,  // the cancel key, while EnableCancelKey is ErrorHandler
  FileNotFound = 53,
  PermissionDenied = 70,
  PathNotFound = 76,
  ObjectNotSet = 91,          // a member of Nothing
  ObjectRequired = 424,       // a member of a dead handle: its book was closed, its sheet or cells deleted
  ApplicationDefined = 1004,  // everything that the spreadsheet itself refuses
};

class HostError : public std::runtime_error {
 public:
  HostError(ErrorNumber number, const std::string& description) : std::runtime_error(description), number_(number) {}
  ErrorNumber number() const { return number_; }

 private:
  ErrorNumber number_;
};

// The descriptions that belong to the numbers, for those that need no more words.
inline constexpr const char* kObjectNotSetText = "Object variable or With block variable not set";
inline constexpr const char* kObjectRequiredText = "Object required";
inline constexpr const char* kSubscriptText = "Subscript out of range";
inline constexpr const char* kTypeMismatchText = "Type mismatch";
inline constexpr const char* kUserInterruptText = "User interrupt occurred";

}  // namespace tolvane::host
