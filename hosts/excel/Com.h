#pragma once

#include <windows.h>
// Needs the ones above.
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#include <string>
#include <string_view>
#include <utility>

// Windows' macro of this name would rename our function.
#undef ReplaceFile

namespace tolvane::excel {

// Holds one reference to a COM object, or none.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Adds a reference of its own.
  explicit ComPtr(Interface* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_ != nullptr) object_->Release();
  }

  // Takes over a reference that was counted already.
  static ComPtr Adopt(Interface* object) {
    ComPtr pointer;
    pointer.object_ = object;
    return pointer;
  }

  Interface* get() const noexcept { return object_; }
  Interface* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  // For functions that give a reference back; only while this holds none.
  Interface** receive() noexcept { return &object_; }

 private:
  Interface* object_ = nullptr;
};

// Texts are UTF-8 here and UTF-16 there. What is neither becomes U+FFFD.
std::wstring ToUtf16(std::string_view text);
std::string ToUtf8(std::wstring_view text);

}  // namespace tolvane::excel
