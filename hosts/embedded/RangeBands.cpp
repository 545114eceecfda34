// The part of EmbeddedRange that reads and sets sizes and hidden states of rows and columns.
#include <string>
#include <utility>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"

namespace tolvane::embedded {

using engine::Band;
using engine::Rect;

namespace {

// What all bands of an interval have in common, or nothing; `common` holds what those before had.
template <class T, class Part>
bool Gather(const engine::BandTable& bands, int first, int last, Part&& part, std::optional<T>& common) {
  bool differ = false;
  bands.ForEachStretch(first, last, [&](int, int, const Band& band) {
    const T value = part(band);
    if (common && !(*common == value)) differ = true;
    common = value;
  });
  return !differ;
}

bool IsHidden(const Band& band) {
  return band.hidden || band.filtered;
}

}  // namespace

std::optional<bool> EmbeddedRange::Hidden() const {
  std::optional<bool> common;
  for (const Rect& area : areas()) {
    bool same = false;
    if (area.isWholeRows()) {
      same = Gather(cells().rows, area.top, area.bottom, IsHidden, common);
    } else if (area.isWholeColumns()) {
      same = Gather(cells().columns, area.left, area.right, IsHidden, common);
    } else {
      Refuse("Only whole rows and whole columns can be hidden; " + sheet_->PlaceOf(area) + " is neither.");
    }
    if (!same) return std::nullopt;
  }
  return common;
}

void EmbeddedRange::SetHidden(bool hidden) {
  for (const Rect& area : areas()) {
    if (area.isWholeRows()) {
      RequireAllowed(cells(), &engine::SheetProtection::formatRows, "hiding or showing rows");
    } else if (area.isWholeColumns()) {
      RequireAllowed(cells(), &engine::SheetProtection::formatColumns, "hiding or showing columns");
    } else {
      Refuse("Only whole rows and whole columns can be hidden; " + sheet_->PlaceOf(area) + " is neither.");
    }
  }
  const auto change = [hidden](Band& band) {
    band.hidden = hidden;
    if (!hidden) band.filtered = false;
  };
  for (const Rect& area : areas()) {
    if (area.isWholeRows()) {
      cells().rows.Change(area.top, area.bottom, change);
      book().TellRowsHiddenChanged(cells().id());
    } else {
      cells().columns.Change(area.left, area.right, change);
    }
  }
  program().BookEdited(sheet_->book());
}

std::optional<double> EmbeddedRange::ColumnWidth() const {
  const auto width = [this](const Band& band) {
    return IsHidden(band) ? 0.0 : band.size.value_or(cells().defaultColumnWidth);
  };
  std::optional<double> common;
  for (const Rect& area : areas()) {
    if (!Gather(cells().columns, area.left, area.right, width, common)) return std::nullopt;
  }
  return common;
}

void EmbeddedRange::SetColumnWidth(double characters) {
  constexpr double kWidest = 255;  // Excel's limit
  if (!(characters >= 0 && characters <= kWidest)) {
    Refuse("A column can be 0 to 255 characters wide, not " + std::to_string(characters) + ".");
  }
  RequireAllowed(cells(), &engine::SheetProtection::formatColumns, "changing the width of columns");
  for (const Rect& area : areas()) {
    cells().columns.Change(area.left, area.right, [characters](Band& band) {
      band.hidden = characters == 0;
      if (characters > 0) band.size = characters;
    });
  }
  program().BookEdited(sheet_->book());
}

std::optional<double> EmbeddedRange::RowHeight() const {
  const auto height = [this](const Band& band) {
    return IsHidden(band) ? 0.0 : band.size.value_or(cells().defaultRowHeight);
  };
  std::optional<double> common;
  for (const Rect& area : areas()) {
    if (!Gather(cells().rows, area.top, area.bottom, height, common)) return std::nullopt;
  }
  return common;
}

void EmbeddedRange::SetRowHeight(double points) {
  constexpr double kTallest = 409.5;  // Excel's limit
  if (!(points >= 0 && points <= kTallest)) {
    Refuse("A row can be 0 to 409.5 points tall, not " + std::to_string(points) + ".");
  }
  RequireAllowed(cells(), &engine::SheetProtection::formatRows, "changing the height of rows");
  for (const Rect& area : areas()) {
    cells().rows.Change(area.top, area.bottom, [points](Band& band) {
      band.hidden = points == 0;
      if (points > 0) {
        band.size = points;
        band.filtered = false;
      }
    });
    book().TellRowsHiddenChanged(cells().id());
  }
  program().BookEdited(sheet_->book());
}

}  // namespace tolvane::embedded
