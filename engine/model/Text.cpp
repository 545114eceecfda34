#include "engine/model/Text.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace tolvane::engine {

Text::Text(std::string_view text) {
  if (text.empty()) return;
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("A text is longer than 4 GB");
  void* memory = ::operator new(sizeof(Rep) + text.size());
  rep_ = new (memory) Rep{1, static_cast<std::uint32_t>(text.size())};
  std::memcpy(rep_ + 1, text.data(), text.size());
}

void Text::Free() noexcept {
  ::operator delete(rep_);
  rep_ = nullptr;
}

}  // namespace tolvane::engine
