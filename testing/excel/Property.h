#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

// Between the values of the port and those of COM.
template <class Value>
Variant VariantOf(const Value& value) {
  if constexpr (std::is_enum_v<Value>) {
    return Variant(static_cast<int>(value));
  } else {
    return Variant(value);
  }
}
template <class Value>
Variant VariantOf(const std::optional<Value>& value) {
  return value ? VariantOf(*value) : Variant::Null();
}

template <class Value>
auto ValueOf(const Variant& value) {
  if constexpr (std::is_same_v<Value, bool>) {
    return value.AsBool();
  } else if constexpr (std::is_same_v<Value, double>) {
    return value.AsDouble();
  } else if constexpr (std::is_same_v<Value, std::string_view>) {
    return value.AsText();
  } else {
    return static_cast<Value>(value.AsInt());
  }
}

template <class Setter>
struct SetterOf;
template <class Class, class Argument>
struct SetterOf<void (Class::*)(Argument) const> {
  using Value = std::remove_cvref_t<Argument>;
};

// A member of an object that a member of its handle stands behind: read, read and set, called.
template <auto Get, class Self>
Variant Reads(Self& self, const Call&) {
  return VariantOf((self.handle.*Get)());
}
template <auto Get, auto Set, class Self>
Variant Property(Self& self, const Call& call) {
  if (!call.isPut()) return VariantOf((self.handle.*Get)());
  (self.handle.*Set)(ValueOf<typename SetterOf<decltype(Set)>::Value>(call.value()));
  return {};
}
template <auto Method, class Self>
Variant Calls(Self& self, const Call&) {
  (self.handle.*Method)();
  return {};
}

}  // namespace tolvane::testing::excel
