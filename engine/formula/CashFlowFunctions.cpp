#include <cmath>
#include <optional>

#include "engine/formula/Aggregates.h"
#include "engine/formula/RootFinding.h"

// What series of payments are worth.

namespace tolvane::engine {
namespace {

// The numbers of an argument in reading order; what is no number in a range is left out.
std::vector<double> SeriesAt(FunctionCall& call, std::size_t i) {
  std::vector<double> series;
  const Operand& argument = call.Argument(i);
  const bool isBlock = argument.isReference() && argument.areas().isSingle() &&
                       argument.areas()[0].rect.columns() > 1 && argument.areas()[0].rect.rows() > 1;
  if (!isBlock) {
    ForEachNumber(call, i, i + 1, [&](double number) { series.push_back(number); });
    return series;
  }
  const ArrayPtr block = call.evaluator.ToArray(argument);
  if (block == nullptr) throw FunctionError{ErrorCode::Value};
  for (const Value& value : block->values) {
    if (value.isError()) throw FunctionError{value.error()};
    if (value.isNumber()) series.push_back(value.number());
  }
  return series;
}

// The first payment comes `delay` periods from now.
double PresentValue(const std::vector<double>& series, double rate, int delay) {
  double sum = 0;
  // From the last back to the first, so that no power is needed.
  for (auto payment = series.rbegin(); payment != series.rend(); ++payment) sum = sum / (1 + rate) + *payment;
  return delay == 0 ? sum : sum / (1 + rate);
}

Operand Npv(FunctionCall& call) {
  const double rate = call.Number(0);
  std::vector<double> series;
  for (std::size_t i = 1; i < call.count(); ++i) {
    const std::vector<double> part = SeriesAt(call, i);
    series.insert(series.end(), part.begin(), part.end());
  }
  if (rate == -1) return ErrorCode::Div0;
  return FiniteOr(PresentValue(series, rate, 1));
}

bool HasBothSigns(const std::vector<double>& series) {
  bool gains = false;
  bool losses = false;
  for (const double payment : series) {
    gains = gains || payment > 0;
    losses = losses || payment < 0;
  }
  return gains && losses;
}

Operand Irr(FunctionCall& call) {
  const std::vector<double> series = SeriesAt(call, 0);
  if (!HasBothSigns(series)) return ErrorCode::Num;
  const double guess = call.Has(1) ? call.Number(1) : 0.1;
  if (guess <= -1) return ErrorCode::Value;
  const auto rate = FindRate([&](double at) { return PresentValue(series, at, 0); }, guess);
  return rate ? Operand(*rate) : Operand(ErrorCode::Num);
}

Operand Mirr(FunctionCall& call) {
  const std::vector<double> series = SeriesAt(call, 0);
  const double financed = call.Number(1);
  const double reinvested = call.Number(2);
  if (!HasBothSigns(series)) return ErrorCode::Div0;
  if (financed <= -1 || reinvested <= -1) return ErrorCode::Value;
  std::vector<double> gains;
  std::vector<double> losses;
  for (const double payment : series) {
    gains.push_back(std::max(payment, 0.0));
    losses.push_back(std::min(payment, 0.0));
  }
  const auto periods = static_cast<double>(series.size()) - 1;
  const double final = PresentValue(gains, reinvested, 0) * std::pow(1 + reinvested, periods);
  return FiniteOr(std::pow(final / -PresentValue(losses, financed, 0), 1 / periods) - 1);
}

// Payments on days, which count from the first.
struct DatedSeries {
  std::vector<double> payments;
  std::vector<double> years;
};

DatedSeries DatedSeriesAt(FunctionCall& call, std::size_t payments, std::size_t dates) {
  DatedSeries series{SeriesAt(call, payments), SeriesAt(call, dates)};
  if (series.payments.size() != series.years.size() || series.payments.empty()) throw FunctionError{ErrorCode::Num};
  const double first = std::floor(series.years.front());
  for (double& date : series.years) {
    if (std::floor(date) < first || date < 0) throw FunctionError{ErrorCode::Num};
    constexpr double kDaysPerYear = 365;
    date = (std::floor(date) - first) / kDaysPerYear;
  }
  return series;
}

double PresentValue(const DatedSeries& series, double rate) {
  double sum = 0;
  for (std::size_t i = 0; i < series.payments.size(); ++i) {
    sum += series.payments[i] / std::pow(1 + rate, series.years[i]);
  }
  return sum;
}

Operand XNpv(FunctionCall& call) {
  const double rate = call.Number(0);
  const DatedSeries series = DatedSeriesAt(call, 1, 2);
  if (rate < 0) return ErrorCode::Num;
  return FiniteOr(PresentValue(series, rate));
}

Operand XIrr(FunctionCall& call) {
  const DatedSeries series = DatedSeriesAt(call, 0, 1);
  const double guess = call.Has(2) ? call.Number(2) : 0.1;
  if (!HasBothSigns(series.payments) || guess <= -1) return ErrorCode::Num;
  const auto rate = FindRate([&](double at) { return PresentValue(series, at); }, guess);
  return rate ? Operand(*rate) : Operand(ErrorCode::Num);
}

constexpr Function kFunctions[] = {
    {"IRR", 1, 2, "RV", Irr},    {"MIRR", 3, 3, "RVV", Mirr}, {"NPV", 2, kMostArguments, "VR", Npv},
    {"XIRR", 2, 3, "RRV", XIrr}, {"XNPV", 3, 3, "VRR", XNpv},
};

}  // namespace

std::span<const Function> CashFlowFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
