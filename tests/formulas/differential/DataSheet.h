#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/model/Workbook.h"

namespace tolvane::formulacases {

// The sheet "Data" that made-up formulas refer to: columns of kDataRows rows, each of one kind of content, some hidden
// rows among them. The same seed gives the same cells.
inline constexpr int kDataRows = 30;

struct DataColumn {
  const char* letter;
  const char* kind;  // as known differences name it
};

inline constexpr DataColumn kWholeNumbers{"A", "whole numbers"};
inline constexpr DataColumn kDecimals{"B", "decimals"};
inline constexpr DataColumn kWords{"C", "words"};
inline constexpr DataColumn kDates{"D", "dates"};
inline constexpr DataColumn kMixed{"E", "mixed"};
inline constexpr DataColumn kWithErrors{"F", "with errors"};
inline constexpr DataColumn kMostlyBlank{"G", "mostly blank"};
inline constexpr DataColumn kAscending{"H", "ascending"};
inline constexpr DataColumn kDescending{"I", "descending"};
inline constexpr DataColumn kSortedWords{"J", "sorted words"};
inline constexpr DataColumn kBooleans{"K", "booleans"};
inline constexpr DataColumn kTextNumbers{"L", "text numbers"};
inline constexpr DataColumn kEmptyTexts{"M", "numbers and empty texts"};
inline constexpr DataColumn kCashFlows{"N", "cash flows"};
inline constexpr DataColumn kErrors{"O", "errors"};
inline constexpr DataColumn kTimes{"P", "times"};
inline constexpr DataColumn kDateTexts{"Q", "date texts"};
inline constexpr DataColumn kAscendingDates{"R", "ascending dates"};

void FillDataSheet(engine::Sheet& sheet, std::uint64_t seed);

}  // namespace tolvane::formulacases
