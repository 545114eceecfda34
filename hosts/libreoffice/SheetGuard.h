#pragma once

#include <com/sun/star/util/XProtectable.hpp>
#include <string_view>

#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

// What a protected sheet refuses; each check throws ApplicationDefined and does nothing on an unprotected one. Calc's
// own protection knows only some of the rules and drops some calls silently, so the host checks by itself and lifts
// Calc's while it writes.
void RequireUnlocked(const CalcWorksheet& sheet, const Rects& areas);
void RequireAllowed(const CalcWorksheet& sheet, bool host::Protection::*flag, std::string_view what);
void RequireUnprotected(const CalcWorksheet& sheet, std::string_view what);

// Calc's protection is off for as long as this lives. A password that we do not know, and a book that was opened for
// reading only, are ApplicationDefined.
class ProtectionLifted {
 public:
  explicit ProtectionLifted(const CalcWorksheet& sheet);
  ~ProtectionLifted();
  ProtectionLifted(const ProtectionLifted&) = delete;
  ProtectionLifted& operator=(const ProtectionLifted&) = delete;

 private:
  Reference<css::util::XProtectable> protection_;
};

}  // namespace tolvane::libreoffice
