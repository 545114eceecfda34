#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/model/Area.h"
#include "engine/model/DiffContext.h"
#include "engine/model/ExpressionText.h"

namespace tolvane::engine {

namespace {

std::string PlaceText(const Sheet& sheet, const Rect& area) {
  return std::string(sheet.name()).append(1, '!').append(AddressOf(area));
}

std::string TextOf(const std::vector<Rect>& areas) {
  std::string text;
  for (const Rect& area : areas) text.append(text.empty() ? "" : ",").append(AddressOf(area));
  return text;
}

// --- validation
// ----------------------------------------------------------------------------------------------------------

std::string TextOf(const Validation& rule, const Workbook& book) {
  const CellPos home = rule.ranges.front().topLeft();
  const auto formula = [&](const ExpressionPtr& expression) {
    return expression == nullptr ? std::string() : std::string(" =").append(DebugText(*expression, book, home));
  };
  std::string text = "kind " + std::to_string(static_cast<int>(rule.kind));
  text.append(" alert ").append(std::to_string(static_cast<int>(rule.alert)));
  text.append(" comparison ").append(std::to_string(rule.comparison));
  text.append(formula(rule.formula1)).append(formula(rule.formula2));
  for (const bool flag : {rule.ignoreBlank, rule.inCellDropdown, rule.showInput, rule.showError}) {
    text.append(flag ? " yes" : " no");
  }
  for (const std::string* part : {&rule.inputTitle, &rule.inputMessage, &rule.errorTitle, &rule.errorMessage}) {
    text.append(" \"").append(*part).append(1, '"');
  }
  return text;
}

bool SameRule(const DiffContext& context, const Validation& a, const Validation& b, CellPos home) {
  if (!context.SameFormula(a.formula1, b.formula1, home) || !context.SameFormula(a.formula2, b.formula2, home)) {
    return false;
  }
  Validation respelt = b;
  respelt.formula1 = a.formula1;
  respelt.formula2 = a.formula2;
  return a.SameRule(respelt);
}

// The cells that only one sheet has a rule for.
void ReportUnmatched(DiffContext& context, const Sheet& place, const Sheet& one, const Sheet& other, bool isLeft) {
  for (const Validation& rule : one.validations) {
    std::vector<Rect> rest = rule.ranges;
    for (const Validation& match : other.validations) {
      for (const Rect& range : match.ranges) Subtract(rest, range);
    }
    if (rest.empty()) continue;
    const std::string where = std::string(place.name()).append(1, '!').append(TextOf(rest));
    std::string text = TextOf(rule, one.book());
    context.Report(where, "validation", isLeft ? text : "none", isLeft ? "none" : text);
  }
}

// Compared cell by cell: how a sheet divides its cells among rules makes no difference.
void CompareValidations(DiffContext& context, const Sheet& left, const Sheet& right) {
  for (const Validation& a : left.validations) {
    for (const Validation& b : right.validations) {
      std::vector<Rect> common;
      for (const Rect& x : a.ranges) {
        for (const Rect& y : b.ranges) {
          if (const auto both = x.intersection(y)) common.push_back(*both);
        }
      }
      if (common.empty() || SameRule(context, a, b, common.front().topLeft())) continue;
      context.Report(std::string(left.name()).append(1, '!').append(TextOf(common)), "validation",
                     TextOf(a, left.book()), TextOf(b, right.book()));
    }
  }
  ReportUnmatched(context, left, left, right, true);
  ReportUnmatched(context, left, right, left, false);
}

// --- lists
// -------------------------------------------------------------------------------------------------------------

void CompareMerges(DiffContext& context, const Sheet& left, const Sheet& right) {
  const std::set<Rect> a(left.merges.begin(), left.merges.end());
  const std::set<Rect> b(right.merges.begin(), right.merges.end());
  for (const Rect& merge : a) {
    if (!b.contains(merge)) context.Report(PlaceText(left, merge), "merge", "merged", "apart");
  }
  for (const Rect& merge : b) {
    if (!a.contains(merge)) context.Report(PlaceText(left, merge), "merge", "apart", "merged");
  }
}

std::string TextOf(const Hyperlink& link) {
  return std::string(link.address)
      .append(1, '#')
      .append(link.subAddress)
      .append(" \"")
      .append(link.screenTip)
      .append("\"");
}

void CompareHyperlinks(DiffContext& context, const Sheet& left, const Sheet& right) {
  const auto sorted = [](std::vector<Hyperlink> links) {
    std::stable_sort(links.begin(), links.end(),
                     [](const Hyperlink& x, const Hyperlink& y) { return x.range < y.range; });
    return links;
  };
  const std::vector<Hyperlink> a = sorted(left.hyperlinks);
  const std::vector<Hyperlink> b = sorted(right.hyperlinks);
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() || j < b.size()) {
    const bool onlyLeft = j == b.size() || (i < a.size() && a[i].range < b[j].range);
    const bool onlyRight = !onlyLeft && (i == a.size() || b[j].range < a[i].range);
    if (onlyLeft) {
      context.Report(PlaceText(left, a[i].range), "hyperlink", TextOf(a[i]), "none");
    } else if (onlyRight) {
      context.Report(PlaceText(left, b[j].range), "hyperlink", "none", TextOf(b[j]));
    } else if (!(a[i] == b[j])) {
      context.Report(PlaceText(left, a[i].range), "hyperlink", TextOf(a[i]), TextOf(b[j]));
    }
    if (!onlyRight) ++i;
    if (!onlyLeft) ++j;
  }
}

// What the file keeps for these cells is not known here, but where it lies is.
void CompareAttachments(DiffContext& context, const Sheet& left, const Sheet& right) {
  const auto placesOf = [](const Sheet& sheet) {
    std::multiset<std::string> places;
    for (const Attachment& attachment : sheet.attachments) places.insert(TextOf(attachment.ranges));
    return places;
  };
  const std::multiset<std::string> a = placesOf(left);
  const std::multiset<std::string> b = placesOf(right);
  const auto report = [&](const auto& one, const auto& without, const char* leftText, const char* rightText) {
    std::vector<std::string> only;
    std::set_difference(one.begin(), one.end(), without.begin(), without.end(), std::back_inserter(only));
    for (const std::string& place : only) {
      context.Report(std::string(left.name()).append(1, '!').append(place), "attachment", leftText, rightText);
    }
  };
  report(a, b, "present", "missing");
  report(b, a, "missing", "present");
}

// --- filter
// --------------------------------------------------------------------------------------------------------------

std::string TextOf(const std::vector<FilterCriteria>& criteria) {
  std::string text;
  for (const FilterCriteria& one : criteria) {
    text.append(text.empty() ? "" : "; ").append(std::to_string(one.field)).append(": ").append(one.criterion1);
    if (one.criterion2) text.append(1, ' ').append(std::to_string(static_cast<int>(one.join))).append(*one.criterion2);
    for (const std::string& value : one.values) text.append(1, ',').append(value);
  }
  return text;
}

void CompareFilter(DiffContext& context, const Sheet& left, const Sheet& right) {
  const auto& a = left.autoFilter;
  const auto& b = right.autoFilter;
  const std::string where = "sheet " + left.name();
  if (a.has_value() != b.has_value() || (a && a->range != b->range)) {
    const auto text = [](const auto& filter) { return filter ? AddressOf(filter->range) : std::string("none"); };
    context.Report(where, "auto filter", text(a), text(b));
  }
  if (a && b && a->criteria != b->criteria) {
    context.Report(where, "auto filter criteria", TextOf(a->criteria), TextOf(b->criteria));
  }
}

// --- protection and view
// -----------------------------------------------------------------------------------------------

struct ProtectionFlag {
  const char* what;
  bool SheetProtection::*flag;
};

constexpr ProtectionFlag kProtectionFlags[] = {
    ProtectionFlag{"protection", &SheetProtection::isProtected},
    ProtectionFlag{"protection of objects", &SheetProtection::objects},
    ProtectionFlag{"protection of scenarios", &SheetProtection::scenarios},
    ProtectionFlag{"protection: format cells", &SheetProtection::formatCells},
    ProtectionFlag{"protection: format columns", &SheetProtection::formatColumns},
    ProtectionFlag{"protection: format rows", &SheetProtection::formatRows},
    ProtectionFlag{"protection: insert columns", &SheetProtection::insertColumns},
    ProtectionFlag{"protection: insert rows", &SheetProtection::insertRows},
    ProtectionFlag{"protection: insert hyperlinks", &SheetProtection::insertHyperlinks},
    ProtectionFlag{"protection: delete columns", &SheetProtection::deleteColumns},
    ProtectionFlag{"protection: delete rows", &SheetProtection::deleteRows},
    ProtectionFlag{"protection: sort", &SheetProtection::sort},
    ProtectionFlag{"protection: filter", &SheetProtection::filter},
    ProtectionFlag{"protection: pivot tables", &SheetProtection::pivotTables},
    ProtectionFlag{"protection: select locked cells", &SheetProtection::selectLocked},
    ProtectionFlag{"protection: select unlocked cells", &SheetProtection::selectUnlocked},
};

void CompareView(DiffContext& context, const Sheet& left, const Sheet& right) {
  const SheetView& a = left.view;
  const SheetView& b = right.view;
  const std::string where = "sheet " + left.name();
  const auto pairText = [](int x, int y) { return std::to_string(x).append(1, ',').append(std::to_string(y)); };
  if (!(a.freeze == b.freeze)) {
    context.Report(where, "frozen panes", pairText(a.freeze.rows, a.freeze.columns),
                   pairText(b.freeze.rows, b.freeze.columns));
  }
  if (a.gridlines != b.gridlines)
    context.Report(where, "gridlines", engine::TextOf(a.gridlines), engine::TextOf(b.gridlines));
  if (!context.options().views) return;
  if (a.selection != b.selection) context.Report(where, "selection", TextOf(a.selection), TextOf(b.selection));
  if (a.activeCell != b.activeCell) {
    context.Report(where, "active cell", AddressOf(Rect::Cell(a.activeCell)), AddressOf(Rect::Cell(b.activeCell)));
  }
  if (a.scrollRow != b.scrollRow || a.scrollColumn != b.scrollColumn) {
    context.Report(where, "scroll position", pairText(a.scrollRow, a.scrollColumn),
                   pairText(b.scrollRow, b.scrollColumn));
  }
  if (a.zoom != b.zoom) context.Report(where, "zoom", std::to_string(a.zoom), std::to_string(b.zoom));
}

}  // namespace

void CompareParts(DiffContext& context, const Sheet& left, const Sheet& right) {
  const std::string where = "sheet " + left.name();
  const auto compare = [&](const char* what, const auto& a, const auto& b, auto&& text) {
    if (a != b) context.Report(where, what, text(a), text(b));
  };
  const auto plain = [](const std::string& text) { return text; };
  const auto number = [](auto value) { return std::to_string(value); };
  compare("name", left.name(), right.name(), plain);
  compare("code name", left.codeName, right.codeName, plain);
  compare("visibility", static_cast<int>(left.visibility), static_cast<int>(right.visibility), number);
  compare("tab colour", left.tabColour, right.tabColour,
          [](const auto& colour) { return colour ? std::to_string(*colour) : std::string("none"); });
  compare("default row height", left.defaultRowHeight, right.defaultRowHeight, number);
  compare("default column width", left.defaultColumnWidth, right.defaultColumnWidth, number);
  compare("print area", left.printAreas, right.printAreas, [](const auto& areas) { return TextOf(areas); });
  compare("page", left.page, right.page, [](const PageSetup& page) {
    return std::string(page.landscape ? "landscape" : "portrait") + ", fitted to " + std::to_string(page.fitWide) +
           " by " + std::to_string(page.fitTall);
  });
  for (const ProtectionFlag& each : kProtectionFlags) {
    compare(each.what, left.protection.*each.flag, right.protection.*each.flag,
            [](bool flag) { return engine::TextOf(flag); });
  }
  CompareFilter(context, left, right);
  CompareMerges(context, left, right);
  CompareValidations(context, left, right);
  CompareHyperlinks(context, left, right);
  CompareAttachments(context, left, right);
  CompareView(context, left, right);
}

}  // namespace tolvane::engine
