#include "hosts/excel/EventSink.h"

#include <atomic>

#include "hosts/excel/Failure.h"
#include "src/host/Errors.h"
#include "src/host/Events.h"

namespace tolvane::excel {

namespace {

// The arguments of one event, counted from 0; the call has them in reverse.
class EventArguments {
 public:
  explicit EventArguments(const DISPPARAMS& parameters) : parameters_(parameters) {}
  const VARIANT& At(UINT index) const {
    if (index >= parameters_.cArgs) {
      throw host::HostError(host::ErrorNumber::InvalidCall, "Excel told an event with too few arguments.");
    }
    return parameters_.rgvarg[parameters_.cArgs - 1 - index];
  }
  ComPtr<IDispatch> Object(UINT index) const { return Variant::CopyOf(At(index)).AsObject(); }
  bool Bool(UINT index) const { return Variant::CopyOf(At(index)).AsBool(); }
  // Sets what the program gave to be set; what is no place for a truth value stays.
  void SetCancel(UINT index) const {
    const VARIANT& place = At(index);
    if (V_VT(&place) == (VT_BYREF | VT_BOOL)) *V_BOOLREF(&place) = VARIANT_TRUE;
    if (V_VT(&place) == (VT_BYREF | VT_VARIANT)) {
      Variant yes(true);
      VariantCopy(V_VARIANTREF(&place), const_cast<VARIANT*>(&yes.get()));
    }
  }

 private:
  const DISPPARAMS& parameters_;
};

void Deliver(Session& session, DISPID event, const EventArguments& arguments) {
  using host::ApplicationEvents;
  const auto book = [&] { return session.WorkbookOf(arguments.Object(0)); };
  const auto sheet = [&] { return session.WorksheetOf(arguments.Object(0)); };
  const auto raise = [&](const shell::EventHub::Event& told) { session.events().Raise(told); };
  // `place` is that of the argument Cancel.
  const auto ask = [&](UINT place, const shell::EventHub::Question& question) {
    if (session.events().Ask(question)) arguments.SetCancel(place);
  };
  switch (event) {
    case event::kWorkbookOpen:
      return raise([book = book()](ApplicationEvents& to) { to.WorkbookOpen(book); });
    case event::kWorkbookAddinInstall:
      return raise([book = book()](ApplicationEvents& to) { to.AddinInstall(book); });
    case event::kWorkbookAddinUninstall:
      return raise([book = book()](ApplicationEvents& to) { to.AddinUninstall(book); });
    case event::kWindowActivate:
      return raise([book = book(), window = session.WindowOf(arguments.Object(1))](ApplicationEvents& to) {
        to.WindowActivate(book, window);
      });
    case event::kSheetActivate:
      return raise([sheet = sheet()](ApplicationEvents& to) { to.SheetActivate(sheet); });
    case event::kSheetCalculate:
      return raise([sheet = sheet()](ApplicationEvents& to) { to.SheetCalculate(sheet); });
    case event::kSheetChange:
      return raise([sheet = sheet(), target = session.RangeOf(arguments.Object(1))](ApplicationEvents& to) {
        to.SheetChange(sheet, target);
      });
    case event::kSheetSelectionChange:
      return raise([sheet = sheet(), target = session.RangeOf(arguments.Object(1))](ApplicationEvents& to) {
        to.SheetSelectionChange(sheet, target);
      });
    case event::kWorkbookBeforeClose:
      return ask(1, [&](ApplicationEvents& to, bool& cancel) { to.WorkbookBeforeClose(book(), cancel); });
    case event::kWorkbookBeforePrint:
      return ask(1, [&](ApplicationEvents& to, bool& cancel) { to.WorkbookBeforePrint(book(), cancel); });
    case event::kWorkbookBeforeSave:
      return ask(
          2, [&](ApplicationEvents& to, bool& cancel) { to.WorkbookBeforeSave(book(), arguments.Bool(1), cancel); });
    case event::kSheetBeforeDoubleClick:
      return ask(2, [&](ApplicationEvents& to, bool& cancel) {
        to.SheetBeforeDoubleClick(sheet(), session.RangeOf(arguments.Object(1)), cancel);
      });
    case event::kSheetBeforeRightClick:
      return ask(2, [&](ApplicationEvents& to, bool& cancel) {
        to.SheetBeforeRightClick(sheet(), session.RangeOf(arguments.Object(1)), cancel);
      });
    default:
      return;  // the program tells more than the port has
  }
}

}  // namespace

class EventConnection::Sink final : public IDispatch {
 public:
  explicit Sink(const std::shared_ptr<Session>& session) : session_(session) {}
  virtual ~Sink() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    if (id != IID_IUnknown && id != IID_IDispatch && id != kApplicationEvents) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;  // events are told by number
  }
  // Nothing that a listener does wrong is the program's business.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    const std::shared_ptr<Session> session = session_.lock();
    if (session == nullptr || session->hasEnded() || parameters == nullptr) return S_OK;
    try {
      Deliver(*session, event, EventArguments(*parameters));
      return S_OK;
    } catch (...) {
      return E_FAIL;
    }
  }

 private:
  std::atomic<ULONG> references_{1};
  const std::weak_ptr<Session> session_;
};

EventConnection::EventConnection(const std::shared_ptr<Session>& session)
    : sink_(ComPtr<Sink>::Adopt(new Sink(session))) {
  EXCEPINFO none = {};
  ComPtr<IConnectionPointContainer> container;
  HRESULT result = session->application().get()->QueryInterface(IID_IConnectionPointContainer,
                                                                reinterpret_cast<void**>(container.receive()));
  if (SUCCEEDED(result)) result = container->FindConnectionPoint(kApplicationEvents, point_.receive());
  if (SUCCEEDED(result)) result = point_->Advise(sink_.get(), &cookie_);
  if (FAILED(result)) ThrowFailure(result, none, "IConnectionPoint.Advise");
}

EventConnection::~EventConnection() {
  point_->Unadvise(cookie_);
}

}  // namespace tolvane::excel
