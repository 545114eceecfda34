#pragma once

#include <functional>

#include "src/host/Workbook.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

// The styles of a workbook.
class StylesObject final : public ObjectOf<StylesObject> {
 public:
  StylesObject(std::shared_ptr<World> world, host::Workbook book)
      : ObjectOf(std::move(world)), handle(std::move(book)) {}
  static std::span<const Member> Members();

  const host::Workbook handle;
};

// One of them. The port takes a style as a whole and tells no more than its name: of a style that was changed through
// these objects the world remembers what it is.
class StyleObject final : public ObjectOf<StyleObject> {
 public:
  StyleObject(std::shared_ptr<World> world, host::Workbook book, std::string name)
      : ObjectOf(std::move(world)), book_(std::move(book)), name_(std::move(name)) {}
  static std::span<const Member> Members();

  void Change(const std::function<void(host::StyleDefinition&)>& change) const;

 private:
  const host::Workbook book_;
  const std::string name_;
};

}  // namespace tolvane::testing::excel
