#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "src/host/CellValue.h"
#include "src/periods/Months.h"

namespace tolvane::accounts {

// What can stand in a sorted collection.
class ISortableObject {
 public:
  virtual ~ISortableObject() = default;
  virtual double dSortKey() const = 0;
};

// Any value, with a number to sort it by.
class CSortableVariant final : public ISortableObject {
 public:
  host::CellValue vData;
  double dSortNumber = 0;
  double dSortKey() const override { return dSortNumber; }
};

// A month in a list.
class CSimplePeriod final : public ISortableObject {
 public:
  int lPeriod = kNoMonth;
  int lDuration = 1;
  std::string sPeriod() const { return sMonthText(lPeriod); }
  double dSortKey() const override { return lPeriod; }
};

// How the columns of a report are sorted; kept in the book's cell techSortPeriodsOptions.
inline constexpr int kSortAscending = 1;       // columns run left to right
inline constexpr int kSortGroupDurations = 2;  // periods of the same duration stand together
// What that cell says; 3 when it is blank or makes no sense.
int lSortOptionsFromCell(const host::CellValue& vCell);

// What the keys of periods depend on while a sort runs. One of the add-in.
struct SortState {
  int glSortOptions = kSortAscending + kSortGroupDurations;
  int glSortAccounts = 0;  // the accounts that columns may be broken down to; 0 on Budgets
};
SortState& CurrentSort();

// Both sort in place; what has equal keys keeps its order.
template <class Value>
void QuickSortValues(std::vector<Value>& aValues, bool bAscending) {
  std::stable_sort(aValues.begin(), aValues.end(),
                   [=](const Value& a, const Value& b) { return bAscending ? a < b : b < a; });
}
template <class Object>
void QuickSortObjects(std::vector<std::shared_ptr<Object>>& colItems, bool bAscending) {
  struct Keyed {
    double key;
    std::shared_ptr<Object> item;
  };
  std::vector<Keyed> keyed;
  keyed.reserve(colItems.size());
  for (auto& item : colItems) keyed.push_back({item->dSortKey(), item});
  std::stable_sort(keyed.begin(), keyed.end(),
                   [=](const Keyed& a, const Keyed& b) { return bAscending ? a.key < b.key : b.key < a.key; });
  for (std::size_t i = 0; i < keyed.size(); ++i) colItems[i] = std::move(keyed[i].item);
}

}  // namespace tolvane::accounts
