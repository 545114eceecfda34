#include "hosts/embedded/EmbeddedNames.h"

#include <utility>

#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "hosts/embedded/CellReference.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"

namespace tolvane::embedded {

namespace {

// The cell that relative references in a name count from, always.
constexpr engine::CellPos kNameHome{1, 1};

// The sheet that a reference without one means: the names' own, else the one in front.
EmbeddedWorksheet& HomeOf(const NameScope& scope) {
  return scope.sheet != nullptr ? *scope.sheet : *scope.book->activeSheet();
}

engine::ExpressionPtr ParseName(const NameScope& scope, std::string_view refersTo, engine::Notation notation) {
  if (refersTo.empty()) Refuse("A name must refer to something, as in \"=Sheet1!$A$1\".");
  const EmbeddedWorksheet& home = HomeOf(scope);
  // Without "=" it is a text, as Excel takes it.
  std::string formula(refersTo);
  if (formula.front() != '=') {
    std::string quoted = "=\"";
    for (const char c : formula) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    formula = quoted + "\"";
  }
  const engine::ExpressionPtr parsed = Refusing([&] {
    return scope.book->Parse(formula, notation, {home.sheet().id(), kNameHome});
  });
  // A name means the same cells wherever it is used.
  auto bound = std::make_shared<engine::Expression>(*parsed);
  for (engine::Reference& reference : bound->references) {
    if (reference.sheet == engine::kOwnSheet) reference.sheet = home.sheet().id();
  }
  return bound;
}

}  // namespace

bool NameScope::IsAlive() const noexcept {
  return book->IsAlive() && (sheet == nullptr || sheet->IsAlive());
}

const engine::NameTable& NameScope::table() const {
  return sheet != nullptr ? sheet->sheet().names : book->book().names;
}

engine::SheetId NameScope::sheetId() const {
  return sheet != nullptr ? sheet->sheet().id() : engine::kOwnSheet;
}

// --- Names
// -----------------------------------------------------------------------------------------------------------------

host::Name EmbeddedNames::Item(std::string_view name) const {
  const engine::Name* found = scope_.table().Find(name);
  if (found == nullptr) Refuse("There is no name \"" + std::string(name) + "\" here.");
  return host::Name(std::make_shared<EmbeddedName>(scope_, found->name));
}

std::vector<host::Name> EmbeddedNames::All() const {
  std::vector<host::Name> all;
  for (const auto& [folded, entry] : scope_.table().byFoldedName()) {
    all.emplace_back(std::make_shared<EmbeddedName>(scope_, entry.name));
  }
  return all;
}

host::Name EmbeddedNames::Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) {
  if (!engine::IsValidName(name)) {
    Refuse("\"" + std::string(name) +
           "\" cannot be a name: a name begins with a letter or _, holds letters, digits, _ and points, and is no cell "
           "address.");
  }
  engine::Name entry;
  entry.name = name;
  entry.refersTo = ParseName(scope_, refersTo, r1c1 ? engine::Notation::R1C1 : engine::Notation::A1);
  entry.hidden = !visible;
  Refusing([&] { scope_.book->book().SetName(scope_.sheetId(), std::move(entry)); });
  host::Name added(std::make_shared<EmbeddedName>(scope_, std::string(name)));
  scope_.book->program().BookEdited(*scope_.book);
  return added;
}

// --- Name
// ------------------------------------------------------------------------------------------------------------------

bool EmbeddedName::IsAlive() const noexcept {
  return scope_.IsAlive() && scope_.table().Find(name_) != nullptr;
}

std::string EmbeddedName::NameText() const {
  const std::string& name = entry().name;
  return scope_.sheet == nullptr ? name : engine::QuoteSheetName(scope_.sheet->Name()) + "!" + name;
}

std::string EmbeddedName::Print(engine::Notation notation) const {
  return engine::PrintFormula(*entry().refersTo, notation, {engine::kOwnSheet, kNameHome}, scope_.book->book());
}

void EmbeddedName::Set(std::string_view formula, engine::Notation notation) {
  engine::Name changed = entry();
  changed.refersTo = ParseName(scope_, formula, notation);
  Refusing([&] { scope_.book->book().SetName(scope_.sheetId(), std::move(changed)); });
  scope_.book->program().BookEdited(*scope_.book);
}

host::Range EmbeddedName::RefersToRange() const {
  const auto found = CellsOf(HomeOf(scope_), *entry().refersTo);
  if (!found) {
    Refuse("The name \"" + entry().name + "\" does not refer to cells but to " + Print(engine::Notation::A1) + ".");
  }
  return found->sheet->RangeOver(found->areas);
}

void EmbeddedName::SetVisible(bool visible) {
  if (entry().hidden == !visible) return;
  engine::Name changed = entry();
  changed.hidden = !visible;
  Refusing([&] { scope_.book->book().SetName(scope_.sheetId(), std::move(changed)); });
  scope_.book->program().BookEdited(*scope_.book);
}

void EmbeddedName::Delete() {
  scope_.book->book().RemoveName(scope_.sheetId(), name_);
  scope_.book->program().BookEdited(*scope_.book);
}

}  // namespace tolvane::embedded
