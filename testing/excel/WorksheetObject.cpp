#include "testing/excel/WorksheetObject.h"

#include "src/host/Errors.h"
#include "src/host/Workbook.h"
#include "testing/excel/FilterObjects.h"
#include "testing/excel/NameObjects.h"
#include "testing/excel/Property.h"
#include "testing/excel/RangeObject.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::Worksheet;

namespace {

constexpr bool host::Protection::*kAllowances[] = {
    &host::Protection::allowFormattingCells,  &host::Protection::allowFormattingColumns,
    &host::Protection::allowFormattingRows,   &host::Protection::allowInsertingColumns,
    &host::Protection::allowInsertingRows,    &host::Protection::allowInsertingHyperlinks,
    &host::Protection::allowDeletingColumns,  &host::Protection::allowDeletingRows,
    &host::Protection::allowSorting,          &host::Protection::allowFiltering,
    &host::Protection::allowUsingPivotTables,
};

class ProtectionObject final : public ObjectOf<ProtectionObject> {
 public:
  ProtectionObject(std::shared_ptr<World> world, host::Protection allowed)
      : ObjectOf(std::move(world)), allowed_(allowed) {}

  template <bool host::Protection::*Field>
  static Variant Allows(ProtectionObject& p, const Call&) {
    return Variant(p.allowed_.*Field);
  }
  static std::span<const Member> Members() {
    static constexpr Member kMembers[] = {
        {"AllowFormattingCells", Allows<&host::Protection::allowFormattingCells>},
        {"AllowFormattingColumns", Allows<&host::Protection::allowFormattingColumns>},
        {"AllowFormattingRows", Allows<&host::Protection::allowFormattingRows>},
        {"AllowInsertingColumns", Allows<&host::Protection::allowInsertingColumns>},
        {"AllowInsertingRows", Allows<&host::Protection::allowInsertingRows>},
        {"AllowInsertingHyperlinks", Allows<&host::Protection::allowInsertingHyperlinks>},
        {"AllowDeletingColumns", Allows<&host::Protection::allowDeletingColumns>},
        {"AllowDeletingRows", Allows<&host::Protection::allowDeletingRows>},
        {"AllowSorting", Allows<&host::Protection::allowSorting>},
        {"AllowFiltering", Allows<&host::Protection::allowFiltering>},
        {"AllowUsingPivotTables", Allows<&host::Protection::allowUsingPivotTables>},
    };
    return kMembers;
  }

 private:
  const host::Protection allowed_;
};

class TabObject final : public ObjectOf<TabObject> {
 public:
  TabObject(std::shared_ptr<World> world, host::Tab tab) : ObjectOf(std::move(world)), handle(std::move(tab)) {}
  static std::span<const Member> Members() {
    static constexpr Member kMembers[] = {{"ColorIndex", Property<&host::Tab::ColorIndex, &host::Tab::SetColorIndex>}};
    return kMembers;
  }

  const host::Tab handle;
};

// Copy and Move: Before, After.
template <auto Before, auto After>
Variant Beside(WorksheetObject& s, const Call& call) {
  if (call.Has(0)) {
    (s.handle.*Before)(SheetBehind(call.At(0).AsObject().get()));
  } else {
    (s.handle.*After)(SheetBehind(call.At(1).AsObject().get()));
  }
  return {};
}

Variant Protect(WorksheetObject& s, const Call& call) {
  constexpr std::size_t kFirstAllowance = 5;
  host::Protection allowed;
  for (std::size_t i = 0; i < std::size(kAllowances); ++i) {
    allowed.*kAllowances[i] = call.Bool(kFirstAllowance + i, false);
  }
  s.handle.Protect(allowed);
  return {};
}

}  // namespace

WorksheetObject::WorksheetObject(std::shared_ptr<World> world, Worksheet sheet)
    : ObjectOf(std::move(world)), handle(std::move(sheet)) {}

WorksheetObject::~WorksheetObject() {
  world()->ForgetSheet(handle.body()->Key());
}

std::span<const WorksheetObject::Member> WorksheetObject::Members() {
  static constexpr Member kMembers[] = {
      {"Name", Property<&Worksheet::Name, &Worksheet::SetName>},
      {"CodeName", Reads<&Worksheet::CodeName>},
      {"_CodeName", Property<&Worksheet::CodeName, &Worksheet::SetCodeName>},
      {"Index", Reads<&Worksheet::Index>},
      {"Parent", [](WorksheetObject& s, const Call&) { return s.world()->Of(s.handle.Parent()); }},
      {"Visible", Property<&Worksheet::Visible, &Worksheet::SetVisible>},
      {"Tab", [](WorksheetObject& s, const Call&) { return New<TabObject>(s.world(), s.handle.Tab()); }},
      {"Activate", Calls<&Worksheet::Activate>},
      {"Copy", Beside<&Worksheet::CopyBefore, &Worksheet::CopyAfter>},
      {"Move", Beside<&Worksheet::MoveBefore, &Worksheet::MoveAfter>},
      {"Delete", Calls<&Worksheet::Delete>},
      {"Calculate", Calls<&Worksheet::Calculate>},
      {"Range", [](WorksheetObject& s, const Call& call) { return s.world()->Of(s.handle.Range(call.Text(0))); }},
      {"Cells", [](WorksheetObject& s, const Call&) { return s.world()->Of(s.handle.Cells()); }},
      {"Rows", [](WorksheetObject& s,
                  const Call&) { return New<RangeObject>(s.world(), s.handle.Cells(), RangeObject::Unit::Rows); }},
      {"Columns",
       [](WorksheetObject& s, const Call&) {
         return New<RangeObject>(s.world(), s.handle.Cells(), RangeObject::Unit::Columns);
       }},
      {"Names",
       [](WorksheetObject& s, const Call&) { return New<NamesObject>(s.world(), s.handle.Names(), host::Workbook()); }},
      {"ProtectContents", Reads<&Worksheet::ProtectContents>},
      {"Protection",
       [](WorksheetObject& s, const Call&) { return New<ProtectionObject>(s.world(), s.handle.Protection()); }},
      {"Protect", Protect},
      {"Unprotect", Calls<&Worksheet::Unprotect>},
      {"AutoFilterMode",
       [](WorksheetObject& s, const Call& call) {
         if (!call.isPut()) return Variant(s.handle.AutoFilterMode());
         if (call.value().AsBool()) {
           throw host::HostError(host::ErrorNumber::ApplicationDefined, "A filter is set on a range, not on a sheet.");
         }
         s.handle.SetAutoFilterModeOff();
         return Variant();
       }},
      {"AutoFilter",
       [](WorksheetObject& s, const Call&) {
         if (!s.handle.AutoFilterMode()) return Variant(static_cast<IDispatch*>(nullptr));
         return New<AutoFilterObject>(s.world(), s.handle.AutoFilter());
       }},
      {"EnableSelection", Property<&Worksheet::EnableSelection, &Worksheet::SetEnableSelection>},
      {"PasteSpecial", Calls<&Worksheet::PasteSpecialText>},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
