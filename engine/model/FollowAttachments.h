#pragma once

#include "engine/model/ExpressionRewriter.h"
#include "engine/model/StructuralChange.h"

namespace tolvane::engine {

class Workbook;

// Lets attachments and their formulas follow a change on the sheets that it touches. What moves to another sheet stays
// behind: the file keeps it with the sheet that it was on.
void FollowAttachments(Workbook& book, const StructuralChange& change, ReferenceRewriter& rewriter);

}  // namespace tolvane::engine
