#include "testing/excel/Object.h"

#include <algorithm>
#include <exception>

#include "platform/Text.h"
#include "src/host/Errors.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

namespace {

constexpr DISPID kFirstId = 1;  // 0 is the default member, negative numbers have meanings of their own

// Excel's own codes: the facility of the macro language and the number of the error.
SCODE CodeOf(int number) {
  return static_cast<SCODE>(0x800A0000u | static_cast<unsigned>(number));
}

HRESULT Fail(EXCEPINFO* exception, int number, const char* text) {
  if (exception != nullptr) {
    *exception = {};
    exception->scode = CodeOf(number);
    exception->bstrSource = SysAllocString(L"Microsoft Excel");
    exception->bstrDescription = SysAllocString(tolvane::excel::ToUtf16(text).c_str());
  }
  return DISP_E_EXCEPTION;
}

}  // namespace

Call::Call(WORD flags, const DISPPARAMS& parameters) : put_((flags & DISPATCH_PROPERTYPUT) != 0) {
  const bool oneNamed = parameters.cNamedArgs == 1 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
  if (put_ != oneNamed || (!put_ && parameters.cNamedArgs != 0)) {
    throw host::HostError(host::ErrorNumber::InvalidCall, "Arguments are taken by their places only.");
  }
  // The last one stands first; what a property is set to counts as the last.
  for (UINT i = parameters.cArgs; i > 0; --i) arguments_.push_back(Variant::CopyOf(parameters.rgvarg[i - 1]));
  if (!put_) return;
  value_ = std::move(arguments_.back());
  arguments_.pop_back();
}

const Variant& Call::At(std::size_t index) const {
  if (!Has(index)) throw host::HostError(host::ErrorNumber::InvalidCall, "Invalid procedure call or argument");
  return arguments_[index];
}

Object::Object(std::shared_ptr<World> world) : world_(std::move(world)) {
  world_->CountObject(1);
}

Object::~Object() {
  world_->CountObject(-1);
}

HRESULT Object::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG Object::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Object::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT Object::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (count == 0) return E_INVALIDARG;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const std::string name = tolvane::excel::ToUtf8(names[0]);
  for (std::size_t i = 0; i < MemberCount(); ++i) {
    if (!platform::EqualIgnoringCase(MemberName(i), name)) continue;
    ids[0] = kFirstId + static_cast<DISPID>(i);
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }
  return DISP_E_UNKNOWNNAME;
}

// MemberCount where there is none.
std::size_t Object::IndexOf(DISPID id) const {
  if (id >= kFirstId) return std::min(static_cast<std::size_t>(id - kFirstId), MemberCount());
  const std::string_view name = id == DISPID_NEWENUM ? "_NewEnum" : id == DISPID_VALUE ? "Item" : "";
  std::size_t index = 0;
  while (index < MemberCount() && MemberName(index) != name) ++index;
  return index;
}

HRESULT Object::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                       EXCEPINFO* exception, UINT*) {
  const std::size_t index = IndexOf(id);
  if (index == MemberCount() || parameters == nullptr) return DISP_E_MEMBERNOTFOUND;
  // What is called may let go of the last other reference.
  const ComPtr<Object> self(this);
  try {
    Variant given = InvokeMember(index, Call(flags, *parameters));
    if (result != nullptr) *result = given.Release();
    return S_OK;
  } catch (const host::HostError& error) {
    return Fail(exception, static_cast<int>(error.number()), error.what());
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    return Fail(exception, static_cast<int>(host::ErrorNumber::ApplicationDefined), error.what());
  }
}

}  // namespace tolvane::testing::excel
