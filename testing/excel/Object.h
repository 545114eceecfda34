#pragma once

#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Com.h"
#include "hosts/excel/Variant.h"

namespace tolvane::testing::excel {

using tolvane::excel::ComPtr;
using tolvane::excel::Variant;

class World;

// One call of a member, with its arguments in their order. Those that are not given, and those that stand beyond the
// end, are missing.
class Call {
 public:
  // Throws what is no call: named arguments, which the add-in does not use.
  Call(WORD flags, const DISPPARAMS& parameters);

  bool isPut() const noexcept { return put_; }
  const Variant& value() const noexcept { return value_; }  // what a property is set to

  std::size_t count() const noexcept { return arguments_.size(); }
  bool Has(std::size_t index) const { return index < arguments_.size() && !arguments_[index].IsMissing(); }
  const Variant& At(std::size_t index) const;  // InvalidCall where it is missing
  bool Bool(std::size_t index, bool otherwise) const { return Has(index) ? At(index).AsBool() : otherwise; }
  int Int(std::size_t index, int otherwise) const { return Has(index) ? At(index).AsInt() : otherwise; }
  std::string Text(std::size_t index, std::string_view otherwise = {}) const {
    return Has(index) ? At(index).AsText() : std::string(otherwise);
  }

 private:
  bool put_;
  Variant value_;
  std::vector<Variant> arguments_;
};

// A COM object whose members are found by name, as those of Excel are.
class Object : public IDispatch {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override;

  const std::shared_ptr<World>& world() const noexcept { return world_; }

 protected:
  explicit Object(std::shared_ptr<World> world);
  virtual ~Object();
  virtual std::size_t MemberCount() const = 0;
  virtual std::string_view MemberName(std::size_t index) const = 0;
  virtual Variant InvokeMember(std::size_t index, const Call& call) = 0;

 private:
  std::size_t IndexOf(DISPID id) const;

  std::shared_ptr<World> world_;
  std::atomic<ULONG> references_{1};
};

// An object with a table of members: Self::Members() gives it.
template <class Self>
class ObjectOf : public Object {
 public:
  struct Member {
    std::string_view name;
    Variant (*invoke)(Self&, const Call&);
  };

 protected:
  using Object::Object;
  std::size_t MemberCount() const final { return Self::Members().size(); }
  std::string_view MemberName(std::size_t index) const final { return Self::Members()[index].name; }
  Variant InvokeMember(std::size_t index, const Call& call) final {
    return Self::Members()[index].invoke(static_cast<Self&>(*this), call);
  }
};

// A new object as what a member gives.
template <class Made, class... Arguments>
Variant New(Arguments&&... arguments) {
  const auto made = ComPtr<Made>::Adopt(new Made(std::forward<Arguments>(arguments)...));
  return Variant(static_cast<IDispatch*>(made.get()));
}

}  // namespace tolvane::testing::excel
