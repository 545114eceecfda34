#pragma once

#include <string>
#include <vector>

namespace tolvane::layers {

// The variables of an object file or a static library that outlive a call and can be written: what sits in .data, .bss
// and their thread-local twins. Constants that only need relocating (.data.rel.ro) are none.
std::vector<std::string> WritableStatics(const std::string& objectFile);

// Whether a variable comes from the headers of UNO, which keep what they know of a type once it has been asked for:
// their own namespaces, and what they instantiate for themselves. Nothing with a type of ours in its name is.
bool IsOfUnoHeaders(const std::string& variable);

}  // namespace tolvane::layers
