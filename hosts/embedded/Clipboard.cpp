#include "hosts/embedded/Clipboard.h"

#include <algorithm>
#include <utility>

#include "engine/formula/NumberFormat.h"
#include "hosts/embedded/EmbeddedWorksheet.h"

namespace tolvane::embedded {

namespace {

// A cell's text as it stands between tabs: quoted when it would break the table.
void AppendCell(std::string& out, const std::string& text) {
  if (text.find_first_of("\t\r\n") == std::string::npos) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    out += c;
    if (c == '"') out += c;
  }
  out += '"';
}

}  // namespace

void Clipboard::Put(Cells cells, host::CutCopyMode mode) {
  cells_ = std::move(cells);
  mode_ = mode;
  text_.clear();
}

void Clipboard::EndMode() {
  mode_ = host::CutCopyMode::None;
  cells_ = {};
}

bool Clipboard::HasText() const {
  return mode_ != host::CutCopyMode::None || !text_.empty();
}

std::string Clipboard::Text() const {
  if (mode_ == host::CutCopyMode::None) return text_;
  const engine::Sheet& sheet = cells_.sheet->sheet();
  // Of whole rows and columns, what is used.
  const auto used = sheet.UsedContents();
  const int lastRow = used ? used->bottom : 0;
  const int lastColumn = used ? used->right : 0;
  const bool wholeRows = cells_.columns.front() == engine::Run{1, engine::kMaxColumn};
  const bool wholeColumns = cells_.rows.front() == engine::Run{1, engine::kMaxRow};
  std::string out;
  for (const engine::Run& rows : cells_.rows) {
    const int bottom = wholeColumns ? std::min(rows.last(), lastRow) : rows.last();
    for (int row = rows.first; row <= bottom; ++row) {
      bool isFirst = true;
      for (const engine::Run& columns : cells_.columns) {
        const int right = wholeRows ? std::min(columns.last(), lastColumn) : columns.last();
        for (int column = columns.first; column <= right; ++column) {
          if (!isFirst) out += '\t';
          isFirst = false;
          const engine::Value& value = sheet.ValueAt({row, column});
          if (value.isEmpty()) continue;
          const engine::CellFormat& format = sheet.book().formats.At(sheet.FormatAt({row, column}));
          AppendCell(out, engine::FormatValue(value, format.format.numberFormat));
        }
      }
      out += "\r\n";
    }
  }
  return out;
}

void Clipboard::PutText(std::string text) {
  EndMode();
  text_ = std::move(text);
}

}  // namespace tolvane::embedded
