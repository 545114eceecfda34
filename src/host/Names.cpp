#include "src/host/Names.h"

#include "src/host/Range.h"

namespace tolvane::host {

std::string Name::NameText() const {
  return Read("Name.Name", &NameBody::NameText);
}
std::string Name::RefersTo() const {
  return Read("Name.RefersTo", &NameBody::RefersTo);
}
void Name::SetRefersTo(std::string_view formula) const {
  Write("Name.RefersTo", &NameBody::SetRefersTo, formula);
}
std::string Name::RefersToR1C1() const {
  return Read("Name.RefersToR1C1", &NameBody::RefersToR1C1);
}
void Name::SetRefersToR1C1(std::string_view formula) const {
  Write("Name.RefersToR1C1", &NameBody::SetRefersToR1C1, formula);
}
Range Name::RefersToRange() const {
  return Read("Name.RefersToRange", &NameBody::RefersToRange);
}
bool Name::Visible() const {
  return Read("Name.Visible", &NameBody::Visible);
}
void Name::SetVisible(bool visible) const {
  Write("Name.Visible", &NameBody::SetVisible, visible);
}
void Name::Delete() const {
  Write("Name.Delete", &NameBody::Delete);
}

Name Names::Item(std::string_view name) const {
  return Read("Names.Item", &NamesBody::Item, name);
}
std::vector<Name> Names::All() const {
  return Read("Names.All", &NamesBody::All);
}
Name Names::Add(std::string_view name, std::string_view refersTo, bool visible) const {
  return Write("Names.Add", &NamesBody::Add, name, refersTo, false, visible);
}
Name Names::AddR1C1(std::string_view name, std::string_view refersToR1C1, bool visible) const {
  return Write("Names.Add", &NamesBody::Add, name, refersToR1C1, true, visible);
}

}  // namespace tolvane::host
