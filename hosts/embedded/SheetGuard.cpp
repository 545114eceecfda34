#include "hosts/embedded/SheetGuard.h"

#include <string>

#include "engine/formula/Printer.h"
#include "engine/model/Workbook.h"
#include "hosts/embedded/FormatRuns.h"
#include "hosts/embedded/Refusal.h"

namespace tolvane::embedded {

void RequireUnlocked(const engine::Sheet& sheet, const std::vector<engine::Rect>& areas) {
  if (!sheet.protection.isProtected) return;
  for (const engine::Rect& area : areas) {
    ForEachFormatRun(sheet, area, [&](const engine::Rect& run, engine::FormatId format) {
      if (!sheet.book().formats.At(format).format.protection.locked) return;
      Refuse("The cells " + engine::QuoteSheetName(sheet.name()) + "!" + engine::PrintAddress(run, {}) +
             " are locked and their sheet is protected. Unprotect the sheet first.");
    });
  }
}

void RequireAllowed(const engine::Sheet& sheet, bool engine::SheetProtection::*flag, std::string_view what) {
  if (!(sheet.protection.*flag)) RequireUnprotected(sheet, what);
}

void RequireUnprotected(const engine::Sheet& sheet, std::string_view what) {
  if (!sheet.protection.isProtected) return;
  Refuse("The sheet " + engine::QuoteSheetName(sheet.name()) + " is protected, which does not allow " +
         std::string(what) + ". Unprotect the sheet first.");
}

}  // namespace tolvane::embedded
