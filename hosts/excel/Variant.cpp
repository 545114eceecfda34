#include "hosts/excel/Variant.h"

#include <cmath>

#include "src/host/Errors.h"

namespace tolvane::excel {
namespace {

// Numbers in texts are read and written the same on every machine.
constexpr LCID kEnglish = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

[[noreturn]] void Mismatch() {
  throw host::HostError(host::ErrorNumber::TypeMismatch, host::kTypeMismatchText);
}

[[noreturn]] void OutOfMemory() {
  throw host::HostError(host::ErrorNumber::OutOfMemory, "Out of memory");
}

BSTR BstrOf(std::string_view utf8) {
  const std::wstring text = ToUtf16(utf8);
  const BSTR bstr = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (bstr == nullptr) OutOfMemory();
  return bstr;
}

std::string TextOf(BSTR text) {
  return text == nullptr ? std::string() : ToUtf8({text, SysStringLen(text)});
}

// Cell errors travel as VT_ERROR with the macro language's facility and the error's number.
constexpr SCODE kErrorBase = static_cast<SCODE>(0x800A0000);

SCODE ScodeOf(host::CellError error) {
  return static_cast<SCODE>(static_cast<std::uint32_t>(kErrorBase) | static_cast<std::uint32_t>(error));
}

host::CellError CellErrorOf(SCODE scode) {
  for (const host::CellError error : {host::CellError::Null, host::CellError::Div0, host::CellError::Value,
                                      host::CellError::Ref, host::CellError::Name, host::CellError::Num}) {
    if (scode == ScodeOf(error)) return error;
  }
  // Newer programs have more errors; all that cannot be told here is "not available".
  return host::CellError::NA;
}

// Writes into a fresh VARIANT, which is taken for empty.
void Fill(VARIANT& to, const host::CellValue& value) {
  switch (value.kind()) {
    case host::CellValue::Kind::Empty:
      V_VT(&to) = VT_EMPTY;
      return;
    case host::CellValue::Kind::Boolean:
      V_VT(&to) = VT_BOOL;
      V_BOOL(&to) = value.boolean() ? VARIANT_TRUE : VARIANT_FALSE;
      return;
    case host::CellValue::Kind::Number:
      V_VT(&to) = VT_R8;
      V_R8(&to) = value.number();
      return;
    case host::CellValue::Kind::Error:
      V_VT(&to) = VT_ERROR;
      V_ERROR(&to) = ScodeOf(value.error());
      return;
    case host::CellValue::Kind::Text:
      V_BSTR(&to) = BstrOf(value.text());
      V_VT(&to) = VT_BSTR;
      return;
  }
}

host::CellValue CellOf(const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BOOL:
      return host::CellValue(V_BOOL(&value) != VARIANT_FALSE);
    case VT_R8:
    case VT_DATE:
      return host::CellValue(V_R8(&value));
    case VT_ERROR:
      return host::CellValue(CellErrorOf(V_ERROR(&value)));
    case VT_BSTR:
      return host::CellValue(TextOf(V_BSTR(&value)));
    default:
      // Whole numbers, currency, what is given by reference.
      return host::CellValue(Variant::CopyOf(value).AsDouble());
  }
}

// Access to the elements of an array, ended with the scope.
class ArrayData {
 public:
  explicit ArrayData(SAFEARRAY* array) : array_(array) {
    if (FAILED(SafeArrayAccessData(array_, &data_))) Mismatch();
  }
  ~ArrayData() { SafeArrayUnaccessData(array_); }
  ArrayData(const ArrayData&) = delete;
  ArrayData& operator=(const ArrayData&) = delete;
  VARIANT* variants() const { return static_cast<VARIANT*>(data_); }

 private:
  SAFEARRAY* array_;
  void* data_ = nullptr;
};

// Of one dimension, from 1; none counts as no elements.
int SizeOf(SAFEARRAY* array, UINT dimension) {
  LONG low = 0, high = -1;
  if (FAILED(SafeArrayGetLBound(array, dimension, &low)) || FAILED(SafeArrayGetUBound(array, dimension, &high))) {
    Mismatch();
  }
  return static_cast<int>(high - low + 1);
}

SAFEARRAY* ArrayOfVariants(const VARIANT& value) {
  if (V_VT(&value) != (VT_ARRAY | VT_VARIANT)) Mismatch();
  return V_ARRAY(&value);
}

}  // namespace

std::wstring ToUtf16(std::string_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  std::wstring out(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, out.data(), static_cast<int>(out.size()));
  return out;
}

std::string ToUtf8(std::wstring_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  std::string out(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, out.data(), static_cast<int>(out.size()), nullptr, nullptr);
  return out;
}

Variant::Variant(bool value) : Variant() {
  V_VT(&value_) = VT_BOOL;
  V_BOOL(&value_) = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(int value) : Variant() {
  V_VT(&value_) = VT_I4;
  V_I4(&value_) = value;
}

Variant::Variant(double value) : Variant() {
  V_VT(&value_) = VT_R8;
  V_R8(&value_) = value;
}

Variant::Variant(std::string_view utf8) : Variant() {
  V_BSTR(&value_) = BstrOf(utf8);
  V_VT(&value_) = VT_BSTR;
}

Variant::Variant(IDispatch* object) : Variant() {
  V_VT(&value_) = VT_DISPATCH;
  V_DISPATCH(&value_) = object;
  if (object != nullptr) object->AddRef();
}

Variant::Variant(IUnknown* object) : Variant() {
  V_VT(&value_) = VT_UNKNOWN;
  V_UNKNOWN(&value_) = object;
  if (object != nullptr) object->AddRef();
}

Variant::Variant(const host::CellValue& value) : Variant() {
  Fill(value_, value);
}

Variant::Variant(const host::CellBlock& block) : Variant() {
  if (block.isSingle()) {
    Fill(value_, block.single());
    return;
  }
  SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(block.rows()), 1}, {static_cast<ULONG>(block.columns()), 1}};
  SAFEARRAY* const array = SafeArrayCreate(VT_VARIANT, 2, bounds);
  if (array == nullptr) OutOfMemory();
  V_VT(&value_) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&value_) = array;
  const ArrayData data(array);
  // In memory the first dimension, the rows, runs fastest.
  VARIANT* to = data.variants();
  for (int column = 1; column <= block.columns(); ++column) {
    for (int row = 1; row <= block.rows(); ++row) Fill(*to++, block.at(row, column));
  }
}

Variant::Variant(const std::vector<std::string>& texts) : Variant() {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
  if (array == nullptr) OutOfMemory();
  V_VT(&value_) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&value_) = array;
  const ArrayData data(array);
  VARIANT* to = data.variants();
  for (const std::string& text : texts) Fill(*to++, host::CellValue(text));
}

Variant Variant::Missing() {
  Variant missing;
  V_VT(&missing.value_) = VT_ERROR;
  V_ERROR(&missing.value_) = DISP_E_PARAMNOTFOUND;
  return missing;
}

Variant Variant::Null() {
  Variant null;
  V_VT(&null.value_) = VT_NULL;
  return null;
}

Variant Variant::CopyOf(const VARIANT& value) {
  Variant copy;
  if (FAILED(VariantCopyInd(&copy.value_, const_cast<VARIANT*>(&value)))) Mismatch();
  return copy;
}

VARIANT Variant::Release() noexcept {
  const VARIANT value = value_;
  VariantInit(&value_);
  return value;
}

Variant Variant::Changed(VARTYPE type) const {
  Variant changed;
  if (FAILED(VariantChangeTypeEx(&changed.value_, const_cast<VARIANT*>(&value_), kEnglish, 0, type))) Mismatch();
  return changed;
}

bool Variant::AsBool() const {
  const Variant changed = Changed(VT_BOOL);
  return V_BOOL(&changed.value_) != VARIANT_FALSE;
}

int Variant::AsInt() const {
  const Variant changed = Changed(VT_I4);
  return static_cast<int>(V_I4(&changed.value_));
}

std::int64_t Variant::AsInt64() const {
  return static_cast<std::int64_t>(std::llround(AsDouble()));
}

double Variant::AsDouble() const {
  const Variant changed = Changed(VT_R8);
  return V_R8(&changed.value_);
}

std::string Variant::AsText() const {
  if (type() == VT_BSTR) return TextOf(V_BSTR(&value_));
  const Variant text = Changed(VT_BSTR);
  return TextOf(V_BSTR(&text.value_));
}

ComPtr<IDispatch> Variant::AsObject() const {
  if (type() == VT_EMPTY || type() == VT_NULL) return {};
  if (type() == VT_DISPATCH) return ComPtr<IDispatch>(V_DISPATCH(&value_));
  if (type() == VT_UNKNOWN && V_UNKNOWN(&value_) != nullptr) {
    ComPtr<IDispatch> object;
    if (SUCCEEDED(V_UNKNOWN(&value_)->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(object.receive())))) {
      return object;
    }
  }
  Mismatch();
}

host::CellValue Variant::AsCell() const {
  return CellOf(value_);
}

host::CellBlock Variant::AsBlock() const {
  if (!IsArray()) return host::CellBlock(AsCell());
  SAFEARRAY* const array = ArrayOfVariants(value_);
  const UINT dimensions = SafeArrayGetDim(array);
  if (dimensions != 1 && dimensions != 2) Mismatch();
  // An array in one dimension is one row.
  const int rows = dimensions == 2 ? SizeOf(array, 1) : 1;
  const int columns = SizeOf(array, dimensions);
  const ArrayData data(array);
  const VARIANT* from = data.variants();
  host::CellBlock block(rows, columns);
  for (int column = 1; column <= columns; ++column) {
    for (int row = 1; row <= rows; ++row) block.at(row, column) = CellOf(*from++);
  }
  return block;
}

std::vector<std::string> Variant::AsTexts() const {
  if (!IsArray()) return {AsText()};
  SAFEARRAY* const array = ArrayOfVariants(value_);
  if (SafeArrayGetDim(array) != 1) Mismatch();
  const ArrayData data(array);
  std::vector<std::string> texts;
  const int size = SizeOf(array, 1);
  for (int i = 0; i < size; ++i) texts.push_back(CopyOf(data.variants()[i]).AsText());
  return texts;
}

}  // namespace tolvane::excel
