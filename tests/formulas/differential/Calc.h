#pragma once

#include <filesystem>
#include <vector>

namespace tolvane::formulacases {

// Whether LibreOffice is installed.
bool HasCalc();

// Lets one LibreOffice without a window open the files, work out every formula anew whatever results they hold, and
// save them again; the new files, in the same order. It keeps its profile and its output in `folder`. Texts become
// numbers in arithmetic as they do in Excel, by the settings that Calc has for it. Throws std::runtime_error when it
// fails.
std::vector<std::filesystem::path> RecalculatedByCalc(const std::vector<std::filesystem::path>& files,
                                                      const std::filesystem::path& folder);

}  // namespace tolvane::formulacases
