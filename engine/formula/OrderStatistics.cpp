#include "engine/formula/OrderStatistics.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "engine/formula/Aggregates.h"

namespace tolvane::engine {

Value SmallestOf(std::vector<double>& numbers, double k) {
  k = std::trunc(k);
  if (k < 1 || k > static_cast<double>(numbers.size())) return ErrorCode::Num;
  const auto nth = numbers.begin() + static_cast<std::ptrdiff_t>(k) - 1;
  std::nth_element(numbers.begin(), nth, numbers.end());
  return *nth;
}

Value LargestOf(std::vector<double>& numbers, double k) {
  return SmallestOf(numbers, static_cast<double>(numbers.size()) + 1 - std::trunc(k));
}

Value PercentileOf(std::vector<double>& numbers, double share, bool exclusive) {
  if (numbers.empty() || share < 0 || share > 1) return ErrorCode::Num;
  const auto count = static_cast<double>(numbers.size());
  const double place = exclusive ? share * (count + 1) - 1 : share * (count - 1);  // from 0
  if (!(place >= 0 && place <= count - 1)) return ErrorCode::Num;
  const double below = std::floor(place);
  const auto low = numbers.begin() + static_cast<std::ptrdiff_t>(below);
  std::nth_element(numbers.begin(), low, numbers.end());
  const double lower = *low;
  if (place == below) return lower;
  const double upper = *std::min_element(low + 1, numbers.end());
  return lower + (upper - lower) * (place - below);
}

Value MedianOf(std::vector<double>& numbers) {
  return PercentileOf(numbers, 0.5, false);
}

Value QuartileOf(std::vector<double>& numbers, double quarter, bool exclusive) {
  quarter = std::trunc(quarter);
  if (quarter < 0 || quarter > 4) return ErrorCode::Num;
  return PercentileOf(numbers, quarter / 4, exclusive);
}

Value ModeOf(const std::vector<double>& numbers) {
  std::unordered_map<double, std::size_t> counts;
  std::size_t most = 1;
  for (const double number : numbers) most = std::max(most, ++counts[number]);
  if (most == 1) return ErrorCode::NA;
  return *std::find_if(numbers.begin(), numbers.end(), [&](double number) { return counts[number] == most; });
}

namespace {

// The numbers of the first argument alone, or of all.
std::vector<double> NumbersOf(FunctionCall& call, std::size_t arguments) {
  std::vector<double> numbers;
  ForEachNumber(call, 0, arguments, [&](double number) { numbers.push_back(number); });
  return numbers;
}

Operand Median(FunctionCall& call) {
  std::vector<double> numbers = NumbersOf(call, call.count());
  return MedianOf(numbers);
}
Operand ModeSingle(FunctionCall& call) {
  return ModeOf(NumbersOf(call, call.count()));
}
Operand Large(FunctionCall& call) {
  std::vector<double> numbers = NumbersOf(call, 1);
  return LargestOf(numbers, call.Number(1));
}
Operand Small(FunctionCall& call) {
  std::vector<double> numbers = NumbersOf(call, 1);
  return SmallestOf(numbers, call.Number(1));
}
template <bool exclusive>
Operand Percentile(FunctionCall& call) {
  std::vector<double> numbers = NumbersOf(call, 1);
  return PercentileOf(numbers, call.Number(1), exclusive);
}
template <bool exclusive>
Operand Quartile(FunctionCall& call) {
  std::vector<double> numbers = NumbersOf(call, 1);
  return QuartileOf(numbers, call.Number(1), exclusive);
}

// Equal numbers share the best place, or the mean of their places.
template <bool average>
Operand Rank(FunctionCall& call) {
  const double number = call.Number(0);
  const bool ascending = call.Number(2, 0) != 0;
  if (!call.Argument(1).isReference()) return ErrorCode::Value;
  std::int64_t better = 0;
  std::int64_t equal = 0;
  ForEachNumber(call, 1, 2, [&](double other) {
    better += (ascending ? other < number : other > number) ? 1 : 0;
    equal += other == number ? 1 : 0;
  });
  if (equal == 0) return ErrorCode::NA;
  const double best = static_cast<double>(better) + 1;
  return average ? best + static_cast<double>(equal - 1) / 2 : best;
}

constexpr Function kFunctions[] = {
    {"LARGE", 2, 2, "RV", Large},
    {"MEDIAN", 1, kMostArguments, "R", Median},
    {"MODE", 1, kMostArguments, "R", ModeSingle},
    {"MODE.SNGL", 1, kMostArguments, "R", ModeSingle},
    {"PERCENTILE", 2, 2, "RV", Percentile<false>},
    {"PERCENTILE.EXC", 2, 2, "RV", Percentile<true>},
    {"PERCENTILE.INC", 2, 2, "RV", Percentile<false>},
    {"QUARTILE", 2, 2, "RV", Quartile<false>},
    {"QUARTILE.EXC", 2, 2, "RV", Quartile<true>},
    {"QUARTILE.INC", 2, 2, "RV", Quartile<false>},
    {"RANK", 2, 3, "VRV", Rank<false>},
    {"RANK.AVG", 2, 3, "VRV", Rank<true>},
    {"RANK.EQ", 2, 3, "VRV", Rank<false>},
    {"SMALL", 2, 2, "RV", Small},
};

}  // namespace

std::span<const Function> OrderFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
