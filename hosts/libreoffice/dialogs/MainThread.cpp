#include "hosts/libreoffice/dialogs/MainThread.h"

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace tolvane::libreoffice {

namespace {

class Posted final : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Posted(std::function<void()> work) : work_(std::move(work)) {}
  void SAL_CALL notify(const Any&) override { std::exchange(work_, nullptr)(); }

 private:
  std::function<void()> work_;
};

}  // namespace

void PostToMainThread(const Reference<css::uno::XComponentContext>& context, std::function<void()> work) {
  css::awt::AsyncCallback::create(context)->addCallback(new Posted(std::move(work)), Any());
}

}  // namespace tolvane::libreoffice
