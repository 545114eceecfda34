#include <cmath>

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/RootFinding.h"

// Loans and savings with equal payments: what is there now, the payments and what is there in the end, each with
// interest, come to nothing. What one receives is positive, what one pays negative.

namespace tolvane::engine {
namespace {

struct Annuity {
  double rate = 0;  // per period
  double periods = 0;
  double payment = 0;
  double present = 0;
  double future = 0;
  bool atBeginning = false;
};

// Below -100% the powers alternate and exist for whole periods only.
double Growth(double rate, double periods) {
  return rate > -1 ? std::exp(periods * std::log1p(rate)) : std::pow(1 + rate, periods);
}

// What a payment of 1 in each period comes to in the end.
double PaymentsGrowth(const Annuity& of) {
  if (of.rate == 0) return of.periods;
  const double grown = of.rate > -1 ? std::expm1(of.periods * std::log1p(of.rate)) : Growth(of.rate, of.periods) - 1;
  const double sum = grown / of.rate;
  return of.atBeginning ? sum * (1 + of.rate) : sum;
}

double FutureValueOf(const Annuity& of) {
  return -(of.present * Growth(of.rate, of.periods) + of.payment * PaymentsGrowth(of));
}

double PaymentOf(const Annuity& of) {
  return -(of.present * Growth(of.rate, of.periods) + of.future) / PaymentsGrowth(of);
}

// The interest of a period, from 1.
double InterestOf(const Annuity& of, double period) {
  Annuity before = of;
  before.payment = PaymentOf(of);
  before.periods = period - 1;
  if (of.atBeginning) {
    // Paid with each payment is what has grown since the one before; nothing has before the first.
    if (period == 1) return 0;
    before.atBeginning = false;
    before.present += before.payment;
    before.periods = period - 2;
  }
  return FutureValueOf(before) * of.rate;
}

double Optional(FunctionCall& call, std::size_t i) {
  return call.Number(i, 0);
}

Operand FutureValue(FunctionCall& call) {
  Annuity of{call.Number(0), call.Number(1), call.Number(2)};
  of.present = Optional(call, 3);
  of.atBeginning = Optional(call, 4) != 0;
  return FiniteOr(FutureValueOf(of));
}

Operand PresentValue(FunctionCall& call) {
  Annuity of{call.Number(0), call.Number(1), call.Number(2)};
  of.future = Optional(call, 3);
  of.atBeginning = Optional(call, 4) != 0;
  return FiniteOr(-(of.future + of.payment * PaymentsGrowth(of)) / Growth(of.rate, of.periods));
}

Operand Payment(FunctionCall& call) {
  Annuity of{call.Number(0), call.Number(1)};
  of.present = call.Number(2);
  of.future = Optional(call, 3);
  of.atBeginning = Optional(call, 4) != 0;
  if (of.periods == 0) return ErrorCode::Num;
  return FiniteOr(PaymentOf(of));
}

// Of the arguments rate, period, periods, present, future and type.
Annuity LoanOf(FunctionCall& call) {
  Annuity of{call.Number(0), call.Number(2)};
  of.present = call.Number(3);
  of.future = Optional(call, 4);
  of.atBeginning = Optional(call, 5) != 0;
  const double period = call.Number(1);
  if (period < 1 || period >= of.periods + 1) throw FunctionError{ErrorCode::Num};
  return of;
}

Operand InterestPayment(FunctionCall& call) {
  return FiniteOr(InterestOf(LoanOf(call), call.Number(1)));
}
Operand PrincipalPayment(FunctionCall& call) {
  const Annuity of = LoanOf(call);
  return FiniteOr(PaymentOf(of) - InterestOf(of, call.Number(1)));
}

struct Cumulated {
  double interest = 0;
  double principal = 0;
};

// Of the arguments rate, periods, present, first, last and type.
Cumulated Cumulate(FunctionCall& call) {
  Annuity of{call.Number(0), call.Number(1)};
  of.present = call.Number(2);
  const double first = std::ceil(call.Number(3));
  const double last = std::trunc(call.Number(4));
  const double type = call.Number(5);
  constexpr double kMostPeriods = 1e7;
  if (of.rate <= 0 || of.periods <= 0 || of.present <= 0 || first < 1 || last < first || last > of.periods ||
      (type != 0 && type != 1) || of.periods > kMostPeriods) {
    throw FunctionError{ErrorCode::Num};
  }
  of.atBeginning = type == 1;
  Cumulated sums;
  const double payment = PaymentOf(of);
  for (double period = first; period <= last; ++period) {
    const double interest = InterestOf(of, period);
    sums.interest += interest;
    sums.principal += payment - interest;
  }
  return sums;
}

Operand CumulatedInterest(FunctionCall& call) {
  return FiniteOr(Cumulate(call).interest);
}
Operand CumulatedPrincipal(FunctionCall& call) {
  return FiniteOr(Cumulate(call).principal);
}

Operand Periods(FunctionCall& call) {
  const double rate = call.Number(0);
  const double payment = call.Number(1);
  const double present = call.Number(2);
  const double future = Optional(call, 3);
  if (rate <= -1) return ErrorCode::Num;
  if (rate == 0) return payment == 0 ? Operand(ErrorCode::Num) : Operand(-(present + future) / payment);
  const double perRate = payment * (Optional(call, 4) != 0 ? 1 + rate : 1) / rate;
  const double ratio = (perRate - future) / (perRate + present);
  return ratio > 0 ? FiniteOr(std::log(ratio) / std::log1p(rate)) : Value(ErrorCode::Num);
}

Operand Rate(FunctionCall& call) {
  Annuity of;
  of.periods = call.Number(0);
  of.payment = call.Number(1);
  of.present = call.Number(2);
  of.future = Optional(call, 3);
  of.atBeginning = Optional(call, 4) != 0;
  const double guess = call.Has(5) ? call.Number(5) : 0.1;
  if (of.periods <= 0 || guess <= -1) return ErrorCode::Num;
  const auto rate = FindRate(
      [&of](double at) {
        Annuity tried = of;
        tried.rate = at;
        return FutureValueOf(tried) - of.future;
      },
      guess);
  return rate ? Operand(*rate) : Operand(ErrorCode::Num);
}

Operand EffectiveRate(FunctionCall& call) {
  const double nominal = call.Number(0);
  const double periods = std::trunc(call.Number(1));
  if (nominal <= 0 || periods < 1) return ErrorCode::Num;
  return FiniteOr(std::pow(1 + nominal / periods, periods) - 1);
}

Operand NominalRate(FunctionCall& call) {
  const double effective = call.Number(0);
  const double periods = std::trunc(call.Number(1));
  if (effective <= 0 || periods < 1) return ErrorCode::Num;
  return FiniteOr((std::pow(1 + effective, 1 / periods) - 1) * periods);
}

Operand StraightLine(FunctionCall& call) {
  const double loss = call.Number(0) - call.Number(1);
  const double life = call.Number(2);
  return life == 0 ? Operand(ErrorCode::Div0) : Operand(FiniteOr(loss / life));
}

constexpr Function kFunctions[] = {
    {"CUMIPMT", 6, 6, "V", CumulatedInterest},
    {"CUMPRINC", 6, 6, "V", CumulatedPrincipal},
    {"EFFECT", 2, 2, "V", EffectiveRate},
    {"FV", 3, 5, "V", FutureValue},
    {"IPMT", 4, 6, "V", InterestPayment},
    {"NOMINAL", 2, 2, "V", NominalRate},
    {"NPER", 3, 5, "V", Periods},
    {"PMT", 3, 5, "V", Payment},
    {"PPMT", 4, 6, "V", PrincipalPayment},
    {"PV", 3, 5, "V", PresentValue},
    {"RATE", 3, 6, "V", Rate},
    {"SLN", 3, 3, "V", StraightLine},
};

}  // namespace

std::span<const Function> AnnuityFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
