// The part of EmbeddedRange that reads and writes contents.
#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/formula/NumberFormat.h"
#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/Values.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::Rect;

namespace {

// A block of more cells would take gigabytes; the whole of a sheet is meant by accident.
constexpr std::int64_t kMostBlockCells = std::int64_t{1} << 26;

void RequireBlock(const Rect& area) {
  if (area.cells() <= kMostBlockCells) return;
  throw host::HostError(host::ErrorNumber::OutOfMemory,
                        "The contents of " + std::to_string(area.cells()) + " cells do not fit into one block.");
}

// Which cell of a block goes to a cell of a range, counting from 0: a single row or column repeats; beyond a block of
// several there is none.
int SourceIndex(int index, int size) {
  if (size == 1) return 0;
  return index < size ? index : -1;
}

// The cells of merges but for their first hold nothing, whatever is written over them.
void ClearCovered(engine::Sheet& sheet, const Rect& area) {
  for (const Rect& merge : sheet.merges) {
    const auto touched = merge.intersection(area);
    if (!touched) continue;
    const Rect beside{merge.top, merge.left + 1, merge.top, merge.right};
    const Rect below{merge.top + 1, merge.left, merge.bottom, merge.right};
    for (const Rect& part : {beside, below}) {
      if (!part.isValid()) continue;
      if (const auto covered = part.intersection(area)) sheet.ClearContents(*covered);
    }
  }
}

bool BeginsWith(std::string_view text, char c) {
  return !text.empty() && text.front() == c;
}

}  // namespace

// --- values
// ----------------------------------------------------------------------------------------------------------------

host::CellBlock EmbeddedRange::Value() const {
  const Rect& area = first();
  if (area.isCell()) return host::CellBlock(ToHost(cells().ValueAt(area.topLeft())));
  RequireBlock(area);
  host::CellBlock block(area.rows(), area.columns());
  const std::span<host::CellValue> out = block.cells();
  BlockToHost convert(out.size());
  // What is empty is so already; only what is there is visited.
  const auto width = static_cast<std::size_t>(area.columns());
  cells().cells().ForEachContent(area, [&](CellPos at, const engine::Value& value, const engine::FormulaCell*) {
    out[static_cast<std::size_t>(at.row - area.top) * width + static_cast<std::size_t>(at.column - area.left)] =
        convert(value);
  });
  return block;
}

void EmbeddedRange::SetValue(const host::CellBlock& block) {
  if (block.rows() == 0 || block.columns() == 0) Refuse("An empty block cannot be written to cells.");
  const auto sheet = sheet_;
  const std::vector<Rect> written = areas();
  RequireUnlocked(cells(), written);
  if (block.isSingle() && block.single().isEmpty()) {
    Refusing([&] {
      for (const Rect& area : written) RequireWhole(area);
      for (const Rect& area : written) cells().ClearContents(area);
    });
    program().CellsEdited(*sheet, written);
    return;
  }
  for (const Rect& area : written) RequireBlock(area);
  for (const Rect& area : written) RequireWhole(area);
  std::vector<engine::Value> source;
  source.reserve(block.cells().size());
  BlockToEngine convert(source.capacity());
  for (const host::CellValue& value : block.cells()) source.push_back(convert(value));
  for (const Rect& area : written) {
    if (area.rows() == block.rows() && area.columns() == block.columns()) {
      Refusing([&] { cells().SetValues(area, source); });
    } else {
      std::vector<engine::Value> values;
      values.reserve(static_cast<std::size_t>(area.cells()));
      for (int row = 0; row < area.rows(); ++row) {
        const int fromRow = SourceIndex(row, block.rows());
        for (int column = 0; column < area.columns(); ++column) {
          const int fromColumn = SourceIndex(column, block.columns());
          if (fromRow < 0 || fromColumn < 0) {
            values.emplace_back(engine::ErrorCode::NA);
          } else {
            values.push_back(source[static_cast<std::size_t>(fromRow) * static_cast<std::size_t>(block.columns()) +
                                    static_cast<std::size_t>(fromColumn)]);
          }
        }
      }
      Refusing([&] { cells().SetValues(area, values); });
    }
    ClearCovered(cells(), area);
  }
  program().CellsEdited(*sheet, written);
}

void EmbeddedRange::RequireWhole(const Rect& area) const {
  if (!cells().cells().CutsArray(area)) return;
  Refuse("The cells " + sheet_->PlaceOf(area) +
         " hold part of an array formula, which can only be changed as a whole.");
}

std::string EmbeddedRange::Text() const {
  const CellPos at = first().topLeft();
  return engine::FormatValue(cells().ValueAt(at), book().formats.At(cells().FormatAt(at)).format.numberFormat);
}

// --- formulas
// --------------------------------------------------------------------------------------------------------------

host::CellBlock EmbeddedRange::Formula() const {
  return ReadFormulas(engine::Notation::A1);
}
host::CellBlock EmbeddedRange::FormulaR1C1() const {
  return ReadFormulas(engine::Notation::R1C1);
}
void EmbeddedRange::SetFormula(const host::CellBlock& block) {
  WriteFormulas(block, engine::Notation::A1);
}
void EmbeddedRange::SetFormulaR1C1(const host::CellBlock& block) {
  WriteFormulas(block, engine::Notation::R1C1);
}

host::CellBlock EmbeddedRange::ReadFormulas(engine::Notation notation) const {
  const Rect& area = first();
  RequireBlock(area);
  host::CellBlock block(area.rows(), area.columns());
  const std::span<host::CellValue> out = block.cells();
  std::fill(out.begin(), out.end(), host::CellValue(""));  // the formula of an empty cell is an empty text
  const auto width = static_cast<std::size_t>(area.columns());
  const engine::SheetId sheetId = cells().id();
  BlockToHost convert(out.size());
  // In R1C1 notation cells that share a formula share its text.
  const engine::Expression* lastFormula = nullptr;
  host::CellValue lastText;
  cells().cells().ForEachContent(area, [&](CellPos at, const engine::Value& value, const engine::FormulaCell* formula) {
    host::CellValue& target =
        out[static_cast<std::size_t>(at.row - area.top) * width + static_cast<std::size_t>(at.column - area.left)];
    if (formula == nullptr) {
      if (value.isText()) {
        const std::string_view text = value.text().view();
        if (BeginsWith(text, '=') || BeginsWith(text, '\'')) {
          std::string marked(1, '\'');
          target = host::CellValue(marked.append(text));
          return;
        }
      }
      target = convert(value);
      return;
    }
    // An array formula stands in the first of its cells and reads from all.
    const CellPos home = formula->arrayArea ? formula->arrayArea->topLeft() : at;
    const engine::ExpressionPtr& expression =
        formula->expression != nullptr ? formula->expression : cells().FormulaAt(home)->expression;
    if (notation == engine::Notation::R1C1 && expression.get() == lastFormula) {
      target = lastText;
      return;
    }
    target = host::CellValue(engine::PrintFormula(*expression, notation, {sheetId, home}, book()));
    if (notation == engine::Notation::R1C1) {
      lastFormula = expression.get();
      lastText = target;
    }
  });
  return block;
}

namespace {

// One cell as it is to be written.
struct Content {
  engine::Value value;
  engine::ExpressionPtr formula;
};

// Reads formula texts; equal ones are parsed once, and equal formulas become one.
class FormulaReader {
 public:
  FormulaReader(engine::Notation notation, const EmbeddedWorksheet& sheet, int columns)
      : notation_(notation), sheet_(sheet), above_(static_cast<std::size_t>(columns)) {}

  Content Read(const host::CellValue& value, CellPos home, int column) {
    if (!value.isText()) return {ToEngine(value), nullptr};
    const std::string_view text = value.text();
    if (BeginsWith(text, '\'')) return {ToEngine(host::CellValue(text.substr(1))), nullptr};
    if (!BeginsWith(text, '=')) return {ToEngine(value), nullptr};
    return {{}, Parse(text, home, static_cast<std::size_t>(column))};
  }

 private:
  engine::ExpressionPtr Parse(std::string_view text, CellPos home, std::size_t column) {
    const engine::FormulaHome place{sheet_.sheet().id(), home};
    if (notation_ == engine::Notation::R1C1) {
      // Means the same in every cell.
      engine::ExpressionPtr& known = byText_[std::string(text)];
      if (known == nullptr) known = ParseAt(text, place);
      return known;
    }
    engine::ExpressionPtr parsed = ParseAt(text, place);
    engine::ExpressionPtr& above = above_[column];
    if (above != nullptr && *above == *parsed) return above;
    above = parsed;
    return parsed;
  }

  engine::ExpressionPtr ParseAt(std::string_view text, const engine::FormulaHome& place) const {
    try {
      return sheet_.book().Parse(text, notation_, place);
    } catch (const engine::ParseError& failure) {
      Refuse("The formula for " + sheet_.PlaceOf(Rect::Cell(place.cell)) + " cannot be read: " + failure.what());
    }
  }

  engine::Notation notation_;
  const EmbeddedWorksheet& sheet_;
  std::unordered_map<std::string, engine::ExpressionPtr> byText_;
  std::vector<engine::ExpressionPtr> above_;  // the last formula of each column
};

void WriteContents(engine::Sheet& sheet, const Rect& area, const std::vector<Content>& contents) {
  std::vector<engine::Value> values;
  values.reserve(contents.size());
  bool hasFormulas = false;
  for (const Content& content : contents) {
    values.push_back(content.value);
    hasFormulas = hasFormulas || content.formula != nullptr;
  }
  engine::CellStore& store = sheet.cells();
  store.WriteValues(area, values);
  if (hasFormulas) {
    std::size_t i = 0;
    for (int row = area.top; row <= area.bottom; ++row) {
      for (int column = area.left; column <= area.right; ++column, ++i) {
        if (contents[i].formula != nullptr) store.SetFormula({row, column}, {contents[i].formula, std::nullopt, true});
      }
    }
  }
  ClearCovered(sheet, area);
  sheet.book().TellCellsChanged(sheet.id(), area);
}

}  // namespace

void EmbeddedRange::WriteFormulas(const host::CellBlock& block, engine::Notation notation) {
  if (block.rows() == 0 || block.columns() == 0) Refuse("An empty block cannot be written to cells.");
  const auto sheet = sheet_;
  const std::vector<Rect> written = areas();
  for (const Rect& area : written) RequireBlock(area);
  RequireUnlocked(cells(), written);
  for (const Rect& area : written) RequireWhole(area);
  // All is read before anything is written.
  std::vector<std::vector<Content>> contents(written.size());
  if (block.isSingle()) {
    // One formula for all cells, meant for the first: relative references go along with the cells.
    FormulaReader reader(notation, *sheet, 1);
    const Content content = reader.Read(block.single(), written.front().topLeft(), 0);
    for (std::size_t i = 0; i < written.size(); ++i) {
      contents[i].assign(static_cast<std::size_t>(written[i].cells()), content);
    }
  } else {
    for (std::size_t i = 0; i < written.size(); ++i) {
      const Rect& area = written[i];
      contents[i].reserve(static_cast<std::size_t>(area.cells()));
      FormulaReader reader(notation, *sheet, area.columns());
      for (int row = 0; row < area.rows(); ++row) {
        const int fromRow = SourceIndex(row, block.rows());
        for (int column = 0; column < area.columns(); ++column) {
          const int fromColumn = SourceIndex(column, block.columns());
          if (fromRow < 0 || fromColumn < 0) {
            contents[i].push_back({engine::ErrorCode::NA, nullptr});
          } else {
            contents[i].push_back(
                reader.Read(block.at(fromRow + 1, fromColumn + 1), {area.top + row, area.left + column}, column));
          }
        }
      }
    }
  }
  for (std::size_t i = 0; i < written.size(); ++i) WriteContents(cells(), written[i], contents[i]);
  program().FormulasEntered(*sheet, written);
}

// --- clearing
// --------------------------------------------------------------------------------------------------------------

void EmbeddedRange::ClearContents() {
  const auto sheet = sheet_;
  const std::vector<Rect> cleared = areas();
  RequireUnlocked(cells(), cleared);
  for (const Rect& area : cleared) {
    RequireWhole(area);
    for (const Rect& merge : cells().merges) {
      if (merge.intersects(area) && !area.contains(merge)) {
        Refuse("The cells " + sheet_->PlaceOf(area) + " hold part of the merged cells " + sheet_->PlaceOf(merge) +
               ", which can only be cleared as a whole.");
      }
    }
  }
  for (const Rect& area : cleared) Refusing([&] { cells().ClearContents(area); });
  program().CellsEdited(*sheet, cleared);
}

void EmbeddedRange::Clear() {
  const auto sheet = sheet_;
  const std::vector<Rect> cleared = areas();
  RequireUnlocked(cells(), cleared);
  for (const Rect& area : cleared) RequireWhole(area);
  for (const Rect& area : cleared) {
    Refusing([&] {
      cells().ClearContents(area);
      cells().ChangeFormat(area, [](engine::FormatId) { return engine::kDefaultFormat; });
    });
    cells().RemoveValidation(area);
    cells().RemoveHyperlinks(area);
    std::erase_if(cells().merges, [&](const Rect& merge) { return merge.intersects(area); });
  }
  program().CellsEdited(*sheet, cleared);
}

}  // namespace tolvane::embedded
