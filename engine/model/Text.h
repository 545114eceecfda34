#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::engine {

// An immutable UTF-8 text, shared by whoever holds it; copying costs a counter. The counter is not atomic: a workbook
// and all that is taken from it belong to one thread.
class Text {
 public:
  Text() = default;  // the empty text, without an allocation
  explicit Text(std::string_view text);
  Text(const Text& other) noexcept : rep_(other.rep_) { Retain(); }
  Text(Text&& other) noexcept : rep_(std::exchange(other.rep_, nullptr)) {}
  Text& operator=(Text other) noexcept {
    std::swap(rep_, other.rep_);
    return *this;
  }
  // A constant: a text or value without content can be one that outlives all calls.
  constexpr ~Text() {
    if (rep_ != nullptr) Release();
  }

  std::string_view view() const {
    return rep_ == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(rep_ + 1), rep_->size);
  }
  bool empty() const { return rep_ == nullptr; }
  // Whether both are the same text in memory.
  bool IsSame(const Text& other) const { return rep_ == other.rep_; }
  friend bool operator==(const Text& a, const Text& b) { return a.rep_ == b.rep_ || a.view() == b.view(); }

 private:
  friend class Value;
  struct Rep {
    std::uint32_t owners;
    std::uint32_t size;
    // the bytes follow
  };
  void Retain() const noexcept {
    if (rep_ != nullptr) ++rep_->owners;
  }
  void Release() noexcept {
    if (rep_ != nullptr && --rep_->owners == 0) Free();
  }
  void Free() noexcept;

  Rep* rep_ = nullptr;
};

}  // namespace tolvane::engine
