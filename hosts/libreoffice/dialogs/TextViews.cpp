#include "hosts/libreoffice/dialogs/TextViews.h"

#include <algorithm>
#include <com/sun/star/awt/LineEndFormat.hpp>
#include <com/sun/star/awt/XFixedHyperlink.hpp>
#include <com/sun/star/awt/XLayoutConstrains.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/style/VerticalAlignment.hpp>
#include <string>

#include "hosts/libreoffice/dialogs/ControlEars.h"
#include "hosts/libreoffice/dialogs/FormDialog.h"
#include "hosts/libreoffice/dialogs/Notation.h"

namespace tolvane::libreoffice {

namespace {

// In characters and lines, where the form does not say.
constexpr int kLongestLine = 80;
constexpr int kTextWidth = 24, kTextLines = 4;
constexpr int kReportWidth = 60, kReportLines = 12;
constexpr Extent kEditFrame{12, 11};
constexpr Extent kScrolledFrame{30, 4};

// Positions in a text of the office, in its units, and in bytes of the same text in UTF-8.
std::size_t ToBytes(const OUString& text, sal_Int32 position) {
  return ToUtf8(text.copy(0, std::clamp<sal_Int32>(position, 0, text.getLength()))).size();
}
sal_Int32 FromBytes(const std::string& text, std::size_t position) {
  return ToUno(std::string_view(text).substr(0, position)).getLength();
}

}  // namespace

// --- labels
// --------------------------------------------------------------------------------------------------------------------

const char* LabelView::Service() const {
  return isLink_ ? "UnoControlFixedHyperlink" : "UnoControlFixedText";
}

void LabelView::Furnish() {
  if (!isLink_) model()->setPropertyValue("MultiLine", Any(true));
}

void LabelView::Listen() {
  if (isLink_) Native<css::awt::XFixedHyperlink>()->addActionListener(ears().get());
}

void LabelView::Show() {
  SetOther("Label", ToLabel(label_.Caption()));
}

// A long text is broken into lines.
Need LabelView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  Extent least = Preferred();
  const int widest = (cell.width > 0 ? cell.width : kLongestLine) * measures.character;
  if (!isLink_ && least.width > widest) {
    const auto size =
        As<css::awt::XLayoutConstrains>(native()->getPeer())->calcAdjustedSize(css::awt::Size(widest, least.height));
    least = {widest, size.Height};
  }
  if (cell.width > 0) least.width = std::max(least.width, widest);
  least.height = std::max({least.height, measures.line, cell.lines * measures.line});
  return {.role = Need::Role::Label, .least = {least.width + 1, least.height}};
}

void LabelView::ActionPerformed() {
  dialog_.Report(*this, [this] { label_.UserClick(); });
}

// --- boxes to type into
// --------------------------------------------------------------------------------------------------------

void TextView::Furnish() {
  model()->setPropertyValue("MultiLine", Any(box_.MultiLine()));
  model()->setPropertyValue("VScroll", Any(box_.MultiLine()));
  model()->setPropertyValue("LineEndFormat", Any(sal_Int16{css::awt::LineEndFormat::LINE_FEED}));
}

void TextView::Listen() {
  Native<css::awt::XTextComponent>()->addTextListener(ears().get());
}

TextView::Marked TextView::NativeMark() const {
  const auto text = Native<css::awt::XTextComponent>();
  const auto mark = text->getSelection();
  const OUString content = text->getText();
  const std::size_t start = ToBytes(content, std::min(mark.Min, mark.Max));
  return {start, ToBytes(content, std::max(mark.Min, mark.Max)) - start};
}

void TextView::Show() {
  SetOther<bool>("MultiLine", box_.MultiLine());
  SetOther<bool>("VScroll", box_.MultiLine());
  SetOther<bool>("ReadOnly", box_.Locked());
  ShowBackColour(box_.BackColour(), host::Colour::Kind::Window);
  const auto text = Native<css::awt::XTextComponent>();
  if (ToUtf8(text->getText()) != box_.Text()) text->setText(ToUno(box_.Text()));
  if (NativeMark() == Marked{box_.SelectionStart(), box_.SelectionLength()}) return;
  const sal_Int32 start = FromBytes(box_.Text(), box_.SelectionStart());
  const sal_Int32 end = FromBytes(box_.Text(), box_.SelectionStart() + box_.SelectionLength());
  text->setSelection(css::awt::Selection(start, end));
}

Need TextView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  const bool isHigh = box_.MultiLine();
  const Extent frame = isHigh ? kScrolledFrame : kEditFrame;
  const Extent natural{kTextWidth * measures.character + frame.width,
                       isHigh ? kTextLines * measures.line + frame.height : measures.lineControl};
  return {.least = Sized(cell, natural, frame), .fillsWidth = isHigh || cell.width == 0, .fillsHeight = isHigh};
}

// The office does not tell of the cursor; where it stands may matter to what is told next.
void TextView::CatchUp(bool) {
  const Marked mark = NativeMark();
  if (box_.form().Focus() != &box_ || !box_.Usable()) return;
  if (ToUtf8(Native<css::awt::XTextComponent>()->getText()) != box_.Text()) return;
  if (mark == Marked{box_.SelectionStart(), box_.SelectionLength()}) return;
  box_.UserSelect(mark.start, mark.length);
}

void TextView::TextChanged() {
  const std::string typed = ToUtf8(Native<css::awt::XTextComponent>()->getText());
  const Marked mark = NativeMark();
  dialog_.Report(*this, [this, typed, mark] {
    box_.UserType(typed);
    // What is typed within a text leaves the cursor there, unless the form had it put elsewhere.
    const bool isAsTyped = box_.Text() == typed && box_.SelectionStart() == typed.size() && box_.SelectionLength() == 0;
    if (isAsTyped && box_.form().IsShown() && box_.form().Focus() == &box_) box_.UserSelect(mark.start, mark.length);
  });
}

void TextView::KeyPressed(const css::awt::KeyEvent& event) {
  const auto key = ToKey(event);
  if (!key || dialog_.IsFormKey(*key)) return;
  // A key that types is told by the text that it gives.
  if (*key == host::Key::Space || *key == host::Key::Enter || (event.KeyChar > ' ' && event.KeyChar != 0x7F)) return;
  dialog_.Report(*this, [this, key] { box_.UserPressKey(*key); });
}

// --- boxes to read
// -------------------------------------------------------------------------------------------------------------

void ReportView::Furnish() {
  model()->setPropertyValue("MultiLine", Any(true));
  model()->setPropertyValue("VScroll", Any(true));
  model()->setPropertyValue("ReadOnly", Any(true));
  model()->setPropertyValue("LineEndFormat", Any(sal_Int16{css::awt::LineEndFormat::LINE_FEED}));
}

void ReportView::Show() {
  const auto text = Native<css::awt::XTextComponent>();
  if (ToUtf8(text->getText()) != box_.Text()) text->setText(ToUno(box_.Text()));
  ScrollTo(box_.ScrollLine());
}

// The office only brings the cursor into sight: from below, its line comes to stand on top.
void ReportView::ScrollTo(std::size_t line) {
  const std::string& text = box_.Text();
  std::size_t start = 0;
  for (; line > 0; --line) {
    const std::size_t end = text.find('\n', start);
    if (end == std::string::npos) break;
    start = end + 1;
  }
  const auto component = Native<css::awt::XTextComponent>();
  const sal_Int32 last = FromBytes(text, text.size());
  const sal_Int32 position = FromBytes(text, start);
  component->setSelection(css::awt::Selection(last, last));
  component->setSelection(css::awt::Selection(position, position));
}

Need ReportView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  const Extent natural{kReportWidth * measures.character + kScrolledFrame.width,
                       kReportLines * measures.line + kScrolledFrame.height};
  return {.least = Sized(cell, natural, kScrolledFrame), .fillsWidth = true, .fillsHeight = true};
}

// --- patches of colour
// ----------------------------------------------------------------------------------------------------------

void ColourBarView::Furnish() {
  model()->setPropertyValue("Border", Any(sal_Int16{2}));  // a thin line
}

void ColourBarView::Show() {
  ShowBackColour(bar_.BackColour(), host::Colour::Kind::ButtonFace);
}

Need ColourBarView::NeedIn(const host::Layout& cell) {
  const Measures& measures = dialog_.measures();
  return {.least = Sized(cell, {3 * measures.character, measures.line}, {}), .fillsWidth = cell.width == 0};
}

}  // namespace tolvane::libreoffice
