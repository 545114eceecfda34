#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "src/host/Errors.h"
#include "src/host/Gate.h"

namespace tolvane::host {

// What a host implements behind a handle. Bodies are shared by the handles that point at them; a host keeps what they
// need alive or lets them die.
class Body {
 public:
  virtual ~Body() = default;
  // False once the thing itself is gone: its book was closed, its sheet or all of its cells were deleted.
  virtual bool IsAlive() const noexcept = 0;
  // The gate of the application that it belongs to; valid as long as the body.
  virtual Gate& gate() const noexcept = 0;
};

// A small value that points at an object of the spreadsheet program, or at Nothing. Copies point at the same object.
//
// Every member of every handle passes the application's gate and then fails in one of two defined ways before the host
// is asked: on Nothing with ObjectNotSet (which knows no application, so no gate hears of it), on a dead object with
// ObjectRequired. Only what is declared here (is it Nothing, is it alive) and what merely leads on to further members
// of the same object (Rows(), Font(), Controls()) never fails and never passes the gate.
template <class BodyType>
class Handle {
 public:
  Handle() = default;
  explicit Handle(std::shared_ptr<BodyType> body) : body_(std::move(body)) {}

  bool IsNothing() const noexcept { return body_ == nullptr; }
  explicit operator bool() const noexcept { return body_ != nullptr; }
  bool IsAlive() const noexcept { return body_ != nullptr && body_->IsAlive(); }
  const std::shared_ptr<BodyType>& body() const noexcept { return body_; }

 protected:
  // `method` is a pointer to a member function of the body, or a function of the body for what takes more than one.
  template <class Method, class... Arguments>
  auto Read(std::string_view member, Method method, Arguments&&... arguments) const {
    return Pass({member, Access::Read, body_.get()}, method, std::forward<Arguments>(arguments)...);
  }
  template <class Method, class... Arguments>
  auto Write(std::string_view member, Method method, Arguments&&... arguments) const {
    return Pass({member, Access::Write, body_.get()}, method, std::forward<Arguments>(arguments)...);
  }

 private:
  template <class Method, class... Arguments>
  auto Pass(const GateCall& call, Method method, Arguments&&... arguments) const {
    if (body_ == nullptr) throw HostError(ErrorNumber::ObjectNotSet, kObjectNotSetText);
    // Held here: the call may end what the handle points at, and the handle itself.
    const std::shared_ptr<BodyType> body = body_;
    Gate& gate = body->gate();
    gate.Enter(call);
    if (!body->IsAlive()) throw HostError(ErrorNumber::ObjectRequired, kObjectRequiredText);
    if constexpr (std::is_void_v<std::invoke_result_t<Method, BodyType&, Arguments...>>) {
      std::invoke(method, *body, std::forward<Arguments>(arguments)...);
      gate.Leave(call);
    } else {
      auto result = std::invoke(method, *body, std::forward<Arguments>(arguments)...);
      gate.Leave(call);
      return result;
    }
  }

  std::shared_ptr<BodyType> body_;
};

}  // namespace tolvane::host
