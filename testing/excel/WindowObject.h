#pragma once

#include "src/host/Window.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

class WindowObject final : public ObjectOf<WindowObject> {
 public:
  WindowObject(std::shared_ptr<World> world, host::Window window)
      : ObjectOf(std::move(world)), handle(std::move(window)) {}
  static std::span<const Member> Members();

  const host::Window handle;
};

}  // namespace tolvane::testing::excel
