#include "engine/xlsx/Styles.h"

#include "fuzz/Check.h"
#include "fuzz/PartInput.h"
#include "fuzz/Targets.h"

namespace tolvane::fuzz {

using namespace engine;
using namespace engine::xlsx;

namespace {

constexpr std::size_t kMostChanged = 8;

Format Changed(Format format, std::size_t round) {
  if (round % 2 == 0) format.font = {"Other", 9, !format.font.bold, true, true, Underline::Double, 0x123456};
  if (round % 3 == 0) format.fill = {FillPattern::Solid, 0x654321};
  if (round % 3 == 1) format.border[round % 4] = {LineStyle::Thick, 0xABCDEF};
  if (round % 2 == 1) format.numberFormat = "0.0\" & more\"";
  if (round % 5 == 0) format.alignment = {HorizontalAlignment::Right, VerticalAlignment::Top, true, true, 3, -45};
  if (round % 4 == 3) format.protection = {!format.protection.locked, true};
  return format;
}

// What was read is changed, written and read again.
void CheckWriting(FormatTable& formats, const PackageData& data) {
  std::vector<FormatId> wanted;
  for (std::size_t i = 0; i < data.xfs.size() && i < kMostChanged; ++i) {
    CellFormat format = formats.At(data.xfs[i].id);
    format.format = Changed(format.format, i);
    format.direct = kAllFormatGroups;
    wanted.push_back(formats.Intern(format));
  }
  CellFormat own;
  own.kept = static_cast<std::uint32_t>(data.xfs.size()) + 1;
  own.format = Changed(own.format, 0);
  wanted.push_back(formats.Intern(own));
  if (!formats.FindStyle("Our style")) formats.AddStyle({"Our style", kAllFormatGroups, Changed({}, 3)});
  if (!data.styles.empty()) {
    NamedStyle style = formats.StyleAt(data.styles.back().id);
    style.format = Changed(style.format, 5);
    formats.ChangeStyle(data.styles.back().id, style);
  }

  Budget budget(std::size_t{1} << 20);
  StylesWriter writer(formats, data, budget);
  std::vector<std::size_t> records;
  for (const FormatId id : wanted) records.push_back(static_cast<std::size_t>(writer.XfOf(id)));
  const std::string xml = writer.Finish();
  FormatTable again;
  PackageData read;
  read.stylesPath = data.stylesPath;
  ReadStyles(xml, again, read, budget);
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    Check(records[i] < read.xfs.size(), "a format has a record");
    Check(read.xfs[records[i]].asRead.format == formats.At(wanted[i]).format, "a format that was written is read");
  }
  Check(again.FindStyle("Our style").has_value(), "a style that was written is read");
}

}  // namespace

void Styles(std::string_view input) {
  const PartInput part("xl/styles.xml", input);
  FormatTable formats;
  PackageData data;
  data.stylesPath = part.path();
  data.archive = part.archive();
  Budget budget(input.size(), kFuzzBudget);
  try {
    data.colours.ReadTheme(input, budget);
  } catch (const XlsxError&) {
    return;
  }
  try {
    ReadStyles(input, formats, data, budget);
  } catch (const XlsxError&) {
    return;
  }
  CheckWriting(formats, data);
}

}  // namespace tolvane::fuzz
