// The part of Sheet that sets formats of cells, rows and columns.
#include <algorithm>
#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/model/Area.h"
#include "engine/model/Sheet.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

namespace {

// A format change creates cells where a row's and a column's format cross, or over a block. More than this would take
// gigabytes.
constexpr std::int64_t kMostNewCells = 20'000'000;

// Asks a change once for each format. Formats count here as they are stored: 0 for none, kPlainFormat for the default
// format put on.
class Changer {
 public:
  explicit Changer(const std::function<FormatId(FormatId)>& change) : change_(change) {}

  // Never 0: what it gives is a format put on.
  FormatId Apply(FormatId from) {
    if (from == 0) from = kPlainFormat;
    if (from == last_) return lastResult_;
    auto [entry, isNew] = known_.try_emplace(from, 0);
    if (isNew) {
      const FormatId result = change_(from == kPlainFormat ? kDefaultFormat : from);
      entry->second = result == kDefaultFormat ? kPlainFormat : result;
    }
    last_ = from;
    lastResult_ = entry->second;
    return lastResult_;
  }

 private:
  const std::function<FormatId(FormatId)>& change_;
  std::unordered_map<FormatId, FormatId> known_;
  FormatId last_ = 0;
  FormatId lastResult_ = 0;
};

FormatId Visible(FormatId stored) {
  return stored == 0 ? kPlainFormat : stored;
}
// What to store for a format where nothing lies below it.
FormatId Stored(FormatId visible) {
  return visible == kPlainFormat ? 0 : visible;
}

struct BandFormat {
  int first;
  int last;
  FormatId format;
};

std::vector<BandFormat> BandFormats(const BandTable& bands, int first, int last) {
  std::vector<BandFormat> formats;
  bands.ForEachStretch(first, last, [&](int low, int high, const Band& band) {
    if (!formats.empty() && formats.back().format == band.format) {
      formats.back().last = high;
    } else {
      formats.push_back({low, high, band.format});
    }
  });
  return formats;
}

// A block of cells that must get a format of their own.
struct Crossing {
  Rect area;
  FormatId format;
};

void RequireFew(const std::vector<Crossing>& crossings, const Sheet& sheet) {
  std::int64_t cells = 0;
  for (const Crossing& crossing : crossings) cells += crossing.area.cells();
  if (cells > kMostNewCells) {
    throw std::invalid_argument("Too many cells of " + sheet.name() + " would need a format of their own");
  }
}

void FillCrossings(const std::vector<Crossing>& crossings, CellStore& cells) {
  for (const Crossing& crossing : crossings) {
    cells.ChangeFormats(crossing.area, [&](CellPos, FormatId own) { return own == 0 ? crossing.format : own; });
  }
}

void ChangeWholeSheet(Sheet& sheet, Changer& changer) {
  sheet.cells().ChangeOwnFormats(Rect::WholeSheet(), [&](CellPos, FormatId own) { return changer.Apply(own); });
  sheet.rows.Change(1, kMaxRow, [&](Band& band) {
    if (band.format != 0) band.format = changer.Apply(band.format);
  });
  sheet.columns.Change(1, kMaxColumn, [&](Band& band) { band.format = Stored(changer.Apply(band.format)); });
}

void ChangeColumns(Sheet& sheet, const Rect& area, Changer& changer) {
  // A cell shows its row's format before its column's. Where the change alters what a formatted row shows, the cells at
  // the crossing get it as their own.
  std::vector<Crossing> crossings;
  for (const BandFormat& row : BandFormats(sheet.rows, 1, kMaxRow)) {
    if (row.format == 0) continue;
    const FormatId wanted = changer.Apply(row.format);
    if (wanted != row.format) crossings.push_back({{row.first, area.left, row.last, area.right}, wanted});
  }
  RequireFew(crossings, sheet);
  sheet.cells().ChangeOwnFormats(area, [&](CellPos, FormatId own) { return changer.Apply(own); });
  FillCrossings(crossings, sheet.cells());
  sheet.columns.Change(area.left, area.right, [&](Band& band) { band.format = Stored(changer.Apply(band.format)); });
}

void ChangeRows(Sheet& sheet, const Rect& area, Changer& changer) {
  // A row without a format shows its columns' formats, which may differ. The row takes what most of its columns come
  // to, so that few cells at the others need a format of their own.
  const std::vector<BandFormat> columns = BandFormats(sheet.columns, 1, kMaxColumn);
  std::map<FormatId, int> widths;
  for (const BandFormat& column : columns) widths[changer.Apply(column.format)] += column.last - column.first + 1;
  const FormatId common = std::max_element(widths.begin(), widths.end(), [](const auto& a, const auto& b) {
                            return a.second < b.second;
                          })->first;
  const bool isBare = columns.size() == 1 && columns.front().format == 0;
  const FormatId rowFormat = isBare ? Stored(common) : common;

  std::vector<Crossing> crossings;
  for (const BandFormat& row : BandFormats(sheet.rows, area.top, area.bottom)) {
    if (row.format != 0) continue;
    for (const BandFormat& column : columns) {
      const FormatId wanted = changer.Apply(column.format);
      if (wanted != common) crossings.push_back({{row.first, column.first, row.last, column.last}, wanted});
    }
  }
  RequireFew(crossings, sheet);
  sheet.cells().ChangeOwnFormats(area, [&](CellPos, FormatId own) { return changer.Apply(own); });
  FillCrossings(crossings, sheet.cells());
  sheet.rows.Change(area.top, area.bottom, [&](Band& band) {
    band.format = band.format == 0 ? rowFormat
                  : isBare         ? Stored(changer.Apply(band.format))
                                   : changer.Apply(band.format);
  });
}

void ChangeBlock(Sheet& sheet, const Rect& area, Changer& changer) {
  RequireFew({{area, 0}}, sheet);
  const std::vector<BandFormat> rows = BandFormats(sheet.rows, area.top, area.bottom);
  for (const BandFormat& column : BandFormats(sheet.columns, area.left, area.right)) {
    for (const BandFormat& row : rows) {
      const FormatId below = row.format != 0 ? row.format : column.format;
      sheet.cells().ChangeFormats({row.first, column.first, row.last, column.last}, [&](CellPos, FormatId own) {
        const FormatId before = own != 0 ? own : below;
        const FormatId wanted = changer.Apply(before);
        if (wanted == Visible(before)) return own;
        return wanted == Visible(below) ? FormatId{0} : wanted;
      });
    }
  }
}

}  // namespace

void Sheet::ChangeFormat(const Rect& area, const std::function<FormatId(FormatId)>& change) {
  if (!area.isValid()) throw std::invalid_argument("The cells are not on the sheet " + name_);
  Changer changer(change);
  if (area == Rect::WholeSheet()) {
    ChangeWholeSheet(*this, changer);
  } else if (area.isWholeColumns()) {
    ChangeColumns(*this, area, changer);
  } else if (area.isWholeRows()) {
    ChangeRows(*this, area, changer);
  } else {
    ChangeBlock(*this, area, changer);
  }
}

}  // namespace tolvane::engine
