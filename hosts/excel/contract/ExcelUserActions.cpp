#include "hosts/excel/contract/ExcelUserActions.h"

#include "hosts/excel/ExcelHost.h"
#include "testing/excel/World.h"

namespace tolvane::contract {

host::Workbook ProgramsOwn(const host::Workbook& book) {
  return book.IsNothing() ? host::Workbook() : testing::excel::BookBehind(excel::ExcelHost::ObjectBehind(book));
}

host::Worksheet ProgramsOwn(const host::Worksheet& sheet) {
  return sheet.IsNothing() ? host::Worksheet() : testing::excel::SheetBehind(excel::ExcelHost::ObjectBehind(sheet));
}

host::Range ProgramsOwn(const host::Range& range) {
  return range.IsNothing() ? host::Range() : testing::excel::RangeBehind(excel::ExcelHost::ObjectBehind(range));
}

}  // namespace tolvane::contract
