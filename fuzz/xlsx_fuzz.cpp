// Feeds the reader of workbook files, and with what it takes the writer. The first byte of an input tells which part of
// a file the rest is; 255: the rest is a whole file. An archive's checksums would keep the fuzzer out otherwise.
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/xlsx/Mutation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::xlsxtest;
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(data + 1), size - 1);
  OpensOrRefuses(data[0] == 255 ? rest : FileWithPart(data[0], rest));
  return 0;
}
