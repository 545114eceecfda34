// The part of ExcelRange about where its cells are.
#include "hosts/excel/ExcelRange.h"
#include "hosts/excel/Optional.h"
#include "src/host/Worksheet.h"

namespace tolvane::excel {

int ExcelRange::Row() const {
  return object().Get("Row").AsInt();
}
int ExcelRange::Column() const {
  return object().Get("Column").AsInt();
}
int ExcelRange::RowsCount() const {
  return Part("Rows", "Range").Get("Count").AsInt();
}
int ExcelRange::ColumnsCount() const {
  return Part("Columns", "Range").Get("Count").AsInt();
}
// Count overflows where a range holds more cells than a 32-bit number.
std::int64_t ExcelRange::Count() const {
  return object().Get("CountLarge").AsInt64();
}

std::string ExcelRange::Address(const host::AddressOptions& options) const {
  const auto addressOf = [&options](const Dispatch& range) {
    return range
        .Get("Address", options.rowAbsolute, options.columnAbsolute, ConstantOf(options.style), options.external)
        .AsText();
  };
  const Dispatch areas = Part("Areas", "Areas");
  if (options.external || areas.Get("Count").AsInt() == 1) return addressOf(object());
  // Of many areas the program tells only as many as fit into 255 characters.
  std::string text;
  areas.ForEach([&](ComPtr<IDispatch> area) {
    if (!text.empty()) text += ',';
    text += addressOf(session().ObjectOf("Range", std::move(area)));
  });
  return text;
}

host::Worksheet ExcelRange::Parent() const {
  return session().WorksheetOf(object().Get("Worksheet"));
}

std::vector<host::Range> ExcelRange::Areas() const {
  std::vector<host::Range> areas;
  Part("Areas", "Areas").ForEach([&](ComPtr<IDispatch> area) { areas.push_back(session().RangeOf(std::move(area))); });
  return areas;
}

host::Range ExcelRange::EntireRow() const {
  return session().RangeOf(object().Get("EntireRow"));
}
host::Range ExcelRange::EntireColumn() const {
  return session().RangeOf(object().Get("EntireColumn"));
}
host::Range ExcelRange::Offset(int rows, int columns) const {
  return session().RangeOf(object().Get("Offset", rows, columns));
}
host::Range ExcelRange::Resize(int rows, int columns) const {
  return session().RangeOf(object().Get("Resize", rows, columns));
}
host::Range ExcelRange::Cells(int row, int column) const {
  return session().RangeOf(object().Get("Item", row, column));
}
host::Range ExcelRange::End(host::Direction direction) const {
  return session().RangeOf(object().Get("End", ConstantOf(direction)));
}

void ExcelRange::Select() {
  object().Call("Select");
}
void ExcelRange::Activate() {
  object().Call("Activate");
}

Dispatch ExcelRange::Part(const char* member, const char* className) const {
  return session().ObjectOf(className, object().Get(member));
}

}  // namespace tolvane::excel
