#include "testing/excel/WorkbookObjects.h"

#include "src/host/Window.h"
#include "testing/excel/Collection.h"
#include "testing/excel/NameObjects.h"
#include "testing/excel/Property.h"
#include "testing/excel/StyleObjects.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::Workbook;

WorkbookObject::WorkbookObject(std::shared_ptr<World> world, Workbook book)
    : ObjectOf(std::move(world)), handle(std::move(book)) {}

WorkbookObject::~WorkbookObject() {
  world()->ForgetBook(handle.body()->Key());
}

std::span<const WorkbookObject::Member> WorkbookObject::Members() {
  static constexpr Member kMembers[] = {
      {"Name", Reads<&Workbook::Name>},
      {"Path", Reads<&Workbook::Path>},
      {"FullName", Reads<&Workbook::FullName>},
      {"Saved", Property<&Workbook::Saved, &Workbook::SetSaved>},
      {"IsAddin", Property<&Workbook::IsAddin, &Workbook::SetIsAddin>},
      {"ProtectStructure", Reads<&Workbook::ProtectStructure>},
      {"Protect",
       [](WorkbookObject& b, const Call& call) {
         b.handle.SetProtectStructure(call.Bool(1, true));
         return Variant();
       }},
      {"Unprotect",
       [](WorkbookObject& b, const Call&) {
         b.handle.SetProtectStructure(false);
         return Variant();
       }},
      {"Names", [](WorkbookObject& b, const Call&) { return New<NamesObject>(b.world(), b.handle.Names(), b.handle); }},
      {"Worksheets", [](WorkbookObject& b, const Call&) { return New<WorksheetsObject>(b.world(), b.handle); }},
      {"ActiveSheet", [](WorkbookObject& b, const Call&) { return b.world()->Of(b.handle.ActiveSheet()); }},
      {"Windows",
       [](WorkbookObject& b, const Call&) {
         std::vector<Variant> windows;
         for (const host::Window& window : b.handle.Windows()) windows.push_back(b.world()->Of(window));
         return New<Collection>(b.world(), std::move(windows));
       }},
      {"Styles", [](WorkbookObject& b, const Call&) { return New<StylesObject>(b.world(), b.handle); }},
      {"Activate", Calls<&Workbook::Activate>},
      {"Save", Calls<&Workbook::Save>},
      {"SaveAs",
       [](WorkbookObject& b, const Call& call) {
         b.handle.SaveAs(call.Text(0));
         return Variant();
       }},
      {"Close",
       [](WorkbookObject& b, const Call& call) {
         b.handle.Close(call.At(0).AsBool());
         return Variant();
       }},
  };
  return kMembers;
}

std::span<const WorkbooksObject::Member> WorkbooksObject::Members() {
  static constexpr Member kMembers[] = {
      {"Count", [](WorkbooksObject& b, const Call&) { return Variant(b.world()->program().Workbooks().Count()); }},
      {"Item",
       [](WorkbooksObject& b, const Call& call) {
         const host::Workbooks books = b.world()->program().Workbooks();
         const Variant& which = call.At(0);
         return b.world()->Of(which.IsText() ? books.Item(which.AsText()) : books.Item(which.AsInt()));
       }},
      {"_NewEnum",
       [](WorkbooksObject& b, const Call&) {
         std::vector<Variant> books;
         for (const Workbook& book : b.world()->program().Workbooks().All()) books.push_back(b.world()->Of(book));
         return Enumerator(std::move(books));
       }},
      {"Open", [](WorkbooksObject& b,
                  const Call& call) { return b.world()->Of(b.world()->program().Workbooks().Open(call.Text(0))); }},
      {"Add",
       [](WorkbooksObject& b, const Call& call) {
         const auto path = call.Has(0) ? std::optional(call.Text(0)) : std::nullopt;
         return b.world()->Of(b.world()->program().Workbooks().Add(path));
       }},
  };
  return kMembers;
}

std::span<const WorksheetsObject::Member> WorksheetsObject::Members() {
  static constexpr Member kMembers[] = {
      {"Count", [](WorksheetsObject& s, const Call&) { return Variant(s.handle.Worksheets().Count()); }},
      {"Item",
       [](WorksheetsObject& s, const Call& call) {
         const host::Worksheets sheets = s.handle.Worksheets();
         const Variant& which = call.At(0);
         return s.world()->Of(which.IsText() ? sheets.Item(which.AsText()) : sheets.Item(which.AsInt()));
       }},
      {"_NewEnum",
       [](WorksheetsObject& s, const Call&) {
         std::vector<Variant> sheets;
         for (const host::Worksheet& sheet : s.handle.Worksheets().All()) sheets.push_back(s.world()->Of(sheet));
         return Enumerator(std::move(sheets));
       }},
      {"Add",
       [](WorksheetsObject& s, const Call& call) {
         constexpr std::size_t kBefore = 0, kAfter = 1;
         const host::Worksheet front = s.handle.ActiveSheet();
         const host::Worksheet added = s.handle.Worksheets().Add();  // behind the last
         if (call.Has(kAfter)) {
           const host::Worksheet after = SheetBehind(call.At(kAfter).AsObject().get());
           if (after.Index() + 1 != added.Index()) added.MoveAfter(after);
         } else {
           added.MoveBefore(call.Has(kBefore) ? SheetBehind(call.At(kBefore).AsObject().get()) : front);
         }
         return s.world()->Of(added);
       }},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
