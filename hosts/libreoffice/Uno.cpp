#include "hosts/libreoffice/Uno.h"

#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <cppuhelper/exc_hlp.hxx>
#include <osl/file.hxx>

namespace tolvane::libreoffice {

std::string ToUtf8(const OUString& text) {
  const rtl::OString bytes = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
  return {bytes.getStr(), static_cast<std::size_t>(bytes.getLength())};
}

OUString ToUno(std::string_view text) {
  return OUString(text.data(), static_cast<sal_Int32>(text.size()), RTL_TEXTENCODING_UTF8);
}

OUString ToUrl(std::string_view path) {
  OUString url;
  if (osl::FileBase::getFileURLFromSystemPath(ToUno(path), url) != osl::FileBase::E_None) {
    Refuse("\"" + std::string(path) + "\" is no path of a file.");
  }
  return url;
}

std::string ToPath(const OUString& url) {
  OUString path;
  if (osl::FileBase::getSystemPathFromFileURL(url, path) != osl::FileBase::E_None) return {};
  return ToUtf8(path);
}

void RefuseAs(const css::uno::Exception& failure) {
  std::string words = ToUtf8(failure.Message);
  // Where in Calc's own sources it was thrown tells nobody anything.
  if (const std::size_t place = words.rfind("at ./"); place != std::string::npos) words.erase(place);
  while (words.ends_with(' ')) words.pop_back();
  if (words.empty()) words = ToUtf8(cppu::getCaughtException().getValueTypeName());
  Refuse("Calc refuses: " + words);
}

Any GetAny(const Reference<css::uno::XInterface>& object, const char* property) {
  return AtEdge([&] {
    return Reference<css::beans::XPropertySet>(object, UNO_QUERY_THROW)
        ->getPropertyValue(OUString::createFromAscii(property));
  });
}

void SetAny(const Reference<css::uno::XInterface>& object, const char* property, const Any& value) {
  AtEdge([&] {
    Reference<css::beans::XPropertySet>(object, UNO_QUERY_THROW)
        ->setPropertyValue(OUString::createFromAscii(property), value);
  });
}

void SetDefault(const Reference<css::uno::XInterface>& object, const char* property) {
  AtEdge([&] {
    Reference<css::beans::XPropertyState>(object, UNO_QUERY_THROW)
        ->setPropertyToDefault(OUString::createFromAscii(property));
  });
}

bool MayDiffer(const Reference<css::uno::XInterface>& cells, const char* property) {
  return AtEdge([&] {
    // Calc only looks at what was set on the cells themselves; no name of a style stands for several.
    if (Get<OUString>(cells, "CellStyle").isEmpty()) return true;
    return Reference<css::beans::XPropertyState>(cells, UNO_QUERY_THROW)
               ->getPropertyState(OUString::createFromAscii(property)) == css::beans::PropertyState_AMBIGUOUS_VALUE;
  });
}

bool IsDirect(const Reference<css::uno::XInterface>& object, const char* property) {
  return AtEdge([&] {
    return Reference<css::beans::XPropertyState>(object, UNO_QUERY_THROW)
               ->getPropertyState(OUString::createFromAscii(property)) == css::beans::PropertyState_DIRECT_VALUE;
  });
}

Sequence<css::beans::PropertyValue> ToSequence(Arguments arguments) {
  Sequence<css::beans::PropertyValue> result(static_cast<sal_Int32>(arguments.size()));
  css::beans::PropertyValue* next = result.getArray();
  for (const auto& [name, value] : arguments) {
    next->Name = OUString::createFromAscii(name);
    next->Value = value;
    ++next;
  }
  return result;
}

css::table::CellRangeAddress ToAddress(const Rect& rect, int sheet) {
  return css::table::CellRangeAddress(static_cast<sal_Int16>(sheet), rect.left - 1, rect.top - 1, rect.right - 1,
                                      rect.bottom - 1);
}

Rect ToRect(const css::table::CellRangeAddress& address) {
  return {address.StartRow + 1, address.StartColumn + 1, address.EndRow + 1, address.EndColumn + 1};
}

}  // namespace tolvane::libreoffice
