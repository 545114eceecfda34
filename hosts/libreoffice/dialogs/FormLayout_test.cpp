#include "hosts/libreoffice/dialogs/FormLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <stdexcept>
#include <string>

#include "src/host/Form.h"

namespace tolvane::libreoffice {
namespace {

using host::Layout;

class Sample final : public host::Form {
 public:
  Sample() : Form("Sample", "Sample") {}
  host::Label& NewLabel() { return Add<host::Label>(NextName()); }
  host::Button& NewButton() { return Add<host::Button>(NextName()); }

 private:
  std::string NextName() { return "c" + std::to_string(next_++); }
  int next_ = 1;
};

class Needs {
 public:
  Need& operator[](const host::Control& control) { return needs_[&control]; }
  FormLayout::NeedOf Lookup() const {
    return [this](const Layout& cell) -> std::optional<Need> {
      const auto found = needs_.find(cell.control);
      return found == needs_.end() ? std::nullopt : std::optional(found->second);
    };
  }

 private:
  std::map<const host::Control*, Need> needs_;
};

Box BoxOf(const std::vector<FormLayout::Placed>& placed, const host::Control& control) {
  for (const auto& one : placed) {
    if (one.part->control == &control) return one.box;
  }
  throw std::logic_error("Nowhere: " + control.Name());
}

constexpr Measures kMeasures{
    .character = 8, .line = 14, .lineControl = 24, .gap = 6, .wideGap = 12, .margin = 10, .groupTop = 20};

class FormLayoutTest : public ::testing::Test {
 protected:
  host::Label& Label(int width) {
    host::Label& label = form_.NewLabel();
    needs_[label] = {.role = Need::Role::Label, .least = {width, 14}};
    return label;
  }
  host::Button& Field(int width, bool fills) {
    host::Button& field = form_.NewButton();
    needs_[field] = {.least = {width, 24}, .fillsWidth = fills};
    return field;
  }
  host::Button& Button(int width) {
    host::Button& button = form_.NewButton();
    needs_[button] = {.role = Need::Role::Button, .least = {width, 24}};
    return button;
  }
  host::Button& List(int width, int height) {
    host::Button& list = form_.NewButton();
    needs_[list] = {.least = {width, height}, .fillsWidth = true, .fillsHeight = true};
    return list;
  }
  FormLayout Of(const Layout& layout) { return FormLayout(layout, kMeasures, needs_.Lookup()); }

  Sample form_;
  Needs needs_;
};

TEST_F(FormLayoutTest, LinesUpWhatIsBehindLabels) {
  auto& shorter = Label(30);
  auto& longer = Label(70);
  auto& first = Field(50, true);
  auto& second = Field(80, false);
  const auto tree = host::Column({host::Row({shorter, first}), host::Row({longer, second})});
  const FormLayout layout = Of(tree);
  EXPECT_EQ(layout.Least(), (Extent{10 + 70 + 6 + 80 + 10, 10 + 24 + 6 + 24 + 10}));
  const auto placed = layout.Place(layout.Least());
  EXPECT_EQ(BoxOf(placed, shorter), (Box{10, 15, 70, 14}));
  EXPECT_EQ(BoxOf(placed, first), (Box{86, 10, 80, 24}));
  EXPECT_EQ(BoxOf(placed, longer), (Box{10, 45, 70, 14}));
  EXPECT_EQ(BoxOf(placed, second), (Box{86, 40, 80, 24}));
}

TEST_F(FormLayoutTest, RoomLeftOverGoesToWhatStretches) {
  auto& list = List(100, 50);
  auto& ok = Button(40);
  auto& cancel = Button(60);
  const auto tree = host::Column({list, host::Row({host::Stretch(), ok, cancel})});
  const FormLayout layout = Of(tree);
  EXPECT_EQ(layout.Least(), (Extent{10 + 6 + 60 + 6 + 60 + 10, 10 + 50 + 12 + 24 + 10}));
  const auto placed = layout.Place({220, 206});
  EXPECT_EQ(BoxOf(placed, list), (Box{10, 10, 200, 150}));
  EXPECT_EQ(BoxOf(placed, ok), (Box{84, 172, 60, 24}));
  EXPECT_EQ(BoxOf(placed, cancel), (Box{150, 172, 60, 24}));
}

TEST_F(FormLayoutTest, WhatStretchesComesBeforeWhatOnlyFills) {
  auto& first = Field(50, true);
  auto& second = Field(50, true);
  const auto tree = host::Row({first, host::Cell(second).Stretching()});
  const auto placed = Of(tree).Place({226, 100});
  EXPECT_EQ(BoxOf(placed, first).width, 50);
  EXPECT_EQ(BoxOf(placed, second).width, 150);
}

TEST_F(FormLayoutTest, StandsOnTheFirstLineBesideSomethingHigh) {
  auto& label = Label(30);
  auto& list = List(100, 90);
  const auto tree = host::Row({label, list});
  const auto placed = Of(tree).Place({0, 0});
  EXPECT_EQ(BoxOf(placed, label), (Box{10, 15, 30, 14}));
  EXPECT_EQ(BoxOf(placed, list), (Box{46, 10, 100, 90}));
}

TEST_F(FormLayoutTest, FramesAGroupAndItsCaption) {
  auto& first = Field(30, false);
  const auto tree = host::Column({host::Group("Caption", {first})});
  const FormLayout layout = Of(tree);
  EXPECT_EQ(layout.Least(), (Extent{10 + 10 + 72 + 10 + 10, 10 + 20 + 24 + 10 + 10}));
  const auto placed = layout.Place(layout.Least());
  ASSERT_EQ(placed.size(), 2U);
  EXPECT_EQ(placed[0].part->caption, "Caption");
  EXPECT_EQ(placed[0].box, (Box{10, 10, 92, 54}));
  EXPECT_EQ(placed[1].box, (Box{20, 30, 30, 24}));
}

TEST_F(FormLayoutTest, WhatIsHiddenTakesNoRoom) {
  auto& seen = Field(30, false);
  host::Button& hidden = form_.NewButton();
  const auto tree = host::Column({seen, host::Group("Gone", {host::Row({hidden, host::Stretch()})})});
  const FormLayout layout = Of(tree);
  EXPECT_EQ(layout.Least(), (Extent{50, 44}));
  EXPECT_EQ(layout.Place({50, 44}).size(), 1U);
  const auto nothing = host::Row({hidden});
  EXPECT_EQ(Of(nothing).Least(), (Extent{20, 20}));
  EXPECT_TRUE(Of(nothing).Place({100, 100}).empty());
}

TEST_F(FormLayoutTest, LeastRoomOfABoxIsKept) {
  auto& field = Field(30, true);
  const auto tree = host::Row({host::Row({field}).Wide(20), Label(10)});
  EXPECT_EQ(Of(tree).Least().width, 10 + 160 + 6 + 10 + 10);
  EXPECT_EQ(BoxOf(Of(tree).Place({0, 0}), field).width, 160);
}

TEST_F(FormLayoutTest, NestedBeyondAllReasonIsAnError) {
  Layout deep(Field(10, false));
  for (int i = 0; i < 1000; ++i) deep = host::Row({deep});
  EXPECT_THROW(Of(deep), std::length_error);
}

// --- of any layout
// -------------------------------------------------------------------------------------------------------

Layout AnyLayout(Sample& form, Needs& needs, int depth) {
  const int kind = *rc::gen::inRange(0, depth > 3 ? 3 : 7);
  if (kind < 3) {
    host::Label& control = form.NewLabel();
    if (*rc::gen::inRange(0, 6) != 0) {
      needs[control] = {.role = *rc::gen::element(Need::Role::Label, Need::Role::Button, Need::Role::Other),
                        .least = {*rc::gen::inRange(1, 90), *rc::gen::inRange(1, 60)},
                        .fillsWidth = *rc::gen::arbitrary<bool>(),
                        .fillsHeight = *rc::gen::arbitrary<bool>()};
    }
    Layout cell(control);
    cell.stretches = *rc::gen::inRange(0, 4) == 0;
    return cell;
  }
  if (kind == 3) return host::Stretch();
  std::vector<Layout> children;
  const int count = *rc::gen::inRange(0, 5);
  for (int i = 0; i < count; ++i) children.push_back(AnyLayout(form, needs, depth + 1));
  Layout box(kind == 4   ? Layout::Kind::Row
             : kind == 5 ? Layout::Kind::Column
                         : Layout::Kind::Group,
             std::move(children), kind == 6 ? "Group" : "");
  box.stretches = *rc::gen::inRange(0, 4) == 0;
  box.width = *rc::gen::inRange(0, 20);
  return box;
}

bool Overlap(const Box& a, const Box& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

TEST(FormLayoutProperty, NothingOverlapsAndNothingIsClipped) {
  EXPECT_TRUE(rc::check([] {
    Sample form;
    Needs needs;
    const Layout tree = AnyLayout(form, needs, 0);
    const FormLayout layout(tree, kMeasures, needs.Lookup());
    const Extent least = layout.Least();
    const Extent room{least.width + *rc::gen::inRange(-50, 200), least.height + *rc::gen::inRange(-50, 200)};
    const auto placed = layout.Place(room);
    const int right = std::max(room.width, least.width) - kMeasures.margin;
    const int bottom = std::max(room.height, least.height) - kMeasures.margin;
    std::size_t controls = 0;
    for (std::size_t i = 0; i < placed.size(); ++i) {
      const Box& box = placed[i].box;
      RC_ASSERT(box.x >= kMeasures.margin && box.y >= kMeasures.margin);
      RC_ASSERT(box.x + box.width <= right && box.y + box.height <= bottom);
      if (placed[i].part->control == nullptr) continue;
      ++controls;
      const Need& need = needs[*placed[i].part->control];
      RC_ASSERT(box.width >= need.least.width && box.height >= need.least.height);
      for (std::size_t k = 0; k < i; ++k) {
        if (placed[k].part->control != nullptr) RC_ASSERT(!Overlap(box, placed[k].box));
      }
    }
    std::size_t seen = 0;
    for (const auto& control : form.Controls()) seen += needs.Lookup()(Layout(*control)).has_value() ? 1 : 0;
    RC_ASSERT(controls == seen);
  }));
}

}  // namespace
}  // namespace tolvane::libreoffice
