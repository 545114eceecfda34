#include "engine/xlsx/Links.h"

#include <algorithm>
#include <set>

#include "engine/xlsx/XmlNames.h"
#include "engine/xlsx/XmlReader.h"
#include "engine/xlsx/XmlText.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::string_view kLinksSpace = "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr std::string_view kTypesSpace = "http://schemas.openxmlformats.org/package/2006/content-types";

std::string_view FolderOf(std::string_view part) {
  const std::size_t slash = part.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : part.substr(0, slash + 1);
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Part names are URIs: "%20" is a space.
std::string WithoutPercent(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 && HexValue(text[i + 2]) >= 0) {
      plain.push_back(static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2])));
      i += 2;
    } else {
      plain.push_back(text[i]);
    }
  }
  return plain;
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

std::vector<Link> ReadLinks(std::string_view xml, std::string_view source) {
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
  const std::string path = WithSlash(part);
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
  overrides.push_back({WithSlash(part), std::string(type)});
}

void ContentTypes::Remove(std::string_view part) {
  const std::string path = WithSlash(part);
  std::erase_if(overrides, [&](const Entry& entry) { return SamePart(entry.of, path); });
}

ContentTypes ReadContentTypes(std::string_view xml) {
  ContentTypes types;
  XmlReader reader(xml, "[Content_Types].xml");
  for (auto event = reader.Next(); event != XmlReader::Event::Eof; event = reader.Next()) {
    if (event != XmlReader::Event::Start) continue;
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
    AppendAttribute(xml, "PartName", entry.of);
    AppendAttribute(xml, "ContentType", entry.type);
    xml += "/>";
  }
  return xml + "</Types>";
}

}  // namespace tolvane::engine::xlsx
