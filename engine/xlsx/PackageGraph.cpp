#include "engine/xlsx/PackageGraph.h"

#include <map>
#include <vector>

#include "engine/xlsx/Links.h"

namespace tolvane::engine::xlsx {

namespace {

using Targets = std::map<std::string, std::vector<std::string>>;

// Circles are usual: a chart sheet's drawing may link back.
void Reach(const std::string& from, const Targets& targets, const std::set<std::string>& closed,
           std::set<std::string>& reached) {
  std::vector<std::string> waiting{from};
  while (!waiting.empty()) {
    const std::string part = std::move(waiting.back());
    waiting.pop_back();
    if (closed.contains(part) || !reached.insert(part).second) continue;
    if (const auto found = targets.find(part); found != targets.end()) {
      waiting.insert(waiting.end(), found->second.begin(), found->second.end());
    }
  }
}

}  // namespace

std::set<std::string> WithPartsOf(const std::set<std::string>& parts, const ZipArchive& archive, Budget& budget) {
  Targets targets;
  std::set<std::string> pointedAt;
  const auto readLinks = [&](const std::string& source) {
    const ZipEntry* entry = archive.Find(LinksPathOf(source));
    if (entry == nullptr) return;
    for (const Link& link : ReadLinks(archive.Read(*entry, budget), source, budget)) {
      const ZipEntry* target = link.external ? nullptr : archive.Find(link.path);
      if (target == nullptr) continue;
      targets[source].push_back(target->name);
      pointedAt.insert(target->name);
    }
  };
  readLinks("");
  for (const ZipEntry& entry : archive.entries()) readLinks(entry.name);

  std::set<std::string> staying;
  Reach("", targets, parts, staying);
  for (const ZipEntry& entry : archive.entries()) {
    if (!pointedAt.contains(entry.name)) Reach(entry.name, targets, parts, staying);
  }
  std::set<std::string> going;
  for (const std::string& part : parts) Reach(part, targets, staying, going);
  return going;
}

}  // namespace tolvane::engine::xlsx
