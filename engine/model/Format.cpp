#include "engine/model/Format.h"

#include <functional>
#include <limits>
#include <stdexcept>

#include "platform/Text.h"

namespace tolvane::engine {

namespace {

constexpr FormatId kEmptySlot = std::numeric_limits<FormatId>::max();

class Hasher {
 public:
  void Add(std::size_t value) { hash_ = (hash_ ^ value) * 0x9E3779B97F4A7C15u + (hash_ >> 29); }
  void Add(const std::string& text) { Add(std::hash<std::string>{}(text)); }
  void Add(const Colour& colour) { Add(colour ? std::size_t{*colour} + 1 : std::size_t{0}); }
  std::size_t value() const { return hash_ ^ (hash_ >> 32); }

 private:
  std::size_t hash_ = 0x51ED270B;
};

std::size_t HashOf(const CellFormat& format) {
  Hasher hasher;
  hasher.Add(format.style);
  hasher.Add(std::size_t{format.direct} | std::size_t{format.kept} << 8);
  const Format& f = format.format;
  hasher.Add(f.numberFormat);
  hasher.Add(f.font.name);
  hasher.Add(std::hash<double>{}(f.font.size));
  hasher.Add(std::size_t{f.font.bold} | std::size_t{f.font.italic} << 1 | std::size_t{f.font.strikeout} << 2 |
             static_cast<std::size_t>(f.font.underline) << 3);
  hasher.Add(f.font.colour);
  const Alignment& a = f.alignment;
  hasher.Add(static_cast<std::size_t>(a.horizontal) | static_cast<std::size_t>(a.vertical) << 8 |
             std::size_t{a.wrap} << 16 | std::size_t{a.shrink} << 17 | std::size_t{a.indent} << 24 |
             std::size_t{static_cast<std::uint16_t>(a.rotation)} << 32);
  for (const Line& line : f.border) {
    hasher.Add(static_cast<std::size_t>(line.style));
    hasher.Add(line.colour);
  }
  hasher.Add(static_cast<std::size_t>(f.fill.pattern));
  hasher.Add(f.fill.colour);
  hasher.Add(std::size_t{f.protection.locked} | std::size_t{f.protection.formulaHidden} << 1);
  return hasher.value();
}

// Takes over the properties of some groups.
void CopyGroups(const Format& from, FormatGroups groups, Format& to) {
  const auto has = [groups](FormatGroup group) { return (groups & static_cast<FormatGroups>(group)) != 0; };
  if (has(FormatGroup::Number)) to.numberFormat = from.numberFormat;
  if (has(FormatGroup::Font)) to.font = from.font;
  if (has(FormatGroup::Alignment)) to.alignment = from.alignment;
  if (has(FormatGroup::Border)) to.border = from.border;
  if (has(FormatGroup::Fill)) to.fill = from.fill;
  if (has(FormatGroup::Protection)) to.protection = from.protection;
}

}  // namespace

FormatGroups GroupsThatDiffer(const Format& a, const Format& b) {
  FormatGroups groups = 0;
  const auto compare = [&groups](bool same, FormatGroup group) {
    if (!same) groups |= static_cast<FormatGroups>(group);
  };
  compare(a.numberFormat == b.numberFormat, FormatGroup::Number);
  compare(a.font == b.font, FormatGroup::Font);
  compare(a.alignment == b.alignment, FormatGroup::Alignment);
  compare(a.border == b.border, FormatGroup::Border);
  compare(a.fill == b.fill, FormatGroup::Fill);
  compare(a.protection == b.protection, FormatGroup::Protection);
  return groups;
}

FormatTable::FormatTable() : styles_{NamedStyle{"Normal", kAllFormatGroups, Format{}}}, formats_(kPlainFormat + 1) {
  styleByName_.emplace(platform::FoldCase(styles_.front().name), kNormalStyle);
  Rehash();
}

std::optional<StyleId> FormatTable::FindStyle(std::string_view name) const {
  const auto found = styleByName_.find(platform::FoldCase(name));
  return found == styleByName_.end() ? std::nullopt : std::optional(found->second);
}

StyleId FormatTable::AddStyle(NamedStyle style) {
  if (FindStyle(style.name)) throw std::invalid_argument("There is already a style named \"" + style.name + "\"");
  const auto id = static_cast<StyleId>(styles_.size());
  styleByName_.emplace(platform::FoldCase(style.name), id);
  styles_.push_back(std::move(style));
  return id;
}

void FormatTable::ChangeStyle(StyleId id, const NamedStyle& style) {
  if (const auto other = FindStyle(style.name); other && *other != id) {
    throw std::invalid_argument("There is already a style named \"" + style.name + "\"");
  }
  styleByName_.erase(platform::FoldCase(styles_.at(id).name));
  styleByName_.emplace(platform::FoldCase(style.name), id);
  styles_[id] = style;
  for (CellFormat& format : formats_) {
    if (format.style != id) continue;
    CopyGroups(style.format, static_cast<FormatGroups>(style.includes & ~format.direct), format.format);
  }
  Rehash();  // the contents, and with them the places in the table, have changed
}

std::size_t FormatTable::SlotOf(const CellFormat& format) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = HashOf(format) & mask;
  while (slots_[slot] != kEmptySlot && !(formats_[slots_[slot]] == format)) slot = (slot + 1) & mask;
  return slot;
}

void FormatTable::Rehash() {
  std::size_t size = 64;
  while (size < formats_.size() * 4) size *= 2;
  slots_.assign(size, kEmptySlot);
  for (FormatId id = 0; id < formats_.size(); ++id) {
    const std::size_t slot = SlotOf(formats_[id]);
    if (slots_[slot] == kEmptySlot) slots_[slot] = id;  // of equal ones the first, so never kPlainFormat
  }
}

FormatId FormatTable::Intern(const CellFormat& format) {
  std::size_t slot = SlotOf(format);
  if (slots_[slot] != kEmptySlot) return slots_[slot];
  formats_.push_back(format);
  const auto id = static_cast<FormatId>(formats_.size() - 1);
  if (formats_.size() * 2 > slots_.size()) {
    Rehash();
  } else {
    slots_[slot] = id;
  }
  return id;
}

FormatId FormatTable::WithStyle(FormatId from, StyleId style) {
  const NamedStyle& named = styles_.at(style);
  CellFormat format = At(from);
  format.style = style;
  format.direct &= static_cast<FormatGroups>(~named.includes);
  CopyGroups(named.format, named.includes, format.format);
  return Intern(format);
}

}  // namespace tolvane::engine
