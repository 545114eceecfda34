#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "src/host/CellValue.h"

namespace tolvane::shell {

// What Application.Run is given: "Macro", "Book.xlsx!Macro" or "'Book.xlsx'!Macro" with apostrophes doubled.
struct MacroCall {
  std::optional<std::string> book;
  std::string macro;
  static MacroCall Parse(std::string_view text);
};

// The macros that workbooks offer, told apart by the workbook's key; names ignore case.
class Macros {
 public:
  using Macro = std::function<host::CellValue()>;
  void Offer(std::uint64_t book, std::string_view name, Macro macro);
  void Forget(std::uint64_t book);
  // Null when there is none.
  const Macro* Find(std::uint64_t book, std::string_view name) const;

 private:
  std::map<std::pair<std::uint64_t, std::string>, Macro> macros_;
};

}  // namespace tolvane::shell
