#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Com.h"
#include "hosts/excel/Variant.h"

namespace tolvane::excel {

// The numbers of the members of one class of objects, asked for once: all objects of a class share them.
class MemberIds {
 public:
  // Throws ApplicationDefined where the class has no such member.
  DISPID Find(IDispatch& object, std::string_view member);

 private:
  std::map<std::string, DISPID, std::less<>> ids_;
};

// An object of the program, called by the names of its members. Failures are HostErrors. Arguments stand in the order
// of the program's documentation; those at the end may be left out.
class Dispatch {
 public:
  Dispatch() = default;  // Nothing
  Dispatch(ComPtr<IDispatch> object, MemberIds& ids) : object_(std::move(object)), ids_(&ids) {}

  explicit operator bool() const noexcept { return static_cast<bool>(object_); }
  IDispatch* get() const noexcept { return object_.get(); }
  // Whether the class has a member of this name.
  bool Has(std::string_view member) const noexcept;

  // A property is read, or a method called: the program does not tell one from the other.
  template <class... Arguments>
  Variant Get(std::string_view member, Arguments&&... arguments) const {
    return Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, Packed(std::forward<Arguments>(arguments)...));
  }
  template <class... Arguments>
  void Call(std::string_view member, Arguments&&... arguments) const {
    Get(member, std::forward<Arguments>(arguments)...);
  }
  Variant CallWith(std::string_view member, std::vector<Variant> arguments) const {
    return Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(arguments));
  }
  template <class Value>
  void Put(std::string_view member, Value&& value) const {
    Invoke(member, DISPATCH_PROPERTYPUT, Packed(std::forward<Value>(value)));
  }
  // Every object of a collection, in its order.
  void ForEach(const std::function<void(ComPtr<IDispatch>)>& visit) const;

 private:
  template <class... Arguments>
  static std::vector<Variant> Packed(Arguments&&... arguments) {
    std::vector<Variant> packed;
    packed.reserve(sizeof...(arguments));
    (packed.push_back(Variant(std::forward<Arguments>(arguments))), ...);
    return packed;
  }
  Variant Invoke(std::string_view member, WORD flags, std::vector<Variant> arguments) const;
  Variant InvokeId(DISPID id, std::string_view member, WORD flags, std::vector<Variant> arguments) const;

  ComPtr<IDispatch> object_;
  MemberIds* ids_ = nullptr;
};

}  // namespace tolvane::excel
