#include "tests/formulas/differential/DataSheet.h"

#include <functional>

#include "engine/formula/Parser.h"
#include "tests/formulas/differential/Dice.h"

namespace tolvane::formulacases {

using engine::CellPos;
using engine::ErrorCode;
using engine::Value;

namespace {

constexpr const char* kWordList[] = {"apple",  "Apple",     "banana", "Cherry", "date",  "fig", "a*b",
                                     "what?",  "x~y",       "food",   "Food ",  " rent", "car", "Caf\xC3\xA9",
                                     "grocer", "two words", "a b c",  "fo",     "foo",   "zoo"};
constexpr const char* kSortedWordList[] = {"apple", "banana", "car",  "cherry", "date", "fig",  "food",
                                           "grape", "kiwi",   "lime", "mango",  "rent", "taxi", "zoo"};
constexpr const char* kNumberTexts[] = {"12", "3.5", "-7", "0", "100", "1e2", " 8 ", "007"};
constexpr const char* kDateTextList[] = {"2024-02-29", "2023-01-31", "2010-03-15", "1999-12-31"};
constexpr ErrorCode kErrorList[] = {ErrorCode::NA,   ErrorCode::Div0, ErrorCode::Value, ErrorCode::Ref,
                                    ErrorCode::Name, ErrorCode::Num,  ErrorCode::Null};

class Filler {
 public:
  Filler(engine::Sheet& sheet, std::uint64_t seed) : sheet_(sheet), dice_(seed) {}

  void Fill() {
    Column(kWholeNumbers, [&](int) { return Value(dice_.Between(-5, 25)); });
    Column(kDecimals, [&](int) { return Value(dice_.Between(-50000, 100000) / 100.0); });
    Column(kWords, [&](int) { return Value(dice_.OneOf(kWordList)); });
    Column(kDates, [&](int) { return Value(dice_.Between(36526, 46000)); });
    Column(kMixed, [&](int) { return Any(); });
    Column(kWithErrors, [&](int) { return dice_.Percent(15) ? Value(dice_.OneOf(kErrorList)) : Any(); });
    Column(kMostlyBlank, [&](int) { return dice_.Percent(20) ? Value(dice_.Between(1, 9)) : Value(); });
    int number = -10;
    Column(kAscending, [&](int) { return Value(number += dice_.Between(0, 4)); });
    number = 60;
    Column(kDescending, [&](int) { return Value(number -= dice_.Between(0, 4)); });
    Column(kSortedWords, [&](int row) {
      return Value(kSortedWordList[static_cast<std::size_t>(row - 1) * std::size(kSortedWordList) / kDataRows]);
    });
    Column(kBooleans, [&](int) { return Value(dice_.Percent(50)); });
    Column(kTextNumbers, [&](int) { return Value(dice_.OneOf(kNumberTexts)); });
    Column(kCashFlows, [&](int row) { return Value(row == 1 ? -5000 : dice_.Between(-300, 900)); });
    Column(kErrors, [&](int row) { return Value(kErrorList[static_cast<std::size_t>(row) % std::size(kErrorList)]); });
    Column(kTimes, [&](int) { return Value(dice_.Between(0, 86399) / 86400.0); });
    Column(kDateTexts, [&](int) { return Value(dice_.OneOf(kDateTextList)); });
    number = 39000;
    Column(kAscendingDates, [&](int) { return Value(number += dice_.Between(0, 60)); });
    FillEmptyTexts();
    for (const int row : {7, 8, 15, 22}) {
      sheet_.rows.Change(row, row, [](engine::Band& band) { band.hidden = true; });
    }
  }

 private:
  void Column(const DataColumn& column, const std::function<Value(int)>& make) {
    for (int row = 1; row <= kDataRows; ++row) {
      Value value = make(row);
      if (!value.isEmpty()) sheet_.SetValue({row, column.letter[0] - 'A' + 1}, value);
    }
  }
  // Empty texts are what formulas give.
  void FillEmptyTexts() {
    const int column = kEmptyTexts.letter[0] - 'A' + 1;
    for (int row = 1; row <= kDataRows; ++row) {
      const CellPos at{row, column};
      if (dice_.Percent(50)) {
        sheet_.SetValue(at, Value(dice_.Between(1, 20)));
      } else {
        sheet_.SetFormula(at, engine::ParseFormula("=\"\"", engine::Notation::A1, {sheet_.id(), at}, sheet_.book()));
      }
    }
  }
  Value Any() {
    switch (dice_.Between(0, 9)) {
      case 0:
      case 1:
      case 2:
        return Value(dice_.Between(-10, 30));
      case 3:
        return Value(dice_.Between(-999, 999) / 8.0);
      case 4:
      case 5:
        return Value(dice_.OneOf(kWordList));
      case 6:
        return Value(dice_.OneOf(kNumberTexts));
      case 7:
        return Value(dice_.Percent(50));
      case 8:
        return Value(dice_.Between(40000, 45000));
      default:
        return Value();
    }
  }

  engine::Sheet& sheet_;
  Dice dice_;
};

}  // namespace

void FillDataSheet(engine::Sheet& sheet, std::uint64_t seed) {
  Filler(sheet, seed).Fill();
}

}  // namespace tolvane::formulacases
