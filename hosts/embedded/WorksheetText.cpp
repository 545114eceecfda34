// The part of EmbeddedWorksheet that pastes text.
#include <algorithm>
#include <string>
#include <utility>

#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/Typing.h"
#include "hosts/embedded/Values.h"
#include "hosts/shell/TextTable.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::Rect;

void EmbeddedWorksheet::PasteSpecialText() {
  if (!IsInFront()) Refuse("Text can only be pasted into the active sheet; \"" + Name() + "\" is not.");
  if (!program_->clipboard.HasText()) Refuse("There is no text on the clipboard.");
  const std::vector<std::vector<std::string>> rows = shell::SplitTable(program_->clipboard.Text());
  std::size_t width = 0;
  for (const auto& row : rows) width = std::max(width, row.size());
  if (width == 0) Refuse("There is no text on the clipboard.");
  const CellPos start = sheet_->view.selection.front().topLeft();
  if (rows.size() > static_cast<std::size_t>(engine::kMaxRow - start.row + 1) ||
      width > static_cast<std::size_t>(engine::kMaxColumn - start.column + 1)) {
    Refuse("The text on the clipboard has " + std::to_string(rows.size()) + " rows and " + std::to_string(width) +
           " columns; from " + PlaceOf(Rect::Cell(start)) + " on the sheet has not so many.");
  }
  const Rect target{start.row, start.column, start.row + static_cast<int>(rows.size()) - 1,
                    start.column + static_cast<int>(width) - 1};
  RequireUnlocked(*sheet_, {target});
  std::vector<engine::Value> values;
  values.reserve(rows.size() * width);
  std::vector<std::pair<CellPos, std::string>> formats;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < width; ++c) {
      if (c >= rows[r].size() || rows[r][c].empty()) {
        values.emplace_back();
        continue;
      }
      const CellPos at{start.row + static_cast<int>(r), start.column + static_cast<int>(c)};
      const std::string& numberFormat = book_->book().formats.At(sheet_->FormatAt(at)).format.numberFormat;
      Recognised recognised;
      if (numberFormat == "@") {
        recognised.value = engine::Value(std::string_view(rows[r][c]));
      } else {
        recognised = Recognise(rows[r][c]);
      }
      if (recognised.value.isText()) recognised.value = ToEngine(host::CellValue(recognised.value.text().view()));
      if (recognised.numberFormat && numberFormat == "General") formats.emplace_back(at, *recognised.numberFormat);
      values.push_back(std::move(recognised.value));
    }
  }
  Refusing([&] { sheet_->SetValues(target, values); });
  engine::FormatTable& table = book_->book().formats;
  for (const auto& [at, numberFormat] : formats) {
    sheet_->ChangeFormat(Rect::Cell(at), [&, &wanted = numberFormat](engine::FormatId from) {
      return table.With(from, engine::FormatGroup::Number, [&](engine::Format& f) { f.numberFormat = wanted; });
    });
  }
  // What was pasted is selected, without an event of its own.
  sheet_->view.selection = {target};
  sheet_->view.activeCell = start;
  const Program::KeepCopyMode keep(*program_);
  program_->CellsEdited(*this, {target});
}

}  // namespace tolvane::embedded
