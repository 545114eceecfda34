#pragma once

#include <vector>

#include "engine/model/Value.h"

namespace tolvane::engine {

// What depends on the order of numbers. They come in any order and are sorted or partly sorted in place.
Value MedianOf(std::vector<double>& numbers);
// The one that comes k-th, k from 1; #NUM! when there is none.
Value LargestOf(std::vector<double>& numbers, double k);
Value SmallestOf(std::vector<double>& numbers, double k);
// Between neighbours in proportion. Inclusive: the least is 0 and the greatest is 1; exclusive: both lie outside.
Value PercentileOf(std::vector<double>& numbers, double share, bool exclusive);
Value QuartileOf(std::vector<double>& numbers, double quarter, bool exclusive);
// The most frequent; of several the one that comes first. #N/A when each is there once.
Value ModeOf(const std::vector<double>& numbers);

}  // namespace tolvane::engine
