// The part of ExcelRange about what lies on its cells: validation, links, the filter.
#include "hosts/excel/ExcelRange.h"
#include "hosts/excel/Optional.h"
#include "src/host/Errors.h"

namespace tolvane::excel {
namespace {

constexpr int kValidateList = 3;
constexpr int kBetween = 1;

}  // namespace

// --- validation
// ----------------------------------------------------------------------------------------------------------

void ExcelRange::ValidationDelete() {
  Part("Validation", "Validation").Call("Delete");
}

void ExcelRange::ValidationAdd(const host::ValidationRule& rule) {
  const Dispatch validation = Part("Validation", "Validation");
  // Type, AlertStyle, Operator, Formula1
  validation.Call("Add", kValidateList, ConstantOf(rule.alert), kBetween, rule.source);
  validation.Put("IgnoreBlank", rule.ignoreBlank);
  validation.Put("InCellDropdown", rule.inCellDropdown);
  validation.Put("ShowInput", rule.showInput);
  validation.Put("ShowError", rule.showError);
  validation.Put("InputTitle", rule.inputTitle);
  validation.Put("InputMessage", rule.inputMessage);
  validation.Put("ErrorTitle", rule.errorTitle);
  validation.Put("ErrorMessage", rule.errorMessage);
}

std::optional<host::ValidationRule> ExcelRange::ValidationRead() const {
  const Dispatch validation = Part("Validation", "Validation");
  try {
    if (validation.Get("Type").AsInt() != kValidateList) return std::nullopt;
  } catch (const host::HostError& error) {
    // Where there is none, or not the same everywhere, the program refuses to tell its kind.
    if (error.number() == host::ErrorNumber::ApplicationDefined) return std::nullopt;
    throw;
  }
  host::ValidationRule rule;
  rule.alert = static_cast<host::AlertStyle>(validation.Get("AlertStyle").AsInt());
  rule.source = validation.Get("Formula1").AsText();
  rule.ignoreBlank = validation.Get("IgnoreBlank").AsBool();
  rule.inCellDropdown = validation.Get("InCellDropdown").AsBool();
  rule.showInput = validation.Get("ShowInput").AsBool();
  rule.showError = validation.Get("ShowError").AsBool();
  rule.inputTitle = validation.Get("InputTitle").AsText();
  rule.inputMessage = validation.Get("InputMessage").AsText();
  rule.errorTitle = validation.Get("ErrorTitle").AsText();
  rule.errorMessage = validation.Get("ErrorMessage").AsText();
  return rule;
}

// --- links
// ---------------------------------------------------------------------------------------------------------------

void ExcelRange::HyperlinksAdd(const host::HyperlinkTarget& target, const std::optional<std::string>& textToDisplay) {
  const auto given = [](const std::string& text) { return text.empty() ? Variant::Missing() : Variant(text); };
  // Anchor, Address, SubAddress, ScreenTip, TextToDisplay
  Part("Hyperlinks", "Hyperlinks")
      .Call("Add", dispatch(), target.address, given(target.subAddress), given(target.screenTip),
            textToDisplay ? Variant(*textToDisplay) : Variant::Missing());
}

void ExcelRange::HyperlinksDelete() {
  Part("Hyperlinks", "Hyperlinks").Call("Delete");
}

std::vector<host::HyperlinkTarget> ExcelRange::HyperlinksRead() const {
  std::vector<host::HyperlinkTarget> links;
  Part("Hyperlinks", "Hyperlinks").ForEach([&](ComPtr<IDispatch> object) {
    const Dispatch link = session().ObjectOf("Hyperlink", std::move(object));
    links.push_back({link.Get("Address").AsText(), link.Get("SubAddress").AsText(), link.Get("ScreenTip").AsText()});
  });
  return links;
}

// --- the filter
// ------------------------------------------------------------------------------------------------------------

void ExcelRange::AutoFilter() {
  object().Call("AutoFilter");
}

void ExcelRange::AutoFilterField(const host::FilterCriterion& criterion) {
  if (criterion.op == host::FilterOperator::Values) {
    object().Call("AutoFilter", criterion.field, criterion.values, ConstantOf(criterion.op));
  } else if (!criterion.criteria1) {
    object().Call("AutoFilter", criterion.field);
  } else if (criterion.op == host::FilterOperator::None) {
    object().Call("AutoFilter", criterion.field, *criterion.criteria1);
  } else {
    object().Call("AutoFilter", criterion.field, *criterion.criteria1, ConstantOf(criterion.op),
                  criterion.criteria2 ? Variant(*criterion.criteria2) : Variant::Missing());
  }
}

}  // namespace tolvane::excel
