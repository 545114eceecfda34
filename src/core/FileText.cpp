#include "src/core/FileText.h"

#include "platform/Text.h"
#include "src/core/MGlobals.h"

namespace tolvane::accounts {

std::string DecodeText(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return platform::FromUtf16Le(bytes.substr(2));
  if (bytes.starts_with("\xFE\xFF")) return platform::FromUtf16Be(bytes.substr(2));
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  return platform::FromSystemCodePage(bytes);
}

std::string ReadTextFile(const std::string& sPath) {
  return DecodeText(gxlApp().User().ReadFile(sPath));
}

}  // namespace tolvane::accounts
