#pragma once

#include <optional>
#include <string>

#include "hosts/excel/Variant.h"

namespace tolvane::excel {

// A look that the cells of a range share; the program gives Null where they differ.
inline std::optional<bool> OptionalBool(const Variant& value) {
  return value.IsNull() ? std::nullopt : std::optional(value.AsBool());
}
inline std::optional<double> OptionalDouble(const Variant& value) {
  return value.IsNull() ? std::nullopt : std::optional(value.AsDouble());
}
inline std::optional<std::string> OptionalText(const Variant& value) {
  return value.IsNull() ? std::nullopt : std::optional(value.AsText());
}
// A number or one of the program's constants.
template <class Number>
std::optional<Number> OptionalInt(const Variant& value) {
  return value.IsNull() ? std::nullopt : std::optional(static_cast<Number>(value.AsInt()));
}

// Constants are passed as their numbers.
template <class Constant>
Variant ConstantOf(Constant constant) {
  return Variant(static_cast<int>(constant));
}

}  // namespace tolvane::excel
