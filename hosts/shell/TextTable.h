#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::shell {

// A text as programs put tables on the clipboard: a line a row (ended by LF, CR LF or CR), a tab between columns. A
// cell in quotation marks may hold tabs and line ends, and its own marks doubled.
std::vector<std::vector<std::string>> SplitTable(std::string_view text);

}  // namespace tolvane::shell
