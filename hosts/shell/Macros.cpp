#include "hosts/shell/Macros.h"

#include "platform/Text.h"

namespace tolvane::shell {

MacroCall MacroCall::Parse(std::string_view text) {
  MacroCall call;
  const std::size_t mark = text.rfind('!');
  if (mark == std::string_view::npos) {
    call.macro = text;
    return call;
  }
  call.macro = text.substr(mark + 1);
  std::string_view book = text.substr(0, mark);
  if (book.size() < 2 || book.front() != '\'' || book.back() != '\'') {
    call.book = std::string(book);
    return call;
  }
  book = book.substr(1, book.size() - 2);
  std::string plain;
  for (std::size_t i = 0; i < book.size(); ++i) {
    plain += book[i];
    if (book[i] == '\'' && i + 1 < book.size() && book[i + 1] == '\'') ++i;
  }
  call.book = std::move(plain);
  return call;
}

void Macros::Offer(std::uint64_t book, std::string_view name, Macro macro) {
  macros_[{book, platform::FoldCase(name)}] = std::move(macro);
}

void Macros::Forget(std::uint64_t book) {
  std::erase_if(macros_, [book](const auto& entry) { return entry.first.first == book; });
}

const Macros::Macro* Macros::Find(std::uint64_t book, std::string_view name) const {
  const auto found = macros_.find({book, platform::FoldCase(name)});
  return found == macros_.end() ? nullptr : &found->second;
}

}  // namespace tolvane::shell
