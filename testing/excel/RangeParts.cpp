#include "testing/excel/RangeParts.h"

#include "src/host/Errors.h"
#include "testing/excel/Property.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

std::span<const FontObject::Member> FontObject::Members() {
  static constexpr Member kMembers[] = {
      {"Bold", Property<&host::Font::Bold, &host::Font::SetBold>},
      {"Italic", Property<&host::Font::Italic, &host::Font::SetItalic>},
  };
  return kMembers;
}

std::span<const InteriorObject::Member> InteriorObject::Members() {
  static constexpr Member kMembers[] = {
      {"ColorIndex", Property<&host::Interior::ColorIndex, &host::Interior::SetColorIndex>},
  };
  return kMembers;
}

std::span<const BorderObject::Member> BorderObject::Members() {
  static constexpr Member kMembers[] = {
      {"LineStyle", Property<&host::Border::LineStyle, &host::Border::SetLineStyle>},
      {"ColorIndex", Property<&host::Border::ColorIndex, &host::Border::SetColorIndex>},
  };
  return kMembers;
}

std::span<const BordersObject::Member> BordersObject::Members() {
  static constexpr Member kMembers[] = {
      {"Item",
       [](BordersObject& b, const Call& call) {
         return New<BorderObject>(b.world(), b.handle.Borders(static_cast<host::BorderIndex>(call.At(0).AsInt())));
       }},
  };
  return kMembers;
}

// --- validation
// ----------------------------------------------------------------------------------------------------------

host::ValidationRule ValidationObject::Rule() const {
  const std::optional<host::ValidationRule> rule = handle.Rule();
  if (rule) return *rule;
  throw host::HostError(host::ErrorNumber::ApplicationDefined, "Application-defined or object-defined error");
}

// Excel has one property for each; the port a rule as a whole.
template <auto Field>
Variant ValidationObject::Setting(ValidationObject& validation, const Call& call) {
  host::ValidationRule rule = validation.Rule();
  if (!call.isPut()) return VariantOf(rule.*Field);
  using Value = std::remove_cvref_t<decltype(rule.*Field)>;
  if constexpr (std::is_same_v<Value, std::string>) {
    rule.*Field = call.value().AsText();
  } else {
    rule.*Field = ValueOf<Value>(call.value());
  }
  validation.handle.Delete();
  validation.handle.Add(rule);
  return {};
}

std::span<const ValidationObject::Member> ValidationObject::Members() {
  using host::ValidationRule;
  static constexpr Member kMembers[] = {
      {"Type",
       [](ValidationObject& v, const Call&) {
         constexpr int kList = 3;
         v.Rule();
         return Variant(kList);
       }},
      {"Add",
       [](ValidationObject& v, const Call& call) {
         ValidationRule rule;
         rule.alert = static_cast<host::AlertStyle>(call.Int(1, static_cast<int>(host::AlertStyle::Stop)));
         rule.source = call.Text(3);
         v.handle.Add(rule);
         return Variant();
       }},
      {"Delete", Calls<&host::Validation::Delete>},
      {"AlertStyle", Setting<&ValidationRule::alert>},
      {"Formula1", Setting<&ValidationRule::source>},
      {"IgnoreBlank", Setting<&ValidationRule::ignoreBlank>},
      {"InCellDropdown", Setting<&ValidationRule::inCellDropdown>},
      {"ShowInput", Setting<&ValidationRule::showInput>},
      {"ShowError", Setting<&ValidationRule::showError>},
      {"InputTitle", Setting<&ValidationRule::inputTitle>},
      {"InputMessage", Setting<&ValidationRule::inputMessage>},
      {"ErrorTitle", Setting<&ValidationRule::errorTitle>},
      {"ErrorMessage", Setting<&ValidationRule::errorMessage>},
  };
  return kMembers;
}

// --- links
// ---------------------------------------------------------------------------------------------------------------

namespace {

class HyperlinkObject final : public ObjectOf<HyperlinkObject> {
 public:
  HyperlinkObject(std::shared_ptr<World> world, host::HyperlinkTarget target)
      : ObjectOf(std::move(world)), target_(std::move(target)) {}
  static std::span<const Member> Members() {
    static constexpr Member kMembers[] = {
        {"Address", [](HyperlinkObject& h, const Call&) { return Variant(h.target_.address); }},
        {"SubAddress", [](HyperlinkObject& h, const Call&) { return Variant(h.target_.subAddress); }},
        {"ScreenTip", [](HyperlinkObject& h, const Call&) { return Variant(h.target_.screenTip); }},
    };
    return kMembers;
  }

 private:
  const host::HyperlinkTarget target_;
};

}  // namespace

std::vector<Variant> HyperlinksObject::Items() const {
  std::vector<Variant> items;
  for (const host::HyperlinkTarget& target : handle.Items()) items.push_back(New<HyperlinkObject>(world(), target));
  return items;
}

std::span<const HyperlinksObject::Member> HyperlinksObject::Members() {
  static constexpr Member kMembers[] = {
      {"Count", [](HyperlinksObject& h, const Call&) { return Variant(static_cast<int>(h.Items().size())); }},
      {"_NewEnum", [](HyperlinksObject& h, const Call&) { return Enumerator(h.Items()); }},
      {"Add",
       [](HyperlinksObject& h, const Call& call) {
         // The anchor is the range whose links these are.
         const auto text = call.Has(4) ? std::optional(call.Text(4)) : std::nullopt;
         h.handle.Add({call.Text(1), call.Text(2), call.Text(3)}, text);
         return Variant();
       }},
      {"Delete", Calls<&host::Hyperlinks::Delete>},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
