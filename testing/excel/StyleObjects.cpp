#include "testing/excel/StyleObjects.h"

#include <algorithm>
#include <cstdint>

#include "platform/Text.h"
#include "src/host/Errors.h"
#include "testing/excel/Property.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::StyleDefinition;

namespace {

// Red stands in the lowest byte.
std::uint32_t RgbOf(const Variant& colour) {
  const auto bgr = static_cast<std::uint32_t>(colour.AsInt());
  return (bgr & 0xFF) << 16 | (bgr & 0xFF00) | bgr >> 16;
}

template <class Group>
Group& Given(std::optional<Group>& group) {
  return group ? *group : group.emplace();
}

template <auto Group, auto Field, class Self>
Variant SetsGroup(Self& self, const Call& call) {
  const StyleObject* style = nullptr;
  if constexpr (std::is_same_v<Self, StyleObject>) {
    style = &self;
  } else {
    style = self.style.get();
  }
  style->Change([&](StyleDefinition& definition) {
    auto& field = Given(definition.*Group).*Field;
    using Value = std::remove_cvref_t<decltype(field)>;
    if constexpr (std::is_same_v<Value, std::string>) {
      field = call.value().AsText();
    } else if constexpr (std::is_same_v<Value, std::optional<std::uint32_t>>) {
      field = RgbOf(call.value());
    } else {
      field = ValueOf<Value>(call.value());
    }
  });
  return {};
}

// ColorIndex of a style is only ever set to none and to automatic here.
template <auto Group, auto Field, class Self>
Variant SetsNoColour(Self& self, const Call&) {
  self.style->Change([](StyleDefinition& definition) { (Given(definition.*Group).*Field).reset(); });
  return {};
}

template <auto Group>
Variant Includes(StyleObject& style, const Call& call) {
  style.Change([&](StyleDefinition& definition) {
    auto& group = definition.*Group;
    if (!call.value().AsBool()) {
      group.reset();
    } else if (!group) {
      group.emplace();
    }
  });
  return {};
}

class StyleFontObject final : public ObjectOf<StyleFontObject> {
 public:
  explicit StyleFontObject(ComPtr<StyleObject> of) : ObjectOf(of->world()), style(std::move(of)) {}
  static std::span<const Member> Members() {
    using Font = StyleDefinition::FontGroup;
    static constexpr Member kMembers[] = {
        {"Name", SetsGroup<&StyleDefinition::font, &Font::name>},
        {"Size", SetsGroup<&StyleDefinition::font, &Font::size>},
        {"Bold", SetsGroup<&StyleDefinition::font, &Font::bold>},
        {"Italic", SetsGroup<&StyleDefinition::font, &Font::italic>},
        {"Color", SetsGroup<&StyleDefinition::font, &Font::colour>},
        {"ColorIndex", SetsNoColour<&StyleDefinition::font, &Font::colour>},
    };
    return kMembers;
  }

  const ComPtr<StyleObject> style;
};

class StyleInteriorObject final : public ObjectOf<StyleInteriorObject> {
 public:
  explicit StyleInteriorObject(ComPtr<StyleObject> of) : ObjectOf(of->world()), style(std::move(of)) {}
  static std::span<const Member> Members() {
    using Fill = StyleDefinition::FillGroup;
    static constexpr Member kMembers[] = {
        {"Pattern", [](StyleInteriorObject&, const Call&) { return Variant(); }},  // solid is the only one
        {"Color", SetsGroup<&StyleDefinition::fill, &Fill::colour>},
        {"ColorIndex", SetsNoColour<&StyleDefinition::fill, &Fill::colour>},
    };
    return kMembers;
  }

  const ComPtr<StyleObject> style;
};

class StyleBorderObject final : public ObjectOf<StyleBorderObject> {
 public:
  using Side = StyleDefinition::BorderLine StyleDefinition::BorderGroup::*;
  StyleBorderObject(ComPtr<StyleObject> of, Side side) : ObjectOf(of->world()), style_(std::move(of)), side_(side) {}
  static std::span<const Member> Members() {
    static constexpr Member kMembers[] = {
        {"LineStyle",
         [](StyleBorderObject& b, const Call& call) {
           b.Change([&](auto& line) { line.style = static_cast<host::LineStyle>(call.value().AsInt()); });
           return Variant();
         }},
        {"Color",
         [](StyleBorderObject& b, const Call& call) {
           b.Change([&](auto& line) { line.colour = RgbOf(call.value()); });
           return Variant();
         }},
    };
    return kMembers;
  }

 private:
  void Change(const std::function<void(StyleDefinition::BorderLine&)>& change) const {
    style_->Change([&](StyleDefinition& definition) { change(Given(definition.border).*side_); });
  }

  const ComPtr<StyleObject> style_;
  const Side side_;
};

class StyleBordersObject final : public ObjectOf<StyleBordersObject> {
 public:
  explicit StyleBordersObject(ComPtr<StyleObject> of) : ObjectOf(of->world()), style_(std::move(of)) {}
  static std::span<const Member> Members() {
    static constexpr Member kMembers[] = {
        {"Item", [](StyleBordersObject& b,
                    const Call& call) { return New<StyleBorderObject>(b.style_, SideOf(call.At(0).AsInt())); }},
    };
    return kMembers;
  }

 private:
  static StyleBorderObject::Side SideOf(int number) {
    using Border = StyleDefinition::BorderGroup;
    switch (number) {
      case -4131:
        return &Border::left;
      case -4160:
        return &Border::top;
      case -4152:
        return &Border::right;
      case -4107:
        return &Border::bottom;
      default:
        throw host::HostError(host::ErrorNumber::ApplicationDefined, "A style has no border of this number.");
    }
  }

  const ComPtr<StyleObject> style_;
};

template <class Part>
Variant PartOf(StyleObject& style, const Call&) {
  return New<Part>(ComPtr<StyleObject>(&style));
}

}  // namespace

void StyleObject::Change(const std::function<void(StyleDefinition&)>& change) const {
  StyleDefinition& definition = world()->StyleOf(book_, name_);
  change(definition);
  book_.DefineStyle(definition);
}

std::span<const StyleObject::Member> StyleObject::Members() {
  static constexpr Member kMembers[] = {
      {"Name", [](StyleObject& s, const Call&) { return Variant(s.name_); }},
      {"IncludeNumber",
       [](StyleObject& s, const Call& call) {
         s.Change([&](StyleDefinition& definition) {
           definition.numberFormat =
               call.value().AsBool() ? definition.numberFormat.value_or("General") : std::optional<std::string>();
         });
         return Variant();
       }},
      {"NumberFormat",
       [](StyleObject& s, const Call& call) {
         s.Change([&](StyleDefinition& definition) { definition.numberFormat = call.value().AsText(); });
         return Variant();
       }},
      {"IncludeFont", Includes<&StyleDefinition::font>},
      {"Font", PartOf<StyleFontObject>},
      {"IncludeAlignment", Includes<&StyleDefinition::alignment>},
      {"HorizontalAlignment", SetsGroup<&StyleDefinition::alignment, &StyleDefinition::AlignmentGroup::horizontal>},
      {"WrapText", SetsGroup<&StyleDefinition::alignment, &StyleDefinition::AlignmentGroup::wrap>},
      {"IncludeBorder", Includes<&StyleDefinition::border>},
      {"Borders", PartOf<StyleBordersObject>},
      {"IncludePatterns", Includes<&StyleDefinition::fill>},
      {"Interior", PartOf<StyleInteriorObject>},
      {"IncludeProtection", Includes<&StyleDefinition::protection>},
      {"Locked", SetsGroup<&StyleDefinition::protection, &StyleDefinition::ProtectionGroup::locked>},
      {"FormulaHidden", SetsGroup<&StyleDefinition::protection, &StyleDefinition::ProtectionGroup::formulaHidden>},
  };
  return kMembers;
}

std::span<const StylesObject::Member> StylesObject::Members() {
  static constexpr Member kMembers[] = {
      {"Item",
       [](StylesObject& s, const Call& call) {
         const std::string wanted = call.Text(0);
         for (const std::string& name : s.handle.StyleNames()) {
           if (platform::EqualIgnoringCase(name, wanted)) return New<StyleObject>(s.world(), s.handle, name);
         }
         throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
       }},
      {"_NewEnum",
       [](StylesObject& s, const Call&) {
         std::vector<Variant> styles;
         for (const std::string& name : s.handle.StyleNames()) {
           styles.push_back(New<StyleObject>(s.world(), s.handle, name));
         }
         return Enumerator(std::move(styles));
       }},
      {"Add",
       [](StylesObject& s, const Call& call) {
         const auto style = ComPtr<StyleObject>::Adopt(new StyleObject(s.world(), s.handle, call.Text(0)));
         // A new style includes everything, as the style Normal has it.
         style->Change([](StyleDefinition& definition) {
           definition.numberFormat = "General";
           definition.font.emplace();
           definition.alignment.emplace();
           definition.border.emplace();
           definition.fill.emplace();
           definition.protection.emplace();
         });
         return Variant(static_cast<IDispatch*>(style.get()));
       }},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
