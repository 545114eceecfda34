#include "engine/xlsx/SharedStrings.h"

#include <utility>

#include "engine/xlsx/XmlNames.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

// What an item takes in memory beyond its bytes.
constexpr std::size_t kItemCost = 32;
constexpr std::size_t kFlush = std::size_t{64} << 10;

bool HasOuterSpace(std::string_view text) {
  const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
  return !text.empty() && (isSpace(text.front()) || isSpace(text.back()));
}

}  // namespace

std::string ReadStringItem(XmlReader& reader, bool& isPlain) {
  const std::size_t outside = reader.depth() - 1;
  std::string text;
  isPlain = true;
  for (;;) {
    const XmlReader::Event event = reader.Next();
    if (event == XmlReader::Event::End && reader.depth() == outside) return WithoutEscapes(std::move(text));
    if (event != XmlReader::Event::Start) continue;
    if (reader.local() == "t") {
      text += reader.ReadText();
    } else if (reader.local() == "r") {
      isPlain = false;
    } else {
      // The readings of Asian texts are beside the text; their own <t> is none of it.
      isPlain = false;
      if (reader.local() == "rPh" || reader.local() == "rPr") reader.Skip();
    }
  }
}

void ReadSharedStrings(XmlReader& reader, Budget& budget, PackageData& data) {
  if (reader.Next() != XmlReader::Event::Start || !reader.IsMain("sst")) reader.Fail("does not hold shared texts");
  std::string xml;  // of an item
  for (const XmlReader::Attribute& attribute : reader.attributes()) {
    if (!attribute.name.starts_with("xmlns:")) continue;
    data.stringsRootSpaces.append(" ").append(attribute.name).append("=\"").append(attribute.raw).append("\"");
  }
  for (auto event = reader.Next(); event != XmlReader::Event::Eof; event = reader.Next()) {
    if (event != XmlReader::Event::Start) continue;
    if (!reader.IsMain("si")) {
      reader.Skip();
      continue;
    }
    xml.clear();
    reader.BeginCapture(xml);
    bool isPlain = true;
    const std::string text = ReadStringItem(reader, isPlain);
    reader.EndCapture();
    budget.Spend(text.size() + kItemCost + (isPlain ? 0 : xml.size() + kItemCost));
    if (!isPlain) data.richXml.emplace(data.strings.size(), xml);
    data.strings.emplace_back(text);
  }
}

SharedStringsWriter::SharedStringsWriter(const Workbook& workbook, const PackageData& data)
    : data_(data), strings_(data.strings), rich_(data.strings.size()), isUsed_(data.strings.size()) {
  byBytes_.reserve(strings_.size());
  byContent_.reserve(strings_.size());
  for (std::size_t i = 0; i < strings_.size(); ++i) {
    byBytes_.emplace(strings_[i].view().data(), i);
    byContent_.emplace(strings_[i].view(), i);
  }
  for (const auto& [number, xml] : data.richXml) rich_[number] = &xml;
  for (const auto& [text, xml] : data.inlineRich) inlineRich_.emplace(text.view().data(), &xml);
  if (strings_.empty()) return;
  for (std::size_t i = 0; i < workbook.sheetCount(); ++i) {
    workbook.sheetAt(i).cells().ForEachContent(Rect::WholeSheet(),
                                               [&](CellPos, const Value& value, const FormulaCell*) {
                                                 if (value.isText()) MarkUsed(value.text());
                                               });
  }
}

// Sheets that are copied as they are count on their numbers, whichever of equal texts those are.
void SharedStringsWriter::MarkUsed(const Text& text) {
  if (const auto known = byBytes_.find(text.view().data()); known != byBytes_.end()) {
    isUsed_[known->second] = true;
    return;
  }
  const auto [first, last] = byContent_.equal_range(text.view());
  for (auto equal = first; equal != last; ++equal) isUsed_[equal->second] = true;
}

std::size_t SharedStringsWriter::NumberOf(const Text& text) {
  if (const auto known = byBytes_.find(text.view().data()); known != byBytes_.end()) return known->second;
  if (inlineRich_.contains(text.view().data())) return Add(text);
  const auto [first, last] = byContent_.equal_range(text.view());
  for (auto equal = first; equal != last; ++equal) {
    if (rich_[equal->second] == nullptr) return equal->second;
  }
  return Add(text);
}

std::size_t SharedStringsWriter::Add(const Text& text) {
  isChanged_ = true;
  // Numbers that no cell uses any more are given again, or the part would grow with every change of a text.
  while (nextFree_ < isUsed_.size() && isUsed_[nextFree_]) ++nextFree_;
  const std::size_t number = nextFree_++;
  if (number < strings_.size()) {
    byBytes_.erase(strings_[number].view().data());
    const auto [first, last] = byContent_.equal_range(strings_[number].view());
    for (auto equal = first; equal != last; ++equal) {
      if (equal->second != number) continue;
      byContent_.erase(equal);
      break;
    }
    strings_[number] = text;
    isUsed_[number] = true;
  } else {
    strings_.push_back(text);
    rich_.push_back(nullptr);
    isUsed_.push_back(true);
  }
  const auto rich = inlineRich_.find(text.view().data());
  rich_[number] = rich == inlineRich_.end() ? nullptr : rich->second;
  byBytes_.emplace(text.view().data(), number);
  if (rich_[number] == nullptr) byContent_.emplace(strings_[number].view(), number);
  return number;
}

void SharedStringsWriter::AppendItem(std::string& xml, std::size_t number) const {
  if (rich_[number] != nullptr) {
    xml += *rich_[number];
    return;
  }
  const std::string_view text = strings_[number].view();
  xml += HasOuterSpace(text) ? "<si><t xml:space=\"preserve\">" : "<si><t>";
  AppendText(xml, text);
  xml += "</t></si>";
}

void SharedStringsWriter::Write(ZipWriter& zip) const {
  std::string xml(kXmlDeclaration);
  xml.append("<sst xmlns=\"").append(data_.isStrict ? kStrictMainSpace : kMainSpace).append("\"");
  // Prefixes that kept items may use stand on the root as they did.
  xml.append(data_.stringsRootSpaces);
  AppendAttribute(xml, "uniqueCount", std::to_string(strings_.size()));
  xml.push_back('>');
  for (std::size_t i = 0; i < strings_.size(); ++i) {
    AppendItem(xml, i);
    if (xml.size() < kFlush) continue;
    zip.Write(xml);
    xml.clear();
  }
  zip.Write(xml + "</sst>");
}

}  // namespace tolvane::engine::xlsx
