#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/Constants.h"
#include "src/host/Handle.h"
#include "src/host/Names.h"
#include "src/host/Worksheet.h"

namespace tolvane::host {

class Window;

// A cell style, for who makes books; a group that is not given is not included in the style, and a cell keeps its own.
// Colours are 0xRRGGBB.
struct StyleDefinition {
  struct FontGroup {
    std::string name = "Calibri";
    double size = 11;
    bool bold = false;
    bool italic = false;
    std::optional<std::uint32_t> colour;
  };
  struct AlignmentGroup {
    Alignment horizontal = Alignment::General;
    bool wrap = false;
  };
  struct BorderLine {
    LineStyle style = LineStyle::None;
    std::uint32_t colour = 0;
  };
  struct BorderGroup {
    BorderLine left, top, right, bottom;
  };
  struct FillGroup {
    std::optional<std::uint32_t> colour;
  };
  struct ProtectionGroup {
    bool locked = true;
    bool formulaHidden = false;
  };
  std::string name;
  std::optional<std::string> numberFormat;
  std::optional<FontGroup> font;
  std::optional<AlignmentGroup> alignment;
  std::optional<BorderGroup> border;
  std::optional<FillGroup> fill;
  std::optional<ProtectionGroup> protection;
};

class WorkbookBody : public Body {
 public:
  virtual std::uint64_t Key() const noexcept = 0;
  virtual std::string Name() const = 0;
  virtual std::string Path() const = 0;
  virtual std::string FullName() const = 0;
  virtual bool Saved() const = 0;
  virtual void SetSaved(bool saved) = 0;
  virtual bool IsAddin() const = 0;
  virtual void SetIsAddin(bool isAddin) = 0;
  virtual bool ProtectStructure() const = 0;
  virtual void SetProtectStructure(bool on) = 0;
  virtual host::Names Names() const = 0;
  virtual int WorksheetsCount() const = 0;
  virtual Worksheet WorksheetAt(int index) const = 0;
  virtual Worksheet WorksheetNamed(std::string_view name) const = 0;
  virtual Worksheet WorksheetsAdd() = 0;
  virtual Worksheet ActiveSheet() const = 0;
  virtual std::vector<Window> Windows() const = 0;
  virtual void Activate() = 0;
  virtual void DefineStyle(const StyleDefinition& style) = 0;
  virtual std::vector<std::string> StyleNames() const = 0;
  virtual void Save() = 0;
  virtual void SaveAs(std::string_view path) = 0;
  virtual void Close(bool saveChanges) = 0;
};

class Worksheets : private Handle<WorkbookBody> {
 public:
  explicit Worksheets(std::shared_ptr<WorkbookBody> body) : Handle(std::move(body)) {}
  int Count() const;
  Worksheet Item(int index) const;              // SubscriptOutOfRange
  Worksheet Item(std::string_view name) const;  // ignoring case; SubscriptOutOfRange
  std::vector<Worksheet> All() const;           // in tab order
  Worksheet Add() const;                        // behind the last one; becomes the active sheet
};

// A workbook. Books are equal when they are the same open book.
class Workbook : public Handle<WorkbookBody> {
 public:
  using Handle::Handle;
  friend bool operator==(const Workbook& a, const Workbook& b) noexcept {
    return a.IsNothing() || b.IsNothing() ? a.IsNothing() == b.IsNothing() : a.body()->Key() == b.body()->Key();
  }

  std::string Name() const;      // of the file, or "Book1" while it has none; unique among open books
  std::string Path() const;      // its folder, without a separator at the end; empty while unsaved
  std::string FullName() const;  // path and name
  bool Saved() const;
  void SetSaved(bool saved) const;
  bool IsAddin() const;
  void SetIsAddin(bool isAddin) const;
  bool ProtectStructure() const;  // sheets can be neither added, removed, moved nor renamed
  void SetProtectStructure(bool on) const;
  host::Names Names() const;
  host::Worksheets Worksheets() const { return host::Worksheets(body()); }
  Worksheet ActiveSheet() const;
  std::vector<Window> Windows() const;
  void Activate() const;

  void DefineStyle(const StyleDefinition& style) const;  // adds or changes one
  std::vector<std::string> StyleNames() const;
  void Save() const;
  void SaveAs(std::string_view path) const;
  void Close(bool saveChanges) const;  // asks nothing
};

}  // namespace tolvane::host
