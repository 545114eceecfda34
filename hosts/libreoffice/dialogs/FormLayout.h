#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/host/form/Layout.h"

namespace tolvane::libreoffice {

struct Extent {
  int width = 0;
  int height = 0;
  friend bool operator==(const Extent&, const Extent&) = default;
};

struct Box {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const Box&, const Box&) = default;
};

// What every form keeps to, in pixels.
struct Measures {
  int character = 8;     // the average width of one, in the form's font
  int line = 14;         // from one line of text to the next
  int lineControl = 25;  // the height of a control that holds one line
  int gap = 6;           // between neighbours
  int wideGap = 12;      // around what stands apart: groups, columns side by side, the row of buttons
  int margin = 12;       // inside of the window's edge
  int groupTop = 22;     // from the top edge of a group to what it holds
  int groupMargin = 10;  // from its other edges
};

// What one control asks for.
struct Need {
  enum class Role {
    Label,   // the first one of each row in a column gets the same width
    Button,  // those side by side, or below each other, get the same width
    Other,
  };
  Role role = Role::Other;
  Extent least;
  bool fillsWidth = false;   // looks right in more width than it needs
  bool fillsHeight = false;  // the same for height
};

struct LayoutNode;

// Where the controls and the frames of a form stand. A control without a need is hidden, and so is a box that holds
// nothing else.
//
// Room that is left over goes to those children of a box that stretch; when none does, to those that fill it.
class FormLayout {
 public:
  using NeedOf = std::function<std::optional<Need>(const host::Layout& cell)>;
  FormLayout(const host::Layout& layout, const Measures& measures, const NeedOf& needOf);
  ~FormLayout();
  FormLayout(FormLayout&&) noexcept;
  FormLayout& operator=(FormLayout&&) noexcept;

  // Of the whole window, margins included.
  Extent Least() const;

  struct Placed {
    const host::Layout* part = nullptr;  // a control, or a group
    Box box;
  };
  // In the order of the layout, a group before what it holds. In less room than the least, everything stands as in the
  // least.
  std::vector<Placed> Place(Extent window) const;

 private:
  std::unique_ptr<LayoutNode> root_;  // null: nothing is to be seen
  Measures measures_;
};

}  // namespace tolvane::libreoffice
