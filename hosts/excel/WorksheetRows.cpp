// The part of ExcelWorksheet that deletes and inserts many rows. The program has no call for many runs at once: each
// run is one of its own, with its own events.
#include <cstdint>

#include "hosts/excel/ExcelWorksheet.h"
#include "src/host/Errors.h"

namespace tolvane::excel {
namespace {

[[noreturn]] void Refuse(const host::RowRun& run, const char* why) {
  throw host::HostError(host::ErrorNumber::ApplicationDefined,
                        "The run of " + std::to_string(run.count) + " rows from " + std::to_string(run.first) + why);
}

std::string AddressOf(const host::RowRun& run) {
  return std::to_string(run.first) + ":" + std::to_string(run.first + run.count - 1);
}

}  // namespace

void ExcelWorksheet::RequireRuns(std::span<const host::RowRun> runs) const {
  const int rows = RowsCount();
  std::int64_t next = 1;
  for (const host::RowRun& run : runs) {
    if (run.count < 1) Refuse(run, " holds no row.");
    if (run.first < 1 || std::int64_t{run.first} + run.count - 1 > rows) Refuse(run, " lies outside of the sheet.");
    if (run.first < next) Refuse(run, " does not lie behind the one before.");
    next = std::int64_t{run.first} + run.count;
  }
}

void ExcelWorksheet::DeleteRows(std::span<const host::RowRun> runs) {
  RequireRuns(runs);
  // From the bottom, so that the numbers of those above stay.
  for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
    session().ObjectOf("Range", object().Get("Range", AddressOf(*run))).Call("Delete");
  }
}

void ExcelWorksheet::InsertRows(std::span<const host::RowRun> runs) {
  RequireRuns(runs);
  for (const host::RowRun& run : runs) {
    session().ObjectOf("Range", object().Get("Range", AddressOf(run))).Call("Insert");
  }
}

}  // namespace tolvane::excel
