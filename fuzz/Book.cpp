#include <string>

#include "fuzz/Targets.h"
#include "tests/xlsx/Mutation.h"

namespace tolvane::fuzz {

void Book(std::string_view input) {
  if (input.empty()) return;
  const auto first = static_cast<unsigned char>(input.front());
  constexpr unsigned char whole = 255;
  const std::string rest(input.substr(1));
  xlsxtest::OpensOrRefuses(first == whole ? rest : xlsxtest::FileWithPart(first, rest));
}

}  // namespace tolvane::fuzz
