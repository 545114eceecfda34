#include "hosts/embedded/CellReference.h"

#include <string>

#include "engine/formula/Evaluator.h"
#include "engine/formula/Parser.h"

namespace tolvane::embedded {

namespace {

// The usual name: one reference and nothing else.
std::optional<CellReference> PlainReference(const EmbeddedWorksheet& home, const engine::Expression& expression,
                                            engine::CellPos at) {
  const engine::Node& root = expression.nodes[expression.root];
  if (root.kind != engine::Node::Kind::Reference) return std::nullopt;
  const engine::Reference& reference = expression.references[root.index];
  if (reference.isThreeD()) return std::nullopt;
  const auto area = reference.At(at);
  if (!area) return std::nullopt;
  const engine::SheetId id = reference.sheet == engine::kOwnSheet ? home.sheet().id() : reference.sheet;
  if (home.book().book().FindSheet(id) == nullptr) return std::nullopt;
  return CellReference{home.book().SheetOf(id), {*area}};
}

std::optional<CellReference> Evaluated(const EmbeddedWorksheet& home, const engine::Expression& expression,
                                       engine::CellPos at) {
  constexpr int kMostRounds = 8;  // each works out the stale cells that the one before has met
  EmbeddedWorkbook& book = home.book();
  const engine::Frame frame{expression, home.sheet(), at};
  for (int round = 0; round < kMostRounds; ++round) {
    engine::Evaluator evaluator(book.book(), book);
    engine::Operand result = engine::ErrorCode::Ref;
    try {
      result = evaluator.Evaluate(frame, expression.root, engine::Mode::Array);
    } catch (const engine::FunctionError&) {
      return std::nullopt;
    }
    if (evaluator.metStale()) {
      for (const engine::CellAddress& stale : evaluator.stale()) {
        book.calculator().RecalculateCells(stale.sheet, engine::Rect::Cell(stale.cell));
      }
      continue;
    }
    if (!result.isReference()) return std::nullopt;
    const engine::AreaList& found = result.areas();
    CellReference cells;
    for (std::size_t i = 0; i < found.size(); ++i) {
      if (found[i].sheet != found[0].sheet) return std::nullopt;
      cells.areas.push_back(found[i].rect);
    }
    for (const auto& open : book.program().books()) {
      if (&open->book() == &found[0].sheet->book()) cells.sheet = open->SheetOf(found[0].sheet->id());
    }
    if (cells.sheet == nullptr) return std::nullopt;
    return cells;
  }
  return std::nullopt;
}

std::optional<std::vector<engine::Rect>> OnlyOn(const EmbeddedWorksheet& sheet, std::optional<CellReference> found) {
  if (!found || found->sheet.get() != &sheet) return std::nullopt;
  return std::move(found->areas);
}

}  // namespace

std::optional<CellReference> CellsOf(const EmbeddedWorksheet& home, const engine::Expression& expression,
                                     engine::CellPos at) {
  if (auto plain = PlainReference(home, expression, at)) return plain;
  return Evaluated(home, expression, at);
}

std::optional<std::vector<engine::Rect>> FindCells(const EmbeddedWorksheet& sheet, std::string_view nameOrAddress) {
  if (nameOrAddress.empty()) return std::nullopt;
  const engine::Name* name = sheet.sheet().names.Find(nameOrAddress);
  if (name == nullptr) name = sheet.book().book().names.Find(nameOrAddress);
  if (name != nullptr) return OnlyOn(sheet, CellsOf(sheet, *name->refersTo));
  try {
    // In parentheses, where a comma joins areas.
    const engine::ExpressionPtr expression = sheet.book().Parse(std::string("=(").append(nameOrAddress).append(")"),
                                                                engine::Notation::A1, {sheet.sheet().id(), {}});
    return OnlyOn(sheet, CellsOf(sheet, *expression));
  } catch (const engine::ParseError&) {
    return std::nullopt;
  }
}

}  // namespace tolvane::embedded
