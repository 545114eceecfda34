#include "engine/xlsx/Fingerprint.h"

#include <bit>
#include <cstring>
#include <string_view>

namespace tolvane::engine::xlsx {

namespace {

class Mixer {
 public:
  explicit Mixer(const Workbook& book) : book_(book) {}

  void Add(std::uint64_t value) {
    state_ = (std::rotl(state_, 27) ^ value) * 0x9E3779B97F4A7C15u;
    state_ ^= state_ >> 32;
  }
  void Add(int value) { Add(static_cast<std::uint64_t>(static_cast<std::uint32_t>(value))); }
  void Add(double value) { Add(std::bit_cast<std::uint64_t>(value)); }
  void Add(std::string_view text) {
    Add(static_cast<std::uint64_t>(text.size()));
    for (; text.size() >= 8; text.remove_prefix(8)) {
      std::uint64_t word = 0;
      std::memcpy(&word, text.data(), 8);
      Add(word);
    }
    std::uint64_t rest = 0;
    if (!text.empty()) std::memcpy(&rest, text.data(), text.size());
    Add(rest);
  }
  void Add(const Rect& area) {
    Add(static_cast<std::uint64_t>(area.top) << 32 | static_cast<std::uint32_t>(area.bottom));
    Add(static_cast<std::uint64_t>(area.left) << 32 | static_cast<std::uint32_t>(area.right));
  }
  void Add(const std::vector<Rect>& areas) {
    Add(static_cast<std::uint64_t>(areas.size()));
    for (const Rect& area : areas) Add(area);
  }
  void Add(const Value& value) {
    Add(static_cast<std::uint64_t>(value.kind()));
    switch (value.kind()) {
      case Value::Kind::Empty:
        break;
      case Value::Kind::Boolean:
        Add(static_cast<std::uint64_t>(value.boolean()));
        break;
      case Value::Kind::Number:
        Add(value.number());
        break;
      case Value::Kind::Text:
        Add(value.text().view());
        break;
      case Value::Kind::Error:
        Add(static_cast<std::uint64_t>(value.error()));
        break;
    }
  }
  void Add(const ExpressionPtr& expression) {
    // A filled column holds one expression.
    if (expression != lastExpression_) {
      lastExpression_ = expression;
      lastHash_ = HashOf(expression);
    }
    Add(lastHash_);
  }

  std::uint64_t value() const { return state_; }

 private:
  // Sheets go by their names, since that is how they are written.
  void AddSheet(SheetId id) {
    const Sheet* sheet = id == kOwnSheet ? nullptr : book_.FindSheet(id);
    Add(sheet == nullptr ? std::string_view() : std::string_view(sheet->name()));
  }

  void Add(const Reference& reference) {
    Add(static_cast<std::uint64_t>(reference.shape));
    AddSheet(reference.sheet);
    AddSheet(reference.lastSheet);
    for (const Coordinate* at :
         {&reference.firstRow, &reference.lastRow, &reference.firstColumn, &reference.lastColumn}) {
      Add(static_cast<std::uint64_t>(static_cast<std::uint32_t>(at->value)) << 1 |
          static_cast<std::uint64_t>(at->relative));
    }
  }

  std::uint64_t HashOf(const ExpressionPtr& expression) const {
    Mixer mixer(book_);
    if (expression == nullptr) return mixer.value();
    for (const Node& node : expression->nodes) {
      mixer.Add(static_cast<std::uint64_t>(node.kind) << 48 | static_cast<std::uint64_t>(node.op) << 32 |
                node.spacesBefore);
      mixer.Add(std::uint64_t{node.index} << 32 | node.firstChild);
    }
    for (const std::uint32_t child : expression->children) mixer.Add(std::uint64_t{child});
    mixer.Add(std::uint64_t{expression->root});
    for (const Value& constant : expression->constants) mixer.Add(constant);
    for (const Reference& reference : expression->references) mixer.Add(reference);
    for (const ExternalReference& external : expression->externals) {
      mixer.Add(std::string_view(external.book));
      mixer.Add(std::string_view(external.sheet));
      mixer.Add(std::string_view(external.name));
      mixer.Add(external.reference);
    }
    for (const NameUse& name : expression->names) {
      mixer.AddSheet(name.sheet);
      mixer.Add(std::string_view(name.name));
    }
    for (const ArrayConstant& array : expression->arrays) {
      mixer.Add(array.rows);
      mixer.Add(array.columns);
      for (const Value& value : array.values) mixer.Add(value);
    }
    return mixer.value();
  }

  const Workbook& book_;
  std::uint64_t state_ = 0x243F6A8885A308D3u;
  ExpressionPtr lastExpression_;
  std::uint64_t lastHash_ = 0;
};

void AddFlag(Mixer& mixer, bool flag) {
  mixer.Add(static_cast<std::uint64_t>(flag));
}

void AddText(Mixer& mixer, const std::string& text) {
  mixer.Add(std::string_view(text));
}

void AddCells(Mixer& mixer, const Sheet& sheet) {
  sheet.cells().ForEachCell(
      Rect::WholeSheet(), [&](CellPos at, const Value& value, const FormulaCell* formula, FormatId format) {
        mixer.Add(static_cast<std::uint64_t>(at.row) << 32 | static_cast<std::uint32_t>(at.column));
        mixer.Add(std::uint64_t{format} << 1 | static_cast<std::uint64_t>(formula != nullptr));
        mixer.Add(value);
        if (formula == nullptr) return;
        mixer.Add(formula->expression);
        mixer.Add(formula->rawText.view());
        mixer.Add(formula->arrayArea.value_or(Rect{}));
      });
}

void AddBands(Mixer& mixer, const BandTable& bands) {
  for (const BandTable::Stretch& stretch : bands.stretches()) {
    const Band& band = stretch.band;
    mixer.Add(static_cast<std::uint64_t>(stretch.first) << 32 | static_cast<std::uint32_t>(stretch.last));
    mixer.Add(band.size.value_or(-1));
    mixer.Add(std::uint64_t{band.format} << 32 | band.kept);
    mixer.Add(std::uint64_t{band.outline} << 2 | static_cast<std::uint64_t>(band.hidden) << 1 |
              static_cast<std::uint64_t>(band.filtered));
  }
  mixer.Add(static_cast<std::uint64_t>(bands.stretches().size()));
}

void AddView(Mixer& mixer, const SheetView& view) {
  mixer.Add(view.selection);
  mixer.Add(Rect::Cell(view.activeCell));
  for (const int number : {view.scrollRow, view.scrollColumn, view.freeze.rows, view.freeze.columns, view.zoom})
    mixer.Add(number);
  AddFlag(mixer, view.gridlines);
}

void AddProtection(Mixer& mixer, const SheetProtection& protection) {
  const SheetProtection& p = protection;
  for (const bool flag : {p.isProtected, p.objects, p.scenarios, p.formatCells, p.formatColumns, p.formatRows,
                          p.insertColumns, p.insertRows, p.insertHyperlinks, p.deleteColumns, p.deleteRows, p.sort,
                          p.filter, p.pivotTables, p.selectLocked, p.selectUnlocked}) {
    AddFlag(mixer, flag);
  }
}

void AddFilter(Mixer& mixer, const std::optional<AutoFilter>& filter) {
  AddFlag(mixer, filter.has_value());
  if (!filter) return;
  mixer.Add(filter->range);
  for (const FilterCriteria& criteria : filter->criteria) {
    mixer.Add(criteria.field);
    mixer.Add(static_cast<std::uint64_t>(criteria.join));
    AddText(mixer, criteria.criterion1);
    AddFlag(mixer, criteria.criterion2.has_value());
    AddText(mixer, criteria.criterion2.value_or(std::string()));
    for (const std::string& value : criteria.values) AddText(mixer, value);
  }
}

void AddValidations(Mixer& mixer, const std::vector<Validation>& validations) {
  mixer.Add(static_cast<std::uint64_t>(validations.size()));
  for (const Validation& rule : validations) {
    mixer.Add(rule.ranges);
    mixer.Add(static_cast<std::uint64_t>(rule.kind) << 16 | static_cast<std::uint64_t>(rule.alert) << 8 |
              rule.comparison);
    mixer.Add(rule.formula1);
    mixer.Add(rule.formula2);
    for (const bool flag : {rule.ignoreBlank, rule.inCellDropdown, rule.showInput, rule.showError})
      AddFlag(mixer, flag);
    for (const std::string* text : {&rule.inputTitle, &rule.inputMessage, &rule.errorTitle, &rule.errorMessage}) {
      AddText(mixer, *text);
    }
  }
}

void AddNames(Mixer& mixer, const NameTable& names) {
  for (const auto& [folded, name] : names.byFoldedName()) {
    AddText(mixer, name.name);
    mixer.Add(name.refersTo);
    AddFlag(mixer, name.hidden);
  }
  mixer.Add(static_cast<std::uint64_t>(names.byFoldedName().size()));
}

}  // namespace

std::uint64_t SheetFingerprint(const Sheet& sheet) {
  Mixer mixer(sheet.book());
  AddCells(mixer, sheet);
  AddBands(mixer, sheet.rows);
  AddBands(mixer, sheet.columns);
  AddText(mixer, sheet.codeName);
  AddFlag(mixer, sheet.tabColour.has_value());
  mixer.Add(std::uint64_t{sheet.tabColour.value_or(0)});
  AddView(mixer, sheet.view);
  AddProtection(mixer, sheet.protection);
  AddFlag(mixer, sheet.page.landscape);
  mixer.Add(static_cast<std::uint64_t>(sheet.page.fitWide));
  mixer.Add(static_cast<std::uint64_t>(sheet.page.fitTall));
  AddFilter(mixer, sheet.autoFilter);
  mixer.Add(sheet.merges);
  AddValidations(mixer, sheet.validations);
  for (const Hyperlink& link : sheet.hyperlinks) {
    mixer.Add(link.range);
    for (const std::string* text : {&link.address, &link.subAddress, &link.screenTip}) AddText(mixer, *text);
  }
  for (const Attachment& attachment : sheet.attachments) {
    mixer.Add(std::uint64_t{attachment.key});
    mixer.Add(attachment.ranges);
    for (const ExpressionPtr& formula : attachment.formulas) mixer.Add(formula);
  }
  mixer.Add(sheet.defaultRowHeight);
  mixer.Add(sheet.defaultColumnWidth);
  return mixer.value();
}

std::uint64_t WorkbookFingerprint(const Workbook& book) {
  Mixer mixer(book);
  AddNames(mixer, book.names);
  AddFlag(mixer, book.structureProtected);
  AddFlag(mixer, book.date1904);
  AddText(mixer, book.codeName);
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    const Sheet& sheet = book.sheetAt(i);
    mixer.Add(std::uint64_t{sheet.id()});
    AddText(mixer, sheet.name());
    AddText(mixer, sheet.codeName);
    mixer.Add(static_cast<std::uint64_t>(sheet.visibility));
    AddNames(mixer, sheet.names);
    mixer.Add(sheet.printAreas);
    AddProtection(mixer, sheet.protection);
    mixer.Add(sheet.autoFilter ? sheet.autoFilter->range : Rect{});
  }
  return mixer.value();
}

}  // namespace tolvane::engine::xlsx
