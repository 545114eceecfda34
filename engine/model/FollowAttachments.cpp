#include "engine/model/FollowAttachments.h"

#include <optional>
#include <utility>
#include <vector>

#include "engine/model/FollowReference.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

namespace {

std::vector<Rect> FollowRanges(SheetId sheet, const Attachment& attachment, const StructuralChange& change) {
  std::vector<SheetArea> parts;
  for (const Rect& range : attachment.ranges) {
    if (attachment.hold == Attachment::Hold::Cells) {
      change.MapCells({sheet, range}, parts);
    } else if (const auto mapped = change.Map(SheetArea{sheet, range})) {
      parts.push_back(*mapped);
    }
  }
  std::vector<Rect> ranges;
  for (const SheetArea& part : parts) {
    if (part.sheet == sheet) ranges.push_back(part.area);
  }
  return ranges;
}

}  // namespace

void FollowAttachments(Workbook& book, const StructuralChange& change, ReferenceRewriter& rewriter) {
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    Sheet& sheet = book.sheetAt(i);
    if (!change.Touches(sheet.id())) continue;
    for (Attachment& attachment : sheet.attachments) {
      if (attachment.ranges.empty()) continue;
      const Rect first = attachment.ranges.front();
      attachment.ranges = FollowRanges(sheet.id(), attachment, change);
      const auto anchor = FindAnchor(sheet.id(), first, attachment.ranges, change);
      if (!anchor) continue;
      for (ExpressionPtr& formula : attachment.formulas) {
        formula = rewriter.Rewrite(formula, [&](const Reference& reference) {
          return Follow(reference, anchor->before, anchor->after, change);
        });
      }
    }
    std::erase_if(sheet.attachments, [](const Attachment& attachment) { return attachment.ranges.empty(); });
  }
}

}  // namespace tolvane::engine
