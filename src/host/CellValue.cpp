#include "src/host/CellValue.h"

#include <limits>
#include <new>
#include <stdexcept>

namespace tolvane::host {

std::string_view TextOf(CellError error) {
  switch (error) {
    case CellError::Null:
      return "#NULL!";
    case CellError::Div0:
      return "#DIV/0!";
    case CellError::Value:
      return "#VALUE!";
    case CellError::Ref:
      return "#REF!";
    case CellError::Name:
      return "#NAME?";
    case CellError::Num:
      return "#NUM!";
    case CellError::NA:
      return "#N/A";
  }
  return "#VALUE!";
}

CellValue::CellValue(std::string_view text) : CellValue(kEmpty) {
  if (text.size() <= kMostInline) {
    if (!text.empty()) std::memcpy(bytes_, text.data(), text.size());
    SetTag(static_cast<unsigned char>(kInlineText + text.size()));
    return;
  }
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("A cell cannot hold a text of " + std::to_string(text.size()) + " bytes.");
  }
  auto* block = static_cast<SharedText*>(::operator new(sizeof(SharedText) + text.size()));
  block->owners = 1;
  block->size = static_cast<std::uint32_t>(text.size());
  std::memcpy(block + 1, text.data(), text.size());
  Store(block);
  SetTag(kSharedText);
}

void CellValue::ReleaseText() noexcept {
  if (--shared()->owners == 0) ::operator delete(shared());
}

bool operator==(const CellValue& a, const CellValue& b) noexcept {
  if (a.kind() != b.kind()) return false;
  switch (a.kind()) {
    case CellValue::Kind::Empty:
      return true;
    case CellValue::Kind::Boolean:
      return a.boolean() == b.boolean();
    case CellValue::Kind::Number:
      return a.number() == b.number();
    case CellValue::Kind::Error:
      return a.error() == b.error();
    case CellValue::Kind::Text:
      return a.text() == b.text();
  }
  return false;
}

}  // namespace tolvane::host
