// Shows many values in a number format made of the bytes. The first eight are one of the values. For libFuzzer: see the
// CMakeLists.txt.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>

#include "engine/formula/NumberFormat.h"
#include "engine/formula/NumberText.h"
#include "engine/formula/Printer.h"

namespace tolvane::engine {
namespace {

void Require(bool holds, std::string_view what, std::string_view format, const Value& value) {
  if (holds) return;
  std::cerr << what << ": " << format << " with " << (value.isNumber() ? NumberText(value.number()) : "no number")
            << '\n';
  std::abort();
}

void Show(const Value& value, std::string_view format, bool date1904 = false) {
  const ShownText shown = ShowValue(value, format, date1904);
  // Each piece of a format shows at most a number in full, a text once, or a name.
  constexpr std::size_t kLongestPiece = 400;
  Require(shown.text.size() <= (format.size() + 1) * kLongestPiece, "is shown too long", format, value);
  Require(!shown.colour || *shown.colour <= 0xFFFFFF, "has a colour that is none", format, value);
}

void ShowInAllWays(const Value& value, std::string_view format) {
  for (const bool date1904 : {false, true}) {
    Show(value, format, date1904);
    const std::optional<std::string> text = TryFormatValue(value, format, date1904);
    Require(text.value_or("########") == FormatValue(value, format, date1904), "is shown in two ways", format, value);
  }
}

}  // namespace
}  // namespace tolvane::engine

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::engine;
  double number = 0;
  if (size < sizeof(number)) return 0;
  std::memcpy(&number, data, sizeof(number));
  const std::string_view format(reinterpret_cast<const char*>(data) + sizeof(number), size - sizeof(number));
  if (std::isfinite(number)) ShowInAllWays(Value(number), format);
  for (const double value : {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.5,
                             -0.5,
                             1234.5678,
                             -1234567.891,
                             0.000123,
                             1e-300,
                             -1e-7,
                             1e15,
                             1e21,
                             1.7976931348623157e308,
                             -1.7976931348623157e308,
                             5e-324,
                             59.0,
                             60.0,
                             61.0,
                             45366.75,
                             2958465.99999,
                             2958466.0,
                             0.999999999,
                             99999999999.5,
                             1.0 / 3}) {
    Show(Value(value), format);
  }
  for (const Value& value : {Value(), Value("text"), Value("12"), Value(true), Value(ErrorCode::NA)}) {
    Show(value, format);
  }
  // What is read as a number is shown and read as the same.
  if (const std::optional<double> typed = NumberFromText(format)) {
    const std::optional<double> again = NumberFromText(NumberText(*typed));
    Require(again == typed, "reads as another number", format, Value(*typed));
  }
  return 0;
}
