#include "tests/formulas/differential/ArgumentMaker.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tolvane::formulacases {

namespace {

constexpr DataColumn kAllColumns[] = {kWholeNumbers, kDecimals,    kWords,         kDates,      kMixed,
                                      kWithErrors,   kMostlyBlank, kAscending,     kDescending, kSortedWords,
                                      kBooleans,     kTextNumbers, kEmptyTexts,    kCashFlows,  kErrors,
                                      kTimes,        kDateTexts,   kAscendingDates};
constexpr DataColumn kNumberColumns[] = {kWholeNumbers, kDecimals,   kDates,     kMostlyBlank,
                                         kAscending,    kDescending, kCashFlows, kTimes};

struct Group {
  std::string_view kind;
  std::string_view choices;  // parted by spaces
};

// Arguments that are one of a few things.
constexpr Group kChoices[] = {
    {"significance", "1 2 3 0.5 0.1 10 100 -1 -2 -0.5 0"},
    {"truth", "TRUE FALSE 0 1"},
    {"matchtype", "0 1 -1 FALSE TRUE"},
    {"subtotal", "1 2 3 4 5 6 7 8 9 10 11 101 102 103 104 105 106 107 108 109 110 111 0 12"},
    {"aggregate", "1 2 3 4 5 6 7 8 9 10 11 12"},
    {"aggregatek", "14 15 16 17"},
    {"option", "0 1 2 3 4 5 6 7"},
    {"weekday", "1 2 3 11 12 13 14 15 16 17 0 4"},
    {"weeknum", "1 2 11 12 13 14 15 16 17 21 0 3"},
    {"weekend", "1 2 3 7 11 12 17 \"0000011\" \"1000001\" \"1111111\" 0 \"abc\""},
    {"basis", "0 1 2 3 4 5 -1"},
    {"unit", "\"y\" \"m\" \"d\" \"ym\" \"yd\" \"Y\" \"M\" \"D\" \"x\" \"\""},
    {"rate", "0.05 0.1 0.004 0 0.075/12 5% -0.02"},
    {"nper", "12 24 360 10 1 5.5 0"},
    {"period", "1 2 6 12 24 0 13"},
    {"money", "1000 -1000 250.5 -75 0 100000 -5000"},
    {"paytype", "0 1 TRUE FALSE 2"},
    {"guess", "0.1 0.05 0.5 0 0.2"},
    {"compounding", "1 2 4 12 0 2.7"},
    {"percent", "0 0.25 0.5 0.9 1 0.33 1.1 -0.1"},
    {"quart", "0 1 2 3 4 5 -1 1.9"},
    {"format", "\"0\" \"0.00\" \"#,##0\" \"0%\" \"yyyy-mm-dd\" \"@\" \"000\" \"0.0E+00\" \"mmm\" \"hh:mm\""},
    {"decimalmark", "\".\" \",\""},
    {"groupmark", "\",\" \".\" \" \""},
    {"absolute", "1 2 3 4 5 0"},
    {"celltext", "\"Data!A3\" \"Data!A1:A5\" \"Data!$B$7\" \"Nowhere!A1\" \"\" \"A\" \"Data!E\"&3"},
    {"info", "\"row\" \"col\" \"contents\" \"type\" \"TYPE\" \"nonsense\""},
    {"mode", "0 1 -1"},
    {"delimiter", "\",\" \"\" \"; \" \"-\""},
};

// A number as a formula writes it.
std::string Digits(int hundredths) {
  std::string text = std::to_string(std::abs(hundredths) / 100);
  if (const int rest = std::abs(hundredths) % 100; rest != 0) {
    text += "." + std::string(rest < 10 ? "0" : "") + std::to_string(rest);
    if (text.back() == '0') text.pop_back();
  }
  return hundredths < 0 ? "-" + text : text;
}

bool IsOneOf(std::string_view kind, std::initializer_list<std::string_view> kinds) {
  return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

}  // namespace

void ArgumentMaker::ChooseRows() {
  firstRow_ = dice_.Percent(50) ? 1 : dice_.Between(1, kDataRows - 3);
  lastRow_ = dice_.Percent(40) ? kDataRows : std::min(kDataRows + 3, firstRow_ + dice_.Between(2, 14));
}

Piece ArgumentMaker::Make(std::string_view kind) {
  if (kind != "ref" && kind != "range" && dice_.Percent(15)) return Odd();
  return Ordinary(kind);
}

Piece ArgumentMaker::Odd() {
  switch (dice_.Between(0, 17)) {
    case 0:
      return Constant("", "nothing");
    case 1:
      return Constant("\"\"", "empty text");
    case 2:
      return Constant("\"abc\"", "text");
    case 3:
      return Constant("\"5\"", "text number");
    case 4:
      return Constant(dice_.Percent(50) ? "TRUE" : "FALSE", "boolean");
    case 5:
      return Constant(dice_.Percent(50) ? "#N/A" : "#DIV/0!", "error");
    case 6:
      return Constant("1E+300", "huge number");
    case 7:
      return Constant(Digits(dice_.Between(-900, 900)), "number");
    case 8:
      return Constant("Data!Z9", "blank cell");
    case 9:
      return Constant("{1,2;3,4}", "array");
    case 10:
      return Range(kWholeNumbers);
    case 11:
      return Constant("0", "zero");
    case 12:
      return Constant("\"2024-02-29\"", "date text");
    default:
      return Cell(dice_.OneOf(kAllColumns));
  }
}

Piece ArgumentMaker::Ordinary(std::string_view kind) {
  if (IsOneOf(kind, {"num", "int", "count", "position", "digits", "number", "year", "column"})) return Number(kind);
  if (IsOneOf(kind, {"text", "needle", "char", "numbertext", "datetext", "timetext", "sheetname"}))
    return TextPiece(kind);
  if (IsOneOf(kind, {"date", "time", "months"})) return DatePiece(kind);
  if (kind == "criterion") return Criterion();
  if (IsOneOf(kind, {"any", "branch"})) {
    return dice_.Percent(50) ? Odd() : Ordinary(dice_.Percent(50) ? "num" : "text");
  }
  if (std::any_of(std::begin(kChoices), std::end(kChoices), [&](const Group& group) { return group.kind == kind; })) {
    return Choice(kind);
  }
  return RangePiece(kind);
}

Piece ArgumentMaker::Number(std::string_view kind) {
  if (kind == "int") return WholeNumber(-5, 40);
  if (kind == "year") return WholeNumber(1901, 2100);
  if (kind == "column") return WholeNumber(1, 4);
  if (kind == "count") return WholeNumber(-1, 8);
  if (kind == "position") return WholeNumber(0, 6);
  if (kind == "digits") return WholeNumber(-3, 5);
  if (dice_.Percent(40)) return Cell(dice_.OneOf(kNumberColumns));
  if (dice_.Percent(10)) return Constant(Digits(100 * dice_.Between(-9, 9)) + ".5", "number");
  return Constant(Digits(dice_.Between(-3000, 9000)), "number");
}

Piece ArgumentMaker::WholeNumber(int lowest, int highest) {
  if (dice_.Percent(10)) return Constant(std::to_string(dice_.Between(lowest, highest)) + ".7", "fraction");
  return Constant(std::to_string(dice_.Between(lowest, highest)), "number");
}

Piece ArgumentMaker::TextPiece(std::string_view kind) {
  constexpr const char* kTexts[] = {"\"Hello World\"",    "\"a-b-c-a\"",           "\"banana\"",
                                    "\"  spaced  out \"", "\"MiXed cASE o'neil\"", "\"caf\xC3\xA9 \xE2\x82\xAC\"",
                                    "\"x*y?z\""};
  constexpr const char* kNeedles[] = {"\"a\"", "\"A\"", "\"an\"", "\"-\"",  "\" \"",
                                      "\"?\"", "\"*\"", "\"~?\"", "\"zz\"", "\"b*a\""};
  constexpr const char* kChars[] = {"\"A\"", "\"a\"", "\" \"", "\"0\"", "\"\xC3\xA9\"", "\"\xE2\x82\xAC\"", "\"ABC\""};
  constexpr const char* kNumberTexts[] = {"\"12\"",  "\"1,234.5\"", "\"5%\"", "\"$7\"",  "\"(3)\"",   "\"1E3\"",
                                          "\" 8 \"", "\"-4\"",      "\"x\"",  "\"1 2\"", "\"12:30\"", "\"2024-01-31\""};
  constexpr const char* kTypedDates[] = {
      "\"2024-02-29\"", "\"1/2/2020\"",       "\"31-Jan-2020\"", "\"15 March 2010\"",
      "\"2023-02-29\"", "\"March 15, 2010\"", "\"x\"",           "\"2020-01-31 12:30\""};
  constexpr const char* kTimeTexts[] = {"\"12:30\"", "\"1:30 PM\"", "\"23:59:59\"", "\"2020-01-31 06:00\"",
                                        "\"25:00\"", "\"x\"",       "\"12:60\"",    "\"6 AM\""};
  if (kind == "needle") return Constant(dice_.OneOf(kNeedles), "needle");
  if (kind == "char") return Constant(dice_.OneOf(kChars), "text");
  if (kind == "numbertext") return Constant(dice_.OneOf(kNumberTexts), "text");
  if (kind == "datetext") return Constant(dice_.OneOf(kTypedDates), "text");
  if (kind == "timetext") return Constant(dice_.OneOf(kTimeTexts), "text");
  if (kind == "sheetname") return Constant("\"Data\"", "text");
  if (dice_.Percent(40)) return Cell(dice_.Percent(70) ? kWords : dice_.OneOf(kAllColumns));
  return Constant(dice_.OneOf(kTexts), "text");
}

Piece ArgumentMaker::DatePiece(std::string_view kind) {
  if (kind == "months") return WholeNumber(-30, 30);
  if (kind == "time") {
    if (dice_.Percent(60)) return Cell(kTimes);
    return Constant(std::to_string(dice_.Between(0, 50000)) + ".75", "date and time");
  }
  switch (dice_.Between(0, 5)) {
    case 0:
      return Cell(kAscendingDates);
    case 1: {
      const std::string year = std::to_string(dice_.Between(1995, 2030));
      const std::string month = std::to_string(dice_.Between(1, 12));
      return Constant("DATE(" + year + "," + month + "," + std::to_string(dice_.Between(1, 31)) + ")", "date");
    }
    case 2: {
      // Ends of months, where rules differ.
      constexpr const char* kEnds[] = {"45351", "45322", "45350", "44985", "45657", "45658", "36585", "45412"};
      return Constant(dice_.OneOf(kEnds), "date");
    }
    case 3:
      return Constant(std::to_string(dice_.Between(61, 60000)), "date");
    default:
      return Cell(kDates);
  }
}

Piece ArgumentMaker::Criterion() {
  switch (dice_.Between(0, 11)) {
    case 0:
      return Constant("\">" + std::to_string(dice_.Between(-5, 15)) + "\"", "comparison");
    case 1:
      return Constant("\"<=" + std::to_string(dice_.Between(-5, 15)) + "\"", "comparison");
    case 2:
      return Constant("\"<>" + std::to_string(dice_.Between(0, 12)) + "\"", "comparison");
    case 3:
      return Constant(std::to_string(dice_.Between(-5, 12)), "number");
    case 4: {
      constexpr const char* kWildcards[] = {"\"f*\"", "\"*e\"",     "\"?oo\"", "\"fo?\"",  "\"*a*\"", "\"a~*b\"",
                                            "\"*\"",  "\"what~?\"", "\"???\"", "\"<>f*\"", "\"=*d\""};
      return Constant(dice_.OneOf(kWildcards), "wildcard");
    }
    case 5: {
      constexpr const char* kTexts[] = {"\"apple\"", "\"FOOD\"", "\"=food\"", "\"<>apple\"", "\"car\"", "\"date\""};
      return Constant(dice_.OneOf(kTexts), "word");
    }
    case 6: {
      constexpr const char* kOrders[] = {"\">banana\"", "\"<food\"", "\">=car\"", "\"<=m\""};
      return Constant(dice_.OneOf(kOrders), "word comparison");
    }
    case 7:
      return Constant(dice_.Percent(50) ? "\"=\"" : "\"<>\"", "blank");
    case 8:
      return Constant("\"\"", "empty text");
    case 9:
      return Constant(dice_.Percent(50) ? "TRUE" : "\"=TRUE\"", "boolean");
    case 10:
      return Constant("\">=\"&DATE(2010,1,1)", "date comparison");
    default:
      return Cell(dice_.OneOf(kAllColumns));
  }
}

Piece ArgumentMaker::Choice(std::string_view kind) {
  for (const Group& group : kChoices) {
    if (group.kind != kind) continue;
    std::vector<std::string> choices;
    std::string_view rest = group.choices;
    bool quoted = false;
    std::string choice;
    for (const char c : rest) {
      if (c == '"') quoted = !quoted;
      if (c == ' ' && !quoted) {
        choices.push_back(choice);
        choice.clear();
      } else {
        choice.push_back(c);
      }
    }
    choices.push_back(choice);
    const std::string chosen = dice_.OneOf(choices);
    return {chosen, chosen};
  }
  throw std::logic_error("no choices of " + std::string(kind));
}

Piece ArgumentMaker::RangePiece(std::string_view kind) {
  if (kind == "range") return AnyRange();
  if (kind == "numbers") return dice_.Percent(85) ? Range(dice_.OneOf(kNumberColumns)) : AnyRange();
  if (kind == "ascending") return Range(kAscending);
  if (kind == "descending") return Range(kDescending);
  if (kind == "words") return Range(kWords);
  if (kind == "wholes") return Range(kWholeNumbers);
  if (kind == "member") return Cell(kWholeNumbers);
  if (kind == "flows") return dice_.Percent(80) ? Range(kCashFlows) : AnyRange();
  if (kind == "flowdates") return dice_.Percent(90) ? Range(kAscendingDates) : AnyRange();
  if (kind == "holidays") return dice_.Percent(80) ? Range(kAscendingDates) : AnyRange();
  if (kind == "ref") {
    if (dice_.Percent(40)) return Cell(dice_.OneOf(kAllColumns));
    return AnyRange();
  }
  const std::string rows = std::to_string(firstRow_);
  const std::string last = std::to_string(lastRow_);
  if (kind == "table") {  // ascending numbers first
    return {"Data!H" + rows + ":K" + last, "table"};
  }
  if (kind == "wordtable") return {"Data!J" + rows + ":M" + last, "word table"};
  if (kind == "unsorted") return {"Data!C" + rows + ":G" + last, "unsorted table"};
  if (kind == "flat")
    return {dice_.Percent(50) ? "Data!A1:M5" : "{1,2,5,9;10,20,50,90;\"a\",\"b\",\"c\",\"d\"}", "flat"};
  throw std::logic_error("no arguments of kind " + std::string(kind));
}

Piece ArgumentMaker::Cell(const DataColumn& column) {
  return {"Data!" + std::string(column.letter) + std::to_string(dice_.Between(1, kDataRows)),
          std::string(column.kind) + " cell"};
}

Piece ArgumentMaker::Range(const DataColumn& column) {
  if (dice_.Percent(5)) {
    return {"Data!" + std::string(column.letter) + ":" + column.letter, std::string(column.kind) + " column"};
  }
  return {
      "Data!" + std::string(column.letter) + std::to_string(firstRow_) + ":" + column.letter + std::to_string(lastRow_),
      column.kind};
}

Piece ArgumentMaker::AnyRange() {
  switch (dice_.Between(0, 11)) {
    case 0:
      return {"{1,2.5,-3;4,5,6}", "array of numbers"};
    case 1:
      return {"{1,\"a\",TRUE,\"7\"}", "mixed array"};
    case 2:
      return {"Data!A" + std::to_string(firstRow_) + ":C" + std::to_string(lastRow_), "block"};
    default:
      return Range(dice_.OneOf(kAllColumns));
  }
}

}  // namespace tolvane::formulacases
