#include "hosts/embedded/CopiedCells.h"

#include <map>
#include <string>
#include <utility>

#include "engine/model/ExpressionRewriter.h"
#include "engine/model/Workbook.h"
#include "hosts/embedded/FormatRuns.h"
#include "hosts/embedded/Pasting.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::FormatId;
using engine::Rect;
using engine::Run;

namespace {

// Brings formats and formulas of one workbook into another.
class Importer {
 public:
  // `fromBook`: the name of the workbook that is copied from.
  Importer(const engine::Sheet& from, const std::string& fromBook, engine::Workbook& to)
      : from_(from),
        to_(to),
        rewriter_([this, fromBook](engine::Expression& expression) { return Detach(expression, fromBook); }) {}

  FormatId Format(FormatId id) {
    if (isSame()) return id;
    const auto [entry, isNew] = formats_.try_emplace(id, 0);
    if (!isNew) return entry->second;
    engine::CellFormat format = from_.book().formats.At(id);
    const engine::NamedStyle& style = from_.book().formats.StyleAt(format.style);
    const auto known = to_.formats.FindStyle(style.name);
    format.style = known ? *known : to_.formats.AddStyle(style);
    format.kept = 0;  // means something in the other book's file only
    if (known && !(to_.formats.StyleAt(*known) == style)) format.direct = engine::kAllFormatGroups;  // keeps its look
    entry->second = to_.formats.Intern(format);
    return entry->second;
  }

  // What a formula says about sheets by name, it says about those of its own book.
  engine::ExpressionPtr Formula(const engine::ExpressionPtr& formula) {
    return isSame() ? formula : rewriter_.Rewrite(formula);
  }

 private:
  bool isSame() const { return &from_.book() == &to_; }

  std::string SheetName(engine::SheetId id) const {
    const engine::Sheet* sheet = from_.book().FindSheet(id);
    return sheet == nullptr ? std::string() : sheet->name();
  }

  bool Detach(engine::Expression& expression, const std::string& fromBook) const {
    bool changed = false;
    for (engine::Node& node : expression.nodes.Own()) {
      engine::ExternalReference external;
      external.book = fromBook;
      if (node.kind == engine::Node::Kind::Reference) {
        const engine::Reference& reference = expression.references[node.index];
        if (reference.sheet == engine::kOwnSheet) continue;
        external.sheet = SheetName(reference.sheet);
        if (reference.isThreeD()) external.sheet.append(1, ':').append(SheetName(reference.lastSheet));
        external.reference = reference;
        external.reference.sheet = external.reference.lastSheet = engine::kOwnSheet;
      } else if (node.kind == engine::Node::Kind::Name) {
        const engine::NameUse& use = expression.names[node.index];
        if (use.sheet == engine::kOwnSheet) continue;
        external.sheet = SheetName(use.sheet);
        external.isName = true;
        external.name = use.name;
      } else {
        continue;
      }
      expression.externals.push_back(std::move(external));
      node.kind = engine::Node::Kind::ExternalRef;
      node.index = static_cast<std::uint32_t>(expression.externals.size() - 1);
      changed = true;
    }
    if (changed) engine::DropUnused(expression);
    return changed;
  }

  const engine::Sheet& from_;
  engine::Workbook& to_;
  std::map<FormatId, FormatId> formats_;
  engine::ExpressionRewriter rewriter_;
};

// Takes what stands in one block of neighbouring cells; the copy's places are its own less `down` and `right`.
class BlockTaker {
 public:
  BlockTaker(const engine::Sheet& sheet, const Rect& source, int down, int right, Importer& importer, CopiedCells& copy)
      : sheet_(sheet), source_(source), down_(down), right_(right), importer_(importer), copy_(copy) {}

  void TakeContents() {
    sheet_.cells().ForEachContent(
        source_, [&](CellPos at, const engine::Value& value, const engine::FormulaCell* formula) {
          CopiedCells::Content content{at.row - down_, at.column - right_, value, nullptr, std::nullopt};
          if (formula != nullptr && formula->arrayArea) {
            const Rect& array = *formula->arrayArea;
            if (source_.contains(array)) {
              if (array.topLeft() != at) return;  // comes with the first cell
              content.array = Placed(array);
              content.formula = importer_.Formula(formula->expression);
            }
          } else if (formula != nullptr) {
            content.formula = importer_.Formula(formula->expression);
          }
          copy_.contents.push_back(std::move(content));
        });
  }

  void TakeFormats() {
    if (copy_.wholeRows || copy_.wholeColumns) {
      sheet_.cells().ForEachCell(source_,
                                 [&](CellPos at, const engine::Value&, const engine::FormulaCell*, FormatId own) {
                                   if (own != 0) AddFormat(Rect::Cell(at), own);
                                 });
      return;
    }
    ForEachFormatRun(sheet_, source_, [&](const Rect& area, FormatId format) { AddFormat(area, format); });
  }

  void TakeParts() {
    for (const Rect& merge : sheet_.merges) {
      if (source_.contains(merge)) copy_.merges.push_back(Placed(merge));
    }
    for (const engine::Validation& validation : sheet_.validations) {
      CopiedCells::Rule rule;
      for (const Rect& range : validation.ranges) {
        if (const auto both = range.intersection(source_)) rule.places.push_back(Placed(*both));
      }
      if (rule.places.empty()) continue;
      rule.rule = validation;
      if (validation.formula1 != nullptr) rule.rule.formula1 = importer_.Formula(validation.formula1);
      if (validation.formula2 != nullptr) rule.rule.formula2 = importer_.Formula(validation.formula2);
      if ((validation.formula1 == nullptr) == (rule.rule.formula1 == nullptr)) {
        copy_.validations.push_back(std::move(rule));
      }
    }
    for (const engine::Hyperlink& link : sheet_.hyperlinks) {
      if (const auto both = link.range.intersection(source_)) copy_.links.push_back({Placed(*both), link});
    }
  }

 private:
  Rect Placed(const Rect& area) const {
    return {area.top - down_, area.left - right_, area.bottom - down_, area.right - right_};
  }

  void AddFormat(const Rect& area, FormatId format) {
    const FormatId there = importer_.Format(format);
    const Rect place = Placed(area);
    if (!copy_.formats.empty()) {
      CopiedCells::Block& last = copy_.formats.back();
      if (last.format == there && last.place.left == place.left && last.place.right == place.right &&
          last.place.bottom + 1 == place.top) {
        last.place.bottom = place.bottom;
        return;
      }
    }
    copy_.formats.push_back({place, there});
  }

  const engine::Sheet& sheet_;
  const Rect& source_;
  int down_;
  int right_;
  Importer& importer_;
  CopiedCells& copy_;
};

}  // namespace

CopiedCells CopiedCells::Take(const Clipboard::Cells& cells, engine::Workbook& to) {
  const engine::Sheet& sheet = cells.sheet->sheet();
  Importer importer(sheet, cells.sheet->book().BookName(), to);
  CopiedCells copy;
  copy.rows = TotalOf(cells.rows);
  copy.columns = TotalOf(cells.columns);
  copy.wholeRows = copy.columns == engine::kMaxColumn;
  copy.wholeColumns = copy.rows == engine::kMaxRow;
  int row = 0;
  for (const Run& rows : cells.rows) {
    int column = 0;
    for (const Run& columns : cells.columns) {
      const Rect source{rows.first, columns.first, rows.last(), columns.last()};
      BlockTaker taker(sheet, source, rows.first - row, columns.first - column, importer, copy);
      taker.TakeContents();
      taker.TakeFormats();
      taker.TakeParts();
      column += columns.count;
    }
    row += rows.count;
  }
  const auto takeBands = [&](const engine::BandTable& bands, const std::vector<Run>& runs) {
    int at = 0;
    for (const Run& run : runs) {
      bands.ForEachStretch(run.first, run.last(), [&](int first, int last, const engine::Band& band) {
        engine::Band there = band;
        there.hidden = there.filtered = false;
        there.kept = 0;
        if (there.format != 0) there.format = importer.Format(there.format);
        copy.bands.push_back({first - run.first + at, last - run.first + at, there});
      });
      at += run.count;
    }
  };
  if (copy.wholeRows && !copy.wholeColumns) takeBands(sheet.rows, cells.rows);
  if (copy.wholeColumns) takeBands(sheet.columns, cells.columns);
  return copy;
}

}  // namespace tolvane::embedded
