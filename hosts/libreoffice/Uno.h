#pragma once

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <initializer_list>
#include <rtl/ustring.hxx>
#include <string>
#include <string_view>
#include <utility>

#include "hosts/libreoffice/Geometry.h"
#include "hosts/shell/Refusal.h"

namespace com::sun::star::table {
struct CellRangeAddress;
}

namespace tolvane::libreoffice {

namespace css = com::sun::star;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;
using shell::Refuse;

std::string ToUtf8(const OUString& text);
OUString ToUno(std::string_view text);
// "file:///..." of a path of the system and back.
OUString ToUrl(std::string_view path);
std::string ToPath(const OUString& url);

// What Calc refuses or fails at becomes the port's ApplicationDefined, with Calc's own words if it has any.
[[noreturn]] void RefuseAs(const css::uno::Exception& failure);
template <class Work>
decltype(auto) AtEdge(Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const css::uno::Exception& failure) {
    RefuseAs(failure);
  }
}

template <class Interface>
Reference<Interface> As(const Reference<css::uno::XInterface>& object) {
  Reference<Interface> result(object, UNO_QUERY);
  if (!result.is()) Refuse("Calc does not offer what is needed here.");
  return result;
}

Any GetAny(const Reference<css::uno::XInterface>& object, const char* property);
void SetAny(const Reference<css::uno::XInterface>& object, const char* property, const Any& value);
void SetDefault(const Reference<css::uno::XInterface>& object, const char* property);
// Whether cells may differ in a property; whether it was set on the object at all.
bool MayDiffer(const Reference<css::uno::XInterface>& object, const char* property);
bool IsDirect(const Reference<css::uno::XInterface>& object, const char* property);

// `fallback` where the property is void.
template <class T>
T Get(const Reference<css::uno::XInterface>& object, const char* property, T fallback = T()) {
  GetAny(object, property) >>= fallback;
  return fallback;
}
template <class T>
void Set(const Reference<css::uno::XInterface>& object, const char* property, const T& value) {
  SetAny(object, property, Any(value));
}

using Arguments = std::initializer_list<std::pair<const char*, Any>>;
Sequence<css::beans::PropertyValue> ToSequence(Arguments arguments);

css::table::CellRangeAddress ToAddress(const Rect& rect, int sheet);
Rect ToRect(const css::table::CellRangeAddress& address);

}  // namespace tolvane::libreoffice
