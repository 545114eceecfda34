#include "engine/model/CellStore.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tolvane::engine {

namespace {

constexpr Value kEmptyValue;

std::size_t Index(int bit) {
  return static_cast<std::size_t>(bit);
}

// Remembers texts of a block that were met lately, so that equal ones can share their bytes. Misses cost nothing but
// memory, so a small table without collision handling will do.
class RecentTexts {
 public:
  const Value& Shared(const Value& value) {
    const Value*& slot = recent_[HashOf(value.text().view()) % recent_.size()];
    if (slot != nullptr && slot->text() == value.text()) return *slot;
    slot = &value;
    return value;
  }

 private:
  // Length and both ends tell the texts of a table apart well enough, at a cost that does not grow with them.
  static std::size_t HashOf(std::string_view text) {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    const std::size_t size = std::min<std::size_t>(text.size(), sizeof(head));
    if (size > 0) {
      std::memcpy(&head, text.data(), size);
      std::memcpy(&tail, text.data() + text.size() - size, size);
    }
    return (head * 0x9E3779B97F4A7C15u ^ tail * 0xC2B2AE3D27D4EB4Fu ^ text.size() * 0x165667B19E3779F9u) >> 40;
  }

  std::array<const Value*, 1024> recent_{};
};

}  // namespace

CellStore::CellStore(const CellStore& other)
    : formulas_(other.formulas_), freeFormulas_(other.freeFormulas_), arrayCells_(other.arrayCells_) {
  columns_.reserve(other.columns_.size());
  for (const auto& column : other.columns_) {
    columns_.push_back(column == nullptr ? nullptr : std::make_unique<CellColumn>(*column));
  }
}

CellStore& CellStore::operator=(CellStore other) noexcept {
  columns_.swap(other.columns_);
  formulas_.swap(other.formulas_);
  freeFormulas_.swap(other.freeFormulas_);
  std::swap(arrayCells_, other.arrayCells_);
  return *this;
}

// --- columns and formulas
// ----------------------------------------------------------------------------------------------

CellColumn* CellStore::ColumnAt(int column) {
  const auto at = static_cast<std::size_t>(column - 1);
  return at < columns_.size() ? columns_[at].get() : nullptr;
}

const CellColumn* CellStore::ColumnAt(int column) const {
  const auto at = static_cast<std::size_t>(column - 1);
  return at < columns_.size() ? columns_[at].get() : nullptr;
}

CellColumn& CellStore::ObtainColumn(int column) {
  const auto at = static_cast<std::size_t>(column - 1);
  if (at >= columns_.size()) columns_.resize(at + 1);
  if (columns_[at] == nullptr) columns_[at] = std::make_unique<CellColumn>();
  return *columns_[at];
}

FormulaNumber CellStore::AddFormula(FormulaCell formula) {
  if (formula.arrayArea) ++arrayCells_;
  if (freeFormulas_.empty()) {
    formulas_.push_back(std::move(formula));
    return static_cast<FormulaNumber>(formulas_.size());
  }
  const FormulaNumber number = freeFormulas_.back();
  freeFormulas_.pop_back();
  formulas_[number - 1] = std::move(formula);
  return number;
}

void CellStore::ReleaseFormula(FormulaNumber number) {
  if (formulas_[number - 1].arrayArea) --arrayCells_;
  formulas_[number - 1] = FormulaCell{};
  freeFormulas_.push_back(number);
}

void CellStore::ReleaseFormulas(CellChunk& chunk, std::uint64_t mask) {
  ForEachBit(chunk.formulas & mask, [&](int bit) {
    ReleaseFormula(chunk.formula[Index(bit)]);
    chunk.formula[Index(bit)] = 0;
  });
  chunk.formulas &= ~mask;
}

void CellStore::ReleaseColumn(int column) {
  if (CellColumn* cells = ColumnAt(column)) {
    for (const CellColumn::Slot& slot : cells->slots()) ReleaseFormulas(*slot.chunk, ~std::uint64_t{0});
  }
}

// --- single cells
// --------------------------------------------------------------------------------------------------------

const Value& CellStore::ValueAt(CellPos at) const {
  const CellColumn* column = ColumnAt(at.column);
  const CellChunk* chunk = column == nullptr ? nullptr : column->Find(CellColumn::ChunkOf(at.row));
  return chunk == nullptr ? kEmptyValue : chunk->value[Index(CellColumn::BitOf(at.row))];
}

const FormulaCell* CellStore::FormulaAt(CellPos at) const {
  const CellColumn* column = ColumnAt(at.column);
  const CellChunk* chunk = column == nullptr ? nullptr : column->Find(CellColumn::ChunkOf(at.row));
  const FormulaNumber number = chunk == nullptr ? 0 : chunk->formula[Index(CellColumn::BitOf(at.row))];
  return number == 0 ? nullptr : &FormulaOf(number);
}

FormulaCell* CellStore::FormulaAt(CellPos at) {
  return const_cast<FormulaCell*>(std::as_const(*this).FormulaAt(at));
}

FormatId CellStore::FormatAt(CellPos at) const {
  const CellColumn* column = ColumnAt(at.column);
  const CellChunk* chunk = column == nullptr ? nullptr : column->Find(CellColumn::ChunkOf(at.row));
  return chunk == nullptr ? 0 : chunk->format[Index(CellColumn::BitOf(at.row))];
}

void CellStore::SetValue(CellPos at, Value value) {
  const int number = CellColumn::ChunkOf(at.row);
  const int bit = CellColumn::BitOf(at.row);
  if (value.isEmpty()) {
    CellColumn* column = ColumnAt(at.column);
    if (column != nullptr) ClearRows(*column, at.row, at.row, false);
    return;
  }
  CellChunk& chunk = ObtainColumn(at.column).Obtain(number);
  ReleaseFormulas(chunk, std::uint64_t{1} << bit);
  chunk.SetValue(bit, std::move(value));
}

void CellStore::SetFormula(CellPos at, FormulaCell formula) {
  const int bit = CellColumn::BitOf(at.row);
  CellChunk& chunk = ObtainColumn(at.column).Obtain(CellColumn::ChunkOf(at.row));
  ReleaseFormulas(chunk, std::uint64_t{1} << bit);
  chunk.SetFormula(bit, AddFormula(std::move(formula)));
}

void CellStore::StoreResult(CellPos at, Value value) {
  const int number = CellColumn::ChunkOf(at.row);
  CellColumn& column = ObtainColumn(at.column);
  column.Obtain(number).SetValue(CellColumn::BitOf(at.row), std::move(value));
  column.DropIfEmpty(number);
}

void CellStore::SetFormat(CellPos at, FormatId format) {
  const int number = CellColumn::ChunkOf(at.row);
  CellColumn* column = ColumnAt(at.column);
  if (format == 0 && (column == nullptr || column->Find(number) == nullptr)) return;
  column = &ObtainColumn(at.column);
  column->Obtain(number).SetFormat(CellColumn::BitOf(at.row), format);
  if (format == 0) column->DropIfEmpty(number);
}

// --- blocks
// --------------------------------------------------------------------------------------------------------------

void CellStore::ReadValues(const Rect& area, std::span<Value> out) const {
  const auto width = static_cast<std::size_t>(area.columns());
  // A few rows of all columns at a time, so that the part of `out` being filled stays in the cache.
  for (int top = area.top; top <= area.bottom;) {
    const int chunkNumber = CellColumn::ChunkOf(top);
    const int bottom = std::min(area.bottom, (chunkNumber + 1) * kChunkRows);
    for (std::size_t c = 0; c < width; ++c) {
      const CellColumn* column = ColumnAt(area.left + static_cast<int>(c));
      const CellChunk* chunk = column == nullptr ? nullptr : column->Find(chunkNumber);
      std::size_t at = static_cast<std::size_t>(top - area.top) * width + c;
      for (int row = top; row <= bottom; ++row, at += width) {
        if (chunk == nullptr) {
          out[at] = Value();
        } else {
          out[at] = chunk->value[Index(CellColumn::BitOf(row))];
        }
      }
    }
    top = bottom + 1;
  }
}

void CellStore::WriteValues(const Rect& area, std::span<const Value> values) {
  const auto width = static_cast<std::size_t>(area.columns());
  RecentTexts texts;
  for (int top = area.top; top <= area.bottom;) {
    const int number = CellColumn::ChunkOf(top);
    const int bottom = std::min(area.bottom, (number + 1) * kChunkRows);
    const std::uint64_t mask = CellColumn::MaskOf(number, top, bottom);
    for (std::size_t c = 0; c < width; ++c) {
      CellColumn& column = ObtainColumn(area.left + static_cast<int>(c));
      CellChunk& chunk = column.Obtain(number);
      ReleaseFormulas(chunk, mask);
      std::uint64_t filled = 0;
      const std::size_t first = static_cast<std::size_t>(top - area.top) * width + c;
      for (int row = top; row <= bottom; ++row) {
        const Value& value = values[first + static_cast<std::size_t>(row - top) * width];
        const int bit = CellColumn::BitOf(row);
        chunk.value[Index(bit)] = value.isText() ? texts.Shared(value) : value;
        if (!value.isEmpty()) filled |= std::uint64_t{1} << bit;
      }
      chunk.values = (chunk.values & ~mask) | filled;
      if (chunk.cells() == 0) column.DropIfEmpty(number);
    }
    top = bottom + 1;
  }
}

void CellStore::ClearCells(CellChunk& chunk, std::uint64_t mask, bool formatsToo) {
  ReleaseFormulas(chunk, mask);
  ForEachBit(chunk.values & mask, [&](int bit) { chunk.value[Index(bit)] = Value(); });
  chunk.values &= ~mask;
  if (!formatsToo) return;
  ForEachBit(chunk.formats & mask, [&](int bit) { chunk.format[Index(bit)] = 0; });
  chunk.formats &= ~mask;
}

void CellStore::ClearRows(CellColumn& column, int firstRow, int lastRow, bool formatsToo) {
  column.ForEachChunk(firstRow, lastRow,
                      [&](int, CellChunk& chunk, std::uint64_t mask) { ClearCells(chunk, mask, formatsToo); });
  column.DropEmpty(CellColumn::ChunkOf(firstRow), CellColumn::ChunkOf(lastRow));
}

void CellStore::ClearContents(const Rect& area) {
  for (int c = area.left; c <= LastColumnOf(area); ++c) {
    if (CellColumn* column = ColumnAt(c)) ClearRows(*column, area.top, area.bottom, false);
  }
}

void CellStore::Clear(const Rect& area) {
  for (int c = area.left; c <= LastColumnOf(area); ++c) {
    if (CellColumn* column = ColumnAt(c)) ClearRows(*column, area.top, area.bottom, true);
  }
}

// --- what is used
// -----------------------------------------------------------------------------------------------------

template <class Mask>
std::optional<Rect> CellStore::Bounds(Mask&& mask) const {
  std::optional<Rect> bounds;
  for (int c = 1; c <= static_cast<int>(columns_.size()); ++c) {
    const CellColumn* column = ColumnAt(c);
    if (column == nullptr) continue;
    const auto& slots = column->slots();
    const auto holds = [&](const CellColumn::Slot& slot) { return mask(*slot.chunk) != 0; };
    const auto first = std::find_if(slots.begin(), slots.end(), holds);
    if (first == slots.end()) continue;
    const auto last = std::find_if(slots.rbegin(), slots.rend(), holds);
    const int top = first->number * kChunkRows + 1 + std::countr_zero(mask(*first->chunk));
    const int bottom = (last->number + 1) * kChunkRows - std::countl_zero(mask(*last->chunk));
    if (!bounds) bounds = Rect{top, c, bottom, c};
    bounds->top = std::min(bounds->top, top);
    bounds->bottom = std::max(bounds->bottom, bottom);
    bounds->right = c;
  }
  return bounds;
}

std::optional<Rect> CellStore::UsedRange() const {
  return Bounds([](const CellChunk& chunk) { return chunk.cells(); });
}

std::optional<Rect> CellStore::UsedContents() const {
  return Bounds([](const CellChunk& chunk) { return chunk.contents(); });
}

// --- walks -----------------------------------------------------------------------------------------------------------

// visit(column, first row of the chunk, chunk, bits of the rows asked for)
template <class Visit>
void CellStore::VisitChunks(const Rect& area, Visit&& visit) const {
  for (int c = area.left; c <= LastColumnOf(area); ++c) {
    const CellColumn* column = ColumnAt(c);
    if (column == nullptr) continue;
    column->ForEachChunk(area.top, area.bottom,
                         [&](int row, CellChunk& chunk, std::uint64_t mask) { visit(c, row, chunk, mask); });
  }
}

void CellStore::ForEachContent(const Rect& area,
                               const std::function<void(CellPos, const Value&, const FormulaCell*)>& visit) const {
  VisitChunks(area, [&](int column, int row, const CellChunk& chunk, std::uint64_t mask) {
    ForEachBit(chunk.contents() & mask, [&](int bit) {
      const FormulaNumber number = chunk.formula[Index(bit)];
      visit({row + bit, column}, chunk.value[Index(bit)], number == 0 ? nullptr : &FormulaOf(number));
    });
  });
}

void CellStore::ForEachFormula(const Rect& area, const std::function<void(CellPos, FormulaCell&)>& visit) {
  VisitChunks(area, [&](int column, int row, const CellChunk& chunk, std::uint64_t mask) {
    ForEachBit(chunk.formulas & mask, [&](int bit) {
      FormulaCell& formula = formulas_[chunk.formula[Index(bit)] - 1];
      if (formula.expression != nullptr) visit({row + bit, column}, formula);
    });
  });
}

void CellStore::ForEachFormula(const Rect& area, const std::function<void(CellPos, const FormulaCell&)>& visit) const {
  VisitChunks(area, [&](int column, int row, const CellChunk& chunk, std::uint64_t mask) {
    ForEachBit(chunk.formulas & mask, [&](int bit) {
      const FormulaCell& formula = FormulaOf(chunk.formula[Index(bit)]);
      if (formula.expression != nullptr) visit({row + bit, column}, formula);
    });
  });
}

void CellStore::ForEachCell(
    const Rect& area, const std::function<void(CellPos, const Value&, const FormulaCell*, FormatId)>& visit) const {
  VisitChunks(area, [&](int column, int row, const CellChunk& chunk, std::uint64_t mask) {
    ForEachBit(chunk.cells() & mask, [&](int bit) {
      const FormulaNumber number = chunk.formula[Index(bit)];
      visit({row + bit, column}, chunk.value[Index(bit)], number == 0 ? nullptr : &FormulaOf(number),
            chunk.format[Index(bit)]);
    });
  });
}

bool CellStore::CutsArray(const Rect& area) const {
  if (arrayCells_ == 0) return false;
  bool cuts = false;
  VisitChunks(area, [&](int, int, const CellChunk& chunk, std::uint64_t mask) {
    ForEachBit(chunk.formulas & mask, [&](int bit) {
      const FormulaCell& formula = FormulaOf(chunk.formula[Index(bit)]);
      if (formula.arrayArea && !area.contains(*formula.arrayArea)) cuts = true;
    });
  });
  return cuts;
}

void CellStore::ChangeArrayAreas(const std::function<Rect(const Rect&)>& change) {
  if (arrayCells_ == 0) return;
  for (FormulaCell& formula : formulas_) {
    if (formula.arrayArea) formula.arrayArea = change(*formula.arrayArea);
  }
}

// --- formats
// -----------------------------------------------------------------------------------------------------------

void CellStore::ChangeFormats(const Rect& area, const std::function<FormatId(CellPos, FormatId)>& change) {
  for (int c = area.left; c <= area.right; ++c) {
    for (int top = area.top; top <= area.bottom;) {
      const int number = CellColumn::ChunkOf(top);
      const int bottom = std::min(area.bottom, (number + 1) * kChunkRows);
      const CellColumn* column = ColumnAt(c);
      CellChunk* chunk = column == nullptr ? nullptr : ColumnAt(c)->Find(number);
      for (int row = top; row <= bottom; ++row) {
        const int bit = CellColumn::BitOf(row);
        const FormatId own = chunk == nullptr ? 0 : chunk->format[Index(bit)];
        const FormatId changed = change({row, c}, own);
        if (changed == own) continue;
        if (chunk == nullptr) chunk = &ObtainColumn(c).Obtain(number);
        chunk->SetFormat(bit, changed);
      }
      if (chunk != nullptr && chunk->cells() == 0) ColumnAt(c)->DropIfEmpty(number);
      top = bottom + 1;
    }
  }
}

void CellStore::ChangeOwnFormats(const Rect& area, const std::function<FormatId(CellPos, FormatId)>& change) {
  for (int c = area.left; c <= LastColumnOf(area); ++c) {
    CellColumn* column = ColumnAt(c);
    if (column == nullptr) continue;
    column->ForEachChunk(area.top, area.bottom, [&](int row, CellChunk& chunk, std::uint64_t mask) {
      ForEachBit(chunk.formats & mask, [&](int bit) {
        chunk.SetFormat(bit, change({row + bit, c}, chunk.format[Index(bit)]));
      });
    });
    column->DropEmpty(CellColumn::ChunkOf(area.top), CellColumn::ChunkOf(area.bottom));
  }
}

}  // namespace tolvane::engine
