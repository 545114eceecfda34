#include "engine/model/FollowChange.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engine/model/Area.h"
#include "engine/model/ExpressionRewriter.h"
#include "engine/model/FollowAttachments.h"
#include "engine/model/FollowReference.h"
#include "engine/model/ReferenceHolders.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

void RequireNothingCut(const Workbook& book, const StructuralChange& change) {
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    const Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    for (const Rect& merge : sheet.merges) {
      if (change.Cuts({sheet.id(), merge})) {
        throw std::invalid_argument("You can't change part of a merged area: " + sheet.name() + "!" + AddressOf(merge));
      }
    }
    if (!sheet.cells().hasArrays()) continue;
    sheet.cells().ForEachFormula(Rect::WholeSheet(), [&](CellPos, const FormulaCell& formula) {
      if (!formula.arrayArea) return;
      const SheetArea before{sheet.id(), *formula.arrayArea};
      const auto after = change.Map(before);
      const bool changesSize =
          after && (after->area.rows() != before.area.rows() || after->area.columns() != before.area.columns());
      if (changesSize || change.Cuts(before)) {
        throw std::invalid_argument("You can't change part of an array formula: " + sheet.name() + "!" +
                                    AddressOf(before.area));
      }
    });
  }
}

namespace {

std::vector<Rect> AreasOn(SheetId sheet, const std::vector<SheetArea>& parts) {
  std::vector<Rect> areas;
  for (const SheetArea& part : parts) {
    if (part.sheet == sheet) areas.push_back(part.area);
  }
  return areas;
}

// Formulas of cells, names, and validations on sheets whose cells stay where they are.
void FollowExpressions(Workbook& book, const StructuralChange& change, ReferenceRewriter& rewriter) {
  ForEachExpression(book, [&](const ExpressionHolder& holder, ExpressionPtr& expression) {
    if (holder.kind == ExpressionHolder::Kind::Name) {
      expression = rewriter.Rewrite(
          expression, [&](const Reference& reference) { return FollowInName(reference, holder.sheet, change); });
      return;
    }
    const Place before{holder.sheet, holder.home};
    const bool onTouched = change.Touches(holder.sheet);
    if (onTouched && holder.kind != ExpressionHolder::Kind::Cell) return;
    const auto after = onTouched ? change.Map(before) : before;
    if (!after) return;  // the cell goes
    ExpressionPtr rewritten = rewriter.Rewrite(
        expression, [&](const Reference& reference) { return Follow(reference, before, *after, change); });
    // A result may depend on the places too, as that of ROW() does.
    if (holder.cell != nullptr && (rewritten != expression || !(*after == before))) holder.cell->dirty = true;
    expression = std::move(rewritten);
  });
}

// A rule as it is for one of its cells that comes from `before` to `after`.
Validation FollowRule(const Validation& rule, const Place& before, const Place& after, const StructuralChange& change,
                      ReferenceRewriter& rewriter) {
  const auto follow = [&](const Reference& reference) { return Follow(reference, before, after, change); };
  Validation result = rule;
  result.formula1 = rewriter.Rewrite(rule.formula1, follow);
  result.formula2 = rewriter.Rewrite(rule.formula2, follow);
  return result;
}

void FollowValidations(Sheet& sheet, const RunShift& change, ReferenceRewriter& rewriter) {
  for (Validation& rule : sheet.validations) {
    if (rule.ranges.empty()) continue;
    std::vector<SheetArea> parts;
    for (const Rect& range : rule.ranges) change.MapCells({sheet.id(), range}, parts);
    if (parts.empty()) {
      rule.ranges.clear();
      continue;
    }
    const std::vector<Rect> areas = AreasOn(sheet.id(), parts);
    if (const auto anchor = FindAnchor(sheet.id(), rule.ranges.front(), areas, change)) {
      rule = FollowRule(rule, anchor->before, anchor->after, change, rewriter);
    }
    rule.ranges = areas;
  }
  std::erase_if(sheet.validations, [](const Validation& rule) { return rule.ranges.empty(); });
}

void FollowHyperlinks(Workbook& book, const StructuralChange& change) {
  std::vector<std::pair<SheetId, Hyperlink>> arriving;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    std::vector<Hyperlink> followed;
    for (const Hyperlink& link : sheet.hyperlinks) {
      std::vector<SheetArea> parts;
      change.MapCells({sheet.id(), link.range}, parts);
      for (const SheetArea& part : parts) {
        Hyperlink moved = link;
        moved.range = part.area;
        if (part.sheet == sheet.id()) {
          followed.push_back(std::move(moved));
        } else {
          arriving.emplace_back(part.sheet, std::move(moved));
        }
      }
    }
    sheet.hyperlinks = std::move(followed);
  }
  for (auto& [sheet, link] : arriving) book.FindSheet(sheet)->hyperlinks.push_back(std::move(link));
}

void FollowMerges(Workbook& book, const StructuralChange& change) {
  std::vector<SheetArea> arriving;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    std::vector<Rect> followed;
    for (const Rect& merge : sheet.merges) {
      const auto mapped = change.Map(SheetArea{sheet.id(), merge});
      if (!mapped || mapped->area.isCell()) continue;
      if (mapped->sheet == sheet.id()) {
        followed.push_back(mapped->area);
      } else {
        arriving.push_back(*mapped);
      }
    }
    sheet.merges = std::move(followed);
  }
  for (const SheetArea& merge : arriving) book.FindSheet(merge.sheet)->merges.push_back(merge.area);
}

void FollowPrintAreas(Sheet& sheet, const StructuralChange& change) {
  std::vector<Rect> followed;
  for (const Rect& area : sheet.printAreas) {
    const auto mapped = change.Map(SheetArea{sheet.id(), area});
    if (mapped) followed.push_back(mapped->sheet == sheet.id() ? mapped->area : area);
  }
  sheet.printAreas = std::move(followed);
}

// A filter whose header row goes, goes too, and shows what it has hidden.
void FollowFilter(Sheet& sheet, const StructuralChange& change) {
  if (!sheet.autoFilter) return;
  const Rect before = sheet.autoFilter->range;
  const auto mapped = change.Map(SheetArea{sheet.id(), before});
  if (mapped && (mapped->sheet != sheet.id() || mapped->area == before)) return;
  const auto columnAfter = [&](int column) {
    return change.Map(SheetArea{sheet.id(), {before.top, column, before.top, column}});
  };
  bool headerStays = false;
  for (int column = before.left; column <= before.right && !headerStays; ++column) {
    headerStays = columnAfter(column).has_value();
  }
  if (!mapped || !headerStays) {
    sheet.rows.Change(before.top, before.bottom, [](Band& band) { band.filtered = false; });
    sheet.autoFilter.reset();
    return;
  }
  std::vector<FilterCriteria> followed;
  for (FilterCriteria& criteria : sheet.autoFilter->criteria) {
    const auto column = columnAfter(before.left + criteria.field - 1);
    if (!column) continue;
    criteria.field = column->area.left - mapped->area.left + 1;
    followed.push_back(std::move(criteria));
  }
  sheet.autoFilter->criteria = std::move(followed);
  sheet.autoFilter->range = mapped->area;
}

// The cells of a block take their rules along; what stays keeps them, and what lay at the target loses them.
void FollowValidations(Workbook& book, const BlockMove& change, ReferenceRewriter& rewriter) {
  std::vector<Validation> arriving;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    std::vector<Validation> followed;
    for (const Validation& rule : sheet.validations) {
      std::vector<Rect> rest = rule.ranges;
      std::vector<Rect> taken;
      if (sheet.id() == change.source().sheet) {
        for (const Rect& range : rule.ranges) {
          if (const auto part = range.intersection(change.source().area)) taken.push_back(*part);
        }
        Subtract(rest, change.source().area);
      }
      if (sheet.id() == change.target().sheet) Subtract(rest, change.target().area);
      if (!rest.empty()) {
        const Place home{sheet.id(), rest.front().topLeft()};
        followed.push_back(FollowRule(rule, home, home, change, rewriter));
        followed.back().ranges = std::move(rest);
      }
      if (taken.empty()) continue;
      const Place home{sheet.id(), taken.front().topLeft()};
      Validation moved = FollowRule(rule, home, *change.Map(home), change, rewriter);
      moved.ranges.clear();
      for (const Rect& part : taken) moved.ranges.push_back(change.Map(SheetArea{sheet.id(), part})->area);
      const bool staysHere = change.source().sheet == change.target().sheet;
      if (staysHere && !followed.empty() && followed.back().SameRule(moved)) {
        std::move(moved.ranges.begin(), moved.ranges.end(), std::back_inserter(followed.back().ranges));
      } else {
        arriving.push_back(std::move(moved));
      }
    }
    sheet.validations = std::move(followed);
  }
  auto& there = book.FindSheet(change.target().sheet)->validations;
  std::move(arriving.begin(), arriving.end(), std::back_inserter(there));
}

// A formula that moves to another sheet still means the names of the sheet that it comes from.
void QualifyNames(Sheet& from, const BlockMove& change) {
  if (change.source().sheet == change.target().sheet || from.names.byFoldedName().empty()) return;
  ExpressionRewriter rewriter([&](Expression& expression) {
    bool changed = false;
    for (const Node& node : expression.nodes) {
      if (node.kind != Node::Kind::Name) continue;
      NameUse& use = expression.names.Own()[node.index];
      if (use.sheet != kOwnSheet || from.names.Find(use.name) == nullptr) continue;
      use.sheet = from.id();
      changed = true;
    }
    return changed;
  });
  from.cells().ForEachFormula(change.source().area,
                              [&](CellPos, FormulaCell& cell) { cell.expression = rewriter.Rewrite(cell.expression); });
}

}  // namespace

void Follow(Workbook& book, const RunShift& change) {
  ReferenceRewriter rewriter;
  FollowExpressions(book, change, rewriter);
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    FollowValidations(sheet, change, rewriter);
    FollowPrintAreas(sheet, change);
    FollowFilter(sheet, change);
  }
  FollowMerges(book, change);
  FollowHyperlinks(book, change);
  FollowAttachments(book, change, rewriter);
}

void Follow(Workbook& book, const BlockMove& change) {
  QualifyNames(*book.FindSheet(change.source().sheet), change);
  ReferenceRewriter rewriter;
  FollowExpressions(book, change, rewriter);
  FollowValidations(book, change, rewriter);
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    FollowPrintAreas(sheet, change);
    FollowFilter(sheet, change);
  }
  FollowMerges(book, change);
  FollowHyperlinks(book, change);
  FollowAttachments(book, change, rewriter);
}

}  // namespace tolvane::engine
