#include <cstddef>
#include <cstdint>

#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvane::fuzz::Package({reinterpret_cast<const char*>(data), size});
  return 0;
}
