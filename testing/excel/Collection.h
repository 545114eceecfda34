#pragma once

#include <vector>

#include "src/host/Errors.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

// A list of objects as it was when it was asked for: Areas, Windows, Filters, ...
class Collection final : public ObjectOf<Collection> {
 public:
  Collection(std::shared_ptr<World> world, std::vector<Variant> items)
      : ObjectOf(std::move(world)), items_(std::move(items)) {}
  static std::span<const Member> Members();

 private:
  std::vector<Variant> items_;
};

}  // namespace tolvane::testing::excel
