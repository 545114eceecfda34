// The part of CalcRange about what lies on the cells: validation, hyperlinks, the filter.
#include <algorithm>
#include <com/sun/star/sheet/ValidationAlertStyle.hpp>
#include <com/sun/star/sheet/ValidationType.hpp>
#include <com/sun/star/sheet/XSheetCondition.hpp>
#include <com/sun/star/table/CellAddress.hpp>

#include "hosts/libreoffice/CalcNames.h"
#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellStyles.h"
#include "hosts/libreoffice/CellWriting.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/Hyperlinks.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

namespace {

using Object = Reference<css::uno::XInterface>;

bool HasRule(const Object& validation) {
  return Get(validation, "Type", css::sheet::ValidationType_ANY) != css::sheet::ValidationType_ANY;
}

css::sheet::ValidationAlertStyle ToCalc(host::AlertStyle style) {
  switch (style) {
    case host::AlertStyle::Stop:
      return css::sheet::ValidationAlertStyle_STOP;
    case host::AlertStyle::Warning:
      return css::sheet::ValidationAlertStyle_WARNING;
    case host::AlertStyle::Information:
      return css::sheet::ValidationAlertStyle_INFO;
  }
  Refuse("There is no alert style with the number " + std::to_string(static_cast<int>(style)) + ".");
}

host::AlertStyle ToHost(css::sheet::ValidationAlertStyle style) {
  switch (style) {
    case css::sheet::ValidationAlertStyle_WARNING:
      return host::AlertStyle::Warning;
    case css::sheet::ValidationAlertStyle_INFO:
      return host::AlertStyle::Information;
    default:
      return host::AlertStyle::Stop;
  }
}

// A list of texts, "a,b c", is a formula of texts for Calc: "a";"b c".
std::string CalcList(std::string_view list) {
  std::string result = "\"";
  for (const char c : list) {
    if (c == ',') {
      result += "\";\"";
    } else {
      result += c;
      if (c == '"') result += c;
    }
  }
  return result + '"';
}

std::string ExcelList(const FormulaTokens& tokens) {
  std::string result;
  for (const FormulaToken& token : tokens) {
    if (token.kind == FormulaToken::Kind::Text) result += token.text;
    if (token.kind == FormulaToken::Kind::Separator) result += ',';
  }
  return result;
}

bool IsListOfTexts(const FormulaTokens& tokens) {
  return !tokens.empty() && std::all_of(tokens.begin(), tokens.end(), [](const FormulaToken& token) {
    return token.kind == FormulaToken::Kind::Text || token.kind == FormulaToken::Kind::Separator;
  });
}

}  // namespace

void CalcRange::ValidationDelete() {
  RequireUnprotected(*sheet_, "changing validation");
  ChangeFormat([](const Object& cells) {
    const Object validation(GetAny(cells, "Validation"), UNO_QUERY);
    Set(validation, "Type", css::sheet::ValidationType_ANY);
    SetAny(cells, "Validation", Any(validation));
  });
}

void CalcRange::ValidationAdd(const host::ValidationRule& rule) {
  const Rects all = areas();
  RequireUnprotected(*sheet_, "changing validation");
  const Rect at = all.front();
  std::string formula;
  if (rule.source.starts_with('=')) {
    const FormulaTokens tokens = book().Read(rule.source, Dialect::ExcelA1, {at.top, at.left});
    for (const FormulaToken& token : tokens) {
      if (token.kind == FormulaToken::Kind::Name && !token.reference.sheet && !TokensOfName(*sheet_, token.text)) {
        Refuse("There is no name \"" + token.text + "\" for a validation to refer to.");
      }
    }
    formula = WriteFormula(tokens, Dialect::Calc, {});
  } else if (!rule.source.empty()) {
    formula = CalcList(rule.source);
  } else {
    Refuse("A list validation needs a source, as in \"=lstPeriods\" or \"yes,no\".");
  }
  for (const Rect& area : all) {
    for (const Look& look : LooksOf(*sheet_, area)) {
      if (HasRule(Object(GetAny(look.cells, "Validation"), UNO_QUERY))) {
        Refuse("The cells " + sheet_->PlaceOf(look.areas.front()) + " have a validation already; delete it first.");
      }
    }
  }
  ChangeFormat([&](const Object& cells) {
    const Object validation(GetAny(cells, "Validation"), UNO_QUERY);
    Set(validation, "Type", css::sheet::ValidationType_LIST);
    Set(validation, "ErrorAlertStyle", ToCalc(rule.alert));
    Set(validation, "IgnoreBlankCells", rule.ignoreBlank);
    Set(validation, "ShowList", static_cast<sal_Int16>(rule.inCellDropdown ? 1 : 0));
    Set(validation, "ShowInputMessage", rule.showInput);
    Set(validation, "ShowErrorMessage", rule.showError);
    Set(validation, "InputTitle", ToUno(rule.inputTitle));
    Set(validation, "InputMessage", ToUno(rule.inputMessage));
    Set(validation, "ErrorTitle", ToUno(rule.errorTitle));
    Set(validation, "ErrorMessage", ToUno(rule.errorMessage));
    const auto condition = As<css::sheet::XSheetCondition>(validation);
    condition->setSourcePosition(
        css::table::CellAddress(static_cast<sal_Int16>(sheet_->index()), at.left - 1, at.top - 1));
    condition->setFormula1(ToUno(formula));
    SetAny(cells, "Validation", Any(validation));
  });
}

std::optional<host::ValidationRule> CalcRange::ValidationRead() const {
  const Rects all = areas();
  return AtEdge([&]() -> std::optional<host::ValidationRule> {
    std::optional<host::ValidationRule> common;
    for (const Rect& area : all) {
      for (const Look& look : LooksOf(*sheet_, area)) {
        const Object validation(GetAny(look.cells, "Validation"), UNO_QUERY);
        if (Get(validation, "Type", css::sheet::ValidationType_ANY) != css::sheet::ValidationType_LIST) {
          return std::nullopt;
        }
        host::ValidationRule rule;
        rule.alert = ToHost(Get(validation, "ErrorAlertStyle", css::sheet::ValidationAlertStyle_STOP));
        rule.ignoreBlank = Get<bool>(validation, "IgnoreBlankCells");
        rule.inCellDropdown = Get<sal_Int16>(validation, "ShowList") != 0;
        rule.showInput = Get<bool>(validation, "ShowInputMessage");
        rule.showError = Get<bool>(validation, "ShowErrorMessage");
        rule.inputTitle = ToUtf8(Get<OUString>(validation, "InputTitle"));
        rule.inputMessage = ToUtf8(Get<OUString>(validation, "InputMessage"));
        rule.errorTitle = ToUtf8(Get<OUString>(validation, "ErrorTitle"));
        rule.errorMessage = ToUtf8(Get<OUString>(validation, "ErrorMessage"));
        const auto condition = As<css::sheet::XSheetCondition>(validation);
        const Rect& first = look.areas.front();
        condition->setSourcePosition(
            css::table::CellAddress(static_cast<sal_Int16>(sheet_->index()), first.left - 1, first.top - 1));
        const std::string formula = ToUtf8(condition->getFormula1());
        const CellPos at{first.top, first.left};
        try {
          const FormulaTokens tokens = book().ReadCalc(formula, at);
          rule.source = IsListOfTexts(tokens) ? ExcelList(tokens) : '=' + WriteFormula(tokens, Dialect::ExcelA1, at);
        } catch (const FormulaError&) {
          rule.source = '=' + formula;
        }
        if (common && !(*common == rule)) return std::nullopt;
        common = rule;
      }
    }
    return common;
  });
}

void CalcRange::HyperlinksAdd(const host::HyperlinkTarget& target, const std::optional<std::string>& textToDisplay) {
  const Rects all = areas();
  if (target.address.empty() && target.subAddress.empty()) Refuse("A link needs an address or a place to lead to.");
  if (all.size() > 1) Refuse("A link cannot lie on several areas.");
  const Rect area = all.front();
  RequireAllowed(*sheet_, &host::Protection::allowInsertingHyperlinks, "inserting hyperlinks");
  RequireUnlocked(*sheet_, {area});
  const auto sheet = sheet_;
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet);
    AddLink(*sheet, area, target, textToDisplay);
  }
  if (textToDisplay) {
    sheet->program().CellsEdited(*sheet, {{area.top, area.left, area.top, area.left}});
  } else {
    sheet->program().BookEdited(sheet->book());
  }
}

void CalcRange::HyperlinksDelete() {
  const Rects all = areas();
  RequireAllowed(*sheet_, &host::Protection::allowInsertingHyperlinks, "deleting hyperlinks");
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    for (const Rect& area : all) DeleteLinks(*sheet_, area);
  }
  program().BookEdited(book());
}

std::vector<host::HyperlinkTarget> CalcRange::HyperlinksRead() const {
  std::vector<host::HyperlinkTarget> links;
  for (const Rect& area : areas()) {
    const auto found = ReadLinks(*sheet_, area);
    links.insert(links.end(), found.begin(), found.end());
  }
  return links;
}

void CalcRange::AutoFilter() {
  const Rect area = first();
  const auto sheet = sheet_;
  sheet->ToggleFilter(area);
}

void CalcRange::AutoFilterField(const host::FilterCriterion& criterion) {
  const Rect area = first();
  const auto sheet = sheet_;
  sheet->SetFilterField(area, criterion);
}

}  // namespace tolvane::libreoffice
