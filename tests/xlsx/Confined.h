#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace tolvane::xlsxtest {

// Runs something in a process of its own, which may take so many bytes of memory beyond what this one has (0: any
// number), and gives the text that it returns. "out of memory" where it asks for more, "ended by signal N" where it
// crashes. Sanitizers need more memory than can be counted: under them there is no limit.
std::string InProcessOfItsOwn(std::size_t mostBytes, const std::function<std::string()>& run);

}  // namespace tolvane::xlsxtest
