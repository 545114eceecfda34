#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::host {

class Control;

// Where the controls of a form stand, without measures in points or pixels: a tree of rows and columns that every
// renderer fits to its own fonts. What is hidden takes no room.
//
//   SetLayout(Column({Row({lblName, txtName}),
//                     Group("Insert", {optBottom, optBefore}),
//                     Row({Stretch(), cmdOK, cmdCancel})}));
struct Layout {
  enum class Kind : std::uint8_t {
    Control,
    Row,      // side by side
    Column,   // below each other
    Group,    // a column in a frame with a caption
    Stretch,  // empty room that takes what is left over
  };

  Layout(Control& shown) : kind(Kind::Control), control(&shown) {}
  Layout(Kind box, std::vector<Layout> inner, std::string_view boxCaption = {})
      : kind(box), caption(boxCaption), children(std::move(inner)) {}

  Kind kind;
  Control* control = nullptr;
  std::string caption;
  std::vector<Layout> children;
  // The least room, in characters of the form's font and in lines; 0: as much as the content needs.
  int width = 0;
  int lines = 0;
  bool stretches = false;  // takes what is left over in the box around it

  Layout Wide(int characters) && {
    width = characters;
    return std::move(*this);
  }
  Layout High(int lineCount) && {
    lines = lineCount;
    return std::move(*this);
  }
  Layout Stretching() && {
    stretches = true;
    return std::move(*this);
  }
};

inline Layout Row(std::initializer_list<Layout> children) {
  return {Layout::Kind::Row, children};
}
inline Layout Column(std::initializer_list<Layout> children) {
  return {Layout::Kind::Column, children};
}
inline Layout Group(std::string_view caption, std::initializer_list<Layout> children) {
  return {Layout::Kind::Group, children, caption};
}
// One control with a size: Cell(lstItems).Wide(40).High(10).
inline Layout Cell(Control& control) {
  return {control};
}
inline Layout Stretch() {
  Layout room(Layout::Kind::Stretch, {});
  room.stretches = true;
  return room;
}

}  // namespace tolvane::host
