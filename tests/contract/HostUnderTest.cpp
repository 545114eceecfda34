#include "tests/contract/HostUnderTest.h"

namespace tolvane::contract {

host::Workbook HostUnderTest::NewBook() {
  return application().Workbooks().Add();
}

Sheet HostUnderTest::NewSheet() {
  return Sheet(NewBook().Worksheets().Item(1));
}

std::string HostUnderTest::SavedBook(std::string_view name, const std::function<void(const host::Workbook&)>& build) {
  const host::Workbook book = NewBook();
  build(book);
  const std::string path = PathFor(name);
  book.SaveAs(path);
  book.Close(false);
  return path;
}

}  // namespace tolvane::contract
