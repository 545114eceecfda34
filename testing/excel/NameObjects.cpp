#include "testing/excel/NameObjects.h"

#include "src/host/Errors.h"
#include "src/host/Range.h"
#include "testing/excel/Property.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

using host::Name;

std::span<const NameObject::Member> NameObject::Members() {
  static constexpr Member kMembers[] = {
      {"Name", Reads<&Name::NameText>},
      {"RefersTo", Property<&Name::RefersTo, &Name::SetRefersTo>},
      {"RefersToR1C1", Property<&Name::RefersToR1C1, &Name::SetRefersToR1C1>},
      {"RefersToRange", [](NameObject& n, const Call&) { return n.world()->Of(n.handle.RefersToRange()); }},
      {"Visible", Property<&Name::Visible, &Name::SetVisible>},
      {"Delete", Calls<&Name::Delete>},
  };
  return kMembers;
}

Name NamesObject::Find(const std::string& name) const {
  try {
    return handle.Item(name);
  } catch (const host::HostError& error) {
    if (error.number() != host::ErrorNumber::ApplicationDefined || book_.IsNothing()) throw;
    return book_.ActiveSheet().Names().Item(name);
  }
}

std::vector<Variant> NamesObject::All() const {
  std::vector<Variant> all;
  for (const Name& name : handle.All()) all.push_back(world()->Of(name));
  if (book_.IsNothing()) return all;
  for (const host::Worksheet& sheet : book_.Worksheets().All()) {
    for (const Name& name : sheet.Names().All()) all.push_back(world()->Of(name));
  }
  return all;
}

std::span<const NamesObject::Member> NamesObject::Members() {
  static constexpr Member kMembers[] = {
      {"Count", [](NamesObject& n, const Call&) { return Variant(static_cast<int>(n.All().size())); }},
      {"Item", [](NamesObject& n, const Call& call) { return n.world()->Of(n.Find(call.Text(0))); }},
      {"_NewEnum", [](NamesObject& n, const Call&) { return Enumerator(n.All()); }},
      {"Add",
       [](NamesObject& n, const Call& call) {
         constexpr std::size_t kRefersTo = 1, kVisible = 2, kRefersToR1C1 = 9;
         const bool visible = call.Bool(kVisible, true);
         if (call.Has(kRefersTo)) return n.world()->Of(n.handle.Add(call.Text(0), call.Text(kRefersTo), visible));
         return n.world()->Of(n.handle.AddR1C1(call.Text(0), call.Text(kRefersToR1C1), visible));
       }},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
