#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/Handle.h"

namespace tolvane::host {

class Name;
class Range;

class NameBody : public Body {
 public:
  virtual std::string NameText() const = 0;
  virtual std::string RefersTo() const = 0;
  virtual void SetRefersTo(std::string_view formula) = 0;
  virtual std::string RefersToR1C1() const = 0;
  virtual void SetRefersToR1C1(std::string_view formula) = 0;
  virtual Range RefersToRange() const = 0;
  virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual void Delete() = 0;
};

// A defined name: of a book or of a sheet.
class Name : public Handle<NameBody> {
 public:
  using Handle::Handle;
  std::string NameText() const;  // "lstPeriods"; of a sheet's name with the sheet: "'My Sheet'!rngType"
  std::string RefersTo() const;  // with "=", in A1 notation
  void SetRefersTo(std::string_view formula) const;  // one that does not parse is ApplicationDefined
  std::string RefersToR1C1() const;
  void SetRefersToR1C1(std::string_view formula) const;
  Range RefersToRange() const;  // ApplicationDefined for a constant, a formula or what is left of a deleted range
  bool Visible() const;
  void SetVisible(bool visible) const;
  void Delete() const;
};

class NamesBody : public Body {
 public:
  virtual Name Item(std::string_view name) const = 0;
  virtual std::vector<Name> All() const = 0;
  virtual Name Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) = 0;
};

// The names of a book (its own ones only) or of a sheet (that sheet's only): neither falls back on the other. Looked up
// ignoring case.
class Names : public Handle<NamesBody> {
 public:
  using Handle::Handle;
  Name Item(std::string_view name) const;  // ApplicationDefined when there is none
  std::vector<Name> All() const;           // in alphabetical order
  // Adds, or replaces the one of that name. `refersTo` begins with "=".
  Name Add(std::string_view name, std::string_view refersTo, bool visible = true) const;
  Name AddR1C1(std::string_view name, std::string_view refersToR1C1, bool visible = true) const;
};

}  // namespace tolvane::host
