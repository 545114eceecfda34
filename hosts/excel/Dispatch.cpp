#include "hosts/excel/Dispatch.h"

#include <algorithm>

#include "hosts/excel/Failure.h"
#include "src/host/Errors.h"

namespace tolvane::excel {

DISPID MemberIds::Find(IDispatch& object, std::string_view member) {
  if (const auto known = ids_.find(member); known != ids_.end()) return known->second;
  std::wstring name = ToUtf16(member);
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  EXCEPINFO none = {};
  const HRESULT result = object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(result)) ThrowFailure(result, none, member);
  ids_.emplace(member, id);
  return id;
}

bool Dispatch::Has(std::string_view member) const noexcept {
  try {
    ids_->Find(*object_.get(), member);
    return true;
  } catch (const host::HostError&) {
    return false;
  }
}

Variant Dispatch::Invoke(std::string_view member, WORD flags, std::vector<Variant> arguments) const {
  if (!object_) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return InvokeId(ids_->Find(*object_.get(), member), member, flags, std::move(arguments));
}

Variant Dispatch::InvokeId(DISPID id, std::string_view member, WORD flags, std::vector<Variant> arguments) const {
  // Held here: the call may end what holds this object.
  const ComPtr<IDispatch> object = object_;
  // The last argument stands first; they stay ours.
  std::vector<VARIANT> reversed;
  reversed.reserve(arguments.size());
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
    reversed.push_back(argument->get());
  DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  DISPID put = DISPID_PROPERTYPUT;
  if (flags == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  EXCEPINFO exception = {};
  UINT wrong = 0;
  const HRESULT code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                      flags == DISPATCH_PROPERTYPUT ? nullptr : result.receive(), &exception, &wrong);
  if (FAILED(code)) ThrowFailure(code, exception, member);
  return result;
}

void Dispatch::ForEach(const std::function<void(ComPtr<IDispatch>)>& visit) const {
  if (!object_) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  const Variant start = InvokeId(DISPID_NEWENUM, "_NewEnum", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
  if (start.type() != VT_UNKNOWN && start.type() != VT_DISPATCH) {
    throw host::HostError(host::ErrorNumber::TypeMismatch, host::kTypeMismatchText);
  }
  ComPtr<IEnumVARIANT> walk;
  EXCEPINFO none = {};
  const HRESULT found =
      V_UNKNOWN(&start.get())->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(walk.receive()));
  if (FAILED(found)) ThrowFailure(found, none, "_NewEnum");
  for (;;) {
    Variant item;
    ULONG fetched = 0;
    const HRESULT result = walk->Next(1, item.receive(), &fetched);
    if (FAILED(result)) ThrowFailure(result, none, "IEnumVARIANT.Next");
    if (result != S_OK || fetched == 0) return;
    visit(item.AsObject());
  }
}

}  // namespace tolvane::excel
