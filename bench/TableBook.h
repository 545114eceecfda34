#pragma once

#include <memory>

#include "engine/model/Workbook.h"

namespace tolvane::bench {

// The table of an account without the host around it: `rows` rows by 9 cells with texts, dates and amounts.
std::unique_ptr<engine::Workbook> TableBook(int rows);

}  // namespace tolvane::bench
