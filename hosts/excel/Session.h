#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "hosts/excel/Dispatch.h"
#include "hosts/shell/EventHub.h"
#include "src/host/Gate.h"
#include "src/host/Names.h"
#include "src/host/Range.h"
#include "src/host/Window.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::excel {

// What the bodies of one running program share. They hold it, so that a handle may outlive the host.
class Session : public std::enable_shared_from_this<Session> {
 public:
  explicit Session(ComPtr<IDispatch> application);
  // Lets go of every object of the program; all bodies are dead from then on.
  void End();
  bool hasEnded() const noexcept { return ended_; }

  host::Gate& gate() noexcept { return gate_; }
  shell::EventHub& events() noexcept { return events_; }
  const Dispatch& application() const noexcept { return application_; }

  // The cancel key was noticed by a call that could not fail: the next that can shall.
  void KeepInterrupt() noexcept { interrupted_ = true; }
  void RaiseKeptInterrupt();

  // An object of the program as a value to call, of this class. Classes are told apart by their documented names alone.
  Dispatch ObjectOf(std::string_view className, ComPtr<IDispatch> object);
  Dispatch ObjectOf(std::string_view className, const Variant& object) {
    return ObjectOf(className, object.AsObject());
  }

  // The port's handles over what a member gave; Nothing over Nothing.
  host::Workbook WorkbookOf(const Variant& book) { return WorkbookOf(book.AsObject()); }
  host::Workbook WorkbookOf(ComPtr<IDispatch> book);
  host::Worksheet WorksheetOf(const Variant& sheet) { return WorksheetOf(sheet.AsObject()); }
  host::Worksheet WorksheetOf(ComPtr<IDispatch> sheet);
  host::Range RangeOf(const Variant& range) { return RangeOf(range.AsObject()); }
  host::Range RangeOf(ComPtr<IDispatch> range);
  host::Window WindowOf(const Variant& window) { return WindowOf(window.AsObject()); }
  host::Window WindowOf(ComPtr<IDispatch> window);
  host::Name NameOf(const Variant& name) { return NameOf(name.AsObject()); }
  host::Name NameOf(ComPtr<IDispatch> name);

 private:
  std::uint64_t KeyOf(IDispatch& object);

  host::Gate gate_;
  shell::EventHub events_;
  std::map<std::string, MemberIds, std::less<>> ids_;  // by the name of the class
  Dispatch application_;
  // Books and sheets that were seen, by their COM identity. Held, so that none of them is taken for a later one.
  struct Known {
    ComPtr<IUnknown> identity;
    std::uint64_t key;
  };
  std::map<IUnknown*, Known> known_;
  std::uint64_t nextKey_ = 1;
  bool interrupted_ = false;
  bool ended_ = false;
};

// What the bodies have in common: an object of the program. Alive as long as the program answers for it.
class ObjectBody {
 public:
  IDispatch* dispatch() const noexcept { return object_.get(); }

 protected:
  // `probe` is a property that every living object of the class has and that costs nothing.
  ObjectBody(std::shared_ptr<Session> session, Dispatch object, const char* probe)
      : session_(std::move(session)), object_(std::move(object)), probe_(probe) {}
  ~ObjectBody() = default;

  bool Answers() const noexcept;
  Session& session() const noexcept { return *session_; }
  const std::shared_ptr<Session>& sharedSession() const noexcept { return session_; }
  // To call, at the beginning of a member.
  const Dispatch& object() const {
    session_->RaiseKeptInterrupt();
    return object_;
  }

 private:
  std::shared_ptr<Session> session_;
  Dispatch object_;
  const char* probe_;
};

// The program's object behind a handle, as an argument; ObjectNotSet for Nothing.
Variant ArgumentOf(const host::Range& range);
Variant ArgumentOf(const host::Worksheet& sheet);
Variant ArgumentOf(const host::Workbook& book);

}  // namespace tolvane::excel
