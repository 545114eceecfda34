#include "hosts/libreoffice/SheetGuard.h"

#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <string>

#include "hosts/libreoffice/FormatRuns.h"

namespace tolvane::libreoffice {

void RequireUnlocked(const CalcWorksheet& sheet, const Rects& areas) {
  if (!sheet.isProtected()) return;
  for (const Rect& area : areas) {
    ForEachFormatRun(sheet, area, [&](const Rect& run, const Reference<css::uno::XInterface>& cells) {
      if (!Get<css::util::CellProtection>(cells, "CellProtection").IsLocked) return;
      Refuse("The cells " + sheet.PlaceOf(run) +
             " are locked and their sheet is protected. Unprotect the sheet first.");
    });
  }
}

void RequireAllowed(const CalcWorksheet& sheet, bool host::Protection::*flag, std::string_view what) {
  if (!(sheet.carried.allowed.*flag)) RequireUnprotected(sheet, what);
}

void RequireUnprotected(const CalcWorksheet& sheet, std::string_view what) {
  if (!sheet.isProtected()) return;
  Refuse("The sheet " + QuoteSheetName(sheet.Name()) + " is protected, which does not allow " + std::string(what) +
         ". Unprotect the sheet first.");
}

ProtectionLifted::ProtectionLifted(const CalcWorksheet& sheet) {
  sheet.book().RequireEditable();
  const auto protection = As<css::util::XProtectable>(sheet.object());
  if (!protection->isProtected()) return;
  try {
    protection->unprotect(OUString());
  } catch (const css::uno::Exception&) {
    // Told below: Calc throws for some passwords and says nothing for others.
  }
  if (protection->isProtected()) {
    Refuse("The sheet " + QuoteSheetName(sheet.Name()) + " is protected by a password. Unprotect it by hand first.");
  }
  protection_ = protection;
}

ProtectionLifted::~ProtectionLifted() {
  if (!protection_.is()) return;
  try {
    protection_->protect(OUString());
  } catch (const css::uno::Exception&) {
    // The sheet is gone; so is what it protected.
  }
}

}  // namespace tolvane::libreoffice
