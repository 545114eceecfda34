#include "hosts/libreoffice/CellReading.h"

#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <optional>
#include <string>

#include "hosts/libreoffice/FormatRuns.h"

namespace tolvane::libreoffice {

using host::CellBlock;
using host::CellError;
using host::CellValue;

namespace {

// Beyond this many cells it pays to look where the sheet ends.
constexpr std::int64_t kLarge = 4096;

// Calc's numbers of errors (its help lists them) as Excel's.
CellValue ErrorOf(sal_Int32 number) {
  switch (number) {
    case 0:
      return CellValue();
    case 503:
      return CellError::Num;
    case 521:
      return CellError::Null;
    case 522:
    case 523:
      return 0.0;  // a circle, which shows 0 in Excel
    case 524:
      return CellError::Ref;
    case 525:
      return CellError::Name;
    case 532:
      return CellError::Div0;
    case 32767:
      return CellError::NA;
    default:
      return CellError::Value;
  }
}

std::optional<CellError> ErrorLiteral(std::string_view text) {
  for (const CellError error : {CellError::Null, CellError::Div0, CellError::Value, CellError::Ref, CellError::Name,
                                CellError::Num, CellError::NA}) {
    if (host::TextOf(error) == text) return error;
  }
  return std::nullopt;
}

std::string WithoutArrayBraces(std::string text) {
  if (text.starts_with("{=") && text.ends_with('}')) return text.substr(1, text.size() - 2);
  return text;
}

// The part of an area that can hold anything; none where it cannot.
std::optional<Rect> Crop(const CalcWorksheet& sheet, const Rect& area) {
  if (area.count() <= kLarge) return area;
  const Rect used = sheet.UsedArea();
  if (!area.intersects(used)) return std::nullopt;
  return area.intersection(used);
}

// Asked about columns that were never touched, Calc answers about others.
Rects FormulaCells(const Reference<css::table::XCellRange>& range, const Rect& area) {
  Rects result;
  const auto found = As<css::sheet::XCellRangesQuery>(range)->queryContentCells(css::sheet::CellFlags::FORMULA);
  for (const auto& address : found->getRangeAddresses()) {
    const Rect rect = ToRect(address);
    if (rect.intersects(area)) result.push_back(rect.intersection(area));
  }
  return result;
}

bool IsZeroOrOne(const CellValue& value) {
  return value.isNumber() && (value.number() == 0 || value.number() == 1);
}

class BlockReader {
 public:
  BlockReader(const CalcWorksheet& sheet, const Rect& area, const Rect& part)
      : sheet_(sheet), area_(area), part_(part), block_(area.rows(), area.columns()) {}

  CellBlock Values() {
    const Rects formulas = Constants();
    for (const Rect& rect : formulas) Results(rect);
    return std::move(block_);
  }

  CellBlock Formulas(Dialect dialect) {
    for (CellValue& cell : block_.cells()) cell = CellValue("");
    quotes_ = true;
    const Rects formulas = Constants();
    for (const Rect& rect : formulas) FormulaTexts(rect, dialect);
    return std::move(block_);
  }

 private:
  CellValue& At(int row, int column) { return block_.at(row - area_.top + 1, column - area_.left + 1); }

  // Fills in what the cells hold, texts of formulas excepted, and tells where formulas are.
  Rects Constants() {
    const auto range = sheet_.Cells(part_);
    const Sequence<Sequence<Any>> data = As<css::sheet::XCellRangeData>(range)->getDataArray();
    bool mayBeTruth = false;
    for (int row = 0; row < part_.rows(); ++row) {
      const Sequence<Any>& line = data[row];
      for (int column = 0; column < part_.columns(); ++column) {
        const Any& any = line[column];
        double number = 0;
        OUString text;
        if (any >>= number) {
          At(part_.top + row, part_.left + column) = number;
          mayBeTruth = mayBeTruth || number == 0 || number == 1;
        } else if ((any >>= text) && !text.isEmpty()) {
          At(part_.top + row, part_.left + column) = TextConstant(ToUtf8(text));
        }
      }
    }
    if (mayBeTruth) {
      for (const Rect& rect : TruthFormats(sheet_, part_)) {
        for (int row = rect.top; row <= rect.bottom; ++row) {
          for (int column = rect.left; column <= rect.right; ++column) {
            CellValue& cell = At(row, column);
            if (IsZeroOrOne(cell)) cell = cell.number() != 0;
          }
        }
      }
    }
    return FormulaCells(range, part_);
  }

  CellValue TextConstant(const std::string& text) const {
    return quotes_ && (text[0] == '=' || text[0] == '\'') ? '\'' + text : text;
  }

  Sequence<Sequence<OUString>> Texts(const Rect& rect) const {
    return As<css::sheet::XCellRangeFormula>(sheet_.Cells(rect))->getFormulaArray();
  }

  void Results(const Rect& rect) {
    std::optional<Sequence<Sequence<OUString>>> texts;
    const auto object = sheet_.object();
    for (int row = rect.top; row <= rect.bottom; ++row) {
      for (int column = rect.left; column <= rect.right; ++column) {
        CellValue& cell = At(row, column);
        if (cell.isEmpty()) {
          const sal_Int32 error = object->getCellByPosition(column - 1, row - 1)->getError();
          cell = error == 0 ? CellValue("") : ErrorOf(error);
        } else if (cell.isBoolean() || IsZeroOrOne(cell)) {
          if (!texts) texts = Texts(rect);
          const bool formatted = cell.isBoolean();
          const double number = formatted ? (cell.boolean() ? 1 : 0) : cell.number();
          const std::string text = ToUtf8((*texts)[row - rect.top][column - rect.left]);
          const Truth truth = TruthOf(text, {row, column});
          if (truth == Truth::Yes || (truth == Truth::Unknown && formatted)) {
            cell = number != 0;
          } else {
            cell = number;
          }
        }
      }
    }
  }

  Truth TruthOf(const std::string& formula, CellPos at) const {
    try {
      return GivesTruth(sheet_.book().ReadCalc(WithoutArrayBraces(formula), at));
    } catch (const FormulaError&) {
      return Truth::Unknown;
    }
  }

  void FormulaTexts(const Rect& rect, Dialect dialect) {
    const Sequence<Sequence<OUString>> texts = Texts(rect);
    for (int row = rect.top; row <= rect.bottom; ++row) {
      const Sequence<OUString>& line = texts[row - rect.top];
      for (int column = rect.left; column <= rect.right; ++column) {
        const std::string text = WithoutArrayBraces(ToUtf8(line[column - rect.left]));
        At(row, column) = FormulaText(text, dialect, {row, column});
      }
    }
  }

  CellValue FormulaText(const std::string& text, Dialect dialect, CellPos at) const {
    const std::string_view bare = std::string_view(text).substr(text.starts_with('=') ? 1 : 0);
    if (const auto error = ErrorLiteral(bare)) return *error;
    // What Calc makes of a truth value that it reads from one of Excel's files.
    if (bare == "TRUE()" || bare == "FALSE()") return bare == "TRUE()";
    try {
      return '=' + WriteFormula(sheet_.book().ReadCalc(text, at), dialect, at);
    } catch (const FormulaError&) {
      return text;  // a form that only Calc has; it is its own best description
    }
  }

  const CalcWorksheet& sheet_;
  const Rect area_;
  const Rect part_;
  CellBlock block_;
  bool quotes_ = false;  // a text that would read as something else gets an apostrophe in front
};

}  // namespace

Rects TruthFormats(const CalcWorksheet& sheet, const Rect& area) {
  const auto range = sheet.Cells(area);
  Rects result;
  if (!MayDiffer(range, "NumberFormat")) {
    if (IsTruthFormat(sheet.book(), Get<sal_Int32>(range, "NumberFormat"))) result.push_back(area);
    return result;
  }
  for (const Look& look : LooksOf(sheet, area)) {
    if (!IsTruthFormat(sheet.book(), Get<sal_Int32>(look.cells, "NumberFormat"))) continue;
    result.insert(result.end(), look.areas.begin(), look.areas.end());
  }
  return result;
}

CellBlock ReadValues(const CalcWorksheet& sheet, const Rect& area) {
  const auto part = Crop(sheet, area);
  if (!part) return CellBlock(area.rows(), area.columns());
  return AtEdge([&] { return BlockReader(sheet, area, *part).Values(); });
}

CellBlock ReadFormulas(const CalcWorksheet& sheet, const Rect& area, Dialect dialect) {
  const auto part = Crop(sheet, area);
  if (!part) {
    CellBlock empty(area.rows(), area.columns());
    for (CellValue& cell : empty.cells()) cell = CellValue("");
    return empty;
  }
  CellBlock block = AtEdge([&] { return BlockReader(sheet, area, *part).Formulas(dialect); });
  return block;
}

}  // namespace tolvane::libreoffice
