#pragma once

#include <set>
#include <string>

#include "engine/xlsx/Zip.h"

namespace tolvane::engine::xlsx {

// The parts that go when these do: all that can be reached from them and from no other part. Parts that nothing points
// at stay, whatever they may be for.
std::set<std::string> WithPartsOf(const std::set<std::string>& parts, const ZipArchive& archive, Budget& budget);

}  // namespace tolvane::engine::xlsx
