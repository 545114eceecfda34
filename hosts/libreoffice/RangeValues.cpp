// The part of CalcRange that reads and writes contents.
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/text/XText.hpp>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellReading.h"
#include "hosts/libreoffice/CellWriting.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

using host::CellBlock;

CellBlock CalcRange::Value() const {
  const Rect area = first();
  return ReadValues(*sheet_, area);
}

void CalcRange::SetValue(const CellBlock& block) {
  const Rects all = areas();
  RequireUnlocked(*sheet_, all);
  std::vector<Contents> contents;
  for (const Rect& area : all) contents.push_back(PrepareValues(block, area));
  const auto sheet = sheet_;
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet);
    for (std::size_t i = 0; i < all.size(); ++i) WriteContents(*sheet, all[i], contents[i]);
  }
  sheet->program().CellsEdited(*sheet, all);
}

CellBlock CalcRange::ReadFormulas(Dialect dialect) const {
  const Rect area = first();
  return libreoffice::ReadFormulas(*sheet_, area, dialect);
}

void CalcRange::WriteFormulas(const CellBlock& block, Dialect dialect) {
  const Rects all = areas();
  RequireUnlocked(*sheet_, all);
  std::vector<Contents> contents;
  for (const Rect& area : all) contents.push_back(PrepareFormulas(book(), block, area, dialect));
  const auto sheet = sheet_;
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet);
    for (std::size_t i = 0; i < all.size(); ++i) WriteContents(*sheet, all[i], contents[i]);
  }
  sheet->program().CellsEdited(*sheet, all);
}

CellBlock CalcRange::Formula() const {
  return ReadFormulas(Dialect::ExcelA1);
}
void CalcRange::SetFormula(const CellBlock& block) {
  WriteFormulas(block, Dialect::ExcelA1);
}
CellBlock CalcRange::FormulaR1C1() const {
  return ReadFormulas(Dialect::ExcelR1C1);
}
void CalcRange::SetFormulaR1C1(const CellBlock& block) {
  WriteFormulas(block, Dialect::ExcelR1C1);
}

std::string CalcRange::Text() const {
  const Rect area = first();
  return AtEdge([&] {
    return ToUtf8(As<css::text::XText>(sheet_->object()->getCellByPosition(area.left - 1, area.top - 1))->getString());
  });
}

void CalcRange::ClearContents() {
  const Rects all = areas();
  RequireUnlocked(*sheet_, all);
  const auto sheet = sheet_;
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet);
    for (const Rect& area : all) WriteContents(*sheet, area, Contents{CellBlock(host::CellValue()), {}});
  }
  sheet->program().CellsEdited(*sheet, all);
}

void CalcRange::Clear() {
  namespace flags = css::sheet::CellFlags;
  const Rects all = areas();
  RequireUnlocked(*sheet_, all);
  const auto sheet = sheet_;
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet);
    UnMerge();
    AtEdge([&] {
      for (const Rect& area : all) {
        const auto cells = sheet->Cells(area);
        As<css::sheet::XSheetOperation>(cells)->clearContents(flags::VALUE | flags::DATETIME | flags::STRING |
                                                              flags::FORMULA | flags::EDITATTR | flags::ANNOTATION |
                                                              flags::HARDATTR | flags::STYLES);
        Set(cells, "CellStyle", OUString("Default"));
      }
    });
  }
  sheet->program().CellsEdited(*sheet, all);
}

}  // namespace tolvane::libreoffice
