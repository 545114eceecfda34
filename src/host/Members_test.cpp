// The table of members says what the port is: every public member of every handle passes the gate under a name that
// stands in members.tsv, and nothing stands there that no handle uses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

struct Member {
  std::string handle;
  std::string name;
  std::string body;  // of one that is defined within its class, with its braces
};

bool IsIdentifier(char character) {
  return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

std::string WithoutComments(std::string_view text) {
  std::string kept;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 2) == "//") i = std::min(text.find('\n', i), text.size());
    if (i < text.size()) kept += text[i];
  }
  return kept;
}

// The end of the block whose brace stands at `open`, behind its closing brace.
std::size_t EndOfBlock(std::string_view text, std::size_t open) {
  int depth = 0;
  for (std::size_t i = open; i < text.size(); ++i) {
    if (text[i] == '{') ++depth;
    if (text[i] == '}' && --depth == 0) return i + 1;
  }
  return text.size();
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())) != 0) text.remove_prefix(1);
  return text;
}

// The name in front of the first "(", unless the declaration is a constructor or none of the class's own members.
std::string NameOfMember(std::string_view declaration, std::string_view handle) {
  const std::size_t parenthesis = declaration.find('(');
  if (parenthesis == std::string_view::npos || declaration.starts_with("friend ") ||
      declaration.starts_with("using ")) {
    return {};
  }
  std::size_t start = parenthesis;
  while (start > 0 && IsIdentifier(declaration[start - 1])) --start;
  const std::string_view name = declaration.substr(start, parenthesis - start);
  return name == handle ? std::string() : std::string(name);
}

// The public members that a class declares itself.
void AddMembers(const std::string& handle, std::string_view classBody, std::vector<Member>& members) {
  bool isPublic = false;
  std::size_t start = 0;
  int parentheses = 0;
  for (std::size_t i = 0; i < classBody.size(); ++i) {
    if (classBody[i] == '(') ++parentheses;
    if (classBody[i] == ')') --parentheses;
    if (parentheses > 0) continue;  // where default arguments have braces of their own
    if (classBody[i] == ':' && classBody.substr(i, 2) != "::" && (i == 0 || classBody[i - 1] != ':')) {
      const std::string_view word = Trimmed(classBody.substr(start, i - start));
      if (word == "public" || word == "private" || word == "protected") {
        isPublic = word == "public";
        start = i + 1;
      }
    } else if (classBody[i] == ';' || classBody[i] == '{') {
      const std::string_view declaration = Trimmed(classBody.substr(start, i - start));
      const std::size_t end = classBody[i] == ';' ? i + 1 : EndOfBlock(classBody, i);
      const std::string name = NameOfMember(declaration, handle);
      if (isPublic && !name.empty()) {
        members.push_back({handle, name, std::string(classBody[i] == ';' ? "" : classBody.substr(i, end - i))});
      }
      start = end;
      i = end - 1;
    }
  }
}

std::vector<Member> MembersOf(const std::string& header) {
  std::vector<Member> members;
  const std::string text = WithoutComments(header);
  for (std::size_t at = text.find("class "); at != std::string::npos; at = text.find("class ", at + 1)) {
    std::size_t end = at + 6;
    while (end < text.size() && IsIdentifier(text[end])) ++end;
    const std::string_view bases = std::string_view(text).substr(end);
    if (!bases.starts_with(" : public Handle<") && !bases.starts_with(" : private Handle<")) continue;
    const std::size_t open = text.find('{', end);
    const std::size_t close = EndOfBlock(text, open);
    AddMembers(text.substr(at + 6, end - at - 6), std::string_view(text).substr(open + 1, close - open - 2), members);
  }
  return members;
}

// One that only makes a handle of another kind for the same body; the members of that one pass the gate.
bool MerelyLeadsOn(const std::string& body) {
  const std::size_t first = body.find("body()");
  return first != std::string::npos && body.find("body()", first + 1) == std::string::npos &&
         (body[first + 6] == ')' || body[first + 6] == ',');
}

using Use = std::pair<std::string, std::string>;  // the member's text, "Read" or "Write"

std::vector<Use> GatePasses(std::string_view text) {
  std::vector<Use> uses;
  for (const std::string access : {"Read", "Write"}) {
    const std::string call = access + "(\"";
    for (std::size_t at = text.find(call); at != std::string_view::npos; at = text.find(call, at + 1)) {
      if (at > 0 && IsIdentifier(text[at - 1])) continue;
      const std::size_t start = at + call.size();
      uses.emplace_back(text.substr(start, text.find('"', start) - start), access);
    }
  }
  return uses;
}

// The bodies of all overloads of a member.
std::vector<std::string_view> Definitions(std::string_view sources, const std::string& qualifiedName) {
  std::vector<std::string_view> found;
  const std::string start = qualifiedName + "(";
  for (std::size_t at = sources.find(start); at != std::string_view::npos; at = sources.find(start, at + 1)) {
    if (at > 0 && IsIdentifier(sources[at - 1])) continue;
    const std::size_t open = sources.find('{', at);
    if (open == std::string_view::npos) break;
    found.push_back(sources.substr(open, EndOfBlock(sources, open) - open));
  }
  return found;
}

void CheckMembers(const std::vector<Member>& members, const std::string& sources, std::vector<std::string>& faults) {
  std::map<std::string, std::size_t> declared;
  for (const Member& member : members) {
    const std::string name = member.handle + "::" + member.name;
    if (member.body.empty()) {
      ++declared[name];
    } else if (!MerelyLeadsOn(member.body)) {
      faults.push_back(name + " does its work without passing the gate");
    }
  }
  for (const auto& [name, count] : declared) {
    const auto definitions = Definitions(sources, name);
    if (definitions.size() != count) faults.push_back(name + " is not defined as often as it is declared");
    for (const std::string_view definition : definitions) {
      if (GatePasses(definition).size() != 1) faults.push_back(name + " does not pass the gate once");
    }
  }
}

void CheckTable(const std::string& table, const std::vector<Use>& uses, std::vector<std::string>& faults) {
  const std::set<Use> used(uses.begin(), uses.end());
  std::set<Use> covered;
  std::set<Use> rows;
  std::istringstream lines(table);
  bool isHeading = true;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("#")) continue;
    if (std::exchange(isHeading, false)) continue;
    std::istringstream cells(line);
    std::string member, access, neededBy, beyond;
    std::getline(cells, member, '\t');
    std::getline(cells, access, '\t');
    std::getline(cells, neededBy, '\t');
    if (neededBy.empty() || std::getline(cells, beyond))
      faults.push_back("the row '" + line + "' has not three columns");
    if (!rows.emplace(member, access).second) faults.push_back("two rows for " + member + " " + access);
    std::set<Use> means;
    if (access == "get" || access == "call") means.emplace(member, "Read");
    if (access == "set" || access == "call") means.emplace(member, "Write");
    bool isUsed = false;
    for (const Use& use : means) {
      if (used.contains(use)) {
        covered.insert(use);
        isUsed = true;
      }
    }
    if (!isUsed) faults.push_back("no handle uses the row " + member + " " + access);
  }
  for (const Use& use : used) {
    if (!covered.contains(use)) faults.push_back("no row for " + use.second + " of " + use.first);
  }
}

// What is wrong between headers, sources and the table; empty when all is well.
std::vector<std::string> Faults(const std::string& headers, const std::string& sources, const std::string& table) {
  std::vector<std::string> faults;
  CheckMembers(MembersOf(headers), sources, faults);
  CheckTable(table, GatePasses(sources), faults);
  return faults;
}

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

// All files of the folder with this ending, tests apart.
std::string ReadFolder(std::string_view ending) {
  std::set<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(TOLVANE_SOURCE_DIR "/src/host")) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with(ending) && !name.ends_with("_test.cpp")) paths.insert(entry.path());
  }
  std::string all;
  for (const auto& path : paths) all += ReadAll(path) + "\n";
  return all;
}

TEST(Members, ThePortIsWhatTheTableSays) {
  const std::string headers = ReadFolder(".h");
  EXPECT_GT(MembersOf(headers).size(), 250u);  // else they have not been found
  EXPECT_THAT(Faults(headers, ReadFolder(".cpp"), ReadAll(TOLVANE_SOURCE_DIR "/src/host/members.tsv")), IsEmpty());
}

// --- that the check can fail
// ------------------------------------------------------------------------------------------

const std::string_view kHeader = R"(
class Lamp;
class Bulb : private Handle<LampBody> {
 public:
  explicit Bulb(std::shared_ptr<LampBody> body) : Handle(std::move(body)) {}
  int Watts() const;
};
class Lamp : public Handle<LampBody> {
 public:
  using Handle::Handle;
  friend bool operator==(const Lamp& a, const Lamp& b) noexcept {
    return a.body()->Key() == b.body()->Key();
  }
  bool On() const;  // { not a block }
  void SetOn(bool on, const Options& options = {}) const;
  void Turn() const;
  void Turn(int degrees) const;
  host::Bulb Bulb() const { return host::Bulb(body()); }

 private:
  int Hidden() const;
};
)";
const std::string_view kSource = R"(
int Bulb::Watts() const { return Read("Lamp.Bulb.Watts", &LampBody::Watts); }
bool Lamp::On() const { return Read("Lamp.On", &LampBody::On); }
void Lamp::SetOn(bool on, const Options& options) const { Write("Lamp.On", &LampBody::SetOn, on, options); }
void Lamp::Turn() const { Turn(90); }
)";
const std::string_view kTurn = R"(
void Lamp::Turn() const { Write("Lamp.Turn", [](LampBody& lamp) { lamp.Turn(90); }); }
void Lamp::Turn(int degrees) const {
  Write("Lamp.Turn", &LampBody::Turn, degrees);
}
)";
const std::string_view kTable =
    "# What a lamp has.\nmember\taccess\tneeded by\nLamp.Bulb.Watts\tget\tMLight\nLamp.On\tget\tMLight\n"
    "Lamp.On\tset\tMLight\nLamp.Turn\tcall\tMLight, CRoom\n";

std::string Text(std::string_view text, std::string_view from = "", std::string_view to = "") {
  std::string result(text);
  if (from.empty()) return result;
  const std::size_t at = result.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return result.replace(at, from.size(), to);
}
std::string Source() {
  return Text(kSource, "void Lamp::Turn() const { Turn(90); }", kTurn);
}

TEST(Members, FindsTheMembersOfHandles) {
  std::vector<std::string> names;
  for (const Member& member : MembersOf(Text(kHeader))) names.push_back(member.handle + "." + member.name);
  EXPECT_THAT(names,
              testing::ElementsAre("Bulb.Watts", "Lamp.On", "Lamp.SetOn", "Lamp.Turn", "Lamp.Turn", "Lamp.Bulb"));
}

TEST(Members, NothingIsWrongWhenAllFits) {
  EXPECT_THAT(Faults(Text(kHeader), Source(), Text(kTable)), IsEmpty());
}

TEST(Members, AMissingRowIsFound) {
  EXPECT_THAT(Faults(Text(kHeader), Source(), Text(kTable, "Lamp.On\tset\tMLight\n")),
              testing::ElementsAre("no row for Write of Lamp.On"));
}

TEST(Members, ARowTooManyIsFound) {
  EXPECT_THAT(Faults(Text(kHeader), Source(), Text(kTable) + "Lamp.Colour\tget\tMLight\n"),
              testing::ElementsAre("no handle uses the row Lamp.Colour get"));
  EXPECT_THAT(Faults(Text(kHeader), Source(), Text(kTable) + "Lamp.Bulb.Watts\tset\tMLight\n"),
              testing::ElementsAre("no handle uses the row Lamp.Bulb.Watts set"));
}

TEST(Members, AMemberThatDoesNotPassTheGateIsFound) {
  EXPECT_THAT(
      Faults(
          Text(kHeader),
          Text(kSource) +
              Text(kTurn, "void Lamp::Turn() const { Write(\"Lamp.Turn\", [](LampBody& lamp) { lamp.Turn(90); }); }"),
          Text(kTable)),
      testing::ElementsAre("Lamp::Turn does not pass the gate once"));
  EXPECT_THAT(Faults(Text(kHeader, "bool On() const;", "bool On() const { return body()->On(); }"),
                     Text(Source(), "bool Lamp::On() const { return Read(\"Lamp.On\", &LampBody::On); }"),
                     Text(kTable, "Lamp.On\tget\tMLight\n")),
              testing::ElementsAre("Lamp::On does its work without passing the gate"));
}

TEST(Members, AMemberWithoutADefinitionIsFound) {
  EXPECT_THAT(Faults(Text(kHeader, "bool On() const;", "bool On() const; bool Dim() const;"), Source(), Text(kTable)),
              testing::ElementsAre("Lamp::Dim is not defined as often as it is declared"));
}

TEST(Members, ARowOfAnotherShapeIsFound) {
  EXPECT_THAT(Faults(Text(kHeader), Source(), Text(kTable, "get\tMLight", "get")),
              Contains(HasSubstr("has not three columns")));
  EXPECT_THAT(Faults(Text(kHeader), Source(), Text(kTable) + "Lamp.On\tget\tCRoom\n"),
              Contains("two rows for Lamp.On get"));
}

}  // namespace
