// Nothing in the templates is wider than its column, by an estimate on the safe side.
#include <algorithm>

#include "platform/Text.h"
#include "tests/books/OpenBooks.h"

namespace tolvane::books {
namespace {

// In widths of a digit of Calibri, each letter as wide as the widest of its kind; the average letter is narrower.
double WidthOf(std::string_view text, bool bold) {
  double width = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if ((static_cast<unsigned char>(c) & 0xC0U) == 0x80U) continue;  // goes on with the same character
    if (std::string_view("ijl.,:;'|!() ").find(c) != std::string_view::npos) {
      width += 0.62;
    } else if (std::string_view("mwMW@%").find(c) != std::string_view::npos) {
      width += 1.8;
    } else if (c >= 'A' && c <= 'Z') {
      width += 1.3;
    } else {
      width += 1.06;
    }
  }
  return width * (bold ? 1.05 : 1);
}

class BookWidths : public OpenBooks {
 protected:
  // By the sizes in the table of styles, which the port does not tell.
  static double ScaleOf(const host::Range& cell) {
    if (cell.Style() == "Title") return 16.0 / 11;
    return cell.Style() == "Hint" ? 9.0 / 11 : 1;
  }

  static bool MayRunOver(const host::Worksheet& sheet, int row, int column) {
    const host::Alignment alignment = sheet.Cells(row, column).HorizontalAlignment().value_or(host::Alignment::General);
    return alignment == host::Alignment::General || alignment == host::Alignment::Left;
  }

  // How much room a text has: its column, and the empty ones right of it.
  static double RoomAt(const host::Worksheet& sheet, int row, int column) {
    double room = sheet.Cells(row, column).ColumnWidth().value_or(0);
    if (!MayRunOver(sheet, row, column)) return room;
    for (int next = column + 1; next <= column + 12; ++next) {
      if (!sheet.Cells(row, next).Value().single().isEmpty()) break;
      room += sheet.Cells(row, next).ColumnWidth().value_or(0);
    }
    return room;
  }

  static void ExpectFits(const host::Workbook& book) {
    for (const host::Worksheet& sheet : book.Worksheets().All()) {
      const host::CellBlock block = sheet.Cells(1, 1).Resize(60, 16).Value();
      for (int row = 1; row <= block.rows(); ++row) {
        for (int column = 1; column <= block.columns(); ++column) {
          if (block.at(row, column).isEmpty()) continue;
          const host::Range cell = sheet.Cells(row, column);
          const std::string shown = cell.Text();
          const bool isBold = cell.Font().Bold().value_or(false);
          double width = WidthOf(shown, isBold) * ScaleOf(cell);
          double room = RoomAt(sheet, row, column);
          if (cell.WrapText() == true) {  // two lines, broken between words
            const std::size_t middle = shown.rfind(' ');
            const std::size_t end = middle == std::string::npos ? shown.size() : middle;
            width = std::max(WidthOf(std::string_view(shown).substr(0, end), isBold),
                             WidthOf(std::string_view(shown).substr(std::min(end + 1, shown.size())), isBold));
            room = cell.ColumnWidth().value_or(0);
          }
          EXPECT_LE(width, room) << sheet.Name() << "!" << cell.Address() << " shows \"" << shown << "\"";
        }
      }
    }
  }
};

TEST_F(BookWidths, OfTheTemplates) {
  ExpectFits(AccountsBook());
  ExpectFits(Breakdown());
}

// A number too wide would show as ####: millions, negative, must fit wherever amounts are shown, and any date.
TEST_F(BookWidths, AmountsAndDatesFitWhereverTheyMayStand) {
  for (const host::Workbook& book : {AccountsBook(), Breakdown()}) {
    for (const host::Worksheet& sheet : book.Worksheets().All()) {
      sheet.Unprotect();
      for (int row = 1; row <= 15; ++row) {
        for (int column = 1; column <= 14; ++column) {
          const host::Range cell = sheet.Cells(row, column);
          const std::string format = cell.NumberFormat().value_or("");
          const bool isDate = format.find("yyyy") != std::string::npos;
          if (!isDate && format.find("#,##0") == std::string::npos) continue;
          if (format.find("m to") != std::string::npos) continue;
          cell.SetValue(isDate ? 39961.0 : -1234567.89);
          EXPECT_LE(WidthOf(cell.Text(), cell.Font().Bold().value_or(false)), cell.ColumnWidth().value_or(0))
              << sheet.Name() << "!" << cell.Address() << " shows " << cell.Text();
          cell.ClearContents();
        }
      }
    }
  }
}

}  // namespace
}  // namespace tolvane::books
