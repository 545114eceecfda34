#pragma once

#include <optional>

#include "engine/formula/DateSerial.h"
#include "engine/formula/Evaluator.h"

namespace tolvane::engine {

// Dates that functions take and give, in the system of the workbook; within, all count from 1900.
inline double SystemStart(const Evaluator& evaluator) {
  return evaluator.book().date1904 ? kStartOf1904 : 0;
}

inline double CheckedSerial(const Evaluator& evaluator, double number) {
  const double serial = number + SystemStart(evaluator);
  if (number < 0 || serial >= kLastDateSerial + 1) throw FunctionError{ErrorCode::Num};
  return serial;
}

inline double SerialAt(FunctionCall& call, std::size_t i) {
  return CheckedSerial(call.evaluator, call.Number(i));
}

inline Operand DateResult(FunctionCall& call, std::optional<double> serial) {
  const double start = SystemStart(call.evaluator);
  return serial && *serial >= start ? Operand(*serial - start) : Operand(ErrorCode::Num);
}

}  // namespace tolvane::engine
