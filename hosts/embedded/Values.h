#pragma once

#include <cstddef>
#include <vector>

#include "engine/model/Value.h"
#include "src/host/CellValue.h"

namespace tolvane::embedded {

// Cell values of the port and of the engine hold the same kinds with the same error numbers.
host::CellValue ToHost(const engine::Value& value);
// An empty text leaves a cell empty. A number that is none (an infinity, not-a-number) becomes #NUM!. A text of more
// than 32,767 characters is ApplicationDefined.
engine::Value ToEngine(const host::CellValue& value);

// The same for the values of one block, where texts recur: one that was converted lately is shared, not made again.
class BlockToEngine {
 public:
  explicit BlockToEngine(std::size_t cells);
  engine::Value operator()(const host::CellValue& value);

 private:
  std::vector<engine::Text> recent_;  // by hash; none for a small block
};

class BlockToHost {
 public:
  explicit BlockToHost(std::size_t cells);
  host::CellValue operator()(const engine::Value& value);

 private:
  struct Known {
    engine::Text from;
    host::CellValue to;
  };
  std::vector<Known> recent_;  // by where the text stands in memory; none for a small block
};

}  // namespace tolvane::embedded
