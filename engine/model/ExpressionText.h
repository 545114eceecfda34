#pragma once

#include <string>

#include "engine/model/Expression.h"
#include "engine/model/Geometry.h"

namespace tolvane::engine {

class Workbook;

// A formula as people can read it in a message: A1 notation, sheets by name, blanks left out. It is not what a user
// typed and nothing reads it back.
std::string DebugText(const Expression& expression, const Workbook& book, CellPos home);
std::string DebugText(const Value& value);

}  // namespace tolvane::engine
