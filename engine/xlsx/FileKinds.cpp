#include "engine/xlsx/FileKinds.h"

#include <array>

#include "platform/Text.h"

namespace tolvane::engine {

namespace {

struct Known {
  std::string_view extension;
  std::string_view type;
  FileKind kind;
};

constexpr std::array<Known, 5> kKnown = {{
    {".xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml", {BookKind::Book, false}},
    {".xlsm", "application/vnd.ms-excel.sheet.macroEnabled.main+xml", {BookKind::Book, true}},
    {".xltx",
     "application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml",
     {BookKind::Template, false}},
    {".xltm", "application/vnd.ms-excel.template.macroEnabled.main+xml", {BookKind::Template, true}},
    {".xlam", "application/vnd.ms-excel.addin.macroEnabled.main+xml", {BookKind::Addin, true}},
}};

}  // namespace

std::optional<FileKind> FileKindOf(std::string_view fileName) {
  const std::string lower = platform::LowerCase(fileName);
  for (const Known& known : kKnown) {
    if (lower.size() > known.extension.size() && lower.ends_with(known.extension)) return known.kind;
  }
  return std::nullopt;
}

namespace xlsx {

std::optional<FileKind> KindOfType(std::string_view contentType) {
  for (const Known& known : kKnown) {
    if (known.type == contentType) return known.kind;
  }
  return std::nullopt;
}

std::string_view TypeOfKind(FileKind kind) {
  for (const Known& known : kKnown) {
    if (known.kind == kind) return known.type;
  }
  return kKnown[4].type;  // an add-in may always hold macros
}

}  // namespace xlsx

}  // namespace tolvane::engine
