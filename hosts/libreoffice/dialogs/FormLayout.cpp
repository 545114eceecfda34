#include "hosts/libreoffice/dialogs/FormLayout.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tolvane::libreoffice {

namespace {

using Kind = host::Layout::Kind;

// The layout's author sets its depth; what is deeper than anyone lays out would only end the stack.
constexpr int kDeepest = 200;

}  // namespace

struct LayoutNode {
  const host::Layout* part = nullptr;
  Extent least;
  Need::Role role = Need::Role::Other;
  bool fillsWidth = false;
  bool fillsHeight = false;
  std::vector<LayoutNode> children;  // none of a control

  bool isBox() const { return part->kind == Kind::Row || part->kind == Kind::Column || part->kind == Kind::Group; }
  bool isRow() const { return part->kind == Kind::Row; }
  bool isStretch() const { return part->kind == Kind::Stretch; }
  bool isControl() const { return part->kind == Kind::Control; }
  bool isLabel() const { return isControl() && role == Need::Role::Label; }
  bool isButton() const { return isControl() && role == Need::Role::Button; }
  bool hasOnlyButtons() const {
    return isRow() && std::all_of(children.begin(), children.end(),
                                  [](const LayoutNode& child) { return child.isButton() || child.isStretch(); });
  }
  bool holdsColumns() const {
    return isRow() && std::any_of(children.begin(), children.end(),
                                  [](const LayoutNode& child) { return child.isBox() && !child.isRow(); });
  }
  bool standsApart() const { return part->kind == Kind::Group || hasOnlyButtons() || holdsColumns(); }
};

namespace {

int GapBetween(const LayoutNode& box, std::size_t second, const Measures& measures) {
  if (box.isRow()) return measures.gap;
  const bool apart = box.children[second].standsApart() || box.children[second - 1].standsApart();
  return apart ? measures.wideGap : measures.gap;
}

void MakeAlike(LayoutNode& box) {
  int widestButton = 0;
  int widestLabel = 0;
  const auto beginsWithLabel = [](const LayoutNode& child) {
    return child.isRow() && child.children.size() > 1 && child.children.front().isLabel();
  };
  for (const LayoutNode& child : box.children) {
    if (child.isButton()) widestButton = std::max(widestButton, child.least.width);
    if (!box.isRow() && beginsWithLabel(child)) {
      widestLabel = std::max(widestLabel, child.children.front().least.width);
    }
  }
  for (LayoutNode& child : box.children) {
    if (child.isButton()) child.least.width = widestButton;
    if (box.isRow() || !beginsWithLabel(child)) continue;
    int& width = child.children.front().least.width;
    child.least.width += widestLabel - width;
    width = widestLabel;
  }
}

void AddUp(LayoutNode& box, const Measures& measures) {
  MakeAlike(box);
  Extent inner;
  for (std::size_t i = 0; i < box.children.size(); ++i) {
    const LayoutNode& child = box.children[i];
    const int gap = i == 0 ? 0 : GapBetween(box, i, measures);
    if (box.isRow()) {
      inner.width += gap + child.least.width;
      inner.height = std::max(inner.height, child.least.height);
    } else {
      inner.width = std::max(inner.width, child.least.width);
      inner.height += gap + child.least.height;
    }
    const bool along = child.part->stretches;
    box.fillsWidth = box.fillsWidth || child.fillsWidth || (box.isRow() && along);
    box.fillsHeight = box.fillsHeight || child.fillsHeight || (!box.isRow() && along);
  }
  if (box.part->kind == Kind::Group) {
    inner.width = std::max(inner.width, static_cast<int>(box.part->caption.size() + 2) * measures.character);
    inner.width += 2 * measures.groupMargin;
    inner.height += measures.groupTop + measures.groupMargin;
  }
  box.least.width = std::max(inner.width, box.part->width * measures.character);
  box.least.height = std::max(inner.height, box.part->lines * measures.line);
}

// Nothing when there is nothing to see.
std::optional<LayoutNode> Measure(const host::Layout& part, const Measures& measures, const FormLayout::NeedOf& needOf,
                                  int depth) {
  LayoutNode node;
  node.part = &part;
  if (part.kind == Kind::Stretch) return node;
  if (part.kind == Kind::Control) {
    const auto need = needOf(part);
    if (!need) return std::nullopt;
    node.role = need->role;
    node.least = need->least;
    node.fillsWidth = need->fillsWidth;
    node.fillsHeight = need->fillsHeight;
    return node;
  }
  if (depth > kDeepest) throw std::length_error("The layout of a form is nested too deeply.");
  bool isEmpty = true;
  for (const host::Layout& inner : part.children) {
    auto child = Measure(inner, measures, needOf, depth + 1);
    if (!child) continue;
    isEmpty = isEmpty && child->isStretch();
    node.children.push_back(std::move(*child));
  }
  if (isEmpty) return std::nullopt;
  AddUp(node, measures);
  return node;
}

// What each child of a box gets of the room that is left over along it.
std::vector<int> Shares(const LayoutNode& box, int room, const Measures& measures) {
  const bool wide = box.isRow();
  int leftOver = room;
  for (std::size_t i = 0; i < box.children.size(); ++i) {
    if (i > 0) leftOver -= GapBetween(box, i, measures);
    leftOver -= wide ? box.children[i].least.width : box.children[i].least.height;
  }
  const auto isStretching = [](const LayoutNode& child) { return child.part->stretches; };
  const bool some = std::any_of(box.children.begin(), box.children.end(), isStretching);
  const auto takes = [&](const LayoutNode& child) {
    return some ? isStretching(child) : wide ? child.fillsWidth : child.fillsHeight;
  };
  const auto takers = static_cast<int>(std::count_if(box.children.begin(), box.children.end(), takes));
  std::vector<int> shares(box.children.size(), 0);
  int nth = 0;
  for (std::size_t i = 0; i < box.children.size() && leftOver > 0; ++i) {
    if (!takes(box.children[i])) continue;
    shares[i] = leftOver / takers + (nth < leftOver % takers ? 1 : 0);
    ++nth;
  }
  return shares;
}

void PlaceNode(const LayoutNode& node, const Box& box, const Measures& measures,
               std::vector<FormLayout::Placed>& placed);

void PlaceRow(const LayoutNode& row, const Box& box, const Measures& measures,
              std::vector<FormLayout::Placed>& placed) {
  // What holds one line stands on the middle of the first line, whatever is beside it.
  int band = 0;
  for (const LayoutNode& child : row.children) {
    if (!child.isBox() && !child.fillsHeight) band = std::max(band, child.least.height);
  }
  const bool isHigh = std::any_of(row.children.begin(), row.children.end(),
                                  [](const LayoutNode& child) { return child.isBox() || child.fillsHeight; });
  band = isHigh ? std::max(band, std::min(box.height, measures.lineControl)) : box.height;
  const auto shares = Shares(row, box.width, measures);
  int x = box.x;
  for (std::size_t i = 0; i < row.children.size(); ++i) {
    const LayoutNode& child = row.children[i];
    if (i > 0) x += measures.gap;
    Box inner{x, box.y, child.least.width + shares[i], box.height};
    if (!child.isBox() && !child.fillsHeight) {
      inner.height = child.least.height;
      inner.y += (band - inner.height) / 2;
    }
    PlaceNode(child, inner, measures, placed);
    x += inner.width;
  }
}

void PlaceColumn(const LayoutNode& column, const Box& box, const Measures& measures,
                 std::vector<FormLayout::Placed>& placed) {
  Box room = box;
  if (column.part->kind == Kind::Group) {
    room.x += measures.groupMargin;
    room.y += measures.groupTop;
    room.width -= 2 * measures.groupMargin;
    room.height -= measures.groupTop + measures.groupMargin;
  }
  const auto shares = Shares(column, room.height, measures);
  int y = room.y;
  for (std::size_t i = 0; i < column.children.size(); ++i) {
    const LayoutNode& child = column.children[i];
    if (i > 0) y += GapBetween(column, i, measures);
    Box inner{room.x, y, room.width, child.least.height + shares[i]};
    if (child.isControl() && !child.fillsWidth && !child.part->stretches) inner.width = child.least.width;
    PlaceNode(child, inner, measures, placed);
    y += inner.height;
  }
}

void PlaceNode(const LayoutNode& node, const Box& box, const Measures& measures,
               std::vector<FormLayout::Placed>& placed) {
  if (node.isStretch()) return;
  if (node.isControl() || node.part->kind == Kind::Group) placed.push_back({node.part, box});
  if (node.isControl()) return;
  if (node.isRow()) {
    PlaceRow(node, box, measures, placed);
  } else {
    PlaceColumn(node, box, measures, placed);
  }
}

}  // namespace

FormLayout::FormLayout(const host::Layout& layout, const Measures& measures, const NeedOf& needOf)
    : measures_(measures) {
  if (auto root = Measure(layout, measures, needOf, 0)) root_ = std::make_unique<LayoutNode>(std::move(*root));
}

FormLayout::~FormLayout() = default;
FormLayout::FormLayout(FormLayout&&) noexcept = default;
FormLayout& FormLayout::operator=(FormLayout&&) noexcept = default;

Extent FormLayout::Least() const {
  const Extent inner = root_ == nullptr ? Extent() : root_->least;
  return {inner.width + 2 * measures_.margin, inner.height + 2 * measures_.margin};
}

std::vector<FormLayout::Placed> FormLayout::Place(Extent window) const {
  std::vector<Placed> placed;
  if (root_ == nullptr) return placed;
  const Extent least = Least();
  PlaceNode(*root_,
            Box{measures_.margin, measures_.margin, std::max(window.width, least.width) - 2 * measures_.margin,
                std::max(window.height, least.height) - 2 * measures_.margin},
            measures_, placed);
  return placed;
}

}  // namespace tolvane::libreoffice
