#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "engine/model/Text.h"

namespace tolvane::engine {

// The error values of a cell, with the numbers that spreadsheet programs give them.
enum class ErrorCode : std::uint16_t {
  Null = 2000,
  Div0 = 2007,
  Value = 2015,
  Ref = 2023,
  Name = 2029,
  Num = 2036,
  NA = 2042,
};

// "#DIV/0!" and so on.
std::string_view TextOf(ErrorCode error);

// What a cell holds: nothing, a boolean, a number, a text or an error. 16 bytes.
class Value {
 public:
  enum class Kind : std::uint8_t { Empty, Boolean, Number, Text, Error };

  constexpr Value() noexcept : kind_(Kind::Empty), number_(0) {}
  Value(double number) noexcept : kind_(Kind::Number), number_(number) {}
  Value(int number) noexcept : kind_(Kind::Number), number_(number) {}
  Value(bool boolean) noexcept : kind_(Kind::Boolean), number_(0) { boolean_ = boolean; }
  Value(ErrorCode error) noexcept : kind_(Kind::Error), number_(0) { error_ = error; }
  Value(Text text) noexcept : kind_(Kind::Text), text_(std::move(text)) {}
  Value(std::string_view text) : Value(Text(text)) {}
  Value(const char* text) : Value(Text(std::string_view(text))) {}
  Value(const Value& other) noexcept : kind_(other.kind_) {
    CopyBits(other);
    if (kind_ == Kind::Text) text_.Retain();
  }
  Value(Value&& other) noexcept : kind_(other.kind_) {
    CopyBits(other);
    if (kind_ == Kind::Text) other.kind_ = Kind::Empty;
  }
  Value& operator=(const Value& other) noexcept {
    if (other.kind_ == Kind::Text) other.text_.Retain();
    if (kind_ == Kind::Text) text_.Release();
    kind_ = other.kind_;
    CopyBits(other);
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    if (this == &other) return *this;
    if (kind_ == Kind::Text) text_.Release();
    kind_ = other.kind_;
    CopyBits(other);
    if (kind_ == Kind::Text) other.kind_ = Kind::Empty;
    return *this;
  }
  constexpr ~Value() {
    if (kind_ == Kind::Text) text_.~Text();
  }

  Kind kind() const { return kind_; }
  bool isEmpty() const { return kind_ == Kind::Empty; }
  bool isNumber() const { return kind_ == Kind::Number; }
  bool isText() const { return kind_ == Kind::Text; }
  bool isBoolean() const { return kind_ == Kind::Boolean; }
  bool isError() const { return kind_ == Kind::Error; }

  // Each holds only for a value of that kind.
  double number() const { return number_; }
  bool boolean() const { return boolean_; }
  ErrorCode error() const { return error_; }
  const Text& text() const { return text_; }

  // Same kind and same content; texts by their bytes, numbers exactly.
  friend bool operator==(const Value& a, const Value& b);

 private:
  // A text is one pointer, so that every kind is copied and moved by its bits; the counter is the caller's care.
  void CopyBits(const Value& other) noexcept {
    std::memcpy(static_cast<void*>(&number_), static_cast<const void*>(&other.number_), sizeof(number_));
  }

  Kind kind_;
  union {
    double number_;
    bool boolean_;
    ErrorCode error_;
    Text text_;
  };
};

static_assert(sizeof(Value) == 16 && sizeof(Text) == sizeof(double));

}  // namespace tolvane::engine
