#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/model/Value.h"

namespace tolvane::embedded {

// What a text becomes when it is typed into a cell or pasted from another program: a number ("1,234.5", "(3)"), a
// percentage, a date ("2009-03-15"), TRUE or FALSE, else a text; one leading "'" keeps it a text and goes.
struct Recognised {
  engine::Value value;
  std::optional<std::string> numberFormat;  // that a cell without one takes on
};
Recognised Recognise(std::string_view text);

}  // namespace tolvane::embedded
