#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/xlsx/Zip.h"

namespace tolvane::engine::xlsx {

// Reads the XML of one part from front to back, holding no more of it than the present tag or text. A part of a million
// cells passes at a few hundred megabytes per second, which is what a general parser does not.
//
// Declarations of a document type are refused: no workbook has any, and entities are what bombs are made of.
class XmlReader {
 public:
  enum class Event : std::uint8_t { Start, End, Text, Eof };
  // What an element's namespace means here. `Main`: that of worksheets, in either of its two spellings.
  enum class Space : std::uint8_t { Main, Other };

  // `window`: bytes of the part that are held to begin with; it grows for a longer tag or text.
  XmlReader(ZipEntryStream& stream, std::string partName, std::size_t window = std::size_t{256} << 10);
  // From memory; the text must stay.
  XmlReader(std::string_view text, std::string partName);

  // Goes to the next tag or text. An element without content gives Start and End.
  Event Next();

  // Of Start and End: the name without its prefix.
  std::string_view local() const { return local_; }
  Space space() const { return space_; }
  bool IsMain(std::string_view name) const { return space_ == Space::Main && local_ == name; }
  // Elements open around the present place; a Start's own element counts, an End's does not.
  std::size_t depth() const { return open_.size(); }

  struct Attribute {
    std::string_view name;  // with its prefix
    std::string_view raw;   // as written between the quotes
  };
  // Of Start; they hold until the next event.
  const std::vector<Attribute>& attributes() const { return attributes_; }
  std::optional<std::string_view> Raw(std::string_view name) const;
  // Decoded: entities only.
  std::string Decoded(std::string_view name) const;

  // Of Text: decoded, as far as it has come; a text may come in several events only around comments and the like.
  std::string_view text() const { return text_; }

  // At a Start: the element's text, without that of elements inside; goes to its End.
  std::string ReadText();
  // At a Start: goes to its End.
  void Skip();
  // The same, and gives the element as it is written.
  std::string SkipAndCapture(std::size_t most = kMostPartBytes);
  // From a Start on, until EndCapture right behind its End: the element as it is written is added to the text.
  void BeginCapture(std::string& to);
  void EndCapture();

  const std::string& partName() const { return partName_; }
  // The start tag of the root, as written without "<" and ">".
  const std::string& rootTag() const { return rootTag_; }
  [[noreturn]] void Fail(const std::string& why) const;

 private:
  struct Open {
    std::size_t nameAt;  // in openNames_
    Space space;
    Space outerDefault;
    std::size_t outerBindings;
  };
  struct Binding {
    std::string prefix;
    Space space;
  };

  bool Refill();
  std::size_t Find(std::string_view what, std::size_t from);  // refills; npos at the end
  void Require(std::size_t bytes);
  Event ReadTag();
  Event ReadStart(std::size_t end);
  void ReadAttributes(std::string_view inner);
  Event ReadEnd(std::size_t end);
  void CloseElement();
  void Bind(std::string_view prefix, Space space);
  Space SpaceOf(std::string_view prefix) const;
  void Consume(std::size_t to) { position_ = to; }

  ZipEntryStream* stream_ = nullptr;
  std::string partName_;
  std::vector<char> storage_;
  std::string_view buffer_;   // what is there of the part
  std::size_t position_ = 0;  // in buffer_
  bool atEnd_ = false;

  std::string_view local_;
  Space space_ = Space::Other;
  Space defaultSpace_ = Space::Other;
  std::vector<Binding> bindings_;  // only those that tell something: of the main namespace, and what hides them
  std::vector<Attribute> attributes_;
  std::string_view text_;
  std::string decoded_;
  std::vector<Open> open_;
  std::string openNames_;
  std::string closedName_;
  std::string rootTag_;
  bool isEmptyElement_ = false;
  bool hadRoot_ = false;
  bool hasBegun_ = false;

  std::string* capture_ = nullptr;
  std::size_t captureFrom_ = 0;
};

// "&amp;" and the like; throws XlsxError for an entity that XML does not know by itself.
void AppendDecoded(std::string& out, std::string_view raw, std::string_view partName);

}  // namespace tolvane::engine::xlsx
