#include "hosts/libreoffice/CellWriting.h"

#include <cmath>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <map>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellReading.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/Merges.h"
#include "hosts/libreoffice/WithoutUndo.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

using host::CellBlock;
using host::CellError;
using host::CellValue;

namespace {

constexpr std::size_t kMostCharacters = 32767;  // of a cell, as in Excel
// Runs up to this length are written cell by cell; Calc's cost of writing a formula below its like grows with the
// number of those above, copying does not.
constexpr int kShortRun = 4;

void RequireText(const CellValue& value) {
  if (!value.isText() || value.text().size() <= kMostCharacters) return;
  if (platform::CharacterCount(value.text()) > kMostCharacters) {
    Refuse("A text of more than 32,767 characters does not fit into a cell.");
  }
}

// Calc has no not-a-number; Excel shows #NUM! for what is no number.
CellValue Finite(const CellValue& value) {
  return value.isNumber() && !std::isfinite(value.number()) ? CellValue(CellError::Num) : value;
}

Any ToAny(const CellValue& value) {
  switch (value.kind()) {
    case CellValue::Kind::Boolean:
      return Any(value.boolean() ? 1.0 : 0.0);
    case CellValue::Kind::Number:
      return Any(value.number());
    case CellValue::Kind::Text:
      return Any(ToUno(value.text()));
    case CellValue::Kind::Error:
    case CellValue::Kind::Empty:
      break;
  }
  return Any(OUString());
}

class Preparation {
 public:
  Preparation(Contents& contents, const Rect& area) : contents_(contents), area_(area) {}

  void AddFormula(int row, int column, const std::string& r1c1) {
    std::vector<Contents::Run>& runs = contents_.formulas;
    if (const auto last = lastOfColumn_.find(column); last != lastOfColumn_.end()) {
      Contents::Run& run = runs[last->second];
      if (run.row + run.rows == row && run.r1c1 == r1c1) {
        ++run.rows;
        return;
      }
    }
    lastOfColumn_[column] = runs.size();
    runs.push_back({row, column, 1, r1c1});
  }

  void Fill(const std::string& r1c1) {
    for (int column = 1; column <= area_.columns(); ++column) {
      contents_.formulas.push_back({1, column, area_.rows(), r1c1});
    }
  }

 private:
  Contents& contents_;
  const Rect area_;
  std::map<int, std::size_t> lastOfColumn_;
};

// One cell's formula as R1C1 text, which is the same for all cells that hold it relatively.
class Compiler {
 public:
  Compiler(CalcWorkbook& book, Dialect dialect) : book_(book), dialect_(dialect) {}

  std::string R1C1(std::string_view formula, CellPos at) {
    const bool sameEverywhere = dialect_ == Dialect::ExcelR1C1;
    if (sameEverywhere) {
      if (const auto known = known_.find(formula); known != known_.end()) return known->second;
    }
    std::string r1c1 = WriteFormula(book_.Read(formula, dialect_, at), Dialect::ExcelR1C1, at);
    if (sameEverywhere) known_.emplace(formula, r1c1);
    return r1c1;
  }

 private:
  CalcWorkbook& book_;
  const Dialect dialect_;
  std::map<std::string, std::string, std::less<>> known_;
};

void Copy(const CalcWorksheet& sheet, const Rect& from, CellPos to) {
  const auto index = sheet.index();
  As<css::sheet::XCellRangeMovement>(sheet.object())
      ->copyRange(css::table::CellAddress(static_cast<sal_Int16>(index), to.column - 1, to.row - 1),
                  ToAddress(from, index));
}

class Writer {
 public:
  Writer(CalcWorksheet& sheet, const Rect& area, const Contents& contents)
      : sheet_(sheet), area_(area), contents_(contents) {}

  void Run() {
    EndTruthFormats();
    if (contents_.isFilled() && contents_.constants.single().isEmpty()) {
      ClearCells(sheet_, area_);
    } else {
      WriteConstants();
    }
    for (const Contents::Run& run : contents_.formulas) WriteRun(run);
    ClearCovered(sheet_, area_);
  }

 private:
  const CellValue& At(int row, int column) const {
    return contents_.isFilled() ? contents_.constants.single() : contents_.constants.at(row, column);
  }

  // A number in a cell with the format of truth values would be one.
  void EndTruthFormats() {
    const Rect used = sheet_.UsedArea();
    if (!area_.intersects(used)) return;
    const Rects truths = TruthFormats(sheet_, area_.intersection(used));
    if (!truths.empty()) SetDefault(Collect(sheet_, truths), "NumberFormat");
  }

  void WriteConstants() {
    Sequence<Sequence<Any>> lines(area_.rows());
    Sequence<Any>* line = lines.getArray();
    Rects truths;
    std::vector<int> truthStart(static_cast<std::size_t>(area_.columns()) + 1, 0);
    const auto endTruth = [&](int column, int row) {
      int& start = truthStart[static_cast<std::size_t>(column)];
      if (start == 0) return;
      truths.push_back({area_.top + start - 1, area_.left + column - 1, area_.top + row - 2, area_.left + column - 1});
      start = 0;
    };
    for (int row = 1; row <= area_.rows(); ++row, ++line) {
      line->realloc(area_.columns());
      Any* cell = line->getArray();
      for (int column = 1; column <= area_.columns(); ++column) {
        const CellValue& value = At(row, column);
        *cell++ = ToAny(value);
        int& start = truthStart[static_cast<std::size_t>(column)];
        if (!value.isBoolean()) {
          endTruth(column, row);
        } else if (start == 0) {
          start = row;
        }
      }
    }
    for (int column = 1; column <= area_.columns(); ++column) endTruth(column, area_.rows() + 1);
    As<css::sheet::XCellRangeData>(sheet_.Cells(area_))->setDataArray(lines);
    if (!truths.empty()) Set(Collect(sheet_, truths), "NumberFormat", NumberFormatKey(sheet_.book(), "BOOLEAN"));
  }

  // Calc's copying takes the look along, so a run is copied only among cells that look the same.
  void WriteRun(const Contents::Run& run) {
    const int column = area_.left + run.column - 1;
    const Rect rect{area_.top + run.row - 1, column, area_.top + run.row + run.rows - 2, column};
    if (run.rows <= kShortRun) {
      for (int row = rect.top; row <= rect.bottom; ++row) WriteOne(run, {row, column});
      return;
    }
    Rects segments;
    ForEachFormatRun(sheet_, rect,
                     [&](const Rect& segment, const Reference<css::uno::XInterface>&) { segments.push_back(segment); });
    for (const Rect& segment : segments) {
      WriteOne(run, {segment.top, column});
      for (int have = 1; have < segment.rows();) {
        const int more = std::min(have, segment.rows() - have);
        Copy(sheet_, {segment.top, column, segment.top + more - 1, column}, {segment.top + have, column});
        have += more;
      }
    }
  }

  void WriteOne(const Contents::Run& run, CellPos at) {
    const std::string text =
        '=' + WriteFormula(sheet_.book().Read(run.r1c1, Dialect::ExcelR1C1, at), Dialect::Calc, at);
    sheet_.object()->getCellByPosition(at.column - 1, at.row - 1)->setFormula(ToUno(text));
  }

  CalcWorksheet& sheet_;
  const Rect area_;
  const Contents& contents_;
};

// A value that is the same all over goes as one; a block is spread out.
template <class Put>
Contents Prepare(const CellBlock& block, const Rect& area, const Put& put) {
  Contents contents;
  Preparation preparation(contents, area);
  if (block.isSingle()) {
    contents.constants = CellBlock(CellValue());
    put(block.single(), 0, 0, contents.constants.at(1, 1), preparation);
    return contents;
  }
  contents.constants = CellBlock(area.rows(), area.columns());
  const Spread spread(block, area);
  for (int row = 1; row <= area.rows(); ++row) {
    for (int column = 1; column <= area.columns(); ++column) {
      put(spread.At(row, column), row, column, contents.constants.at(row, column), preparation);
    }
  }
  return contents;
}

void PutConstant(const CellValue& given, int row, int column, CellValue& constant, Preparation& preparation) {
  const CellValue value = Finite(given);
  RequireText(value);
  if (!value.isError()) {  // an error constant is a formula for Calc
    constant = value;
  } else if (row == 0) {
    preparation.Fill(std::string(host::TextOf(value.error())));
  } else {
    preparation.AddFormula(row, column, std::string(host::TextOf(value.error())));
  }
}

}  // namespace

const CellValue& Spread::At(int row, int column) const {
  const int blockRow = block_.rows() == 1 ? 1 : row;
  const int blockColumn = block_.columns() == 1 ? 1 : column;
  if (blockRow > block_.rows() || blockColumn > block_.columns()) return missing_;
  return block_.at(blockRow, blockColumn);
}

Contents PrepareValues(const CellBlock& block, const Rect& area) {
  return Prepare(block, area, PutConstant);
}

Contents PrepareFormulas(CalcWorkbook& book, const CellBlock& block, const Rect& area, Dialect dialect) {
  Compiler compiler(book, dialect);
  return Prepare(block, area,
                 [&](const CellValue& value, int row, int column, CellValue& constant, Preparation& preparation) {
                   if (!value.isText() || value.text().empty() || (value.text()[0] != '=' && value.text()[0] != '\'')) {
                     return PutConstant(value, row, column, constant, preparation);
                   }
                   if (value.text()[0] == '\'') {
                     return PutConstant(CellValue(value.text().substr(1)), row, column, constant, preparation);
                   }
                   const CellPos at{area.top + std::max(row, 1) - 1, area.left + std::max(column, 1) - 1};
                   const std::string r1c1 = compiler.R1C1(value.text(), at);
                   if (row == 0) {
                     preparation.Fill(r1c1);
                   } else {
                     preparation.AddFormula(row, column, r1c1);
                   }
                 });
}

void WriteContents(CalcWorksheet& sheet, const Rect& area, const Contents& contents) {
  const WithoutUndo withoutUndo(sheet.book());
  AtEdge([&] { Writer(sheet, area, contents).Run(); });
}

void ClearCells(CalcWorksheet& sheet, const Rect& area) {
  namespace flags = css::sheet::CellFlags;
  AtEdge([&] {
    As<css::sheet::XSheetOperation>(sheet.Cells(area))
        ->clearContents(flags::VALUE | flags::DATETIME | flags::STRING | flags::FORMULA | flags::EDITATTR);
  });
}

}  // namespace tolvane::libreoffice
