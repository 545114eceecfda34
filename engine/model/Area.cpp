#include "engine/model/Area.h"

#include <algorithm>

namespace tolvane::engine {

void AddRest(const Rect& area, const Rect& hole, std::vector<Rect>& parts) {
  const auto common = area.intersection(hole);
  if (!common) {
    parts.push_back(area);
    return;
  }
  if (area.top < common->top) parts.push_back({area.top, area.left, common->top - 1, area.right});
  if (area.left < common->left) parts.push_back({common->top, area.left, common->bottom, common->left - 1});
  if (common->right < area.right) parts.push_back({common->top, common->right + 1, common->bottom, area.right});
  if (common->bottom < area.bottom) parts.push_back({common->bottom + 1, area.left, area.bottom, area.right});
}

bool Subtract(std::vector<Rect>& areas, const Rect& hole) {
  if (std::none_of(areas.begin(), areas.end(), [&](const Rect& area) { return area.intersects(hole); })) return false;
  std::vector<Rect> rest;
  for (const Rect& area : areas) AddRest(area, hole, rest);
  areas = std::move(rest);
  return true;
}

std::string ColumnName(int column) {
  std::string letters;
  for (; column > 0; column = (column - 1) / 26)
    letters.insert(letters.begin(), static_cast<char>('A' + (column - 1) % 26));
  return letters;
}

std::string AddressOf(const Rect& area) {
  std::string text = ColumnName(area.left).append(std::to_string(area.top));
  if (!area.isCell()) text.append(1, ':').append(ColumnName(area.right)).append(std::to_string(area.bottom));
  return text;
}

std::string AddressOf(Axis axis, int first, int last) {
  const auto name = [axis](int index) { return axis == Axis::Rows ? std::to_string(index) : ColumnName(index); };
  return name(first).append(1, ':').append(name(last));
}

}  // namespace tolvane::engine
