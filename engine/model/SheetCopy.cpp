// The part of Workbook that copies sheets, within it and from another one.
#include <unordered_map>
#include <utility>

#include "engine/model/ExpressionRewriter.h"
#include "engine/model/ReferenceHolders.h"
#include "engine/model/SheetNames.h"
#include "engine/model/Workbook.h"
#include "platform/Text.h"

namespace tolvane::engine {

namespace {

// Everything of a sheet but what makes it that sheet: its name, code name and place.
void CopyContents(const Sheet& from, Sheet& to) {
  to.visibility = from.visibility;
  to.tabColour = from.tabColour;
  to.names = from.names;
  to.protection = from.protection;
  to.view = from.view;
  to.autoFilter = from.autoFilter;
  to.merges = from.merges;
  to.validations = from.validations;
  to.hyperlinks = from.hyperlinks;
  to.printAreas = from.printAreas;
  to.page = from.page;
  to.rows = from.rows;
  to.columns = from.columns;
  to.defaultRowHeight = from.defaultRowHeight;
  to.defaultColumnWidth = from.defaultColumnWidth;
  to.cells() = from.cells();
}

template <class Edit>
void RewriteSheet(Sheet& sheet, Edit edit) {
  ExpressionRewriter rewriter(edit);
  ForEachExpression(
      sheet, [&](const ExpressionHolder&, ExpressionPtr& expression) { expression = rewriter.Rewrite(expression); });
}

// What pointed at the copied sheet by its number points at the copy.
bool PointAtCopy(Expression& expression, SheetId original, SheetId copy) {
  bool changed = false;
  for (Reference& reference : expression.references) {
    if (reference.isThreeD() || reference.sheet != original) continue;
    reference.sheet = copy;
    reference.lastSheet = kOwnSheet;
    changed = true;
  }
  for (NameUse& name : expression.names.Own()) {
    if (name.sheet != original) continue;
    name.sheet = copy;
    changed = true;
  }
  return changed;
}

// Turns what reaches out of a copied sheet into references to the workbook that it came from.
class Detacher {
 public:
  Detacher(const Workbook& from, SheetId original, const Workbook& to, SheetId copy, const std::string& bookName)
      : from_(from), original_(original), to_(to), copy_(copy), bookName_(bookName) {}

  bool operator()(Expression& expression) const {
    // Numbers of sheets here and there must not be confused: everything is decided by what stood there.
    const std::vector<Reference> references = expression.references;
    const SharedList<NameUse> names = expression.names;
    bool changed = PointAtCopy(expression, original_, copy_);
    for (Node& node : expression.nodes.Own()) {
      if (node.kind == Node::Kind::Reference) {
        changed = DetachReference(references[node.index], expression, node) || changed;
      } else if (node.kind == Node::Kind::Name) {
        changed = DetachName(names[node.index], expression, node) || changed;
      }
    }
    if (changed) DropUnused(expression);
    return changed;
  }

 private:
  std::string SheetName(SheetId id) const {
    const Sheet* sheet = from_.FindSheet(id);
    return sheet == nullptr ? std::string() : sheet->name();
  }

  bool DetachReference(const Reference& reference, Expression& expression, Node& node) const {
    if (reference.sheet == kOwnSheet || (reference.sheet == original_ && !reference.isThreeD())) return false;
    if (reference.shape == Reference::Shape::Broken) {
      expression.references[node.index].sheet = kOwnSheet;
      return true;
    }
    ExternalReference external;
    external.book = bookName_;
    external.sheet = SheetName(reference.sheet);
    // Several sheets of another book are told as First:Last, as they are in a formula.
    if (reference.isThreeD()) external.sheet.append(1, ':').append(SheetName(reference.lastSheet));
    external.reference = reference;
    external.reference.sheet = kOwnSheet;
    external.reference.lastSheet = kOwnSheet;
    Attach(expression, node, std::move(external));
    return true;
  }

  // A name of the book stays a name where this book has one of that name, as Excel's user would answer its question.
  bool DetachName(const NameUse& use, Expression& expression, Node& node) const {
    if (use.sheet == original_) return false;
    if (use.sheet == kOwnSheet) {
      const Sheet* original = from_.FindSheet(original_);
      const bool isOnSheet = original->names.Find(use.name) != nullptr;
      if (isOnSheet || to_.names.Find(use.name) != nullptr || from_.names.Find(use.name) == nullptr) return false;
    }
    ExternalReference external;
    external.book = bookName_;
    if (use.sheet != kOwnSheet) external.sheet = SheetName(use.sheet);
    external.isName = true;
    external.name = use.name;
    Attach(expression, node, std::move(external));
    return true;
  }

  static void Attach(Expression& expression, Node& node, ExternalReference external) {
    expression.externals.push_back(std::move(external));
    node.kind = Node::Kind::ExternalRef;
    node.index = static_cast<std::uint32_t>(expression.externals.size() - 1);
  }

  const Workbook& from_;
  SheetId original_;
  const Workbook& to_;
  SheetId copy_;
  const std::string& bookName_;
};

// Enters another workbook's formats and styles here as they are needed. A style of the same name here is taken to be
// the same; what it looks like there stays with the cells as direct formats.
class FormatMapper {
 public:
  FormatMapper(const FormatTable& from, FormatTable& to) : from_(from), to_(to) {}

  FormatId Map(FormatId id) {
    // Nothing of its own stays that, and the default is the one of this book.
    if (id == kDefaultFormat || id == kPlainFormat) return id;
    const auto [known, isNew] = formats_.try_emplace(id, 0);
    if (!isNew) return known->second;
    CellFormat format = from_.At(id);
    format.style = MapStyle(format.style);
    format.kept = 0;  // that book's file is not this one's
    const NamedStyle& style = to_.StyleAt(format.style);
    format.direct |= static_cast<FormatGroups>(style.includes & GroupsThatDiffer(format.format, style.format));
    const FormatId mapped = to_.Intern(format);
    known->second = mapped == kDefaultFormat ? kPlainFormat : mapped;
    return known->second;
  }

 private:
  StyleId MapStyle(StyleId id) {
    const NamedStyle& style = from_.StyleAt(id);
    if (const auto here = to_.FindStyle(style.name)) return *here;
    return to_.AddStyle(style);
  }

  const FormatTable& from_;
  FormatTable& to_;
  std::unordered_map<FormatId, FormatId> formats_;
};

void MapBands(BandTable& bands, Axis axis, FormatMapper& mapper) {
  bands.Change(1, LimitOf(axis), [&](Band& band) {
    band.format = mapper.Map(band.format);
    band.kept = 0;  // as with formats: it means something in that book's file only
  });
}

}  // namespace

Sheet& Workbook::CopySheet(SheetId id, std::size_t position) {
  const std::string name = NameForCopy(*this, RequireSheet(id).name());
  Sheet& copy = PlaceSheet(name, position);
  CopyContents(*FindSheet(id), copy);
  copy.attachments = FindSheet(id)->attachments;
  RewriteSheet(copy, [&](Expression& expression) { return PointAtCopy(expression, id, copy.id()); });
  TellStructureChanged();
  return copy;
}

Sheet& Workbook::CopySheetFrom(const Workbook& other, SheetId id, std::size_t position,
                               const std::string& otherBookName) {
  if (&other == this) return CopySheet(id, position);
  const Sheet& original = *other.sheets_[other.PositionOf(id)];
  const bool isFree = FindSheet(original.name()) == nullptr;
  Sheet& copy = PlaceSheet(isFree ? original.name() : NameForCopy(*this, original.name()), position);
  CopyContents(original, copy);
  RewriteSheet(copy, Detacher(other, id, *this, copy.id(), otherBookName));
  FormatMapper mapper(other.formats, formats);
  copy.cells_.ChangeOwnFormats(Rect::WholeSheet(), [&](CellPos, FormatId own) { return mapper.Map(own); });
  MapBands(copy.rows, Axis::Rows, mapper);
  MapBands(copy.columns, Axis::Columns, mapper);
  TellStructureChanged();
  return copy;
}

}  // namespace tolvane::engine
