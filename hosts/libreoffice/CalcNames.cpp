#include "hosts/libreoffice/CalcNames.h"

#include <algorithm>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/table/CellAddress.hpp>

#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

using Kind = FormulaToken::Kind;

// The sheet that a reference without one means: the names' own, else the one in front.
std::shared_ptr<CalcWorksheet> HomeOf(const CalcNameScope& scope) {
  return scope.sheet != nullptr ? scope.sheet : scope.book->activeSheet();
}

// Where relative references in a name count from, always.
constexpr CellPos kNameHome{1, 1};

std::string ToContent(const CalcNameScope& scope, std::string_view refersTo, Dialect dialect) {
  if (refersTo.empty()) Refuse("A name must refer to something, as in \"=Sheet1!$A$1\".");
  FormulaTokens tokens;
  if (refersTo.front() == '=') {
    tokens = scope.book->Read(refersTo, dialect, kNameHome);
  } else {
    tokens.push_back({Kind::Text, std::string(refersTo), {}});  // as Excel takes it
  }
  // A name means the same cells wherever it is used.
  const std::string home = HomeOf(scope)->Name();
  for (FormulaToken& token : tokens) {
    if (token.kind == Kind::Reference && !token.reference.sheet) token.reference.sheet = home;
  }
  return WriteFormula(tokens, Dialect::Calc, kNameHome);
}

// Calc leaves the sheet of a name away where it is the one that relative references count from.
FormulaTokens TokensOf(const std::shared_ptr<CalcWorkbook>& book, const Reference<css::sheet::XNamedRange>& name) {
  FormulaTokens tokens = book->ReadCalc(ToUtf8(name->getContent()), kNameHome);
  for (FormulaToken& token : tokens) {
    if (token.kind != Kind::Name || token.reference.sheet || !token.reference.file.empty()) continue;
    const auto at = static_cast<std::size_t>(name->getReferencePosition().Sheet);
    const auto& sheets = book->sheets();
    if (at < sheets.size() && CalcNameScope{book, sheets[at]}.Find(token.text).is()) {
      token.reference.sheet = sheets[at]->Name();
    }
  }
  return tokens;
}

bool IsLost(const FormulaToken& token) {
  return token.kind == Kind::Reference && token.reference.shape == CellReference::Shape::Deleted;
}

std::optional<NamedCells> ReferredCells(const CalcWorksheet& home, const Reference<css::sheet::XNamedRange>& name) {
  const Reference<css::sheet::XCellRangeReferrer> referrer(name, UNO_QUERY);
  if (!referrer.is()) return std::nullopt;
  const Reference<css::sheet::XCellRangeAddressable> cells(referrer->getReferredCells(), UNO_QUERY);
  if (!cells.is()) return std::nullopt;
  const auto address = cells->getRangeAddress();
  const auto& sheets = home.book().sheets();
  if (static_cast<std::size_t>(address.Sheet) >= sheets.size()) return std::nullopt;
  return NamedCells{sheets[static_cast<std::size_t>(address.Sheet)], {ToRect(address)}};
}

}  // namespace

bool IsKeepsake(std::string_view name) {
  return platform::EqualIgnoringCase(name, kSheetKeepsake) || platform::EqualIgnoringCase(name, kBookKeepsake);
}

bool IsValidName(std::string_view name) {
  constexpr std::size_t kLongest = 255;
  if (name.empty() || platform::CharacterCount(name) > kLongest) return false;
  const auto isLetter = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 128;
  };
  if (!isLetter(name.front())) return false;
  const bool fits = std::all_of(name.begin(), name.end(),
                                [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '?'; });
  return fits && !ReadReference(name, Dialect::ExcelA1, {}) && !ReadReference(name, Dialect::ExcelR1C1, {}) &&
         !platform::EqualIgnoringCase(name, "TRUE") && !platform::EqualIgnoringCase(name, "FALSE");
}

Reference<css::sheet::XNamedRanges> CalcNameScope::names() const {
  const Reference<css::uno::XInterface> owner =
      sheet != nullptr ? Reference<css::uno::XInterface>(sheet->object()) : book->model();
  return Reference<css::sheet::XNamedRanges>(GetAny(owner, "NamedRanges"), UNO_QUERY_THROW);
}

Reference<css::sheet::XNamedRange> CalcNameScope::Find(std::string_view name) const {
  if (IsKeepsake(name)) return {};
  const auto all = names();
  const OUString exact = ToUno(name);
  if (!all->hasByName(exact)) return {};  // which ignores case
  return Reference<css::sheet::XNamedRange>(all->getByName(exact), UNO_QUERY);
}

std::string CalcNameScope::SpellingOf(std::string_view name) const {
  for (const OUString& known : names()->getElementNames()) {
    std::string spelled = ToUtf8(known);
    if (platform::EqualIgnoringCase(spelled, name)) return spelled;
  }
  return std::string(name);
}

std::set<std::string>& CalcNameScope::hidden() const {
  return sheet != nullptr ? sheet->carried.hiddenNames : book->hiddenNames;
}

// --- Names
// -----------------------------------------------------------------------------------------------------------------

host::Name CalcNames::Item(std::string_view name) const {
  return AtEdge([&] {
    const auto found = scope_.Find(name);
    if (!found.is()) Refuse("There is no name \"" + std::string(name) + "\" here.");
    return host::Name(std::make_shared<CalcName>(scope_, scope_.SpellingOf(name)));
  });
}

std::vector<host::Name> CalcNames::All() const {
  return AtEdge([&] {
    std::vector<std::pair<std::string, std::string>> names;
    for (const OUString& known : scope_.names()->getElementNames()) {
      std::string name = ToUtf8(known);
      if (!IsKeepsake(name)) names.emplace_back(platform::FoldCase(name), name);
    }
    std::sort(names.begin(), names.end());
    std::vector<host::Name> all;
    for (const auto& [folded, name] : names) all.emplace_back(std::make_shared<CalcName>(scope_, name));
    return all;
  });
}

host::Name CalcNames::Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) {
  if (!IsValidName(name) || IsKeepsake(name)) {
    Refuse("\"" + std::string(name) +
           "\" cannot be a name: a name begins with a letter or _, holds letters, digits, _ and points, and is no "
           "cell address.");
  }
  const std::string content = ToContent(scope_, refersTo, r1c1 ? Dialect::ExcelR1C1 : Dialect::ExcelA1);
  AtEdge([&] {
    const CalcProgram::OwnEdit edit(scope_.book->program());
    if (const auto known = scope_.Find(name); known.is()) scope_.names()->removeByName(known->getName());
    const auto sheet = static_cast<sal_Int16>(HomeOf(scope_)->index());
    scope_.names()->addNewByName(ToUno(name), ToUno(content), css::table::CellAddress(sheet, 0, 0), 0);
  });
  const std::string folded = platform::FoldCase(name);
  if (visible) {
    scope_.hidden().erase(folded);
  } else {
    scope_.hidden().insert(folded);
  }
  host::Name added(std::make_shared<CalcName>(scope_, std::string(name)));
  scope_.book->program().BookEdited(*scope_.book);
  return added;
}

// --- Name
// ------------------------------------------------------------------------------------------------------------------

bool CalcName::IsAlive() const noexcept {
  try {
    return scope_.IsAlive() && scope_.Find(name_).is();
  } catch (const css::uno::Exception&) {
    return false;
  } catch (const host::HostError&) {
    return false;
  }
}

std::string CalcName::NameText() const {
  const std::string name = AtEdge([&] { return scope_.SpellingOf(name_); });
  return scope_.sheet == nullptr ? name : QuoteSheetName(scope_.sheet->Name()) + "!" + name;
}

std::string CalcName::Print(Dialect dialect) const {
  return AtEdge([&] {
    const auto name = scope_.Find(name_);
    try {
      return '=' + WriteFormula(TokensOf(scope_.book, name), dialect, kNameHome);
    } catch (const FormulaError&) {
      return '=' + ToUtf8(name->getContent());
    }
  });
}

void CalcName::Put(std::string_view formula, Dialect dialect) {
  const std::string content = ToContent(scope_, formula, dialect);
  AtEdge([&] { scope_.Find(name_)->setContent(ToUno(content)); });
  scope_.book->program().BookEdited(*scope_.book);
}

host::Range CalcName::RefersToRange() const {
  const auto found = AtEdge([&]() -> std::optional<NamedCells> {
    const auto name = scope_.Find(name_);
    try {
      const FormulaTokens tokens = TokensOf(scope_.book, name);
      if (auto cells = CellsOf(*HomeOf(scope_), tokens)) return cells;
      if (std::any_of(tokens.begin(), tokens.end(), IsLost)) return std::nullopt;
    } catch (const FormulaError&) {
      return std::nullopt;
    }
    return ReferredCells(*HomeOf(scope_), name);
  });
  if (!found) Refuse("The name \"" + name_ + "\" does not refer to cells but to " + RefersTo() + ".");
  return found->sheet->RangeOver(found->areas);
}

bool CalcName::Visible() const {
  return !scope_.hidden().contains(platform::FoldCase(name_));
}

void CalcName::SetVisible(bool visible) {
  if (visible == Visible()) return;
  if (visible) {
    scope_.hidden().erase(platform::FoldCase(name_));
  } else {
    scope_.hidden().insert(platform::FoldCase(name_));
  }
  scope_.book->program().BookEdited(*scope_.book);
}

void CalcName::Delete() {
  AtEdge([&] { scope_.names()->removeByName(scope_.Find(name_)->getName()); });
  scope_.hidden().erase(platform::FoldCase(name_));
  scope_.book->program().BookEdited(*scope_.book);
}

// --- cells
// -----------------------------------------------------------------------------------------------------------------

std::optional<FormulaTokens> TokensOfName(const CalcWorksheet& sheet, std::string_view name) {
  if (!IsValidName(name)) return std::nullopt;
  return AtEdge([&]() -> std::optional<FormulaTokens> {
    const auto book = sheet.book().Self();
    for (const auto& scope : {CalcNameScope{book, sheet.Self()}, CalcNameScope{book, nullptr}}) {
      const auto found = scope.Find(name);
      if (!found.is()) continue;
      try {
        return TokensOf(book, found);
      } catch (const FormulaError&) {
        return std::nullopt;
      }
    }
    return std::nullopt;
  });
}

namespace {

// Names lead to names; no further than this, since they may lead around in a circle.
constexpr int kMostNames = 16;

std::shared_ptr<CalcWorkbook> BookOf(const CalcWorksheet& home, const CellReference& place) {
  if (place.file.empty()) return home.book().Self();
  for (const auto& book : home.program().books()) {
    if (!book->Path().empty() && ToUtf8(ToUrl(book->FullName())) == place.file) return book;
  }
  return nullptr;
}

bool Gather(const CalcWorksheet& home, const FormulaTokens& tokens, int depth, NamedCells& cells) {
  if (depth > kMostNames) return false;
  for (const FormulaToken& token : tokens) {
    switch (token.kind) {
      case Kind::Open:
      case Kind::Close:
      case Kind::Union:
      case Kind::Separator:
      case Kind::Space:
        continue;
      case Kind::Reference:
      case Kind::Name:
        break;
      default:
        return false;
    }
    if (IsLost(token)) return false;
    const CellReference& place = token.reference;
    const auto book = BookOf(home, place);
    if (book == nullptr) return false;
    const auto sheet = place.sheet          ? book->SheetNamed(*place.sheet)
                       : place.file.empty() ? home.Self()
                                            : book->activeSheet();
    if (sheet == nullptr) return false;
    if (token.kind == Kind::Name) {
      const auto meaning = TokensOfName(*sheet, token.text);
      if (!meaning || !Gather(*sheet, *meaning, depth + 1, cells)) return false;
      continue;
    }
    if (cells.sheet != nullptr && cells.sheet != sheet) return false;
    cells.sheet = sheet;
    cells.areas.push_back(place.rect());
  }
  return true;
}

}  // namespace

std::optional<NamedCells> CellsOf(const CalcWorksheet& home, const FormulaTokens& tokens) {
  NamedCells cells;
  if (!Gather(home, tokens, 0, cells)) return std::nullopt;
  if (cells.areas.empty()) return std::nullopt;
  return cells;
}

}  // namespace tolvane::libreoffice
