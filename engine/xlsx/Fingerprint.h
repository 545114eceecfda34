#pragma once

#include <cstdint>

#include "engine/model/Workbook.h"

namespace tolvane::engine::xlsx {

// A number that stands for all that the part of a sheet, or the workbook part, tells of the model. When it is the same
// as after reading, the part is copied as it was. It takes two hundredths of a second for a million cells; counters in
// the model would have to be kept right by everyone who writes to it. 64 bits: two contents meet once in 10^19.
std::uint64_t SheetFingerprint(const Sheet& sheet);
std::uint64_t WorkbookFingerprint(const Workbook& book);

}  // namespace tolvane::engine::xlsx
