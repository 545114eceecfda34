#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Com.h"
#include "src/host/CellBlock.h"
#include "src/host/CellValue.h"

namespace tolvane::excel {

// Owns a VARIANT. Values that do not convert to what is asked for are TypeMismatch.
class Variant {
 public:
  Variant() noexcept { VariantInit(&value_); }  // empty
  explicit Variant(bool value);
  explicit Variant(int value);
  explicit Variant(double value);
  explicit Variant(std::string_view utf8);
  explicit Variant(const char* utf8) : Variant(std::string_view(utf8)) {}
  explicit Variant(const std::string& utf8) : Variant(std::string_view(utf8)) {}
  explicit Variant(IDispatch* object);  // null is Nothing
  explicit Variant(IUnknown* object);
  explicit Variant(const host::CellValue& value);
  // A single value for one cell, else an array of variants in two dimensions, rows first, counted from 1.
  explicit Variant(const host::CellBlock& block);
  explicit Variant(const std::vector<std::string>& texts);  // an array in one dimension, counted from 0
  static Variant Missing();                                 // an optional argument that is left out
  static Variant Null();                                    // what a range of different cells gives for one look
  static Variant CopyOf(const VARIANT& value);              // follows what is given by reference

  Variant(const Variant& other) : Variant() { *this = CopyOf(other.value_); }
  Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }
  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { VariantClear(&value_); }

  const VARIANT& get() const noexcept { return value_; }
  VARIANT* receive() noexcept { return &value_; }  // only while this is empty
  VARIANT Release() noexcept;                      // gives it away

  VARTYPE type() const noexcept { return V_VT(&value_); }
  bool IsMissing() const noexcept { return type() == VT_ERROR && V_ERROR(&value_) == DISP_E_PARAMNOTFOUND; }
  bool IsNull() const noexcept { return type() == VT_NULL; }
  bool IsArray() const noexcept { return (type() & VT_ARRAY) != 0; }
  bool IsText() const noexcept { return type() == VT_BSTR; }

  bool AsBool() const;
  int AsInt() const;
  std::int64_t AsInt64() const;
  double AsDouble() const;
  std::string AsText() const;
  // Null for Nothing, and for an empty value.
  ComPtr<IDispatch> AsObject() const;
  host::CellValue AsCell() const;
  host::CellBlock AsBlock() const;
  std::vector<std::string> AsTexts() const;  // of an array in one dimension; a single value is one text

 private:
  Variant Changed(VARTYPE type) const;

  VARIANT value_;
};

}  // namespace tolvane::excel
