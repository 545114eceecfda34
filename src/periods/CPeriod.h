#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/CellBlock.h"
#include "src/periods/Sorting.h"

namespace tolvane::accounts {

// One block of columns on the Income Statement or on Budgets: a run of months, perhaps for one account, with its
// figures and, when it is broken down, the months that it is made of.
class CPeriod final : public ISortableObject {
 public:
  int lPeriod = kNoMonth;  // the last month
  // Position from 1 of the account that the block is broken down to; 0: of none; -1: the name on the sheet is that of
  // no account.
  int lAccNumber = 0;
  std::string sAccName;         // as it stands on the sheet
  bool bBrokendown = false;     // into months: colMonths is in use
  int lOrdNumber = 0;           // position from 1 on the sheet; 0: not on one yet
  int lColVisibility = 0;       // which of the block's columns are shown, by bits
  host::CellBlock vDataColumn;  // figures or formulas in its first column; no rows: none were read
  std::string sBalanceBF;
  int lColumn = 0;  // the first column on the sheet
  std::vector<std::shared_ptr<CPeriod>> colMonths;
  int lFirstMonth = 0;  // position from 1 in colMonths of the earliest month; 0 without months

  std::string sPeriod() const { return sMonthText(lPeriod); }
  void SetPeriod(std::string_view sText) { lPeriod = lMonthFromText(sText); }
  int lDuration() const { return lDuration_; }  // in months
  void SetDuration(int lMonths) { lDuration_ = lMonths < 2 ? 1 : lMonths; }

  int lFirstColumn() const { return colMonths.empty() ? lColumn : colMonths.front()->lColumn; }
  int lLastColumn() const { return lColumn + 2; }  // a block is three columns wide

  // One new period for each of its months, oldest first.
  void CreateMonths();
  // Everything of another one, its months as copies of their own.
  void Copy(const CPeriod& clsPeriod);
  void CopyBudgetData(const CPeriod& clsPeriod);
  // Its figures from those months of another one that lie within it, added up as formulas.
  void CopyBudgetDataByMonths(const CPeriod& clsSource);
  // Makes each figure a formula for that part of it: 100 becomes =100/3.
  void DivideDataColumn(int lDivisor);
  // Into months of equal parts; nothing when it is broken down already.
  void SplitByMonths();

  // By CurrentSort(): the month leads, longer periods come later, then the order of accounts. Grouped by duration, a
  // month's key is divided by it, so that columns of one duration stand together.
  double dSortKey() const override;

 private:
  int lDuration_ = 1;
};

}  // namespace tolvane::accounts
