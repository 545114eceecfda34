#include "tests/formulas/differential/FormulaMaker.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace tolvane::formulacases {

namespace {

// What each parameter is given, parted by spaces: kinds of ArgumentMaker. Those behind "?" may be left out; those
// behind
// "+" may come again, as a group. A function stands here several times when it is used in several ways.
struct Recipe {
  std::string_view name;
  std::string_view parameters;
};

constexpr Recipe kRecipes[] = {
    {"SUM", "range + any"},
    {"SUM", "range + range"},
    {"SUBTOTAL", "subtotal ref + ref"},
    {"AGGREGATE", "aggregate option ref"},
    {"AGGREGATE", "aggregatek option numbers position"},
    {"PRODUCT", "range + any"},
    {"SUMIF", "range criterion ? numbers"},
    {"SUMIFS", "numbers range criterion + range criterion"},
    {"COUNTIF", "range criterion"},
    {"COUNTIFS", "range criterion + range criterion"},
    {"AVERAGEIF", "range criterion ? numbers"},
    {"AVERAGEIFS", "numbers range criterion + range criterion"},
    {"MAXIFS", "numbers range criterion + range criterion"},
    {"MINIFS", "numbers range criterion + range criterion"},
    {"SUMPRODUCT", "numbers + numbers"},
    {"SUMPRODUCT", "range range"},
    {"COUNT", "range + any"},
    {"COUNTA", "range + any"},
    {"COUNTBLANK", "ref"},
    {"AVERAGE", "range + any"},
    {"MEDIAN", "range + any"},
    {"MODE", "numbers + any"},
    {"MODE.SNGL", "numbers"},
    {"MODE.SNGL", "wholes"},
    {"MIN", "range + any"},
    {"MAX", "range + any"},
    {"LARGE", "numbers position"},
    {"SMALL", "numbers position"},
    {"PERCENTILE", "numbers percent"},
    {"PERCENTILE.INC", "numbers percent"},
    {"PERCENTILE.EXC", "numbers percent"},
    {"QUARTILE", "numbers quart"},
    {"QUARTILE.INC", "numbers quart"},
    {"QUARTILE.EXC", "numbers quart"},
    {"RANK", "number numbers ? mode"},
    {"RANK", "member wholes ? mode"},
    {"RANK.EQ", "member wholes ? mode"},
    {"RANK.AVG", "member wholes ? mode"},
    {"RANK.EQ", "number numbers ? mode"},
    {"RANK.AVG", "number numbers ? mode"},
    {"STDEV", "range + any"},
    {"STDEV.S", "numbers"},
    {"STDEV.P", "numbers + any"},
    {"STDEVP", "numbers"},
    {"VAR", "range + any"},
    {"VAR.S", "numbers"},
    {"VAR.P", "numbers + any"},
    {"VARP", "numbers"},
    {"SUMSQ", "range + any"},
    {"ROUND", "num digits"},
    {"ROUNDUP", "num digits"},
    {"ROUNDDOWN", "num digits"},
    {"MROUND", "num significance"},
    {"INT", "num"},
    {"TRUNC", "num ? digits"},
    {"MOD", "num significance"},
    {"QUOTIENT", "num significance"},
    {"ABS", "num"},
    {"SIGN", "num"},
    {"SQRT", "num"},
    {"POWER", "num digits"},
    {"EXP", "digits"},
    {"LN", "num"},
    {"LOG", "num ? num"},
    {"LOG10", "num"},
    {"PI", ""},
    {"CEILING", "num significance"},
    {"CEILING.MATH", "num ? significance mode"},
    {"FLOOR", "num significance"},
    {"FLOOR.MATH", "num ? significance mode"},
    {"EVEN", "num"},
    {"ODD", "num"},
    {"FACT", "count"},
    {"COMBIN", "count count"},
    {"GCD", "int + int"},
    {"LCM", "int + int"},
    {"SIN", "num"},
    {"COS", "num"},
    {"TAN", "digits"},
    {"COT", "digits"},
    {"SEC", "digits"},
    {"CSC", "digits"},
    {"ASIN", "percent"},
    {"ACOS", "percent"},
    {"ATAN", "num"},
    {"ATAN2", "num num"},
    {"ACOT", "num"},
    {"SINH", "digits"},
    {"COSH", "digits"},
    {"TANH", "digits"},
    {"ASINH", "num"},
    {"ACOSH", "num"},
    {"ATANH", "percent"},
    {"DEGREES", "num"},
    {"RADIANS", "num"},
    {"IF", "any branch ? branch"},
    {"IF", "truth branch branch"},
    {"IFS", "truth branch + truth branch"},
    {"IFERROR", "any branch"},
    {"IFNA", "any branch"},
    {"AND", "any + any"},
    {"AND", "range"},
    {"OR", "any + any"},
    {"OR", "range"},
    {"XOR", "any + any"},
    {"XOR", "range"},
    {"NOT", "any"},
    {"TRUE", ""},
    {"FALSE", ""},
    {"NA", ""},
    {"CHOOSE", "position branch branch + branch"},
    {"SWITCH", "any any branch + any branch"},
    {"SWITCH", "count 1 branch 2 branch branch"},
    {"ISBLANK", "any"},
    {"ISERR", "any"},
    {"ISERROR", "any"},
    {"ISEVEN", "num"},
    {"ISODD", "num"},
    {"ISFORMULA", "ref"},
    {"ISLOGICAL", "any"},
    {"ISNA", "any"},
    {"ISNONTEXT", "any"},
    {"ISNUMBER", "any"},
    {"ISREF", "ref"},
    {"ISREF", "any"},
    {"ISTEXT", "any"},
    {"N", "any"},
    {"T", "any"},
    {"TYPE", "any"},
    {"ERROR.TYPE", "any"},
    {"FORMULATEXT", "ref"},
    {"CELL", "info ref"},
    {"MATCH", "number ascending ? matchtype"},
    {"MATCH", "number descending ? matchtype"},
    {"MATCH", "needle words 0"},
    {"MATCH", "any range ? matchtype"},
    {"INDEX", "range position ? position"},
    {"INDEX", "table position position"},
    {"VLOOKUP", "number table column ? truth"},
    {"VLOOKUP", "text wordtable column ? truth"},
    {"VLOOKUP", "any unsorted column FALSE"},
    {"VLOOKUP", "number table count"},
    {"HLOOKUP", "number flat column ? truth"},
    {"HLOOKUP", "any flat count FALSE"},
    {"LOOKUP", "number ascending ? numbers"},
    {"LOOKUP", "any table"},
    {"OFFSET", "ref digits digits ? position position"},
    {"INDIRECT", "celltext ? truth"},
    {"ADDRESS", "count count ? absolute truth sheetname"},
    {"ROW", "ref"},
    {"ROW", ""},
    {"ROWS", "range"},
    {"COLUMN", "ref"},
    {"COLUMN", ""},
    {"COLUMNS", "range"},
    {"AREAS", "ref"},
    {"TRANSPOSE", "range"},
    {"HYPERLINK", "text ? any"},
    {"LEFT", "text ? count"},
    {"RIGHT", "text ? count"},
    {"MID", "text position count"},
    {"LEN", "text"},
    {"FIND", "needle text ? position"},
    {"SEARCH", "needle text ? position"},
    {"SUBSTITUTE", "text needle text ? position"},
    {"REPLACE", "text position count text"},
    {"UPPER", "text"},
    {"LOWER", "text"},
    {"PROPER", "text"},
    {"TRIM", "text"},
    {"CLEAN", "text"},
    {"CONCATENATE", "text + any"},
    {"CONCAT", "range + any"},
    {"TEXTJOIN", "delimiter truth range + any"},
    {"TEXT", "num format"},
    {"VALUE", "numbertext"},
    {"NUMBERVALUE", "numbertext ? decimalmark groupmark"},
    {"FIXED", "num ? digits truth"},
    {"DOLLAR", "num ? digits"},
    {"REPT", "text count"},
    {"EXACT", "text text"},
    {"CHAR", "int"},
    {"CODE", "char"},
    {"UNICHAR", "int"},
    {"UNICODE", "char"},
    {"DATE", "year months int"},
    {"DATE", "int months int"},
    {"DATEVALUE", "datetext"},
    {"TIMEVALUE", "timetext"},
    {"YEAR", "date"},
    {"MONTH", "date"},
    {"DAY", "date"},
    {"WEEKDAY", "date ? weekday"},
    {"WEEKNUM", "date ? weeknum"},
    {"ISOWEEKNUM", "date"},
    {"EDATE", "date months"},
    {"EOMONTH", "date months"},
    {"DATEDIF", "date date unit"},
    {"DAYS", "date date"},
    {"DAYS360", "date date ? truth"},
    {"NETWORKDAYS", "date date ? holidays"},
    {"NETWORKDAYS.INTL", "date date ? weekend holidays"},
    {"WORKDAY", "date months ? holidays"},
    {"WORKDAY.INTL", "date months ? weekend holidays"},
    {"YEARFRAC", "date date ? basis"},
    {"TIME", "int int int"},
    {"HOUR", "time"},
    {"MINUTE", "time"},
    {"SECOND", "time"},
    {"PMT", "rate nper money ? money paytype"},
    {"IPMT", "rate period nper money ? money paytype"},
    {"PPMT", "rate period nper money ? money paytype"},
    {"FV", "rate nper money ? money paytype"},
    {"PV", "rate nper money ? money paytype"},
    {"RATE", "nper money money ? money paytype guess"},
    {"NPER", "rate money money ? money paytype"},
    {"NPV", "rate flows + any"},
    {"IRR", "flows ? guess"},
    {"MIRR", "flows rate rate"},
    {"XNPV", "rate flows flowdates"},
    {"XIRR", "flows flowdates ? guess"},
    {"CUMIPMT", "rate nper money period period paytype"},
    {"CUMPRINC", "rate nper money period period paytype"},
    {"EFFECT", "rate compounding"},
    {"NOMINAL", "rate compounding"},
    {"SLN", "money money nper"},
};

constexpr const char* kOperators[] = {"+", "-", "*", "/", "^", "&", "=", "<>", "<", ">", "<=", ">="};
constexpr int kOperationsPerRound = 12;

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  while (!text.empty()) {
    const std::size_t space = text.find(' ');
    if (space != 0) words.push_back(text.substr(0, space));
    if (space == std::string_view::npos) break;
    text.remove_prefix(space + 1);
  }
  return words;
}

bool IsNumber(std::string_view word) {
  return word.front() >= '0' && word.front() <= '9';
}

}  // namespace

bool IsMade(std::string_view function) {
  return std::any_of(std::begin(kRecipes), std::end(kRecipes),
                     [&](const Recipe& recipe) { return recipe.name == function; });
}

MadeFormula FormulaMaker::Next() {
  arguments_.ChooseRows();
  const std::size_t turn = next_++ % (std::size(kRecipes) + kOperationsPerRound);
  const Piece piece = turn < std::size(kRecipes) ? Call(kRecipes[turn].name, kRecipes[turn].parameters) : Operation();
  const bool isArray = dice_.Percent(8);
  return {"=" + piece.text, isArray ? "{" + piece.kind + "}" : piece.kind, isArray};
}

Piece FormulaMaker::Call(std::string_view name, std::string_view parameters) {
  const std::vector<std::string_view> words = Words(parameters);
  const auto repeated = std::find(words.begin(), words.end(), "+");
  std::vector<std::string_view> given(words.begin(), repeated);
  if (repeated != words.end()) {
    for (int more = dice_.Between(0, 2); more > 0; --more) given.insert(given.end(), repeated + 1, words.end());
  }
  if (const auto optional = std::find(given.begin(), given.end(), "?"); optional != given.end()) {
    const auto least = optional - given.begin();
    given.erase(optional);
    given.resize(static_cast<std::size_t>(dice_.Between(static_cast<int>(least), static_cast<int>(given.size()))));
  }
  Piece call{std::string(name) + "(", std::string(name) + "("};
  for (std::size_t i = 0; i < given.size(); ++i) {
    // A constant of the table stands for itself.
    const bool isFixed = IsNumber(given[i]) || given[i] == "FALSE";
    Piece argument = isFixed ? Piece{std::string(given[i]), std::string(given[i])} : arguments_.Make(given[i]);
    // Nothing as the only argument would be no argument.
    if (given.size() == 1 && argument.text.empty()) argument = {"Data!Z9", "blank cell"};
    call.text.append(i == 0 ? "" : ",").append(argument.text);
    call.kind.append(i == 0 ? "" : "; ").append(argument.kind);
  }
  call.text.push_back(')');
  call.kind.push_back(')');
  return call;
}

Piece FormulaMaker::Operation() {
  const auto operand = [&]() -> Piece {
    Piece piece = arguments_.Odd();
    return piece.text.empty() ? Piece{"1", "number"} : piece;
  };
  const Piece left = operand();
  const Piece right = operand();
  const char* op = dice_.OneOf(kOperators);
  if (dice_.Percent(10)) return {"-" + left.text + "%", "-" + left.kind + "%"};
  return {left.text + op + right.text, left.kind + " " + op + " " + right.kind};
}

}  // namespace tolvane::formulacases
