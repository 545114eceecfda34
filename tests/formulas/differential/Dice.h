#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace tolvane::formulacases {

// Chance that comes out the same on every system: the distributions of the standard library do not.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  int Between(int lowest, int highest) {
    return lowest + static_cast<int>(engine_() % static_cast<std::uint64_t>(highest - lowest + 1));
  }
  bool Percent(int chance) { return Between(1, 100) <= chance; }
  template <class Table>
  const auto& OneOf(const Table& table) {
    return table[static_cast<std::size_t>(Between(0, static_cast<int>(std::size(table)) - 1))];
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace tolvane::formulacases
