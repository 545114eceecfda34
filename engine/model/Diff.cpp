#include "engine/model/Diff.h"

#include <algorithm>
#include <string>
#include <utility>

#include "engine/model/DiffContext.h"
#include "engine/model/ExpressionText.h"
#include "platform/Text.h"

namespace tolvane::engine {

namespace {

void CompareSheetLists(DiffContext& context) {
  const auto& pairs = context.pairs();
  for (std::size_t i = 0; i < context.left().sheetCount(); ++i) {
    const Sheet& sheet = context.left().sheetAt(i);
    const bool isPaired =
        std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return pair.first == &sheet; });
    if (!isPaired) context.Report("sheet " + sheet.name(), "sheet", "present", "missing");
  }
  for (std::size_t i = 0; i < context.right().sheetCount(); ++i) {
    const Sheet& sheet = context.right().sheetAt(i);
    const bool isPaired =
        std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return pair.second == &sheet; });
    if (!isPaired) context.Report("sheet " + sheet.name(), "sheet", "missing", "present");
  }
  // The order of the sheets that both have.
  auto inLeftOrder = pairs;
  auto inRightOrder = pairs;
  std::sort(inLeftOrder.begin(), inLeftOrder.end(), [&](const auto& a, const auto& b) {
    return context.left().PositionOf(a.first->id()) < context.left().PositionOf(b.first->id());
  });
  std::sort(inRightOrder.begin(), inRightOrder.end(), [&](const auto& a, const auto& b) {
    return context.right().PositionOf(a.second->id()) < context.right().PositionOf(b.second->id());
  });
  if (inLeftOrder == inRightOrder) return;
  const auto listOf = [](const auto& ordered) {
    std::string list;
    for (const auto& pair : ordered) list.append(list.empty() ? "" : ", ").append(pair.first->name());
    return list;
  };
  context.Report("workbook", "sheet order", listOf(inLeftOrder), listOf(inRightOrder));
}

std::string RefersToText(const Name& name, const Workbook& book) {
  return name.refersTo == nullptr ? std::string() : std::string(1, '=').append(DebugText(*name.refersTo, book, {1, 1}));
}

// `prefix`: of names of a sheet, "Sheet1!".
void CompareNames(DiffContext& context, const std::string& prefix, const NameTable& left, const NameTable& right) {
  for (const auto& [folded, name] : left.byFoldedName()) {
    const std::string where = "name " + prefix + name.name;
    const auto found = right.byFoldedName().find(folded);
    if (found == right.byFoldedName().end()) {
      context.Report(where, "name", RefersToText(name, context.left()), "none");
      continue;
    }
    const Name& other = found->second;
    if (name.name != other.name) context.Report(where, "spelling", name.name, other.name);
    if (!context.SameFormula(name.refersTo, other.refersTo, {1, 1})) {
      context.Report(where, "refers to", RefersToText(name, context.left()), RefersToText(other, context.right()));
    }
    if (name.hidden != other.hidden) context.Report(where, "hidden", TextOf(name.hidden), TextOf(other.hidden));
  }
  for (const auto& [folded, name] : right.byFoldedName()) {
    if (left.byFoldedName().contains(folded)) continue;
    context.Report("name " + prefix + name.name, "name", "none", RefersToText(name, context.right()));
  }
}

void CompareStyles(DiffContext& context) {
  const FormatTable& left = context.left().formats;
  const FormatTable& right = context.right().formats;
  for (const NamedStyle& style : left.styles()) {
    const std::string where = "style " + style.name;
    const auto found = right.FindStyle(style.name);
    if (!found) {
      context.Report(where, "style", "present", "missing");
      continue;
    }
    const NamedStyle& other = right.StyleAt(*found);
    if (style.name != other.name) context.Report(where, "spelling", style.name, other.name);
    if (style.includes != other.includes) {
      context.Report(where, "included groups", std::to_string(style.includes), std::to_string(other.includes));
    }
    CompareFormat(context, where, style.format, other.format);
  }
  for (const NamedStyle& style : right.styles()) {
    if (!left.FindStyle(style.name)) context.Report("style " + style.name, "style", "missing", "present");
  }
}

}  // namespace

std::vector<Difference> Diff(const Workbook& left, const Workbook& right, const DiffOptions& options) {
  DiffContext context(left, right, options);
  const auto flag = [&](const char* what, bool a, bool b) {
    if (a != b) context.Report("workbook", what, TextOf(a), TextOf(b));
  };
  flag("structure protection", left.structureProtected, right.structureProtected);
  flag("1904 dates", left.date1904, right.date1904);
  if (left.codeName != right.codeName) context.Report("workbook", "code name", left.codeName, right.codeName);
  CompareSheetLists(context);
  CompareNames(context, "", left.names, right.names);
  CompareStyles(context);
  for (const auto& [a, b] : context.pairs()) {
    CompareNames(context, a->name() + "!", a->names, b->names);
    CompareParts(context, *a, *b);
    CompareCells(context, *a, *b);
  }
  return context.Take();
}

}  // namespace tolvane::engine
