#pragma once

#include <memory>
#include <string>

#include "engine/formula/Notation.h"
#include "engine/model/Name.h"
#include "hosts/embedded/EmbeddedWorkbook.h"
#include "src/host/Names.h"

namespace tolvane::embedded {

// Whose names are meant: a workbook's or, with a sheet, that sheet's.
struct NameScope {
  std::shared_ptr<EmbeddedWorkbook> book;
  std::shared_ptr<EmbeddedWorksheet> sheet;  // null for the workbook's

  bool IsAlive() const noexcept;
  const engine::NameTable& table() const;
  engine::SheetId sheetId() const;
};

class EmbeddedNames final : public host::NamesBody {
 public:
  explicit EmbeddedNames(NameScope scope) : scope_(std::move(scope)) {}

  bool IsAlive() const noexcept override { return scope_.IsAlive(); }
  host::Gate& gate() const noexcept override { return scope_.book->gate(); }
  host::Name Item(std::string_view name) const override;
  std::vector<host::Name> All() const override;
  host::Name Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) override;

 private:
  NameScope scope_;
};

class EmbeddedName final : public host::NameBody {
 public:
  EmbeddedName(NameScope scope, std::string name) : scope_(std::move(scope)), name_(std::move(name)) {}

  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override { return scope_.book->gate(); }
  std::string NameText() const override;
  std::string RefersTo() const override { return Print(engine::Notation::A1); }
  void SetRefersTo(std::string_view formula) override { Set(formula, engine::Notation::A1); }
  std::string RefersToR1C1() const override { return Print(engine::Notation::R1C1); }
  void SetRefersToR1C1(std::string_view formula) override { Set(formula, engine::Notation::R1C1); }
  host::Range RefersToRange() const override;
  bool Visible() const override { return !entry().hidden; }
  void SetVisible(bool visible) override;
  void Delete() override;

 private:
  const engine::Name& entry() const { return *scope_.table().Find(name_); }
  std::string Print(engine::Notation notation) const;
  void Set(std::string_view formula, engine::Notation notation);

  NameScope scope_;
  std::string name_;
};

}  // namespace tolvane::embedded
