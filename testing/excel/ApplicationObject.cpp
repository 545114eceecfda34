#include "testing/excel/ApplicationObject.h"

#include "hosts/excel/EventSink.h"
#include "src/host/Errors.h"
#include "testing/excel/EventSource.h"
#include "testing/excel/Property.h"
#include "testing/excel/WorkbookObjects.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::Application;

class ApplicationObject::Point final : public IConnectionPoint {
 public:
  explicit Point(ApplicationObject& application) : application_(&application) {}
  virtual ~Point() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IConnectionPoint) return E_NOINTERFACE;
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override {
    *id = tolvane::excel::kApplicationEvents;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override {
    return application_->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container));
  }
  // The sink must have the very interface of the events, not any IDispatch.
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    ComPtr<IDispatch> events;
    if (FAILED(sink->QueryInterface(tolvane::excel::kApplicationEvents, reinterpret_cast<void**>(events.receive())))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = application_->world()->events().Connect(std::move(events));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return application_->world()->events().Disconnect(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  std::atomic<ULONG> references_{1};
  const ComPtr<ApplicationObject> application_;
};

ApplicationObject::ApplicationObject(std::shared_ptr<World> world)
    : ObjectOf(std::move(world)), handle(this->world()->program()) {}

HRESULT ApplicationObject::QueryInterface(REFIID id, void** object) {
  if (object == nullptr || id != IID_IConnectionPointContainer) return ObjectOf::QueryInterface(id, object);
  *object = static_cast<IConnectionPointContainer*>(this);
  AddRef();
  return S_OK;
}

HRESULT ApplicationObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (point == nullptr) return E_POINTER;
  *point = nullptr;
  if (id != tolvane::excel::kApplicationEvents) return CONNECT_E_NOCONNECTION;
  *point = new Point(*this);
  return S_OK;
}

namespace {

// Intersect, which Excel refuses for ranges of different sheets, and Union.
template <bool Common>
Variant Join(ApplicationObject& a, const Call& call) {
  std::vector<host::Range> ranges;
  for (std::size_t i = 0; i < call.count(); ++i) {
    if (call.Has(i)) ranges.push_back(RangeBehind(call.At(i).AsObject().get()));
  }
  if (ranges.size() < 2) throw host::HostError(host::ErrorNumber::InvalidCall, "Invalid procedure call or argument");
  if (!Common) return a.world()->Of(a.handle.Union(ranges));
  host::Range common = ranges.front();
  for (const host::Range& range : ranges) {
    if (range.Parent() != ranges.front().Parent()) {
      throw host::HostError(host::ErrorNumber::ApplicationDefined, "Method 'Intersect' of object '_Global' failed");
    }
    if (!common.IsNothing()) common = a.handle.Intersect(common, range);
  }
  return a.world()->Of(common);
}

Variant StatusBar(ApplicationObject& a, const Call& call) {
  if (call.isPut()) {
    a.handle.SetStatusBar(call.value().IsText() ? std::optional(call.value().AsText()) : std::nullopt);
    return {};
  }
  const std::string text = a.handle.StatusBar();
  return text.empty() ? Variant(false) : Variant(text);
}

Variant CutCopyMode(ApplicationObject& a, const Call& call) {
  if (!call.isPut()) return VariantOf(a.handle.CutCopyMode());
  a.handle.EndCutCopyMode();
  return {};
}

Variant OnKey(ApplicationObject& a, const Call& call) {
  a.handle.OnKey(call.Text(0), call.Has(1) ? std::optional(call.Text(1)) : std::nullopt);
  return {};
}

// OnUndo and OnRepeat: a caption and a macro.
template <auto Method>
Variant Entry(ApplicationObject& a, const Call& call) {
  (a.handle.*Method)(call.Text(0), call.Text(1));
  return {};
}

}  // namespace

std::span<const ApplicationObject::Member> ApplicationObject::Members() {
  static constexpr Member kMembers[] = {
      {"Version", Reads<&Application::Version>},
      {"Caption", Reads<&Application::Caption>},
      {"StatusBar", StatusBar},
      {"ScreenUpdating", Property<&Application::ScreenUpdating, &Application::SetScreenUpdating>},
      {"EnableEvents", Property<&Application::EnableEvents, &Application::SetEnableEvents>},
      {"DisplayAlerts", Property<&Application::DisplayAlerts, &Application::SetDisplayAlerts>},
      {"Cursor", Property<&Application::Cursor, &Application::SetCursor>},
      {"EnableCancelKey", Property<&Application::EnableCancelKey, &Application::SetEnableCancelKey>},
      {"Calculation", Property<&Application::Calculation, &Application::SetCalculation>},
      {"ReferenceStyle", Property<&Application::ReferenceStyle, &Application::SetReferenceStyle>},
      {"CutCopyMode", CutCopyMode},
      {"Workbooks", [](ApplicationObject& a, const Call&) { return New<WorkbooksObject>(a.world()); }},
      {"ActiveWorkbook", [](ApplicationObject& a, const Call&) { return a.world()->Of(a.handle.ActiveWorkbook()); }},
      {"ActiveSheet", [](ApplicationObject& a, const Call&) { return a.world()->Of(a.handle.ActiveSheet()); }},
      {"ActiveCell", [](ApplicationObject& a, const Call&) { return a.world()->Of(a.handle.ActiveCell()); }},
      {"ActiveWindow", [](ApplicationObject& a, const Call&) { return a.world()->Of(a.handle.ActiveWindow()); }},
      {"Selection", [](ApplicationObject& a, const Call&) { return a.world()->Of(a.handle.Selection().Range()); }},
      {"Intersect", Join<true>},
      {"Union", Join<false>},
      {"OnKey", OnKey},
      {"SendKeys",
       [](ApplicationObject& a, const Call& call) {
         a.handle.SendKeys(call.Text(0));
         return Variant();
       }},
      {"Run", [](ApplicationObject& a, const Call& call) { return Variant(a.handle.Run(call.Text(0))); }},
      {"OnUndo", Entry<&Application::OnUndo>},
      {"OnRepeat", Entry<&Application::OnRepeat>},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
