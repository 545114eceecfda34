#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/model/Expression.h"
#include "engine/model/Geometry.h"

namespace tolvane::engine {

enum class Visibility : std::uint8_t { Visible, Hidden, VeryHidden };

// A rule for what may be typed into cells. Modelled in full for lists; other kinds keep their formulas.
struct Validation {
  enum class Kind : std::uint8_t { Any, WholeNumber, List, Decimal, Date, Time, TextLength, Custom };
  enum class Alert : std::uint8_t { Stop = 1, Warning = 2, Information = 3 };

  std::vector<Rect> ranges;
  Kind kind = Kind::Any;
  Alert alert = Alert::Stop;
  std::uint8_t comparison = 0;  // between, not between, =, <>, >, <, >=, <=
  // The source of a list or the first bound; relative to the top left cell of the first range.
  ExpressionPtr formula1;
  ExpressionPtr formula2;
  bool ignoreBlank = true;
  bool inCellDropdown = true;
  bool showInput = true;
  bool showError = true;
  std::string inputTitle, inputMessage, errorTitle, errorMessage;

  bool SameRule(const Validation& other) const;  // all but the ranges
};

struct Hyperlink {
  Rect range;
  std::string address;     // outside: a URL or a path; empty for a place in this book
  std::string subAddress;  // a place in the target, as 'Sheet'!A1 or a defined name
  std::string screenTip;
  bool operator==(const Hyperlink&) const = default;
};

// One column's criteria of an AutoFilter.
struct FilterCriteria {
  enum class Join : std::uint8_t { None = 0, And = 1, Or = 2, Values = 7 };
  int field = 1;  // the column within the filter's range, from 1
  Join join = Join::None;
  std::string criterion1;  // ">5", "=Food", "<>*x*", a plain text means equality
  std::optional<std::string> criterion2;
  std::vector<std::string> values;  // for Join::Values: the displayed texts that stay
  bool operator==(const FilterCriteria&) const = default;
};

struct AutoFilter {
  Rect range;  // with its header row
  std::vector<FilterCriteria> criteria;
  bool operator==(const AutoFilter&) const = default;
};

// What a protected sheet still allows.
struct SheetProtection {
  bool isProtected = false;
  bool objects = true;  // objects and scenarios are protected too
  bool scenarios = true;
  bool formatCells = false;
  bool formatColumns = false;
  bool formatRows = false;
  bool insertColumns = false;
  bool insertRows = false;
  bool insertHyperlinks = false;
  bool deleteColumns = false;
  bool deleteRows = false;
  bool sort = false;
  bool filter = false;
  bool pivotTables = false;
  bool selectLocked = true;
  bool selectUnlocked = true;
  bool operator==(const SheetProtection&) const = default;
};

struct Freeze {
  int rows = 0;  // rows and columns above and left of the split
  int columns = 0;
  bool operator==(const Freeze&) const = default;
};

// How a sheet lies in its window.
struct SheetView {
  std::vector<Rect> selection{Rect{}};  // the areas, as selected
  CellPos activeCell;
  int scrollRow = 1;  // the first row and column below and right of what is frozen
  int scrollColumn = 1;
  Freeze freeze;
  int zoom = 100;  // percent
  bool gridlines = true;
  bool operator==(const SheetView&) const = default;
};

// How a sheet is printed, as far as it is modelled; margins, headers and the like stay with the file.
struct PageSetup {
  bool landscape = false;
  int fitWide = 0;  // pages that the sheet is made to fit on, across and down; 0: as many as it takes
  int fitTall = 0;
  bool operator==(const PageSetup&) const = default;
  bool isFitted() const { return fitWide > 0 || fitTall > 0; }
};

// Something that lies on cells and that only the workbook's file knows (a conditional format, a comment, a picture):
// where it lies follows its cells, so that the file's writer can tell. When all its cells are gone, so is this.
struct Attachment {
  enum class Hold : std::uint8_t {
    Cells,  // of a block that is cut, each part goes its way
    Block,  // it stays one rectangle
  };
  std::uint32_t key = 0;  // the file's number for it
  Hold hold = Hold::Cells;
  std::vector<Rect> ranges;
  std::vector<ExpressionPtr> formulas;  // relative to the top left cell of the first range; none is null
};

// A row or a column apart from its cells.
struct Band {
  std::optional<double> size;  // height in points, width in characters of the default font; none: the sheet's default
  std::uint32_t format = 0;
  bool hidden = false;    // by hand or by command
  bool filtered = false;  // rows: hidden by the AutoFilter
  std::uint8_t outline = 0;
  std::uint32_t kept = 0;  // what the workbook's file says beyond that; for its reader and writer alone
  bool operator==(const Band&) const = default;
  bool isDefault() const { return *this == Band{}; }
};

}  // namespace tolvane::engine
