#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Changes.h"
#include "engine/model/Format.h"
#include "engine/model/Name.h"
#include "engine/model/Sheet.h"

namespace tolvane::engine {

// What a workbook's file holds beyond the workbook, for whoever reads and writes it.
class FileKeepsake {
 public:
  virtual ~FileKeepsake() = default;
};

// A workbook in memory: sheets in tab order, names, styles. It knows no file, no window, no user and no protection
// rule, and it does not calculate: it holds formulas with their last results and tells listeners what changed.
//
// Failures are std::invalid_argument with a text for people; a failed call has changed nothing.
class Workbook {
 public:
  Workbook();
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;
  ~Workbook();

  // A copy that shares nothing that can change; listeners are not copied.
  std::unique_ptr<Workbook> Clone() const;

  FormatTable formats;
  NameTable names;
  bool structureProtected = false;
  bool date1904 = false;
  std::string codeName = "ThisWorkbook";
  // Shared with clones. No part of the contents: saving a new workbook gives it one.
  mutable std::shared_ptr<FileKeepsake> keepsake;

  // --- sheets ------------------------------------------------------------------------------------------------------
  std::size_t sheetCount() const { return sheets_.size(); }
  Sheet& sheetAt(std::size_t position) { return *sheets_.at(position); }  // from 0, in tab order
  const Sheet& sheetAt(std::size_t position) const { return *sheets_.at(position); }
  Sheet* FindSheet(SheetId id);
  const Sheet* FindSheet(SheetId id) const;
  Sheet* FindSheet(std::string_view name);  // ignoring case
  const Sheet* FindSheet(std::string_view name) const;
  std::size_t PositionOf(SheetId id) const;

  // 1 to 31 characters, none of : \ / ? * [ ], no apostrophe at either end. Nothing when it is fine, else why not.
  static std::optional<std::string> WhyBadSheetName(std::string_view name);

  Sheet& AddSheet(std::string name, std::size_t position);  // code name: the next free "SheetN"
  void RenameSheet(SheetId id, std::string name);
  void MoveSheet(SheetId id, std::size_t position);  // its position afterwards
  // References to it become broken, names of its own go.
  void DeleteSheet(SheetId id);
  // A copy with the sheet's names, validation, formats and protection, named "Name (2)", with a fresh code name.
  // References to the sheet itself point at the copy, others stay.
  Sheet& CopySheet(SheetId id, std::size_t position);
  // From another workbook; references to sheets that are not here become external references to `otherBookName`.
  Sheet& CopySheetFrom(const Workbook& other, SheetId id, std::size_t position, const std::string& otherBookName);

  // --- rows, columns, cells: everything that holds a reference follows
  // ------------------------------------------------ Runs are in ascending order and apart from each other. Deletion
  // counts in the numbering before it, insertion in the numbering after it. Inserted rows and columns take their
  // formats and sizes from the one in front of them, unless `plain`. Insertion that would push contents off the grid
  // fails.
  void DeleteRuns(SheetId sheet, Axis axis, std::span<const Run> runs);
  void InsertRuns(SheetId sheet, Axis axis, std::span<const Run> runs, bool plain = false);
  // Part of the grid: Axis::Rows shifts up or down, Axis::Columns left or right.
  void DeleteCells(SheetId sheet, const Rect& area, Axis shiftAlong);
  void InsertCells(SheetId sheet, const Rect& area, Axis shiftAlong);

  // Cut and paste: contents, formats, validation, links and merges move; references to the cells follow.
  void MoveCells(SheetId from, const Rect& area, SheetId to, CellPos target);

  // --- names: set here, so that listeners hear of it
  // ------------------------------------------------------------------
  void SetName(SheetId scope, Name name);  // scope kOwnSheet: the workbook's
  bool RemoveName(SheetId scope, std::string_view name);
  // As a formula on `sheet` sees it: the sheet's name first, then the workbook's.
  const Name* ResolveName(SheetId sheet, std::string_view name) const;

  // --- listeners
  // -------------------------------------------------------------------------------------------------------
  void AddListener(ChangeListener* listener);
  void RemoveListener(ChangeListener* listener);

  // For Sheet and for whoever changes a sheet's parts directly.
  void TellCellsChanged(SheetId sheet, const Rect& area);
  void TellRowsHiddenChanged(SheetId sheet);
  void TellStructureChanged();
  void TellNamesChanged();

 private:
  Sheet& RequireSheet(SheetId id);
  void RequireFreeName(std::string_view name, SheetId except) const;
  // A new sheet at its place; tells nobody yet.
  Sheet& PlaceSheet(std::string name, std::size_t position);

  std::vector<std::unique_ptr<Sheet>> sheets_;
  SheetId nextSheetId_ = 1;
  std::vector<ChangeListener*> listeners_;
};

}  // namespace tolvane::engine
