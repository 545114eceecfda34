#pragma once

#include <com/sun/star/sheet/TableFilterField3.hpp>
#include <vector>

#include "hosts/libreoffice/Uno.h"
#include "src/host/Worksheet.h"

namespace tolvane::libreoffice {

// Excel's criteria texts ("=Rent", ">5", "<>*food*") and Calc's filter conditions. One state for each column of the
// filter's range.
struct CalcFilter {
  Sequence<css::sheet::TableFilterField3> fields;
  bool regular = false;  // texts are regular expressions
};
CalcFilter ToCalc(const std::vector<host::FilterState>& states);
std::vector<host::FilterState> ToHost(const CalcFilter& filter, int columns);
host::FilterState ToState(const host::FilterCriterion& criterion);

}  // namespace tolvane::libreoffice
