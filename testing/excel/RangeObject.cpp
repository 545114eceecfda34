#include "testing/excel/RangeObject.h"

#include "src/host/Errors.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"
#include "testing/excel/Collection.h"
#include "testing/excel/Property.h"
#include "testing/excel/RangeParts.h"
#include "testing/excel/StyleObjects.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::Range;

Variant RangeObject::Of(const Range& range) const {
  return world()->Of(range);
}

std::int64_t RangeObject::Count() const {
  if (unit_ == Unit::Rows) return handle.Rows().Count();
  if (unit_ == Unit::Columns) return handle.Columns().Count();
  return handle.Count();
}

Range RangeObject::Item(const Call& call) const {
  const int index = call.At(0).AsInt();
  if (unit_ == Unit::Rows) return handle.Rows().Item(index);
  if (unit_ == Unit::Columns) return handle.Columns().Item(index);
  if (call.Has(1)) return handle.Cells(index, call.At(1).AsInt());
  const int columns = handle.Columns().Count();
  return handle.Cells((index - 1) / columns + 1, (index - 1) % columns + 1);
}

namespace {

// Delete and Insert: without a shift, by the shape of the range.
template <auto Method>
Variant Shifts(RangeObject& r, const Call& call) {
  const auto shift = call.Has(0) ? std::optional(static_cast<host::Shift>(call.At(0).AsInt())) : std::nullopt;
  (r.handle.*Method)(shift);
  return {};
}

Variant Style(RangeObject& r, const Call& call) {
  if (call.isPut()) {
    r.handle.SetStyle(call.value().AsText());
    return {};
  }
  const std::optional<std::string> name = r.handle.Style();
  return name ? New<StyleObject>(r.world(), r.handle.Parent().Parent(), *name) : Variant::Null();
}

}  // namespace

Variant RangeAddress(RangeObject& range, const Call& call) {
  host::AddressOptions options;
  options.rowAbsolute = call.Bool(0, true);
  options.columnAbsolute = call.Bool(1, true);
  options.style = static_cast<host::ReferenceStyle>(call.Int(2, static_cast<int>(host::ReferenceStyle::A1)));
  options.external = call.Bool(3, false);
  const std::string address = range.handle.Address(options);
  // Excel tells no more than 255 characters, up to the last area that is told as a whole.
  constexpr std::size_t kMost = 255;
  return Variant(address.size() <= kMost ? address : address.substr(0, address.rfind(',', kMost)));
}

Variant RangeSort(RangeObject& range, const Call& call) {
  constexpr std::size_t kHeader = 7;
  constexpr int kYes = 1;
  host::SortKey key;
  key.column = RangeBehind(call.At(0).AsObject().get()).Column() - range.handle.Column() + 1;
  key.order = static_cast<host::SortOrder>(call.Int(1, static_cast<int>(host::SortOrder::Ascending)));
  key.hasHeader = call.Int(kHeader, 2) == kYes;
  range.handle.Sort(key);
  return {};
}

Variant RangeAutoFilter(RangeObject& range, const Call& call) {
  if (!call.Has(0)) {
    range.handle.AutoFilter();
    return {};
  }
  host::FilterCriterion criterion;
  criterion.field = call.At(0).AsInt();
  criterion.op = static_cast<host::FilterOperator>(call.Int(2, 0));
  if (criterion.op == host::FilterOperator::Values) {
    criterion.values = call.At(1).AsTexts();
  } else if (call.Has(1)) {
    criterion.criteria1 = call.Text(1);
  }
  if (call.Has(3)) criterion.criteria2 = call.Text(3);
  range.handle.AutoFilter(criterion);
  return {};
}

std::span<const RangeObject::Member> RangeObject::Members() {
  static constexpr Member kMembers[] = {
      // --- contents
      {"Value", RangeValue},
      {"Value2", RangeValue},
      {"Formula", RangeFormula},
      {"FormulaR1C1", RangeFormulaR1C1},
      {"Text", Reads<&Range::Text>},
      // --- where
      {"Row", Reads<&Range::Row>},
      {"Column", Reads<&Range::Column>},
      {"Count",
       [](RangeObject& r, const Call&) {
         const std::int64_t count = r.Count();
         if (count > INT32_MAX) throw host::HostError(static_cast<host::ErrorNumber>(6), "Overflow");
         return Variant(static_cast<int>(count));
       }},
      {"CountLarge", [](RangeObject& r, const Call&) { return Variant(static_cast<double>(r.Count())); }},
      {"Item", [](RangeObject& r, const Call& call) { return r.Of(r.Item(call)); }},
      {"Rows", [](RangeObject& r, const Call&) { return New<RangeObject>(r.world(), r.handle, Unit::Rows); }},
      {"Columns", [](RangeObject& r, const Call&) { return New<RangeObject>(r.world(), r.handle, Unit::Columns); }},
      {"Address", RangeAddress},
      {"Worksheet", [](RangeObject& r, const Call&) { return r.world()->Of(r.handle.Parent()); }},
      {"Areas",
       [](RangeObject& r, const Call&) {
         std::vector<Variant> areas;
         for (const Range& area : r.handle.Areas()) areas.push_back(r.Of(area));
         return New<Collection>(r.world(), std::move(areas));
       }},
      {"EntireRow", [](RangeObject& r, const Call&) { return r.Of(r.handle.EntireRow()); }},
      {"EntireColumn", [](RangeObject& r, const Call&) { return r.Of(r.handle.EntireColumn()); }},
      {"Offset", [](RangeObject& r, const Call& c) { return r.Of(r.handle.Offset(c.Int(0, 0), c.Int(1, 0))); }},
      {"Resize",
       [](RangeObject& r, const Call& c) {
         const int rows = c.Has(0) ? c.At(0).AsInt() : r.handle.Rows().Count();
         const int columns = c.Has(1) ? c.At(1).AsInt() : r.handle.Columns().Count();
         return r.Of(r.handle.Resize(rows, columns));
       }},
      {"End",
       [](RangeObject& r, const Call& c) { return r.Of(r.handle.End(static_cast<host::Direction>(c.At(0).AsInt()))); }},
      // --- doing
      {"Select", Calls<&Range::Select>},
      {"Activate", Calls<&Range::Activate>},
      {"ClearContents", Calls<&Range::ClearContents>},
      {"Clear", Calls<&Range::Clear>},
      {"Delete", Shifts<&Range::Delete>},
      {"Insert", Shifts<&Range::Insert>},
      {"Copy", Calls<&Range::Copy>},
      {"Cut", Calls<&Range::Cut>},
      {"PasteSpecial",
       [](RangeObject& r, const Call& c) {
         r.handle.PasteSpecial(static_cast<host::PasteType>(c.Int(0, static_cast<int>(host::PasteType::All))));
         return Variant();
       }},
      {"Merge", Calls<&Range::Merge>},
      {"UnMerge", Calls<&Range::UnMerge>},
      {"MergeCells", Reads<&Range::MergeCells>},
      {"Sort", RangeSort},
      // --- look
      {"Locked", Property<&Range::Locked, &Range::SetLocked>},
      {"FormulaHidden", Property<&Range::FormulaHidden, &Range::SetFormulaHidden>},
      {"Hidden", Property<&Range::Hidden, &Range::SetHidden>},
      {"Style", Style},
      {"NumberFormat", Property<&Range::NumberFormat, &Range::SetNumberFormat>},
      {"HorizontalAlignment", Property<&Range::HorizontalAlignment, &Range::SetHorizontalAlignment>},
      {"WrapText", Property<&Range::WrapText, &Range::SetWrapText>},
      {"ColumnWidth", Property<&Range::ColumnWidth, &Range::SetColumnWidth>},
      {"RowHeight", Property<&Range::RowHeight, &Range::SetRowHeight>},
      {"Font", [](RangeObject& r, const Call&) { return New<FontObject>(r.world(), r.handle.Font()); }},
      {"Interior", [](RangeObject& r, const Call&) { return New<InteriorObject>(r.world(), r.handle.Interior()); }},
      {"Borders", [](RangeObject& r, const Call&) { return New<BordersObject>(r.world(), r.handle); }},
      // --- what lies on the cells
      {"Validation",
       [](RangeObject& r, const Call&) { return New<ValidationObject>(r.world(), r.handle.Validation()); }},
      {"Hyperlinks",
       [](RangeObject& r, const Call&) { return New<HyperlinksObject>(r.world(), r.handle.Hyperlinks()); }},
      {"AutoFilter", RangeAutoFilter},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
