#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tolvane::host {

// The error values of a cell, with Excel's numbers.
enum class CellError : std::uint16_t {
  Null = 2000,
  Div0 = 2007,
  Value = 2015,
  Ref = 2023,
  Name = 2029,
  Num = 2036,
  NA = 2042,
};
std::string_view TextOf(CellError error);  // "#DIV/0!" and so on

// What a cell holds: nothing, a boolean, a number (dates are numbers), a text (UTF-8) or an error. 16 bytes, since
// blocks of a million cells are everyday: texts of up to 15 bytes stand in the value itself, longer ones are shared.
// The counter of shared texts is not atomic: values belong to the application's one thread.
class CellValue {
 public:
  enum class Kind : std::uint8_t { Empty, Boolean, Number, Error, Text };

  CellValue() noexcept : CellValue(kEmpty) {}
  CellValue(double number) noexcept : CellValue(kNumber) { Store(number); }
  CellValue(int number) noexcept : CellValue(static_cast<double>(number)) {}
  CellValue(bool boolean) noexcept : CellValue(kBoolean) { Store(boolean); }
  CellValue(CellError error) noexcept : CellValue(kError) { Store(error); }
  CellValue(std::string_view text);
  CellValue(const std::string& text) : CellValue(std::string_view(text)) {}
  CellValue(const char* text) : CellValue(std::string_view(text)) {}

  CellValue(const CellValue& other) noexcept {
    std::memcpy(bytes_, other.bytes_, sizeof bytes_);
    if (tag() == kSharedText) ++shared()->owners;
  }
  CellValue(CellValue&& other) noexcept {
    std::memcpy(bytes_, other.bytes_, sizeof bytes_);
    other.SetTag(kEmpty);
  }
  CellValue& operator=(CellValue other) noexcept {
    unsigned char kept[sizeof bytes_];
    std::memcpy(kept, bytes_, sizeof bytes_);
    std::memcpy(bytes_, other.bytes_, sizeof bytes_);
    std::memcpy(other.bytes_, kept, sizeof bytes_);
    return *this;
  }
  ~CellValue() {
    if (tag() == kSharedText) ReleaseText();
  }

  Kind kind() const noexcept { return tag() >= kInlineText ? Kind::Text : static_cast<Kind>(tag()); }
  bool isEmpty() const noexcept { return tag() == kEmpty; }
  bool isBoolean() const noexcept { return tag() == kBoolean; }
  bool isNumber() const noexcept { return tag() == kNumber; }
  bool isError() const noexcept { return tag() == kError; }
  bool isText() const noexcept { return tag() >= kSharedText; }

  // Each holds only for a value of that kind.
  bool boolean() const noexcept { return Load<bool>(); }
  double number() const noexcept { return Load<double>(); }
  CellError error() const noexcept { return Load<CellError>(); }
  // Valid as long as this value is.
  std::string_view text() const noexcept {
    if (tag() == kSharedText) return {reinterpret_cast<const char*>(shared() + 1), shared()->size};
    return {reinterpret_cast<const char*>(bytes_), static_cast<std::size_t>(tag() - kInlineText)};
  }

  // Same kind and same content: numbers exactly, texts byte by byte.
  friend bool operator==(const CellValue& a, const CellValue& b) noexcept;

 private:
  // The last byte tells what the others are; from kInlineText on it is kInlineText plus the length of the text.
  static constexpr unsigned char kEmpty = 0, kBoolean = 1, kNumber = 2, kError = 3, kSharedText = 4, kInlineText = 5;
  static constexpr std::size_t kMostInline = 15;
  struct SharedText {
    std::uint32_t owners;
    std::uint32_t size;
  };

  explicit CellValue(unsigned char tag) noexcept : bytes_{} { SetTag(tag); }
  unsigned char tag() const noexcept { return bytes_[15]; }
  void SetTag(unsigned char tag) noexcept { bytes_[15] = tag; }
  template <class T>
  void Store(T value) noexcept {
    std::memcpy(bytes_, &value, sizeof value);
  }
  template <class T>
  T Load() const noexcept {
    T value;
    std::memcpy(&value, bytes_, sizeof value);
    return value;
  }
  SharedText* shared() const noexcept { return Load<SharedText*>(); }
  void ReleaseText() noexcept;

  alignas(8) unsigned char bytes_[16];
};

static_assert(sizeof(CellValue) == 16);

}  // namespace tolvane::host
