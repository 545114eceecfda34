#include "engine/xlsx/XmlReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "engine/xlsx/XmlNames.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::size_t kWindow = std::size_t{256} << 10;
constexpr std::size_t kNowhere = std::string_view::npos;

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

void AppendUtf8(std::string& out, std::uint32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | c >> 6));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | c >> 12));
    out.push_back(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | c >> 18));
    out.push_back(static_cast<char>(0x80 | (c >> 12 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

// The character of "#65" or "#x41"; nothing when there is none of that number.
std::optional<std::uint32_t> NumberedCharacter(std::string_view name) {
  name.remove_prefix(1);
  const bool isHex = !name.empty() && (name.front() == 'x' || name.front() == 'X');
  if (isHex) name.remove_prefix(1);
  if (name.empty() || name.size() > 8) return std::nullopt;
  std::uint32_t number = 0;
  for (const char c : name) {
    const char lower = static_cast<char>(c | 0x20);
    std::uint32_t digit = 0;
    if (c >= '0' && c <= '9') {
      digit = static_cast<std::uint32_t>(c - '0');
    } else if (isHex && lower >= 'a' && lower <= 'f') {
      digit = static_cast<std::uint32_t>(lower - 'a' + 10);
    } else {
      return std::nullopt;
    }
    number = number * (isHex ? 16 : 10) + digit;
    if (number > 0x10FFFF) return std::nullopt;
  }
  if (number == 0 || (number >= 0xD800 && number <= 0xDFFF)) return std::nullopt;
  return number;
}

}  // namespace

void AppendDecoded(std::string& out, std::string_view raw, std::string_view partName) {
  for (;;) {
    const std::size_t at = raw.find('&');
    out += raw.substr(0, at);
    if (at == kNowhere) return;
    const std::size_t end = raw.find(';', at);
    const std::string_view name = raw.substr(at + 1, end == kNowhere ? 10 : end - at - 1);
    const std::optional<std::uint32_t> numbered =
        name.starts_with('#') && end != kNowhere ? NumberedCharacter(name) : std::nullopt;
    if (numbered) {
      AppendUtf8(out, *numbered);
    } else if (end != kNowhere && name == "amp") {
      out.push_back('&');
    } else if (end != kNowhere && name == "lt") {
      out.push_back('<');
    } else if (end != kNowhere && name == "gt") {
      out.push_back('>');
    } else if (end != kNowhere && name == "quot") {
      out.push_back('"');
    } else if (end != kNowhere && name == "apos") {
      out.push_back('\'');
    } else {
      throw XlsxError("The part " + std::string(partName) + " of the file holds the unknown entity &" +
                      std::string(name.substr(0, 40)) + ";");
    }
    raw.remove_prefix(end + 1);
  }
}

XmlReader::XmlReader(ZipEntryStream& stream, std::string partName) : stream_(&stream), partName_(std::move(partName)) {
  storage_.resize(kWindow);
  buffer_ = {storage_.data(), 0};
  Require(3);
  if (buffer_.starts_with("\xFF\xFE") || buffer_.starts_with("\xFE\xFF")) {
    Fail("is in UTF-16, which is not read here; open the file with Excel and save it again");
  }
  if (buffer_.starts_with("\xEF\xBB\xBF")) Consume(3);
}

XmlReader::XmlReader(std::string_view text, std::string partName) : partName_(std::move(partName)), buffer_(text) {
  atEnd_ = true;
  if (buffer_.starts_with("\xEF\xBB\xBF")) Consume(3);
}

void XmlReader::Fail(const std::string& why) const {
  throw XlsxError("The part " + partName_ + " of the file " + why);
}

// Makes room by dropping what was read, and by growing for a token that is longer than the window.
bool XmlReader::Refill() {
  if (atEnd_) return false;
  const std::size_t kept = buffer_.size() - position_;
  if (capture_ != nullptr) {
    capture_->append(buffer_.substr(captureFrom_, position_ - captureFrom_));
    captureFrom_ = 0;
  }
  if (position_ > 0) std::memmove(storage_.data(), buffer_.data() + position_, kept);
  position_ = 0;
  if (kept == storage_.size()) {
    if (kept >= kMostTokenBytes) Fail("has a tag or text of more than 4 megabytes");
    storage_.resize(storage_.size() * 2);
  }
  const std::size_t read = stream_->Read(storage_.data() + kept, storage_.size() - kept);
  buffer_ = {storage_.data(), kept + read};
  atEnd_ = read == 0;
  return !atEnd_;
}

void XmlReader::Require(std::size_t bytes) {
  while (buffer_.size() - position_ < bytes && Refill()) {
  }
}

// The place of the next `what` from `from` on, both counted from the present position.
std::size_t XmlReader::Find(std::string_view what, std::size_t from) {
  for (;;) {
    const std::size_t found = buffer_.find(what, position_ + from);
    if (found != kNowhere) return found - position_;
    const std::size_t seen = buffer_.size() - position_;
    from = std::max(from, seen >= what.size() ? seen - what.size() + 1 : 0);
    if (!Refill()) return kNowhere;
  }
}

XmlReader::Event XmlReader::Next() {
  if (isEmptyElement_) {
    isEmptyElement_ = false;
    CloseElement();
    return Event::End;
  }
  for (;;) {
    Require(1);
    if (position_ == buffer_.size()) {
      if (!open_.empty() || !hadRoot_) Fail("breaks off");
      return Event::Eof;
    }
    if (buffer_[position_] != '<') {
      std::size_t size = Find("<", 0);
      if (size == kNowhere) size = buffer_.size() - position_;
      const std::string_view raw = buffer_.substr(position_, size);
      Consume(position_ + size);
      if (open_.empty()) {
        if (!std::all_of(raw.begin(), raw.end(), IsSpace)) Fail("has text outside of its root element");
        continue;
      }
      text_ = raw;
      if (raw.find('&') != kNowhere || raw.find('\r') != kNowhere) {
        decoded_.clear();
        AppendDecoded(decoded_, raw, partName_);
        text_ = decoded_;
      }
      return Event::Text;
    }
    Require(9);
    const std::string_view rest = buffer_.substr(position_);
    if (rest.starts_with("<?")) {
      const std::size_t end = Find("?>", 2);
      if (end == kNowhere) Fail("breaks off");
      Consume(position_ + end + 2);
    } else if (rest.starts_with("<!--")) {
      const std::size_t end = Find("-->", 4);
      if (end == kNowhere) Fail("breaks off");
      Consume(position_ + end + 3);
    } else if (rest.starts_with("<![CDATA[")) {
      const std::size_t end = Find("]]>", 9);
      if (end == kNowhere || open_.empty()) Fail("breaks off");
      text_ = buffer_.substr(position_ + 9, end - 9);
      Consume(position_ + end + 3);
      return Event::Text;
    } else if (rest.starts_with("<!")) {
      Fail("declares a document type, which no workbook does");
    } else {
      return ReadTag();
    }
  }
}

XmlReader::Event XmlReader::ReadTag() {
  // The end of the tag, past any ">" inside quotes.
  std::size_t end = Find(">", 1);
  if (end == kNowhere) Fail("breaks off");
  for (std::size_t at = 1;;) {
    const std::string_view tag = buffer_.substr(position_, end);
    // By hand: find_first_of calls a function for every byte, which would be a tenth of opening a book.
    std::size_t quote = at;
    while (quote < tag.size() && tag[quote] != '"' && tag[quote] != '\'') ++quote;
    if (quote >= tag.size()) break;
    const char mark = tag[quote];
    const std::size_t close = Find({&mark, 1}, quote + 1);
    if (close == kNowhere) Fail("breaks off");
    at = close + 1;
    if (close > end) {
      end = Find(">", at);
      if (end == kNowhere) Fail("breaks off");
    }
  }
  return buffer_[position_ + 1] == '/' ? ReadEnd(end) : ReadStart(end);
}

XmlReader::Event XmlReader::ReadStart(std::size_t end) {
  std::string_view inner = buffer_.substr(position_ + 1, end - 1);
  Consume(position_ + end + 1);
  isEmptyElement_ = inner.ends_with('/');
  if (isEmptyElement_) inner.remove_suffix(1);
  if (open_.empty()) {
    if (hadRoot_) Fail("has two root elements");
    hadRoot_ = true;
    rootTag_ = inner;
  }
  if (open_.size() == kMostDepth) Fail("has elements more than 200 deep");

  std::size_t nameSize = 0;
  while (nameSize < inner.size() && !IsSpace(inner[nameSize])) ++nameSize;
  const std::string_view name = inner.substr(0, nameSize);
  if (name.empty()) Fail("has a tag without a name");
  open_.push_back({openNames_.size(), Space::Other, defaultSpace_, bindings_.size()});
  openNames_ += name;
  attributes_.clear();
  if (nameSize < inner.size()) ReadAttributes(inner.substr(nameSize));
  const std::size_t colon = name.find(':');
  local_ = colon == kNowhere ? name : name.substr(colon + 1);
  space_ = colon == kNowhere ? defaultSpace_ : SpaceOf(name.substr(0, colon));
  open_.back().space = space_;
  return Event::Start;
}

void XmlReader::ReadAttributes(std::string_view inner) {
  const auto isSpaceOf = [](std::string_view uri) {
    return uri == kMainSpace || uri == kStrictMainSpace ? Space::Main : Space::Other;
  };
  for (std::size_t at = 0;;) {
    while (at < inner.size() && IsSpace(inner[at])) ++at;
    if (at == inner.size()) return;
    const std::size_t equals = inner.find('=', at);
    if (equals == kNowhere) Fail("has an attribute without a value");
    std::size_t nameEnd = equals;
    while (nameEnd > at && IsSpace(inner[nameEnd - 1])) --nameEnd;
    std::size_t open = equals + 1;
    while (open < inner.size() && IsSpace(inner[open])) ++open;
    if (open == inner.size() || (inner[open] != '"' && inner[open] != '\'')) Fail("has an attribute without quotes");
    const std::size_t close = inner.find(inner[open], open + 1);
    if (close == kNowhere) Fail("has an attribute whose quote does not end");
    const std::string_view name = inner.substr(at, nameEnd - at);
    const std::string_view value = inner.substr(open + 1, close - open - 1);
    at = close + 1;
    if (attributes_.size() == kMostAttributes) Fail("has an element with more than 200 attributes");
    attributes_.push_back({name, value});
    if (name.starts_with("xmlns")) {
      if (name.size() == 5) defaultSpace_ = isSpaceOf(value);
      if (name.size() > 6 && name[5] == ':') bindings_.push_back({std::string(name.substr(6)), isSpaceOf(value)});
    }
  }
}

XmlReader::Event XmlReader::ReadEnd(std::size_t end) {
  std::string_view name = buffer_.substr(position_ + 2, end - 2);
  while (!name.empty() && IsSpace(name.back())) name.remove_suffix(1);
  Consume(position_ + end + 1);
  if (open_.empty() || std::string_view(openNames_).substr(open_.back().nameAt) != name) {
    Fail("has the end tag </" + std::string(name.substr(0, 40)) + "> where none may be");
  }
  CloseElement();
  return Event::End;
}

void XmlReader::CloseElement() {
  const Open& closed = open_.back();
  closedName_.assign(openNames_, closed.nameAt);
  const std::size_t colon = closedName_.find(':');
  local_ = std::string_view(closedName_).substr(colon == kNowhere ? 0 : colon + 1);
  space_ = closed.space;
  openNames_.resize(closed.nameAt);
  defaultSpace_ = closed.outerDefault;
  bindings_.resize(closed.outerBindings);
  open_.pop_back();
}

XmlReader::Space XmlReader::SpaceOf(std::string_view prefix) const {
  for (auto binding = bindings_.rbegin(); binding != bindings_.rend(); ++binding) {
    if (binding->prefix == prefix) return binding->space;
  }
  return Space::Other;
}

std::optional<std::string_view> XmlReader::Raw(std::string_view name) const {
  for (const Attribute& attribute : attributes_) {
    if (attribute.name == name) return attribute.raw;
  }
  return std::nullopt;
}

std::string XmlReader::Decoded(std::string_view name) const {
  std::string value;
  if (const auto raw = Raw(name)) AppendDecoded(value, *raw, partName_);
  return value;
}

std::string XmlReader::ReadText() {
  const std::size_t outside = depth() - 1;
  std::string all;
  for (;;) {
    const Event event = Next();
    if (event == Event::Text && depth() == outside + 1) {
      all += text_;
      if (all.size() > kMostTokenBytes) Fail("has a text of more than 4 megabytes");
    }
    if (event == Event::End && depth() == outside) return all;
  }
}

void XmlReader::Skip() {
  const std::size_t outside = depth() - 1;
  while (Next() != Event::End || depth() != outside) {
  }
}

void XmlReader::BeginCapture(std::string& to) {
  // The start tag has been read already, but still stands in the buffer.
  auto begin = static_cast<std::size_t>(local_.data() - buffer_.data());
  while (buffer_[begin] != '<') --begin;
  capture_ = &to;
  captureFrom_ = begin;
}

void XmlReader::EndCapture() {
  capture_->append(buffer_.substr(captureFrom_, position_ - captureFrom_));
  capture_ = nullptr;
}

std::string XmlReader::SkipAndCapture(std::size_t most) {
  std::string captured;
  BeginCapture(captured);
  const std::size_t outside = depth() - 1;
  while (Next() != Event::End || depth() != outside) {
    if (captured.size() > most) Fail("has an element that is too large to be kept");
  }
  EndCapture();
  return captured;
}

}  // namespace tolvane::engine::xlsx
