#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/SheetParts.h"
#include "engine/xlsx/SheetWriter.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::size_t kFlush = std::size_t{64} << 10;
constexpr int kChunks = kMaxRow / kChunkRows;

std::uint64_t KeyOf(CellPos at) {
  return static_cast<std::uint64_t>(at.row) << 32 | static_cast<std::uint32_t>(at.column);
}

// The model holds cells column by column, the file row by row: a chunk of rows is gathered at a time.
class SheetDataWriter {
 public:
  SheetDataWriter(ZipWriter& zip, SheetWriting& writing)
      : zip_(zip), writing_(writing), sheet_(writing.sheet), home_{writing.sheet.id(), {}} {
    out_.reserve(kFlush + 4096);
  }

  void Write() {
    FindWork();
    if (lastChunk_ < 0) {
      zip_.Write("<sheetData/>");
      return;
    }
    out_ = "<sheetData>";
    for (int chunk = 0; chunk <= lastChunk_; ++chunk) {
      if (isUsed_[static_cast<std::size_t>(chunk)]) Gather(chunk);
      const int first = chunk * kChunkRows + 1;
      for (int row = first; row < first + kChunkRows; ++row) {
        WriteRow(row, rows_[static_cast<std::size_t>(row - first)]);
      }
    }
    out_ += "</sheetData>";
    zip_.Write(out_);
  }

 private:
  struct CellRef {
    int column;
    FormatId format;
    const Value* value;
    const FormulaCell* formula;
  };

  void FindWork() {
    isUsed_.assign(kChunks, false);
    sheet_.cells().ForEachCell(Rect::WholeSheet(), [&](CellPos at, const Value&, const FormulaCell*, FormatId) {
      const int chunk = CellColumn::ChunkOf(at.row);
      isUsed_[static_cast<std::size_t>(chunk)] = true;
      lastChunk_ = std::max(lastChunk_, chunk);
    });
    const auto& stretches = sheet_.rows.stretches();
    if (!stretches.empty()) lastChunk_ = std::max(lastChunk_, CellColumn::ChunkOf(stretches.back().last));
    sheet_.columns.ForEachStretch(1, kMaxColumn, [&](int first, int last, const Band& band) {
      if (band.format == 0) return;
      columnFormats_.resize(static_cast<std::size_t>(kMaxColumn) + 1);
      std::fill(columnFormats_.begin() + first, columnFormats_.begin() + last + 1, band.format);
    });
    for (const Attachment& attachment : sheet_.attachments) {
      if (attachment.key == 0 || attachment.key > writing_.data.items.size() || attachment.ranges.empty()) continue;
      const KeptItem& item = writing_.data.items[attachment.key - 1];
      if (item.kind == KeptItem::Kind::CellAttributes)
        attributes_[KeyOf(attachment.ranges.front().topLeft())] = &item.text;
    }
  }

  void Gather(int chunk) {
    const int first = chunk * kChunkRows + 1;
    sheet_.cells().ForEachCell(
        {first, 1, first + kChunkRows - 1, kMaxColumn},
        [&](CellPos at, const Value& value, const FormulaCell* formula, FormatId format) {
          rows_[static_cast<std::size_t>(at.row - first)].push_back({at.column, format, &value, formula});
        });
  }

  const Band& BandOf(int row) {
    const auto& stretches = sheet_.rows.stretches();
    while (nextStretch_ < stretches.size() && stretches[nextStretch_].last < row) ++nextStretch_;
    const bool isInside = nextStretch_ < stretches.size() && stretches[nextStretch_].first <= row;
    return isInside ? stretches[nextStretch_].band : plain_;
  }

  void WriteRow(int row, std::vector<CellRef>& cells) {
    const Band& band = BandOf(row);
    if (cells.empty() && band.isDefault()) return;
    out_ += "<row r=\"";
    AppendInteger(out_, row);
    out_.push_back('"');
    if (!band.isDefault()) WriteBand(band);
    if (cells.empty()) {
      out_ += "/>";
    } else {
      out_.push_back('>');
      digits_.clear();
      AppendInteger(digits_, row);
      for (const CellRef& cell : cells) WriteCell(row, cell, band.format);
      cells.clear();
      out_ += "</row>";
    }
    if (out_.size() < kFlush) return;
    zip_.Write(out_);
    out_.clear();
  }

  void WriteBand(const Band& band) {
    if (band.format != 0) {
      AppendAttribute(out_, "s", std::to_string(writing_.styles.XfOf(band.format)));
      AppendFlag(out_, "customFormat", true);
    }
    if (band.size) {
      AppendAttribute(out_, "ht", *band.size);
      if (band.kept >> kFlagBits << kFlagBits != FittedRow(*band.size)) AppendFlag(out_, "customHeight", true);
    }
    if (band.hidden || band.filtered) AppendFlag(out_, "hidden", true);
    if (band.outline > 0) AppendAttribute(out_, "outlineLevel", std::to_string(band.outline));
    if ((band.kept & kCollapsed) != 0) AppendFlag(out_, "collapsed", true);
    if ((band.kept & kThickTop) != 0) AppendFlag(out_, "thickTop", true);
    if ((band.kept & kThickBottom) != 0) AppendFlag(out_, "thickBot", true);
    if ((band.kept & kPhonetic) != 0) AppendFlag(out_, "ph", true);
  }

  void WriteCell(int row, const CellRef& cell, FormatId rowFormat) {
    FormatId format = cell.format != 0 ? cell.format : rowFormat;
    if (format == 0 && !columnFormats_.empty()) format = columnFormats_[static_cast<std::size_t>(cell.column)];
    out_ += "<c r=\"";
    AppendColumn(out_, cell.column);
    out_ += digits_;
    out_.push_back('"');
    if (const int xf = writing_.styles.XfOf(format); xf != 0) {
      out_ += " s=\"";
      AppendInteger(out_, xf);
      out_.push_back('"');
    }
    if (!attributes_.empty()) WriteKeptAttributes({row, cell.column}, cell.formula != nullptr);
    const Value& value = *cell.value;
    const bool hasFormula = cell.formula != nullptr && cell.formula->expression != nullptr;
    const bool isArrayPart = cell.formula != nullptr && !hasFormula;
    if (value.isEmpty() && !hasFormula) {
      out_ += "/>";
      return;
    }
    WriteType(value, hasFormula || isArrayPart);
    if (hasFormula) WriteFormula(row, cell);
    if (!value.isEmpty()) WriteValue(value, hasFormula || isArrayPart);
    out_ += "</c>";
  }

  // Marks of dynamic arrays belong to formulas; what the other attributes say holds for any cell.
  void WriteKeptAttributes(CellPos at, bool hasFormula) {
    const auto found = attributes_.find(KeyOf(at));
    if (found == attributes_.end()) return;
    if (hasFormula || found->second->find(" cm=") == std::string::npos) out_ += *found->second;
  }

  void WriteType(const Value& value, bool isResult) {
    switch (value.kind()) {
      case Value::Kind::Text:
        out_ += isResult ? " t=\"str\">" : " t=\"s\">";
        break;
      case Value::Kind::Boolean:
        out_ += " t=\"b\">";
        break;
      case Value::Kind::Error:
        out_ += " t=\"e\">";
        break;
      case Value::Kind::Number:
        out_ += std::isfinite(value.number()) ? ">" : " t=\"e\">";
        break;
      case Value::Kind::Empty:
        out_ += ">";
        break;
    }
  }

  void WriteValue(const Value& value, bool isResult) {
    out_ += "<v>";
    switch (value.kind()) {
      case Value::Kind::Text:
        if (isResult) {
          AppendText(out_, value.text().view());
        } else {
          AppendInteger(out_, writing_.strings.NumberOf(value.text()));
        }
        break;
      case Value::Kind::Boolean:
        out_.push_back(value.boolean() ? '1' : '0');
        break;
      case Value::Kind::Error:
        out_ += engine::TextOf(value.error());
        break;
      case Value::Kind::Number:
        if (std::isfinite(value.number())) {
          AppendNumber(out_, value.number());
        } else {
          out_ += engine::TextOf(ErrorCode::Num);
        }
        break;
      case Value::Kind::Empty:
        break;
    }
    out_ += "</v>";
  }

  void WriteFormula(int row, const CellRef& cell) {
    const FormulaCell& formula = *cell.formula;
    const std::string_view raw = formula.rawText.view();
    if (raw.starts_with('<')) {
      out_ += raw;
      return;
    }
    if (formula.arrayArea) {
      out_ += "<f t=\"array\" ref=\"";
      AppendRect(out_, *formula.arrayArea);
      out_ += "\">";
    } else {
      out_ += "<f>";
    }
    if (raw.empty()) {
      home_.cell = {row, cell.column};
      AppendText(out_, PrintFileFormula(*formula.expression, home_, sheet_.book()));
    } else {
      AppendText(out_, raw.substr(1));
    }
    out_ += "</f>";
  }

  ZipWriter& zip_;
  SheetWriting& writing_;
  const Sheet& sheet_;
  FormulaHome home_;
  std::string out_;
  std::string digits_;
  std::vector<bool> isUsed_;  // by chunk
  int lastChunk_ = -1;
  std::array<std::vector<CellRef>, kChunkRows> rows_;
  std::vector<FormatId> columnFormats_;  // by column; empty when none has a format
  std::unordered_map<std::uint64_t, const std::string*> attributes_;
  std::size_t nextStretch_ = 0;
  const Band plain_;
};

}  // namespace

void WriteSheetData(ZipWriter& zip, SheetWriting& writing) {
  SheetDataWriter(zip, writing).Write();
}

}  // namespace tolvane::engine::xlsx
