#include "engine/xlsx/Links.h"

#include <algorithm>
#include <set>

#include "engine/xlsx/PartNames.h"
#include "engine/xlsx/XmlNames.h"
#include "engine/xlsx/XmlReader.h"
#include "engine/xlsx/XmlText.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::string_view kLinksSpace = "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr std::string_view kTypesSpace = "http://schemas.openxmlformats.org/package/2006/content-types";

constexpr std::size_t kIdCost = 80;  // of an id among those that are known

std::string_view FolderOf(std::string_view part) {
  const std::size_t slash = part.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : part.substr(0, slash + 1);
}

std::string WithSlash(std::string_view part) {
  return std::string(1, '/').append(part);
}

bool SamePart(std::string_view a, std::string_view b) {
  return platform::EqualIgnoringCase(a, b);
}

}  // namespace

std::string LinksPathOf(std::string_view part) {
  const std::string_view folder = FolderOf(part);
  return std::string(folder) + "_rels/" + std::string(part.substr(folder.size())) + ".rels";
}

std::string ResolveTarget(std::string_view source, std::string_view target) {
  target = target.substr(0, target.find('#'));
  std::string whole =
      target.starts_with('/') ? std::string(target.substr(1)) : std::string(FolderOf(source)) + std::string(target);
  std::vector<std::string> segments;
  for (std::size_t at = 0; at <= whole.size();) {
    const std::size_t end = std::min(whole.find('/', at), whole.size());
    const std::string segment = whole.substr(at, end - at);
    at = end + 1;
    if (segment.empty() || segment == ".") continue;
    if (segment != "..") {
      segments.push_back(segment);
    } else if (segments.empty()) {
      return {};
    } else {
      segments.pop_back();
    }
  }
  std::string path;
  for (const std::string& segment : segments) {
    if (!path.empty()) path.push_back('/');
    path += segment;
  }
  return WithoutPercent(path);
}

std::string TargetFrom(std::string_view source, std::string_view part) {
  const std::string_view folder = FolderOf(source);
  return part.starts_with(folder) ? std::string(part.substr(folder.size())) : WithSlash(part);
}

std::vector<Link> ReadLinks(std::string_view xml, std::string_view source, Budget& budget) {
  std::vector<Link> links;
  XmlReader reader(xml, LinksPathOf(source));
  std::set<std::string> ids;
  for (auto event = reader.Next(); event != XmlReader::Event::Eof; event = reader.Next()) {
    if (event != XmlReader::Event::Start || reader.local() != "Relationship") continue;
    Link link;
    link.id = reader.Decoded("Id");
    link.type = reader.Decoded("Type");
    link.target = reader.Decoded("Target");
    link.external = reader.Decoded("TargetMode") == "External";
    if (!link.external) link.path = ResolveTarget(source, link.target);
    // The list grows by doubling; the set has the id once more.
    budget.Spend(2 * sizeof(Link) + kIdCost + 2 * link.id.size() + link.type.size() + 2 * link.target.size());
    if (!ids.insert(link.id).second) reader.Fail("has two links with the id " + link.id);
    links.push_back(std::move(link));
  }
  return links;
}

std::string WriteLinks(const std::vector<Link>& links) {
  std::string xml(kXmlDeclaration);
  xml.append("<Relationships xmlns=\"").append(kLinksSpace).append("\">");
  for (const Link& link : links) {
    xml += "<Relationship";
    AppendAttribute(xml, "Id", link.id);
    AppendAttribute(xml, "Type", link.type);
    AppendAttribute(xml, "Target", link.target);
    if (link.external) AppendAttribute(xml, "TargetMode", "External");
    xml += "/>";
  }
  return xml + "</Relationships>";
}

const Link* FindLink(const std::vector<Link>& links, std::string_view id) {
  const auto found = std::find_if(links.begin(), links.end(), [&](const Link& link) { return link.id == id; });
  return found == links.end() ? nullptr : &*found;
}

const Link* FindLinkOfKind(const std::vector<Link>& links, std::string_view kind) {
  const auto found = std::find_if(links.begin(), links.end(), [&](const Link& link) { return link.kind() == kind; });
  return found == links.end() ? nullptr : &*found;
}

std::string FreeLinkId(const std::vector<Link>& links) {
  std::set<std::string_view> taken;
  for (const Link& link : links) taken.insert(link.id);
  for (std::size_t number = links.size() + 1;; ++number) {
    std::string id = "rId" + std::to_string(number);
    if (!taken.contains(id)) return id;
  }
}

// --- content types ---------------------------------------------------------------------------------------------------

std::string ContentTypes::TypeOf(std::string_view part) const {
  const std::string path = WithSlash(WithoutPercent(part));
  for (const Entry& entry : overrides) {
    if (SamePart(entry.of, path)) return entry.type;
  }
  const std::size_t dot = part.rfind('.');
  if (dot == std::string_view::npos) return {};
  for (const Entry& entry : defaults) {
    if (SamePart(entry.of, part.substr(dot + 1))) return entry.type;
  }
  return {};
}

void ContentTypes::Set(std::string_view part, std::string_view type) {
  if (TypeOf(part) == type) return;
  Remove(part);
  overrides.push_back({WithSlash(WithoutPercent(part)), std::string(type)});
}

void ContentTypes::Remove(std::string_view part) {
  const std::string path = WithSlash(WithoutPercent(part));
  std::erase_if(overrides, [&](const Entry& entry) { return SamePart(entry.of, path); });
}

ContentTypes ReadContentTypes(std::string_view xml, Budget& budget) {
  ContentTypes types;
  XmlReader reader(xml, "[Content_Types].xml");
  for (auto event = reader.Next(); event != XmlReader::Event::Eof; event = reader.Next()) {
    if (event != XmlReader::Event::Start) continue;
    budget.Spend(2 * sizeof(ContentTypes::Entry));
    if (reader.local() == "Default")
      types.defaults.push_back({reader.Decoded("Extension"), reader.Decoded("ContentType")});
    if (reader.local() == "Override") {
      types.overrides.push_back({WithoutPercent(reader.Decoded("PartName")), reader.Decoded("ContentType")});
    }
  }
  return types;
}

std::string WriteContentTypes(const ContentTypes& types) {
  std::string xml(kXmlDeclaration);
  xml.append("<Types xmlns=\"").append(kTypesSpace).append("\">");
  for (const ContentTypes::Entry& entry : types.defaults) {
    xml += "<Default";
    AppendAttribute(xml, "Extension", entry.of);
    AppendAttribute(xml, "ContentType", entry.type);
    xml += "/>";
  }
  for (const ContentTypes::Entry& entry : types.overrides) {
    xml += "<Override";
    AppendAttribute(xml, "PartName", WithPercent(entry.of));
    AppendAttribute(xml, "ContentType", entry.type);
    xml += "/>";
  }
  return xml + "</Types>";
}

}  // namespace tolvane::engine::xlsx
