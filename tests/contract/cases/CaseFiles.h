#pragma once

#include <vector>

#include "tests/contract/ContractCase.h"

namespace tolvane::contract {

// The cases of each file of this folder.
std::vector<ContractCase> ApplicationStateCases();
std::vector<ContractCase> BulkRowsCases();
std::vector<ContractCase> BulkRowsPropertyCases();
std::vector<ContractCase> ClicksCases();
std::vector<ContractCase> ClipboardCases();
std::vector<ContractCase> CommandBarsCases();
std::vector<ContractCase> EventsCases();
std::vector<ContractCase> FiltersCases();
std::vector<ContractCase> HandlesCases();
std::vector<ContractCase> LookCases();
std::vector<ContractCase> MacrosCases();
std::vector<ContractCase> MergeSortCases();
std::vector<ContractCase> NamesCases();
std::vector<ContractCase> OnCellsCases();
std::vector<ContractCase> ProtectionCases();
std::vector<ContractCase> RangeEditCases();
std::vector<ContractCase> RangeFormulaCases();
std::vector<ContractCase> RangeFormulaPropertyCases();
std::vector<ContractCase> RangePlaceCases();
std::vector<ContractCase> RangeValueCases();
std::vector<ContractCase> RibbonCases();
std::vector<ContractCase> SheetRangeCases();
std::vector<ContractCase> SheetsCases();
std::vector<ContractCase> UserPortCases();
std::vector<ContractCase> WindowsCases();
std::vector<ContractCase> WorkbooksCases();

}  // namespace tolvane::contract
