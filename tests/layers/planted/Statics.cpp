// Planted violations: the check for writable statics must find the first four and leave the constants alone.
#include <string>
#include <string_view>

namespace planted {

int plantedGlobal = 1;
static std::string plantedFileStatic;
thread_local int plantedThreadLocal = 2;

constexpr std::string_view allowedTable[2] = {"a", "b"};
extern const int allowedConstant;
const int allowedConstant = 3;

const std::string_view* Table() {
  return allowedTable;
}

int CountedCalls() {
  static int plantedLocalStatic = 0;
  plantedFileStatic += 'x';
  return ++plantedLocalStatic + plantedThreadLocal + plantedGlobal;
}

}  // namespace planted
