#include "hosts/shell/TextTable.h"

#include <optional>
#include <utility>

namespace tolvane::shell {

namespace {

bool EndsCell(std::string_view text, std::size_t at) {
  return at >= text.size() || text[at] == '\t' || text[at] == '\n' || text[at] == '\r';
}

// A cell in quotation marks at `at`, which moves behind it; nothing when the marks do not enclose a whole cell.
std::optional<std::string> TakeQuoted(std::string_view text, std::size_t& at) {
  if (text[at] != '"') return std::nullopt;
  std::string cell;
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    if (text[i] != '"') {
      cell += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == '"') {
      cell += text[++i];
    } else {
      if (!EndsCell(text, i + 1)) return std::nullopt;
      at = i + 1;
      return cell;
    }
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::vector<std::string>> SplitTable(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  bool quotesClose = true;  // an open mark without its closing one is searched for once only
  std::size_t at = 0;
  while (at < text.size()) {
    std::vector<std::string>& row = rows.emplace_back();
    while (true) {
      std::optional<std::string> quoted;
      if (quotesClose && at < text.size() && text[at] == '"') {
        quoted = TakeQuoted(text, at);
        if (!quoted && text.find('"', at + 1) == std::string_view::npos) quotesClose = false;
      }
      if (quoted) {
        row.push_back(std::move(*quoted));
      } else {
        std::size_t end = at;
        while (!EndsCell(text, end)) ++end;
        row.emplace_back(text.substr(at, end - at));
        at = end;
      }
      if (at >= text.size() || text[at] != '\t') break;
      ++at;
    }
    if (at < text.size()) at += text.substr(at, 2) == "\r\n" ? 2 : 1;
  }
  return rows;
}

}  // namespace tolvane::shell
