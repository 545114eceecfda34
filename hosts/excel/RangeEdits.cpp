// The part of ExcelRange that clears, moves and orders cells.
#include "hosts/excel/ExcelRange.h"
#include "hosts/excel/Optional.h"

namespace tolvane::excel {
namespace {

constexpr int kHeaderYes = 1, kHeaderNo = 2;

}  // namespace

void ExcelRange::ClearContents() {
  object().Call("ClearContents");
}
void ExcelRange::Clear() {
  object().Call("Clear");
}

void ExcelRange::Delete(std::optional<host::Shift> shift) {
  object().Call("Delete", shift ? ConstantOf(*shift) : Variant::Missing());
}
void ExcelRange::Insert(std::optional<host::Shift> shift) {
  object().Call("Insert", shift ? ConstantOf(*shift) : Variant::Missing());
}

void ExcelRange::Copy() {
  object().Call("Copy");
}
void ExcelRange::Cut() {
  object().Call("Cut");
}
void ExcelRange::PasteSpecial(host::PasteType type) {
  object().Call("PasteSpecial", ConstantOf(type));
}

void ExcelRange::Merge() {
  object().Call("Merge");
}
void ExcelRange::UnMerge() {
  object().Call("UnMerge");
}
std::optional<bool> ExcelRange::MergeCells() const {
  return OptionalBool(object().Get("MergeCells"));
}

void ExcelRange::Sort(const host::SortKey& key) {
  const Variant by(Part("Columns", "Range").Get("Item", key.column));
  const auto missing = [] { return Variant::Missing(); };
  // Key1, Order1, Key2, Type, Order2, Key3, Order3, Header
  object().Call("Sort", by, ConstantOf(key.order), missing(), missing(), missing(), missing(), missing(),
                key.hasHeader ? kHeaderYes : kHeaderNo);
}

}  // namespace tolvane::excel
