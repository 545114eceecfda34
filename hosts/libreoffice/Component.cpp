// What the office loads: a job that runs when the office starts, before its first document.
#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase1.hxx>
#include <memory>
#include <utility>

#include "hosts/libreoffice/CalcHost.h"
#include "hosts/libreoffice/OfficeDesk.h"

namespace tolvane::libreoffice {
namespace {

// The host outlives this job; the office keeps it until it terminates.
class Startup final : public cppu::WeakImplHelper1<css::task::XJob> {
 public:
  explicit Startup(Reference<css::uno::XComponentContext> context) : context_(std::move(context)) {}

  Any SAL_CALL execute(const Sequence<css::beans::NamedValue>&) override {
    KeepUntilTermination(context_, std::make_shared<OfficeHost>(context_));
    return {};
  }

 private:
  Reference<css::uno::XComponentContext> context_;
};

}  // namespace
}  // namespace tolvane::libreoffice

extern "C" __attribute__((visibility("default"))) com::sun::star::uno::XInterface* tolvane_Startup_get(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
  return cppu::acquire(new tolvane::libreoffice::Startup(context));
}
