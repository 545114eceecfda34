#include "hosts/libreoffice/PastedText.h"

#include <algorithm>
#include <com/sun/star/util/NotNumericException.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/NumberFormatter.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <string>
#include <vector>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellWriting.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/SheetGuard.h"
#include "hosts/shell/TextTable.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

class Recogniser {
 public:
  explicit Recogniser(CalcWorkbook& book)
      : book_(book), formatter_(css::util::NumberFormatter::create(book.program().context()), UNO_QUERY_THROW) {
    formatter_->attachNumberFormatsSupplier(
        Reference<css::util::XNumberFormatsSupplier>(book.model(), UNO_QUERY_THROW));
  }

  Recognised operator()(std::string_view text) const {
    if (text.empty()) return {};
    if (text[0] == '\'') return {host::CellValue(text.substr(1)), std::nullopt};
    for (const bool truth : {true, false}) {
      if (platform::EqualIgnoringCase(text, truth ? "TRUE" : "FALSE")) return {truth, std::nullopt};
    }
    try {
      const OUString input = ToUno(text);
      const sal_Int32 key = formatter_->detectNumberFormat(0, input);
      const double number = formatter_->convertStringToNumber(key, input);
      const sal_Int16 type = Get<sal_Int16>(
          As<css::util::XNumberFormatsSupplier>(book_.model())->getNumberFormats()->getByKey(key), "Type");
      const bool plain = (type & ~css::util::NumberFormat::DEFINED) == css::util::NumberFormat::NUMBER;
      return {number, plain ? std::nullopt : std::optional<std::int32_t>(key)};
    } catch (const css::util::NotNumericException&) {
      return {text, std::nullopt};
    }
  }

 private:
  CalcWorkbook& book_;
  Reference<css::util::XNumberFormatter> formatter_;
};

}  // namespace

Recognised Recognise(CalcWorkbook& book, std::string_view text) {
  return AtEdge([&] { return Recogniser(book)(text); });
}

void PasteText(CalcWorksheet& sheet, CellPos at, std::string_view text) {
  const auto lines = shell::SplitTable(text);
  std::size_t columns = 0;
  for (const auto& line : lines) columns = std::max(columns, line.size());
  if (columns == 0) return;
  const Rect area{at.row, at.column, at.row + static_cast<int>(lines.size()) - 1,
                  at.column + static_cast<int>(columns) - 1};
  if (!area.isValid()) Refuse("The text does not fit on the sheet from its place on.");
  RequireUnlocked(sheet, {area});
  host::CellBlock block(area.rows(), area.columns());
  std::vector<std::pair<CellPos, std::int32_t>> formats;
  AtEdge([&] {
    const Recogniser recognise(sheet.book());
    for (std::size_t row = 0; row < lines.size(); ++row) {
      for (std::size_t column = 0; column < lines[row].size(); ++column) {
        const Recognised found = recognise(lines[row][column]);
        block.at(static_cast<int>(row) + 1, static_cast<int>(column) + 1) = found.value;
        if (found.format) {
          formats.push_back({{area.top + static_cast<int>(row), area.left + static_cast<int>(column)}, *found.format});
        }
      }
    }
  });
  const auto self = sheet.Self();
  const CalcProgram::KeepCopyMode keep(sheet.program());
  {
    const CalcProgram::OwnEdit edit(sheet.program());
    const ProtectionLifted lifted(sheet);
    WriteContents(sheet, area, PrepareValues(block, area));
    for (const auto& [cell, key] : formats) {
      const auto place = sheet.Cells({cell.row, cell.column, cell.row, cell.column});
      if (NumberFormatCode(sheet.book(), Get<sal_Int32>(place, "NumberFormat")) == "General") {
        Set(place, "NumberFormat", sal_Int32{key});
      }
    }
  }
  self->program().CellsEdited(*self, {area});
}

}  // namespace tolvane::libreoffice
