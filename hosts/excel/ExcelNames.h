#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Session.h"
#include "src/host/Names.h"

namespace tolvane::excel {

class ExcelName final : public host::NameBody, public ObjectBody {
 public:
  ExcelName(std::shared_ptr<Session> session, Dispatch name)
      : ObjectBody(std::move(session), std::move(name), "Name") {}

  bool IsAlive() const noexcept override { return Answers(); }
  host::Gate& gate() const noexcept override { return session().gate(); }

  std::string NameText() const override;
  std::string RefersTo() const override;
  void SetRefersTo(std::string_view formula) override;
  std::string RefersToR1C1() const override;
  void SetRefersToR1C1(std::string_view formula) override;
  host::Range RefersToRange() const override;
  bool Visible() const override;
  void SetVisible(bool visible) override;
  void Delete() override;
};

class ExcelNames final : public host::NamesBody, public ObjectBody {
 public:
  // Whether a sheet's: a book's collection holds those of its sheets, too, which are not its own.
  ExcelNames(std::shared_ptr<Session> session, Dispatch names, bool ofSheet)
      : ObjectBody(std::move(session), std::move(names), "Count"), ofSheet_(ofSheet) {}

  bool IsAlive() const noexcept override { return Answers(); }
  host::Gate& gate() const noexcept override { return session().gate(); }

  host::Name Item(std::string_view name) const override;
  std::vector<host::Name> All() const override;
  host::Name Add(std::string_view name, std::string_view refersTo, bool r1c1, bool visible) override;

 private:
  bool ofSheet_;
};

}  // namespace tolvane::excel
