// Feeds bytes to the reader of workbook files, and what it takes to the writer. For libFuzzer: see the CMakeLists.txt.
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/xlsx/Mutation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvane::xlsxtest::OpensOrRefuses(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
