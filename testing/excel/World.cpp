#include "testing/excel/World.h"

#include <algorithm>

#include "platform/Text.h"
#include "src/host/Errors.h"
#include "testing/excel/EventSource.h"
#include "testing/excel/NameObjects.h"
#include "testing/excel/RangeObject.h"
#include "testing/excel/WindowObject.h"
#include "testing/excel/WorkbookObjects.h"
#include "testing/excel/WorksheetObject.h"

namespace tolvane::testing::excel {
namespace {

Variant Nothing() {
  return Variant(static_cast<IDispatch*>(nullptr));
}

template <class Wrapper, class Handle>
Variant One(std::map<std::uint64_t, Object*>& known, const std::shared_ptr<World>& world, const Handle& handle) {
  if (handle.IsNothing()) return Nothing();
  const std::uint64_t key = handle.body()->Key();
  if (const auto found = known.find(key); found != known.end()) {
    return Variant(static_cast<IDispatch*>(found->second));
  }
  const auto made = ComPtr<Wrapper>::Adopt(new Wrapper(world, handle));
  known.emplace(key, made.get());
  return Variant(static_cast<IDispatch*>(made.get()));
}

template <class Wrapper>
auto Behind(IDispatch* object) {
  if (object == nullptr) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  const auto* const wrapper = dynamic_cast<const Wrapper*>(object);
  if (wrapper == nullptr) throw host::HostError(host::ErrorNumber::TypeMismatch, host::kTypeMismatchText);
  return wrapper->handle;
}

class Walk final : public IEnumVARIANT {
 public:
  explicit Walk(std::vector<Variant> items) : items_(std::move(items)) {}
  virtual ~Walk() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IEnumVARIANT) return E_NOINTERFACE;
    *object = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* to, ULONG* fetched) override {
    ULONG given = 0;
    while (given < count && next_ < items_.size()) to[given++] = Variant(items_[next_++]).Release();
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = items_.size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  std::vector<Variant> items_;
  std::size_t next_ = 0;
  std::atomic<ULONG> references_{1};
};

}  // namespace

World::World(host::Application program) : program_(std::move(program)), events_(std::make_unique<EventSource>(*this)) {}

World::~World() = default;

Variant World::Of(const host::Workbook& book) {
  return One<WorkbookObject>(books_, shared_from_this(), book);
}
Variant World::Of(const host::Worksheet& sheet) {
  return One<WorksheetObject>(sheets_, shared_from_this(), sheet);
}
Variant World::Of(const host::Range& range) {
  return range.IsNothing() ? Nothing() : New<RangeObject>(shared_from_this(), range);
}
Variant World::Of(const host::Window& window) {
  return window.IsNothing() ? Nothing() : New<WindowObject>(shared_from_this(), window);
}
Variant World::Of(const host::Name& name) {
  return name.IsNothing() ? Nothing() : New<NameObject>(shared_from_this(), name);
}

host::StyleDefinition& World::StyleOf(const host::Workbook& book, const std::string& name) {
  host::StyleDefinition& definition = styles_[{book.body()->Key(), platform::FoldCase(name)}];
  definition.name = name;
  return definition;
}

host::Workbook BookBehind(IDispatch* object) {
  return Behind<WorkbookObject>(object);
}
host::Worksheet SheetBehind(IDispatch* object) {
  return Behind<WorksheetObject>(object);
}
host::Range RangeBehind(IDispatch* object) {
  return Behind<RangeObject>(object);
}

Variant Enumerator(std::vector<Variant> items) {
  const auto walk = ComPtr<Walk>::Adopt(new Walk(std::move(items)));
  return Variant(static_cast<IUnknown*>(walk.get()));
}

}  // namespace tolvane::testing::excel
