// The part of EmbeddedRange about what lies on the cells: validation, links, the filter.
#include <algorithm>
#include <string>
#include <utility>

#include "engine/formula/ExpressionBuilder.h"
#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "hosts/embedded/CellReference.h"
#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/Values.h"

namespace tolvane::embedded {

using engine::FormatId;
using engine::Rect;

namespace {

constexpr std::string_view kLinkStyle = "Hyperlink";
constexpr std::uint32_t kLinkColour = 0x0000FF;

bool IsAlert(host::AlertStyle style) {
  return style == host::AlertStyle::Stop || style == host::AlertStyle::Warning ||
         style == host::AlertStyle::Information;
}

// A list typed in, "a,b,c", is a constant text.
const engine::Value* ConstantOf(const engine::Expression& expression) {
  const engine::Node& root = expression.nodes[expression.root];
  return root.kind == engine::Node::Kind::Constant ? &expression.constants[root.index] : nullptr;
}

}  // namespace

// --- validation
// --------------------------------------------------------------------------------------------------------------

void EmbeddedRange::ValidationDelete() {
  RequireUnprotected(cells(), "changing validation");
  for (const Rect& area : areas()) cells().RemoveValidation(area);
  program().BookEdited(sheet_->book());
}

void EmbeddedRange::ValidationAdd(const host::ValidationRule& rule) {
  RequireUnprotected(cells(), "changing validation");
  if (rule.source.empty()) Refuse("A list validation needs a source, as in \"=lstPeriods\".");
  if (!IsAlert(rule.alert)) {
    Refuse("There is no alert style " + std::to_string(static_cast<int>(rule.alert)) + ".");
  }
  for (const engine::Validation& other : cells().validations) {
    for (const Rect& range : other.ranges) {
      for (const Rect& area : areas()) {
        if (!range.intersects(area)) continue;
        Refuse("The cells " + sheet_->PlaceOf(*range.intersection(area)) +
               " have a validation already; delete it first.");
      }
    }
  }
  engine::Validation validation;
  validation.ranges = areas();
  validation.kind = engine::Validation::Kind::List;
  validation.alert = static_cast<engine::Validation::Alert>(rule.alert);
  validation.ignoreBlank = rule.ignoreBlank;
  validation.inCellDropdown = rule.inCellDropdown;
  validation.showInput = rule.showInput;
  validation.showError = rule.showError;
  validation.inputTitle = rule.inputTitle;
  validation.inputMessage = rule.inputMessage;
  validation.errorTitle = rule.errorTitle;
  validation.errorMessage = rule.errorMessage;
  if (rule.source.front() == '=') {
    const engine::FormulaHome home{cells().id(), first().topLeft()};
    validation.formula1 = Refusing([&] { return sheet_->book().Parse(rule.source, engine::Notation::A1, home); });
    const engine::Value source = sheet_->book().calculator().Evaluate(*validation.formula1, home);
    if (source == engine::Value(engine::ErrorCode::Name) && !CellsOf(*sheet_, *validation.formula1, home.cell)) {
      Refuse("The source " + rule.source + " of the list has a name in it that does not exist.");
    }
  } else {
    engine::ExpressionBuilder builder;
    validation.formula1 = builder.Finish(builder.Constant(engine::Value(std::string_view(rule.source))));
  }
  Refusing([&] { cells().AddValidation(std::move(validation)); });
  program().BookEdited(sheet_->book());
}

std::optional<host::ValidationRule> EmbeddedRange::ValidationRead() const {
  // The rules that lie on the range must be one rule and cover it.
  const engine::Validation* shared = nullptr;
  std::int64_t covered = 0;
  for (const engine::Validation& validation : cells().validations) {
    bool touches = false;
    for (const Rect& range : validation.ranges) {
      for (const Rect& area : areas()) {
        const auto both = range.intersection(area);
        if (!both) continue;
        touches = true;
        covered += both->cells();
      }
    }
    if (!touches) continue;
    if (shared != nullptr && !shared->SameRule(validation)) return std::nullopt;
    shared = &validation;
  }
  if (shared == nullptr || covered != Count()) return std::nullopt;
  host::ValidationRule rule;
  rule.alert = static_cast<host::AlertStyle>(shared->alert);
  rule.ignoreBlank = shared->ignoreBlank;
  rule.inCellDropdown = shared->inCellDropdown;
  rule.showInput = shared->showInput;
  rule.showError = shared->showError;
  rule.inputTitle = shared->inputTitle;
  rule.inputMessage = shared->inputMessage;
  rule.errorTitle = shared->errorTitle;
  rule.errorMessage = shared->errorMessage;
  if (shared->formula1 != nullptr) {
    if (const engine::Value* constant = ConstantOf(*shared->formula1); constant != nullptr && constant->isText()) {
      rule.source = constant->text().view();
    } else {
      rule.source =
          engine::PrintFormula(*shared->formula1, engine::Notation::A1, {cells().id(), first().topLeft()}, book());
    }
  }
  return rule;
}

// --- links
// -------------------------------------------------------------------------------------------------------------------

void EmbeddedRange::HyperlinksAdd(const host::HyperlinkTarget& target,
                                  const std::optional<std::string>& textToDisplay) {
  const auto sheet = sheet_;
  if (target.address.empty() && target.subAddress.empty()) Refuse("A link needs an address or a place to lead to.");
  if (areas().size() > 1) Refuse("A link cannot lie on several areas.");
  const Rect area = first();
  RequireAllowed(cells(), &engine::SheetProtection::insertHyperlinks, "inserting links");
  RequireUnlocked(cells(), {area});
  engine::Value text;
  if (textToDisplay) {
    RequireWhole(Rect::Cell(area.topLeft()));
    text = ToEngine(host::CellValue(*textToDisplay));
  }
  engine::FormatTable& formats = book().formats;
  const auto style = formats.FindStyle(kLinkStyle);
  Refusing([&] {
    cells().ChangeFormat(area, [&](FormatId from) {
      if (style) return formats.WithStyle(from, *style);
      return formats.With(from, engine::FormatGroup::Font, [](engine::Format& f) {
        f.font.underline = engine::Underline::Single;
        f.font.colour = kLinkColour;
      });
    });
  });
  cells().RemoveHyperlinks(area);
  cells().hyperlinks.push_back({area, target.address, target.subAddress, target.screenTip});
  if (textToDisplay) {
    Refusing([&] { cells().SetValue(area.topLeft(), text); });
    program().CellsEdited(*sheet, {Rect::Cell(area.topLeft())});
  } else {
    program().BookEdited(sheet->book());
  }
}

void EmbeddedRange::HyperlinksDelete() {
  RequireAllowed(cells(), &engine::SheetProtection::insertHyperlinks, "deleting links");
  RequireUnlocked(cells(), areas());
  engine::FormatTable& formats = book().formats;
  const auto style = formats.FindStyle(kLinkStyle);
  const auto plain = [&](FormatId from) {
    engine::CellFormat format = formats.At(from);
    const engine::Format& normal = formats.StyleAt(engine::kNormalStyle).format;
    if (style && format.style == *style) {
      // What the style gave goes; what else there was stays, as set directly.
      format.style = engine::kNormalStyle;
      format.format.font = normal.font;
      format.direct = static_cast<engine::FormatGroups>(engine::kAllFormatGroups &
                                                        ~static_cast<engine::FormatGroups>(engine::FormatGroup::Font));
      return formats.Intern(format);
    }
    return formats.With(from, engine::FormatGroup::Font, [&](engine::Format& f) {
      f.font.underline = engine::Underline::None;
      f.font.colour = normal.font.colour;
    });
  };
  for (const Rect& area : areas()) {
    std::vector<Rect> looked;
    for (const engine::Hyperlink& link : cells().hyperlinks) {
      if (link.range.intersects(area)) looked.push_back(link.range);
    }
    cells().RemoveHyperlinks(area);
    for (const Rect& look : looked) Refusing([&] { cells().ChangeFormat(look, plain); });
  }
  program().BookEdited(sheet_->book());
}

std::vector<host::HyperlinkTarget> EmbeddedRange::HyperlinksRead() const {
  std::vector<host::HyperlinkTarget> targets;
  for (const engine::Hyperlink& link : cells().hyperlinks) {
    const bool lies =
        std::any_of(areas().begin(), areas().end(), [&](const Rect& area) { return area.intersects(link.range); });
    if (lies) targets.push_back({link.address, link.subAddress, link.screenTip});
  }
  return targets;
}

// --- filter
// ------------------------------------------------------------------------------------------------------------------

void EmbeddedRange::AutoFilter() {
  sheet_->ToggleFilter(first());
}

void EmbeddedRange::AutoFilterField(const host::FilterCriterion& criterion) {
  sheet_->SetFilterField(first(), criterion);
}

}  // namespace tolvane::embedded
