#include "hosts/libreoffice/Hyperlinks.h"

#include <algorithm>
#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextContent.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <com/sun/star/text/XTextFieldsSupplier.hpp>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CellStyles.h"
#include "hosts/libreoffice/CellWriting.h"

namespace tolvane::libreoffice {

namespace {

constexpr std::string_view kLinkStyle = "Hyperlink";
constexpr sal_Int32 kLinkColour = 0x0000FF;

// Calc names a place in a book with a point between sheet and cell.
std::string ToUrlText(const host::HyperlinkTarget& target) {
  if (target.subAddress.empty()) return target.address;
  std::string place = target.subAddress;
  if (const std::size_t mark = place.rfind('!'); mark != std::string::npos) place[mark] = '.';
  return target.address + '#' + place;
}

host::HyperlinkTarget FromUrlText(const std::string& url) {
  host::HyperlinkTarget target;
  const std::size_t hash = url.find('#');
  target.address = url.substr(0, hash);
  if (hash == std::string::npos) return target;
  target.subAddress = url.substr(hash + 1);
  const std::size_t point = target.subAddress.rfind('.');
  if (point == std::string::npos) return target;
  std::string sheet = target.subAddress.substr(0, point);
  if (sheet.starts_with('$')) sheet.erase(0, 1);
  if (!sheet.starts_with('\'')) sheet = QuoteSheetName(sheet);
  target.subAddress = sheet + '!' + target.subAddress.substr(point + 1);
  return target;
}

Reference<css::table::XCell> CellAt(const CalcWorksheet& sheet, const Rect& area) {
  return sheet.object()->getCellByPosition(area.left - 1, area.top - 1);
}

void PutField(CalcWorksheet& sheet, const Rect& area, const host::HyperlinkTarget& target) {
  const auto cell = CellAt(sheet, area);
  if (cell->getType() != css::table::CellContentType_TEXT) return;
  const auto text = As<css::text::XText>(cell);
  const OUString shown = text->getString();
  const auto field = sheet.book().Create("com.sun.star.text.TextField.URL");
  Set(field, "URL", ToUno(ToUrlText(target)));
  Set(field, "Representation", shown);
  text->setString(OUString());
  text->insertTextContent(Reference<css::text::XTextRange>(text->createTextCursor(), UNO_QUERY_THROW),
                          Reference<css::text::XTextContent>(field, UNO_QUERY_THROW), false);
}

// The text stays, its link goes.
void TakeField(CalcWorksheet& sheet, const Rect& area) {
  const auto cell = CellAt(sheet, area);
  if (cell->getType() != css::table::CellContentType_TEXT) return;
  const auto fields = As<css::text::XTextFieldsSupplier>(cell)->getTextFields();
  if (!fields->hasElements()) return;
  const OUString shown = As<css::text::XText>(cell)->getString();
  WriteContents(sheet, {area.top, area.left, area.top, area.left},
                PrepareValues(host::CellBlock(host::CellValue(ToUtf8(shown))), {1, 1, 1, 1}));
}

std::vector<CalcWorksheet::Link> Touching(CalcWorksheet& sheet, const Rect& area) {
  std::erase_if(sheet.links, [](const CalcWorksheet::Link& link) { return !link.place.IsAlive(); });
  std::vector<CalcWorksheet::Link> found;
  for (const CalcWorksheet::Link& link : sheet.links) {
    if (BodyOf(link.place)->first().intersects(area)) found.push_back(link);
  }
  return found;
}

void Forget(CalcWorksheet& sheet, const Rect& area) {
  for (const CalcWorksheet::Link& link : Touching(sheet, area)) TakeField(sheet, BodyOf(link.place)->first());
  std::erase_if(sheet.links,
                [&](const CalcWorksheet::Link& link) { return BodyOf(link.place)->first().intersects(area); });
}

}  // namespace

void AddLink(CalcWorksheet& sheet, const Rect& area, const host::HyperlinkTarget& target,
             const std::optional<std::string>& textToDisplay) {
  AtEdge([&] {
    Forget(sheet, area);
    const host::Range place = sheet.RangeOver({area});
    if (FindStyle(sheet.book(), kLinkStyle)) {
      BodyOf(place)->SetStyle(kLinkStyle);
    } else {
      const auto cells = sheet.Cells(area);
      Set(cells, "CharUnderline", css::awt::FontUnderline::SINGLE);
      Set(cells, "CharColor", kLinkColour);
    }
    if (textToDisplay) {
      WriteContents(sheet, {area.top, area.left, area.top, area.left},
                    PrepareValues(host::CellBlock(host::CellValue(*textToDisplay)), {1, 1, 1, 1}));
    }
    PutField(sheet, area, target);
    sheet.links.push_back({place, target});
  });
}

void DeleteLinks(CalcWorksheet& sheet, const Rect& area) {
  AtEdge([&] {
    const auto found = Touching(sheet, area);
    if (found.empty()) return;
    Forget(sheet, area);
    for (const CalcWorksheet::Link& link : found) {
      const auto body = BodyOf(link.place);
      if (body->Style() == std::string(kLinkStyle)) {
        body->SetStyle("Normal");
      } else {
        const auto cells = sheet.Cells(body->first());
        SetDefault(cells, "CharUnderline");
        SetDefault(cells, "CharColor");
      }
    }
  });
}

std::vector<host::HyperlinkTarget> ReadLinks(CalcWorksheet& sheet, const Rect& area) {
  return AtEdge([&] {
    auto found = Touching(sheet, area);
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
      const Rect left = BodyOf(a.place)->first();
      const Rect right = BodyOf(b.place)->first();
      return std::pair(left.top, left.left) < std::pair(right.top, right.left);
    });
    std::vector<host::HyperlinkTarget> targets;
    for (const CalcWorksheet::Link& link : found) targets.push_back(link.target);
    return targets;
  });
}

void FindLinks(CalcWorksheet& sheet) {
  AtEdge([&] {
    const auto texts = As<css::sheet::XCellRangesQuery>(sheet.object())
                           ->queryContentCells(css::sheet::CellFlags::STRING | css::sheet::CellFlags::EDITATTR);
    for (const auto& address : texts->getRangeAddresses()) {
      const Rect rect = ToRect(address);
      for (int row = rect.top; row <= rect.bottom; ++row) {
        for (int column = rect.left; column <= rect.right; ++column) {
          const Rect place{row, column, row, column};
          const auto fields = As<css::text::XTextFieldsSupplier>(CellAt(sheet, place))->getTextFields();
          if (!fields.is() || !fields->hasElements()) continue;
          const Reference<css::uno::XInterface> field(fields->createEnumeration()->nextElement(), UNO_QUERY_THROW);
          const auto known = Touching(sheet, place);
          if (!known.empty()) continue;
          sheet.links.push_back({sheet.RangeOver({place}), FromUrlText(ToUtf8(Get<OUString>(field, "URL")))});
        }
      }
    }
  });
}

}  // namespace tolvane::libreoffice
