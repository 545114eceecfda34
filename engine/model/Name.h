#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "engine/model/Expression.h"

namespace tolvane::engine {

// A defined name: a reference, a constant or a formula. Relative references in it count from A1.
struct Name {
  std::string name;
  ExpressionPtr refersTo;
  bool hidden = false;
};

// The names of a workbook or of one sheet; looked up ignoring case, walked in alphabetical order as Excel does.
class NameTable {
 public:
  const Name* Find(std::string_view name) const;
  // Adds or replaces. True when it was new.
  bool Set(Name name);
  bool Remove(std::string_view name);
  const std::map<std::string, Name>& byFoldedName() const { return names_; }
  std::map<std::string, Name>& byFoldedName() { return names_; }

  // Names that the workbook's file has, but whose formula the grammar does not know; folded. They count as no names,
  // yet what uses them is not wrong, it only cannot be worked out.
  std::set<std::string> unread;

 private:
  std::map<std::string, Name> names_;
};

// Whether a text may be a defined name: starts with a letter, _ or \, holds letters, digits, _ . ? \, is no cell
// address in A1 or R1C1 notation, not TRUE or FALSE, and has at most 255 characters.
bool IsValidName(std::string_view name);

}  // namespace tolvane::engine
