#include "hosts/embedded/StyleConversion.h"

#include <string>
#include <utility>

#include "hosts/embedded/Refusal.h"

namespace tolvane::embedded {

namespace {

constexpr std::pair<engine::HorizontalAlignment, int> kAlignments[] = {
    {engine::HorizontalAlignment::General, 1},      {engine::HorizontalAlignment::Left, -4131},
    {engine::HorizontalAlignment::Centre, -4108},   {engine::HorizontalAlignment::Right, -4152},
    {engine::HorizontalAlignment::Fill, 5},         {engine::HorizontalAlignment::Justify, -4130},
    {engine::HorizontalAlignment::CentreAcross, 7}, {engine::HorizontalAlignment::Distributed, -4117},
};

engine::Line ToLine(const host::StyleDefinition::BorderLine& line) {
  if (line.style == host::LineStyle::None) return {};
  return {engine::LineStyle::Thin, line.colour};
}

}  // namespace

host::Alignment ToHost(engine::HorizontalAlignment alignment) {
  for (const auto& [own, number] : kAlignments) {
    if (own == alignment) return static_cast<host::Alignment>(number);
  }
  return host::Alignment::General;
}

engine::HorizontalAlignment ToEngine(host::Alignment alignment) {
  for (const auto& [own, number] : kAlignments) {
    if (number == static_cast<int>(alignment)) return own;
  }
  Refuse("There is no horizontal alignment with the number " + std::to_string(static_cast<int>(alignment)) + ".");
}

host::LineStyle ToHost(engine::LineStyle style) {
  switch (style) {
    case engine::LineStyle::None:
      return host::LineStyle::None;
    case engine::LineStyle::Thin:
    case engine::LineStyle::Medium:
    case engine::LineStyle::Thick:
    case engine::LineStyle::Hair:
      return host::LineStyle::Continuous;
    case engine::LineStyle::Dashed:
    case engine::LineStyle::MediumDashed:
      return static_cast<host::LineStyle>(-4115);
    case engine::LineStyle::Dotted:
      return static_cast<host::LineStyle>(-4118);
    case engine::LineStyle::Double:
      return static_cast<host::LineStyle>(-4119);
    case engine::LineStyle::DashDot:
    case engine::LineStyle::MediumDashDot:
      return static_cast<host::LineStyle>(4);
    case engine::LineStyle::DashDotDot:
    case engine::LineStyle::MediumDashDotDot:
      return static_cast<host::LineStyle>(5);
    case engine::LineStyle::SlantDashDot:
      return static_cast<host::LineStyle>(13);
  }
  return host::LineStyle::None;
}

engine::NamedStyle ToEngine(const host::StyleDefinition& style) {
  if (style.name.empty()) Refuse("A style needs a name.");
  engine::NamedStyle named;
  named.name = style.name;
  named.includes = 0;
  const auto include = [&](engine::FormatGroup group) {
    named.includes = static_cast<engine::FormatGroups>(named.includes | static_cast<engine::FormatGroups>(group));
  };
  engine::Format& format = named.format;
  if (style.numberFormat) {
    include(engine::FormatGroup::Number);
    format.numberFormat = *style.numberFormat;
  }
  if (style.font) {
    include(engine::FormatGroup::Font);
    format.font.name = style.font->name;
    format.font.size = style.font->size;
    format.font.bold = style.font->bold;
    format.font.italic = style.font->italic;
    format.font.colour = style.font->colour;
  }
  if (style.alignment) {
    include(engine::FormatGroup::Alignment);
    format.alignment.horizontal = ToEngine(style.alignment->horizontal);
    format.alignment.wrap = style.alignment->wrap;
  }
  if (style.border) {
    include(engine::FormatGroup::Border);
    format.border[static_cast<std::size_t>(engine::Edge::Left)] = ToLine(style.border->left);
    format.border[static_cast<std::size_t>(engine::Edge::Right)] = ToLine(style.border->right);
    format.border[static_cast<std::size_t>(engine::Edge::Top)] = ToLine(style.border->top);
    format.border[static_cast<std::size_t>(engine::Edge::Bottom)] = ToLine(style.border->bottom);
  }
  if (style.fill) {
    include(engine::FormatGroup::Fill);
    if (style.fill->colour) format.fill = {engine::FillPattern::Solid, style.fill->colour};
  }
  if (style.protection) {
    include(engine::FormatGroup::Protection);
    format.protection.locked = style.protection->locked;
    format.protection.formulaHidden = style.protection->formulaHidden;
  }
  return named;
}

}  // namespace tolvane::embedded
