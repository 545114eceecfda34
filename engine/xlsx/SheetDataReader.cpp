#include <algorithm>
#include <unordered_map>
#include <utility>

#include "engine/formula/DateSerial.h"
#include "engine/xlsx/Formulas.h"
#include "engine/xlsx/SharedStrings.h"
#include "engine/xlsx/SheetParts.h"
#include "engine/xlsx/SheetReader.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

// Dates of books that begin with 1904 count from there.
constexpr double kDaysTo1904 = 1462;
// An array formula fills cells one by one.
constexpr std::int64_t kMostArrayCells = 1'000'000;
constexpr std::size_t kFormulaCost = sizeof(FormulaCell) + 40;
constexpr std::size_t kSharedCost = 200;

// "2010-03-15", "2010-03-15T12:30:00.5Z", "12:30:00" as a serial number.
std::optional<double> SerialOfIso(std::string_view text, bool date1904) {
  double serial = 0;
  if (const std::size_t time = text.find('T');
      time != std::string_view::npos || text.find(':') == std::string_view::npos) {
    const std::string_view date = text.substr(0, time);
    if (date.size() < 10 || date[4] != '-' || date[7] != '-') return std::nullopt;
    const auto year = WholeOf(date.substr(0, 4)), month = WholeOf(date.substr(5, 2)), day = WholeOf(date.substr(8, 2));
    if (!year || !month || !day) return std::nullopt;
    const auto days = SerialOf(*year, *month, *day);
    if (!days) return std::nullopt;
    serial = *days - (date1904 ? kDaysTo1904 : 0);
    if (time == std::string_view::npos) return serial;
    text.remove_prefix(time + 1);
  }
  if (text.ends_with('Z')) text.remove_suffix(1);
  if (text.size() < 5 || text[2] != ':') return std::nullopt;
  const auto hour = WholeOf(text.substr(0, 2)), minute = WholeOf(text.substr(3, 2));
  const auto second = text.size() > 6 ? NumberOf(text.substr(6)) : std::optional<double>(0);
  if (!hour || !minute || !second) return std::nullopt;
  return serial + (static_cast<double>(*hour) * 3600 + static_cast<double>(*minute) * 60 + *second) / 86400;
}

class SheetDataReader {
 public:
  SheetDataReader(XmlReader& reader, SheetReading& reading)
      : reader_(reader), reading_(reading), cells_(reading.sheet.cells()) {
    reading.sheet.columns.ForEachStretch(1, kMaxColumn, [&](int first, int last, const Band& band) {
      if (band.format == 0) return;
      columnFormats_.resize(static_cast<std::size_t>(kMaxColumn) + 1);
      std::fill(columnFormats_.begin() + first, columnFormats_.begin() + last + 1, band.format);
    });
  }

  void Read() {
    const std::size_t outside = reader_.depth() - 1;
    for (;;) {
      const XmlReader::Event event = reader_.Next();
      if (event == XmlReader::Event::End && reader_.depth() == outside) break;
      if (event != XmlReader::Event::Start) continue;
      if (reader_.IsMain("row")) {
        ReadRow();
      } else {
        reader_.Skip();
      }
    }
    // In order, so that each goes behind the last.
    std::stable_sort(bands_.begin(), bands_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const BandTable::Stretch& stretch : bands_) {
      reading_.sheet.rows.Change(stretch.first, stretch.last, [&](Band& band) { band = stretch.band; });
    }
  }

 private:
  void ReadRow() {
    Band band;
    std::string_view height;
    bool isOwnHeight = false;
    bool hasFormat = false;
    std::int64_t xf = 0;
    std::int64_t number = row_ + 1;
    for (const XmlReader::Attribute& attribute : reader_.attributes()) {
      const std::string_view name = attribute.name, value = attribute.raw;
      if (name == "r") {
        number = WholeOf(value).value_or(0);
      } else if (name == "s") {
        xf = WholeOf(value).value_or(-1);
      } else if (name == "customFormat") {
        hasFormat = IsTrue(value);
      } else if (name == "ht") {
        height = value;
      } else if (name == "customHeight") {
        isOwnHeight = IsTrue(value);
      } else if (name == "hidden") {
        band.hidden = IsTrue(value);
      } else if (name == "outlineLevel") {
        band.outline = static_cast<std::uint8_t>(std::clamp<std::int64_t>(WholeOf(value).value_or(0), 0, 7));
      } else if (name == "collapsed" && IsTrue(value)) {
        band.kept |= kCollapsed;
      } else if (name == "thickTop" && IsTrue(value)) {
        band.kept |= kThickTop;
      } else if (name == "thickBot" && IsTrue(value)) {
        band.kept |= kThickBottom;
      } else if (name == "ph" && IsTrue(value)) {
        band.kept |= kPhonetic;
      }
    }
    if (number < 1 || number > kMaxRow) reader_.Fail("has a row " + Told("r") + ", which is not on the grid");
    row_ = static_cast<int>(number);
    column_ = 0;
    constexpr double kHighest = 409.5;
    if (const auto points = NumberOf(height); points && *points >= 0 && *points <= kHighest) {
      band.size = *points;
      if (!isOwnHeight) band.kept |= FittedRow(*points);
    }
    if (hasFormat) {
      const FormatId format = reading_.FormatOfXf(xf, reader_);
      band.format = format == kDefaultFormat && !columnFormats_.empty() ? kPlainFormat : format;
    }
    rowFormat_ = band.format;
    if (!band.isDefault()) AddBand(band);

    const std::size_t outside = reader_.depth() - 1;
    for (;;) {
      const XmlReader::Event event = reader_.Next();
      if (event == XmlReader::Event::End && reader_.depth() == outside) return;
      if (event != XmlReader::Event::Start) continue;
      if (reader_.IsMain("c")) {
        ReadCell();
      } else {
        reader_.Skip();
      }
    }
  }

  void AddBand(const Band& band) {
    if (!bands_.empty() && bands_.back().last + 1 == row_ && bands_.back().band == band) {
      bands_.back().last = row_;
    } else {
      reading_.budget.Spend(4 * sizeof(BandTable::Stretch));
      bands_.push_back({row_, row_, band});
    }
  }

  std::string Told(std::string_view attribute) const { return reader_.Decoded(attribute); }

  enum class Kind { Number, Shared, Inline, String, Boolean, Error, Date };
  static Kind KindOf(std::string_view type) {
    if (type == "s") return Kind::Shared;
    if (type == "str") return Kind::String;
    if (type == "b") return Kind::Boolean;
    if (type == "e") return Kind::Error;
    if (type == "inlineStr") return Kind::Inline;
    if (type == "d") return Kind::Date;
    return Kind::Number;
  }

  struct FormulaTag {
    bool isThere = false;
    std::string type;
    std::string area;
    std::optional<std::int64_t> shared;
    std::string text;
    std::string xml;  // of a data table
  };

  void ReadCell() {
    CellPos at{row_, column_ + 1};
    Kind kind = Kind::Number;
    std::int64_t xf = 0;
    std::string kept;
    for (const XmlReader::Attribute& attribute : reader_.attributes()) {
      if (attribute.name == "r") {
        const auto told = CellOf(attribute.raw);
        if (!told || told->row != row_) {
          reader_.Fail("has a cell " + Told("r") + " in row " + std::to_string(row_) + ", where it cannot be");
        }
        at = *told;
      } else if (attribute.name == "s") {
        xf = WholeOf(attribute.raw).value_or(-1);
      } else if (attribute.name == "t") {
        kind = KindOf(attribute.raw);
      } else {
        kept.append(" ").append(attribute.name).append("=\"").append(attribute.raw).append("\"");
      }
    }
    if (at.column > kMaxColumn)
      reader_.Fail("has more cells in row " + std::to_string(row_) + " than the grid has columns");
    column_ = at.column;
    const FormatId format = OwnFormat(at.column, reading_.FormatOfXf(xf, reader_));

    FormulaTag formula;
    Value value;
    bool hasValue = false;
    const std::size_t outside = reader_.depth() - 1;
    for (;;) {
      const XmlReader::Event event = reader_.Next();
      if (event == XmlReader::Event::End && reader_.depth() == outside) break;
      if (event != XmlReader::Event::Start) continue;
      if (reader_.IsMain("v")) {
        text_.clear();
        while (reader_.Next() != XmlReader::Event::End) {
          if (reader_.depth() != outside + 2) reader_.Fail("has a cell whose value is no text");
          text_ += reader_.text();
        }
        hasValue = !text_.empty() || kind == Kind::String;
        if (hasValue) value = ValueOf(kind, at);
      } else if (reader_.IsMain("f")) {
        ReadFormulaTag(formula);
      } else if (reader_.IsMain("is")) {
        value = ReadInline();
        hasValue = true;
      } else {
        reader_.Skip();
      }
    }
    Store(at, format, formula, std::move(value), hasValue);
    if (!kept.empty() && cells_.ValueAt(at).isEmpty() && cells_.FormulaAt(at) == nullptr && format == 0) kept.clear();
    if (!kept.empty()) Keep(at, std::move(kept));
  }

  void Store(CellPos at, FormatId format, const FormulaTag& formula, Value value, bool hasValue) {
    SpendChunk(at);
    if (formula.isThere) {
      StoreFormula(at, formula, value, hasValue);
      if (hasValue) cells_.StoreResult(at, std::move(value));
    } else if (hasValue) {
      const FormulaCell* inArray = cells_.hasArrays() ? cells_.FormulaAt(at) : nullptr;
      if (inArray != nullptr && inArray->arrayArea) {
        cells_.StoreResult(at, std::move(value));
      } else {
        cells_.SetValue(at, std::move(value));
      }
    }
    if (format != 0) cells_.SetFormat(at, format);
  }

  // What lies below a cell's own format is not stored again.
  FormatId OwnFormat(int column, FormatId told) const {
    FormatId below = rowFormat_;
    if (below == 0 && !columnFormats_.empty()) below = columnFormats_[static_cast<std::size_t>(column)];
    if (told == kDefaultFormat) return below == 0 || below == kPlainFormat ? 0 : kPlainFormat;
    return told == below ? 0 : told;
  }

  void SpendChunk(CellPos at) {
    const auto column = static_cast<std::size_t>(at.column);
    if (lastChunk_.size() <= column) lastChunk_.resize(column + 1, -1);
    const int chunk = CellColumn::ChunkOf(at.row);
    if (std::exchange(lastChunk_[column], chunk) != chunk)
      reading_.budget.Spend(sizeof(CellChunk) + sizeof(CellColumn::Slot));
  }

  Value ValueOf(Kind kind, CellPos at) {
    switch (kind) {
      case Kind::Shared: {
        const auto number = WholeOf(text_);
        const auto& strings = reading_.data.strings;
        if (!number || *number < 0 || *number >= static_cast<std::int64_t>(strings.size())) {
          reader_.Fail("has the shared text " + text_.substr(0, 20) + " in cell " + xlsx::TextOf(Rect::Cell(at)) +
                       ", but the file has " + std::to_string(strings.size()));
        }
        return strings[static_cast<std::size_t>(*number)];
      }
      case Kind::Boolean:
        return IsTrue(text_);
      case Kind::Error:
        return ErrorOf(text_).value_or(ErrorCode::Value);
      case Kind::Date:
        if (const auto serial = SerialOfIso(text_, reading_.book.date1904)) return *serial;
        return std::string_view(text_);
      case Kind::String:
      case Kind::Inline:
        reading_.budget.Spend(text_.size());
        return std::string_view(text_ = WithoutEscapes(std::move(text_)));
      case Kind::Number:
        break;
    }
    if (const auto number = NumberOf(text_)) return *number;
    reader_.Fail("has \"" + text_.substr(0, 40) + "\" for a number in cell " + xlsx::TextOf(Rect::Cell(at)));
  }

  Value ReadInline() {
    std::string xml;
    reader_.BeginCapture(xml);
    bool isPlain = true;
    const Text text(ReadStringItem(reader_, isPlain));
    reader_.EndCapture();
    reading_.budget.Spend(text.view().size() + (isPlain ? 0 : xml.size()));
    if (!isPlain && !text.empty()) {
      // Written again, it is a shared text: the same content under another name.
      const std::size_t open = xml.find('>');
      const std::size_t close = xml.rfind('<');
      reading_.data.inlineRich.emplace_back(text, "<si>" + xml.substr(open + 1, close - open - 1) + "</si>");
    }
    return text;
  }

  void ReadFormulaTag(FormulaTag& formula) {
    formula.isThere = true;
    for (const XmlReader::Attribute& attribute : reader_.attributes()) {
      if (attribute.name == "t") formula.type = attribute.raw;
      if (attribute.name == "ref") formula.area = attribute.raw;
      if (attribute.name == "si") formula.shared = WholeOf(attribute.raw);
    }
    if (formula.type == "dataTable") {
      formula.xml = reader_.SkipAndCapture();
    } else {
      formula.text = WithoutEscapes(reader_.ReadText());
    }
  }

  ExpressionPtr Parse(CellPos at, const std::string& text) {
    ExpressionPtr formula = ParseFileFormula(text, {reading_.sheet.id(), at}, reading_.book);
    if (formula == nullptr) return nullptr;
    // A column of equal formulas shares one tree.
    const auto column = static_cast<std::size_t>(at.column);
    if (above_.size() <= column) above_.resize(column + 1);
    if (above_[column] != nullptr && *above_[column] == *formula) return above_[column];
    reading_.budget.Spend(CostOf(formula));
    return above_[column] = formula;
  }

  void StoreFormula(CellPos at, const FormulaTag& tag, const Value& value, bool hasValue) {
    reading_.budget.Spend(kFormulaCost);
    if (tag.type == "dataTable") {
      reading_.budget.Spend(kSharedCost + tag.xml.size());
      cells_.SetFormula(at, {ConstantFormula(value), std::nullopt, false, Text(tag.xml)});
      return;
    }
    ExpressionPtr formula;
    std::string text = tag.text;
    if (tag.type == "shared" && tag.shared) {
      if (!text.empty()) {
        reading_.budget.Spend(kSharedCost + text.size());
        shared_[*tag.shared] = {Parse(at, text), text, at};
      }
      const auto shared = shared_.find(*tag.shared);
      if (shared == shared_.end()) return;  // the value alone counts
      formula = shared->second.formula;
      if (formula == nullptr && text.empty()) text = ShiftFileFormula(shared->second.text, shared->second.at, at);
    } else if (!text.empty()) {
      formula = Parse(at, text);
    }
    if (formula == nullptr && text.empty()) return;  // the value alone counts
    const bool dirty = !hasValue;
    if (formula == nullptr) {
      // One that cannot be read stays what it is, and what it gave last.
      reading_.budget.Spend(kSharedCost + text.size());
      cells_.SetFormula(at, {ConstantFormula(value), std::nullopt, false, Text("=" + text)});
      return;
    }
    if (tag.type != "array") {
      cells_.SetFormula(at, {std::move(formula), std::nullopt, dirty});
      return;
    }
    const auto area = RectOf(tag.area.empty() ? xlsx::TextOf(Rect::Cell(at)) : tag.area);
    if (!area || area->topLeft() != at || area->cells() > kMostArrayCells) {
      reader_.Fail("has an array formula in " + xlsx::TextOf(Rect::Cell(at)) + " over the impossible area " + tag.area);
    }
    if (cells_.hasArrays() && cells_.CutsArray(*area)) {
      reader_.Fail("has array formulas that overlap in " + tag.area);
    }
    reading_.budget.Spend(static_cast<std::uint64_t>(area->cells()) * (sizeof(FormulaCell) + sizeof(Value)));
    for (int column = area->left; column <= area->right; ++column) {
      for (int row = area->top; row <= area->bottom; ++row) {
        SpendChunk({row, column});
        const bool isAnchor = row == at.row && column == at.column;
        cells_.SetFormula({row, column}, {isAnchor ? formula : nullptr, area, dirty});
      }
    }
  }

  void Keep(CellPos at, std::string attributes) {
    KeptItem item;
    item.kind = KeptItem::Kind::CellAttributes;
    item.text = std::move(attributes);
    item.ranges = {Rect::Cell(at)};
    reading_.Attach(std::move(item), Attachment::Hold::Cells);
  }

  struct Shared {
    ExpressionPtr formula;
    std::string text;
    CellPos at;
  };

  XmlReader& reader_;
  SheetReading& reading_;
  CellStore& cells_;
  int row_ = 0;
  int column_ = 0;
  FormatId rowFormat_ = 0;
  std::vector<FormatId> columnFormats_;  // by column; empty when none has a format
  std::vector<BandTable::Stretch> bands_;
  std::vector<int> lastChunk_;  // by column
  std::vector<ExpressionPtr> above_;
  std::unordered_map<std::int64_t, Shared> shared_;
  std::string text_;
};

}  // namespace

void ReadSheetData(XmlReader& reader, SheetReading& reading) {
  SheetDataReader(reader, reading).Read();
}

}  // namespace tolvane::engine::xlsx
