#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/xlsx/Limits.h"

namespace tolvane::engine::xlsx {

// How one part of a file points at another, or at something outside.
struct Link {
  std::string id;
  std::string type;    // a URI
  std::string target;  // as written
  bool external = false;
  std::string path;  // of the part that is meant, when it is inside

  // What is linked, in either spelling of the format: "worksheet", "hyperlink".
  std::string_view kind() const { return std::string_view(type).substr(type.rfind('/') + 1); }
};

// "xl/_rels/workbook.xml.rels" for "xl/workbook.xml"; "_rels/.rels" for the file as a whole, "".
std::string LinksPathOf(std::string_view part);
// The part that a target means when `source` holds it. Empty when it leads out of the file.
std::string ResolveTarget(std::string_view source, std::string_view target);
// The target by which `source` points at a part.
std::string TargetFrom(std::string_view source, std::string_view part);

std::vector<Link> ReadLinks(std::string_view xml, std::string_view source, Budget& budget);
std::string WriteLinks(const std::vector<Link>& links);

const Link* FindLink(const std::vector<Link>& links, std::string_view id);
const Link* FindLinkOfKind(const std::vector<Link>& links, std::string_view kind);
// "rId1" and so on, not yet taken.
std::string FreeLinkId(const std::vector<Link>& links);

// What each part of a file is, by its extension or by its own entry.
struct ContentTypes {
  struct Entry {
    std::string of;  // the extension without its dot; the part with a leading "/"
    std::string type;
  };
  std::vector<Entry> defaults;
  std::vector<Entry> overrides;

  std::string TypeOf(std::string_view part) const;  // empty when not told
  void Set(std::string_view part, std::string_view type);
  void Remove(std::string_view part);
};
ContentTypes ReadContentTypes(std::string_view xml, Budget& budget);
std::string WriteContentTypes(const ContentTypes& types);

}  // namespace tolvane::engine::xlsx
