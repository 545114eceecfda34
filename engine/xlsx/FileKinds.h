#pragma once

#include <optional>
#include <string_view>

#include "engine/xlsx/Xlsx.h"

namespace tolvane::engine::xlsx {

// The type of a workbook part, by which programs tell what kind of file it is.
std::optional<FileKind> KindOfType(std::string_view contentType);
std::string_view TypeOfKind(FileKind kind);

}  // namespace tolvane::engine::xlsx
