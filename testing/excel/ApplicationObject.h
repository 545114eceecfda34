#pragma once

#include "src/host/Application.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

// What a program that offers the port looks like to who knows Excel's object model: Application, and everything that is
// reached from it. Tells its events through a connection point, as Excel does.
class ApplicationObject final : public ObjectOf<ApplicationObject>, private IConnectionPointContainer {
 public:
  explicit ApplicationObject(std::shared_ptr<World> world);
  static std::span<const Member> Members();

  const host::Application handle;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ObjectOf::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return ObjectOf::Release(); }

 private:
  class Point;
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
};

}  // namespace tolvane::testing::excel
