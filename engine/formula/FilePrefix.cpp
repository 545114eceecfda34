#include <algorithm>

#include "engine/formula/FunctionTable.h"

namespace tolvane::engine {
namespace {

constexpr std::string_view kPrefix = "_XLFN.";
constexpr std::string_view kSheetPrefix = "_XLWS.";  // behind the other one, of some functions

// Source: Microsoft's help page on the _xlfn. prefix, from memory. In alphabetical order.
constexpr std::string_view kLaterFunctions[] = {
    // clang-format off
    "ACOT", "ACOTH", "AGGREGATE", "ARABIC", "ARRAYTOTEXT", "BASE", "BETA.DIST", "BETA.INV", "BINOM.DIST", "BINOM.DIST.RANGE",
    "BINOM.INV", "BITAND", "BITLSHIFT", "BITOR", "BITRSHIFT", "BITXOR", "BYCOL", "BYROW", "CEILING.MATH",
    "CHISQ.DIST", "CHISQ.DIST.RT", "CHISQ.INV", "CHISQ.INV.RT", "CHISQ.TEST", "CHOOSECOLS", "CHOOSEROWS", "COMBINA",
    "CONCAT", "CONFIDENCE.NORM", "CONFIDENCE.T", "COT", "COTH", "COVARIANCE.P", "COVARIANCE.S", "CSC", "CSCH", "DAYS",
    "DECIMAL", "DROP", "ENCODEURL", "ERF.PRECISE", "ERFC.PRECISE", "EXPAND", "EXPON.DIST", "F.DIST", "F.DIST.RT",
    "F.INV", "F.INV.RT", "F.TEST", "FILTER", "FILTERXML", "FLOOR.MATH", "FORECAST.LINEAR", "FORMULATEXT", "GAMMA",
    "GAMMA.DIST", "GAMMA.INV", "GAMMALN.PRECISE", "GAUSS", "HSTACK", "HYPGEOM.DIST", "IFNA", "IFS", "IMCOSH", "IMCOT",
    "IMCSC", "IMCSCH", "IMSEC", "IMSECH", "IMSINH", "IMTAN", "ISFORMULA", "ISOWEEKNUM", "LAMBDA", "LET",
    "LOGNORM.DIST", "LOGNORM.INV", "MAKEARRAY", "MAP", "MAXIFS", "MINIFS", "MODE.MULT", "MODE.SNGL", "MUNIT",
    "NEGBINOM.DIST", "NORM.DIST", "NORM.INV", "NORM.S.DIST", "NORM.S.INV", "NUMBERVALUE", "PDURATION",
    "PERCENTILE.EXC", "PERCENTILE.INC", "PERCENTRANK.EXC", "PERCENTRANK.INC", "PERMUTATIONA", "PHI", "POISSON.DIST",
    "QUARTILE.EXC", "QUARTILE.INC", "RANDARRAY", "RANK.AVG", "RANK.EQ", "REDUCE", "RRI", "SCAN", "SEC", "SECH",
    "SEQUENCE", "SHEET", "SHEETS", "SKEW.P", "SORT", "SORTBY", "STDEV.P", "STDEV.S", "SWITCH", "T.DIST", "T.DIST.2T",
    "T.DIST.RT", "T.INV", "T.INV.2T", "T.TEST", "TAKE", "TEXTAFTER", "TEXTBEFORE", "TEXTJOIN", "TEXTSPLIT", "TOCOL",
    "TOROW", "UNICHAR", "UNICODE", "UNIQUE", "VALUETOTEXT", "VAR.P", "VAR.S", "VSTACK", "WEBSERVICE", "WEIBULL.DIST",
    "WRAPCOLS", "WRAPROWS", "XLOOKUP", "XMATCH", "XOR", "Z.TEST"
    // clang-format on
};
static_assert(std::is_sorted(std::begin(kLaterFunctions), std::end(kLaterFunctions)));

}  // namespace

bool NeedsFilePrefix(std::string_view upperName) {
  return std::binary_search(std::begin(kLaterFunctions), std::end(kLaterFunctions), upperName);
}

std::string_view FilePrefixOf(std::string_view upperName) {
  if (!NeedsFilePrefix(upperName)) return {};
  return upperName == "FILTER" || upperName == "SORT" ? "_xlfn._xlws." : "_xlfn.";
}

std::string_view WithoutFilePrefix(std::string_view upperName) {
  std::string_view name = upperName;
  if (name.starts_with(kPrefix)) name.remove_prefix(kPrefix.size());
  if (name.starts_with(kSheetPrefix)) name.remove_prefix(kSheetPrefix.size());
  return NeedsFilePrefix(name) ? name : upperName;
}

}  // namespace tolvane::engine
