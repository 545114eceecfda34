#include <rapidcheck.h>

#include "engine/formula/FormulaFixture.h"

// SUM(A$1:A9) and its like, in any order, over values, errors and formulas that lean on other such sums.

namespace tolvane::engine {
namespace {

constexpr int kRows = 150;

int Below(int bound) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, bound));
}

// Column A holds values; B sums A down to any row, C the C above, by B.
class GrowingSums {
 public:
  GrowingSums() {
    for (int row = 1; row <= kRows; ++row) {
      sheet_.SetValue({row, 1}, 1 + Below(1000) / 8.0);
      bottoms_.push_back(1 + Below(kRows));
      Set({row, 2}, "=SUM(A$1:A" + std::to_string(bottoms_.back()) + ")");
      Set({row, 3}, row == 1 ? "=1" : "=SUM(C$1:C" + std::to_string(row - 1) + ")/B" + std::to_string(row));
    }
  }

  void Change() {
    const bool toError = Below(3) == 0;
    sheet_.SetValue({1 + Below(kRows), 1}, toError ? Value(ErrorCode::NA) : Value(1 + Below(1000) / 8.0));
  }

  void Check() {
    calculator_.Recalculate();
    std::vector<Value> sums;  // of A down to each row
    double sum = 0;
    for (int row = 1; row <= kRows; ++row) {
      const Value& value = sheet_.ValueAt({row, 1});
      const bool isError = value.isError() || (!sums.empty() && sums.back().isError());
      if (!isError) sum += value.number();
      sums.push_back(isError ? Value(ErrorCode::NA) : Value(sum));
    }
    double above = 0;
    bool isBroken = false;
    for (int row = 1; row <= kRows; ++row) {
      const Value& expected = sums[static_cast<std::size_t>(bottoms_[static_cast<std::size_t>(row - 1)] - 1)];
      RC_ASSERT(sheet_.ValueAt({row, 2}) == expected);
      isBroken = isBroken || (row > 1 && expected.isError());
      const double quotient = row == 1 ? 1 : isBroken ? 0 : above / expected.number();
      RC_ASSERT(sheet_.ValueAt({row, 3}) == (isBroken ? Value(ErrorCode::NA) : Value(quotient)));
      above += quotient;
    }
  }

 private:
  void Set(CellPos at, const std::string& formula) {
    sheet_.SetFormula(at, ParseFormula(formula, Notation::A1, {sheet_.id(), at}, book_));
  }

  Workbook book_;
  Sheet& sheet_ = book_.AddSheet("Sums", 0);
  FakeWorld world_;
  Calculator calculator_{book_, world_};
  std::vector<int> bottoms_;
};

TEST(GrowingSums, AreThoseOfWalks) {
  EXPECT_TRUE(rc::check([] {
    GrowingSums sums;
    sums.Check();
    const int changes = Below(4);
    for (int i = 0; i < changes; ++i) {
      sums.Change();
      sums.Check();
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
