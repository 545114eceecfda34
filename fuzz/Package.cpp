#include "engine/xlsx/Links.h"
#include "engine/xlsx/PackageGraph.h"
#include "engine/xlsx/Zip.h"
#include "fuzz/Check.h"
#include "fuzz/PartInput.h"
#include "fuzz/Targets.h"

namespace tolvane::fuzz {

using namespace engine;
using namespace engine::xlsx;

namespace {

constexpr std::string_view kSource = "xl/worksheets/sheet1.xml";

void ReadAsLinks(std::string_view xml) {
  std::vector<Link> links;
  try {
    Budget budget(xml.size(), kFuzzBudget);
    links = ReadLinks(xml, kSource, budget);
  } catch (const XlsxError&) {
    return;
  }
  for (const Link& link : links) {
    Check(FindLink(links, link.id) == &link, "a link is found by its id");
    Check(FindLinkOfKind(links, link.kind()) != nullptr, "a link is found by its kind");
    if (link.external || link.path.empty()) continue;
    Check(link.path.front() != '/' && !link.path.starts_with("../"), "a link leads nowhere else");
  }
  Check(FindLink(links, FreeLinkId(links)) == nullptr, "a free id is free");
}

void ReadAsTypes(std::string_view xml) {
  ContentTypes types;
  try {
    Budget budget(xml.size(), kFuzzBudget);
    types = ReadContentTypes(xml, budget);
  } catch (const XlsxError&) {
    return;
  }
  types.Set(kSource, "a type");
  Check(types.TypeOf(kSource) == "a type", "a type that was set is told");
  const std::string written = WriteContentTypes(types);
  Budget budget(written.size());
  Check(WriteContentTypes(ReadContentTypes(written, budget)) == written, "types that were written are read");
  types.Remove(kSource);
}

std::string ContentOf(const ZipArchive& archive, const ZipEntry& entry) {
  Budget budget(archive.bytes().size(), kFuzzBudget);
  return archive.Read(entry, budget);
}

// What can be read of an archive is in its copy too.
void CheckCopy(const ZipArchive& archive) {
  ZipWriter writer;
  for (const ZipEntry& entry : archive.entries()) writer.Copy(archive, entry);
  writer.Add("one/more", "part");
  const ZipArchive copy(writer.Finish());
  Check(copy.entries().size() == archive.entries().size() + 1, "a copy has all parts");
  for (std::size_t i = 0; i < archive.entries().size(); ++i) {
    const ZipEntry &from = archive.entries()[i], &to = copy.entries()[i];
    Check(from.name == to.name && archive.CompressedBytes(from) == copy.CompressedBytes(to), "a copy is the same");
    std::string content;
    try {
      content = ContentOf(archive, from);
    } catch (const XlsxError&) {
      continue;
    }
    Check(content.size() == from.size && ContentOf(copy, to) == content, "a copied part can be read");
  }
}

}  // namespace

void Package(std::string_view input) {
  if (input.starts_with('<')) {
    ReadAsLinks(input);
    ReadAsTypes(input);
    return;
  }
  ZipArchive archive;
  try {
    archive = ZipArchive(std::string(input));
  } catch (const XlsxError&) {
    return;
  }
  for (const ZipEntry& entry : archive.entries()) {
    Check(archive.Find(entry.name) == &entry, "a part is found by its name");
    Check(archive.CompressedBytes(entry).size() == entry.compressedSize, "a part lies within its archive");
  }
  if (archive.Find("one/more") != nullptr) return;
  CheckCopy(archive);
  if (archive.entries().empty()) return;
  try {
    Budget budget(input.size(), kFuzzBudget);
    const auto going = WithPartsOf({archive.entries().front().name}, archive, budget);
    Check(going.size() <= archive.entries().size(), "no more parts go than there are");
  } catch (const XlsxError&) {
    // Its links cannot be read.
  }
}

}  // namespace tolvane::fuzz
