#include <iterator>

#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {

std::vector<ContractCase> AllCases() {
  std::vector<ContractCase> all;
  for (const auto& cases : {HandlesCases,
                            RangeValueCases,
                            RangeFormulaCases,
#ifndef _WIN32  // there is no rapidcheck
                            RangeFormulaPropertyCases,
                            BulkRowsPropertyCases,
#endif
                            RangePlaceCases,
                            RangeEditCases,
                            BulkRowsCases,
                            LookCases,
                            MergeSortCases,
                            OnCellsCases,
                            FiltersCases,
                            ClipboardCases,
                            SheetRangeCases,
                            SheetsCases,
                            NamesCases,
                            ProtectionCases,
                            WorkbooksCases,
                            WindowsCases,
                            ApplicationStateCases,
                            EventsCases,
                            MacrosCases,
                            CommandBarsCases,
                            ClicksCases,
                            RibbonCases,
                            UserPortCases}) {
    std::vector<ContractCase> file = cases();
    std::move(file.begin(), file.end(), std::back_inserter(all));
  }
  return all;
}

}  // namespace tolvane::contract
