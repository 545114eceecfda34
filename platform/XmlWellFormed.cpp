#include "platform/XmlWellFormed.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Text.h"
#include "platform/Utf8.h"
#include "platform/Xml.h"

namespace tolvane::platform {
namespace {

constexpr std::size_t kShownNameBytes = 60;

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsNameCharacter(char c) {
  return IsNameStart(c) || IsDigit(c) || c == '-' || c == '.';
}

// The characters of an XML 1.0 document.
bool IsXmlCharacter(std::int64_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

struct Position {
  std::size_t line = 1;
  std::size_t column = 1;
};

Position PositionOf(std::string_view text, std::size_t offset) {
  Position position;
  std::size_t lineStart = 0;
  for (std::size_t at = 0; at < offset; ++at) {
    const bool lineEnds = text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != "\n");
    if (!lineEnds) continue;
    ++position.line;
    lineStart = at + 1;
  }
  position.column = CharacterCount(text.substr(lineStart, offset - lineStart)) + 1;
  return position;
}

// A name for a message, cut where it is no name that a person gave.
std::string Shown(std::string_view name) {
  if (name.size() <= kShownNameBytes) return std::string(name);
  std::size_t end = kShownNameBytes;
  while ((static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
  return std::string(name.substr(0, end)) + "...";
}

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  std::string_view Run() {
    CheckCharacters();
    while (at_ < text_.size()) Next();
    if (!open_.empty()) Fail(at_, "the text ends within " + Opened(open_.back()));
    if (rootEnd_ == 0) Fail(at_, "the document has no element");
    return text_.substr(rootBegin_, rootEnd_ - rootBegin_);
  }

 private:
  struct OpenElement {
    std::string_view name;
    std::size_t offset;
  };

  [[noreturn]] void Fail(std::size_t offset, std::string_view problem) const {
    const Position position = PositionOf(text_, offset);
    throw XmlError(position.line, position.column, problem);
  }

  std::string Opened(const OpenElement& element) const {
    const Position position = PositionOf(text_, element.offset);
    std::string shown = Shown(element.name);
    shown.insert(shown.begin(), '<');
    return shown + "> (line " + std::to_string(position.line) + ", column " + std::to_string(position.column) + ")";
  }

  void CheckCharacters() const {
    for (std::size_t at = 0; at < text_.size();) {
      const std::size_t start = at;
      const std::int32_t c = DecodeUtf8(text_, at);
      if (c < 0) Fail(start, "the text is not UTF-8");
      if (!IsXmlCharacter(c)) {
        Fail(start, "the character with the number " + std::to_string(c) + " is not allowed in XML");
      }
    }
  }

  void Next() {
    if (text_[at_] != '<') {
      ReadText();
    } else if (StartsWith("<!--")) {
      SkipPast("-->", 4, "the comment is not closed");
    } else if (StartsWith("<![CDATA[")) {
      if (open_.empty()) Fail(at_, "text outside the root element");
      SkipPast("]]>", 9, "the CDATA section is not closed");
    } else if (StartsWith("<!DOCTYPE")) {
      SkipDocumentType();
    } else if (StartsWith("<?")) {
      SkipInstruction();
    } else if (StartsWith("</")) {
      ReadEndTag();
    } else {
      ReadStartTag();
    }
  }

  bool StartsWith(std::string_view expected) const { return text_.substr(at_, expected.size()) == expected; }
  bool At(char c) const { return at_ < text_.size() && text_[at_] == c; }

  // Whether there was any.
  bool SkipSpace() {
    const std::size_t start = at_;
    while (at_ < text_.size() && IsSpace(text_[at_])) ++at_;
    return at_ > start;
  }

  void SkipPast(std::string_view end, std::size_t openingBytes, std::string_view problem) {
    const std::size_t found = text_.find(end, at_ + openingBytes);
    if (found == std::string_view::npos) Fail(at_, problem);
    at_ = found + end.size();
  }

  // Empty where there is no name.
  std::string_view ReadName() {
    const std::size_t start = at_;
    if (at_ < text_.size() && IsNameStart(text_[at_])) {
      while (at_ < text_.size() && IsNameCharacter(text_[at_])) ++at_;
    }
    return text_.substr(start, at_ - start);
  }

  void ReadText() {
    while (at_ < text_.size() && text_[at_] != '<') {
      if (open_.empty() && !IsSpace(text_[at_])) Fail(at_, "text outside the root element");
      if (text_[at_] == '&') {
        ReadReference();
      } else {
        ++at_;
      }
    }
  }

  void ReadReference() {
    const std::size_t start = at_++;
    if (At('#')) {
      ReadCharacterReference(start);
    } else if (ReadName().empty() || !At(';')) {
      Fail(start, "an '&' that begins no reference must be written as &amp;");
    }
    ++at_;
  }

  void ReadCharacterReference(std::size_t start) {
    ++at_;
    const bool hexadecimal = At('x');
    if (hexadecimal) ++at_;
    const std::size_t digits = at_;
    std::int64_t number = 0;
    for (; at_ < text_.size(); ++at_) {
      const char c = text_[at_];
      const char lower = static_cast<char>(c | 0x20);
      const bool isLetter = hexadecimal && lower >= 'a' && lower <= 'f';
      if (!IsDigit(c) && !isLetter) break;
      const std::int64_t digit = isLetter ? lower - 'a' + 10 : c - '0';
      number = std::min<std::int64_t>(number * (hexadecimal ? 16 : 10) + digit, 0x110000);
    }
    if (at_ == digits || !At(';')) Fail(start, "the character reference is not of the form &#123; or &#x7B;");
    if (!IsXmlCharacter(number)) Fail(start, "the reference names a character that is not allowed in XML");
  }

  void SkipDocumentType() {
    const std::size_t start = at_;
    if (rootBegun_ || documentTypeSeen_) Fail(at_, "a document type must stand once, before the root element");
    documentTypeSeen_ = true;
    bool inSubset = false;
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (StartsWith("<!--")) {
        SkipPast("-->", 4, "the comment is not closed");
      } else if (StartsWith("<?")) {
        SkipInstruction();
      } else if (c == '"' || c == '\'') {
        SkipPast(text_.substr(at_, 1), 1, "the quoted text is not closed");
      } else {
        ++at_;
        if (c == '[') inSubset = true;
        if (c == ']') inSubset = false;
        if (c == '>' && !inSubset) return;
      }
    }
    Fail(start, "the document type is not closed");
  }

  void SkipInstruction() {
    const std::size_t start = at_;
    at_ += 2;
    const std::string_view target = ReadName();
    if (target.empty()) Fail(start, "a processing instruction must begin with a name");
    if (start != 0 && EqualIgnoringCase(target, "xml")) {
      Fail(start, "the XML declaration must stand at the very beginning");
    }
    at_ = start;
    SkipPast("?>", 2 + target.size(), "the processing instruction is not closed");
  }

  void ReadStartTag() {
    const std::size_t start = at_++;
    const std::string_view name = ReadName();
    if (name.empty()) Fail(start, "a '<' that begins no tag must be written as &lt;");
    if (open_.empty() && rootBegun_) Fail(start, "<" + Shown(name) + "> is a second root element");
    if (open_.size() == kXmlMaxDepth) {
      Fail(start, "elements are nested deeper than " + std::to_string(kXmlMaxDepth) + " levels");
    }
    if (!rootBegun_) rootBegin_ = start;
    rootBegun_ = true;
    ReadAttributes({name, start});

    const bool isEmpty = At('/');
    if (isEmpty) ++at_;
    if (!At('>')) Fail(at_, "expected '>' to end the tag " + Opened({name, start}));
    ++at_;
    if (!isEmpty) {
      open_.push_back({name, start});
    } else if (open_.empty()) {
      rootEnd_ = at_;
    }
  }

  void ReadAttributes(const OpenElement& element) {
    attributes_.clear();
    for (;;) {
      const bool separated = SkipSpace();
      if (at_ == text_.size()) Fail(at_, "the text ends within the tag " + Opened(element));
      if (text_[at_] == '>' || text_[at_] == '/') break;
      const std::size_t start = at_;
      const std::string_view name = ReadName();
      if (name.empty()) Fail(start, "expected an attribute or the end of the tag " + Opened(element));
      if (!separated) Fail(start, "the attribute " + Shown(name) + " must be separated by a space");
      attributes_.push_back({name, start});
      SkipSpace();
      if (!At('=')) Fail(at_, "expected '=' after the attribute " + Shown(name));
      ++at_;
      SkipSpace();
      ReadAttributeValue(name);
    }
    CheckAttributesDiffer();
  }

  void ReadAttributeValue(std::string_view name) {
    const std::size_t start = at_;
    if (!At('"') && !At('\'')) Fail(at_, "the value of the attribute " + Shown(name) + " must be quoted");
    const char quote = text_[at_++];
    while (!At(quote)) {
      if (at_ == text_.size()) Fail(start, "the value of the attribute " + Shown(name) + " is not closed");
      if (text_[at_] == '<') Fail(at_, "a '<' in the attribute " + Shown(name) + " must be written as &lt;");
      if (text_[at_] == '&') {
        ReadReference();
      } else {
        ++at_;
      }
    }
    ++at_;
  }

  void CheckAttributesDiffer() {
    if (attributes_.size() < 2) return;
    std::sort(attributes_.begin(), attributes_.end(), [](const OpenElement& a, const OpenElement& b) {
      return a.name != b.name ? a.name < b.name : a.offset < b.offset;
    });
    const auto same = std::adjacent_find(attributes_.begin(), attributes_.end(),
                                         [](const OpenElement& a, const OpenElement& b) { return a.name == b.name; });
    if (same != attributes_.end()) Fail(same[1].offset, "the attribute " + Shown(same->name) + " is given twice");
  }

  void ReadEndTag() {
    const std::size_t start = at_;
    at_ += 2;
    const std::string_view name = ReadName();
    SkipSpace();
    if (name.empty() || !At('>')) Fail(start, "the end tag is not of the form </name>");
    ++at_;
    if (open_.empty()) Fail(start, "</" + Shown(name) + "> closes no element");
    if (open_.back().name != name) Fail(start, "</" + Shown(name) + "> closes " + Opened(open_.back()));
    open_.pop_back();
    if (open_.empty()) rootEnd_ = at_;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<OpenElement> open_;
  std::vector<OpenElement> attributes_;  // of the tag being read
  bool documentTypeSeen_ = false;
  bool rootBegun_ = false;
  std::size_t rootBegin_ = 0;
  std::size_t rootEnd_ = 0;
};

}  // namespace

std::string_view FindRootElement(std::string_view text) {
  return Scanner(text).Run();
}

}  // namespace tolvane::platform
