#include "src/periods/CPeriod.h"

#include <algorithm>

#include "src/core/CellConversions.h"
#include "src/periods/MergedAmounts.h"

namespace tolvane::accounts {

void CPeriod::CreateMonths() {
  colMonths.clear();
  for (int month = lPeriod - lDuration_ + 1; month <= lPeriod; ++month) {
    colMonths.push_back(std::make_shared<CPeriod>());
    colMonths.back()->lPeriod = month;
  }
  lFirstMonth = 1;
}

void CPeriod::Copy(const CPeriod& clsPeriod) {
  if (this == &clsPeriod) return;
  *this = clsPeriod;
  for (std::shared_ptr<CPeriod>& month : colMonths) {
    auto copy = std::make_shared<CPeriod>();
    copy->Copy(*month);
    month = std::move(copy);
  }
}

void CPeriod::CopyBudgetData(const CPeriod& clsPeriod) {
  vDataColumn = clsPeriod.vDataColumn;
  sBalanceBF = clsPeriod.sBalanceBF;
}

void CPeriod::CopyBudgetDataByMonths(const CPeriod& clsSource) {
  if (clsSource.colMonths.empty() || clsSource.vDataColumn.rows() == 0) {
    CopyBudgetData(clsSource);
    return;
  }
  const int lMonths = static_cast<int>(clsSource.colMonths.size());
  const int lRows = clsSource.colMonths.front()->vDataColumn.rows();
  vDataColumn = host::CellBlock(lRows, 1);
  sBalanceBF =
      clsSource.colMonths[static_cast<std::size_t>(std::clamp(clsSource.lFirstMonth, 1, lMonths) - 1)]->sBalanceBF;
  // Positions among the source's months, from 1 and from the oldest on.
  const int lBefore = clsSource.lPeriod - clsSource.lDuration();
  const int lFirst = std::max(1, lPeriod + 1 - lDuration_ - lBefore);
  const int lLast = std::min(lMonths, lPeriod - lBefore);
  for (int row = 1; row <= lRows; ++row) {
    std::vector<std::string> texts;
    for (int position = lFirst; position <= lLast; ++position) {
      const int stored = clsSource.lFirstMonth > 1 ? lMonths - position + 1 : position;
      const host::CellBlock& column = clsSource.colMonths[static_cast<std::size_t>(stored - 1)]->vDataColumn;
      if (row > column.rows() || column.columns() == 0) continue;
      std::string text = sCellText(column.at(row, 1));
      if (!text.empty()) texts.push_back(std::move(text));
    }
    vDataColumn.at(row, 1) = vTextCell(sMergedAmounts(texts));
  }
}

void CPeriod::DivideDataColumn(int lDivisor) {
  if (lDivisor < 2 || vDataColumn.columns() == 0) return;
  for (int row = 1; row <= vDataColumn.rows(); ++row) {
    host::CellValue& cell = vDataColumn.at(row, 1);
    const std::string text = sCellText(cell);
    if (!text.empty()) cell = host::CellValue(sDividedAmount(text, lDivisor));
  }
}

void CPeriod::SplitByMonths() {
  if (bBrokendown) return;
  CreateMonths();
  CPeriod& first = *colMonths.front();
  first.CopyBudgetData(*this);
  first.DivideDataColumn(lDuration_);
  for (std::size_t i = 1; i < colMonths.size(); ++i) colMonths[i]->vDataColumn = first.vDataColumn;
  bBrokendown = true;
}

double CPeriod::dSortKey() const {
  const SortState& sort = CurrentSort();
  const bool bReversed = (sort.glSortOptions & kSortAscending) != 0 && lAccNumber > 0;
  const double q = bReversed ? sort.glSortAccounts + 1 - lAccNumber : lAccNumber;
  const double accounts = sort.glSortAccounts + 1;
  if ((sort.glSortOptions & kSortGroupDurations) != 0 && colMonths.empty()) {
    return (lPeriod - q / accounts) / lDuration_;
  }
  return (lDuration_ - 1) / 1000.0 + lPeriod - q / (accounts * 1000);
}

}  // namespace tolvane::accounts
