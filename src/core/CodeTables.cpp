#include "src/core/CodeTables.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "src/core/MErrorHandler.h"

namespace tolvane::accounts {

namespace {

constexpr std::string_view kAccountTypes[] = {"Banking", "Credit card", "Manual", ""};
constexpr std::string_view kTrnTypes[] = {"", "Bank statement", "Uncleared", "Accrual"};
constexpr std::string_view kCategoryKinds[] = {"", "Item", "Header", "Total1", "Total2", "Total3", "Unallocated"};
constexpr std::string_view kCategoryCaptions[] = {"",         "Category",       "Group header",
                                                  "Subtotal", "Group subtotal", "Running subtotal"};

std::string TextAt(std::span<const std::string_view> texts, int number, std::string_view otherwise = {}) {
  const bool bKnown = number >= 0 && number < static_cast<int>(texts.size());
  return std::string(bKnown ? texts[static_cast<std::size_t>(number)] : otherwise);
}

int NumberOf(std::span<const std::string_view> texts, std::string_view sText) {
  const auto found = std::find(texts.begin(), texts.end(), sText);
  return found == texts.end() ? -1 : static_cast<int>(found - texts.begin());
}

}  // namespace

std::string sAccountTypeText(int lType) {
  return TextAt(kAccountTypes, lType);
}

int lAccountTypeFromText(std::string_view sText) {
  const int lType = NumberOf(kAccountTypes, sText);
  Require(lType >= 0);
  return lType;
}

std::string sTrnTypeText(int lType) {
  return lType == 0 ? "Error" : TextAt(kTrnTypes, lType, "Error");
}

int lTrnTypeFromText(std::string_view sText) {
  return std::max(0, NumberOf(kTrnTypes, sText));
}

std::string sCategoryKindText(int lKind) {
  return TextAt(kCategoryKinds, lKind);
}

int lCategoryKindFromText(std::string_view sText) {
  return std::max(0, NumberOf(kCategoryKinds, sText));
}

std::string sCategoryKindCaption(int lKind) {
  return TextAt(kCategoryCaptions, lKind);
}

}  // namespace tolvane::accounts
