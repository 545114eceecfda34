#pragma once

#include <string>
#include <vector>

namespace tolvane::layers {

// The variables of an object file or a static library that outlive a call and can be written: what sits in .data, .bss
// and their thread-local twins. Constants that only need relocating (.data.rel.ro) are none.
std::vector<std::string> WritableStatics(const std::string& objectFile);

}  // namespace tolvane::layers
