#include "engine/model/SheetParts.h"

namespace tolvane::engine {

namespace {

bool SameExpression(const ExpressionPtr& a, const ExpressionPtr& b) {
  return a == b || (a != nullptr && b != nullptr && *a == *b);
}

}  // namespace

bool Validation::SameRule(const Validation& other) const {
  return kind == other.kind && alert == other.alert && comparison == other.comparison &&
         SameExpression(formula1, other.formula1) && SameExpression(formula2, other.formula2) &&
         ignoreBlank == other.ignoreBlank && inCellDropdown == other.inCellDropdown && showInput == other.showInput &&
         showError == other.showError && inputTitle == other.inputTitle && inputMessage == other.inputMessage &&
         errorTitle == other.errorTitle && errorMessage == other.errorMessage;
}

}  // namespace tolvane::engine
