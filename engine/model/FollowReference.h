#pragma once

#include "engine/model/Reference.h"
#include "engine/model/StructuralChange.h"

namespace tolvane::engine {

// What a reference becomes so that it means the same cells after a change, in a formula that itself comes from `before`
// to `after`. Broken when none of its cells is left. References over several sheets have one area for all of them, so
// they do not follow a change on one.
Reference Follow(const Reference& reference, const Place& before, const Place& after, const StructuralChange& change);

// The same for a defined name. Its relative bounds count from whichever cell uses it, so that they stay; only the
// absolute ones follow. `scope`: the sheet that the name belongs to, kOwnSheet for a name of the book, where a
// reference without a sheet means the one that uses it and nothing in particular.
Reference FollowInName(const Reference& reference, SheetId scope, const StructuralChange& change);

}  // namespace tolvane::engine
