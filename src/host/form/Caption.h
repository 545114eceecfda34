#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::host {

// A caption with its mnemonic: "&" marks the letter or digit behind it, "&&" is a plain "&". An "&" before anything
// else, or at the end, marks nothing and stands for itself.
struct Mnemonic {
  char key;              // 'a' to 'z' or '0' to '9'
  std::size_t position;  // of the marked character in the plain caption, in bytes
  friend bool operator==(const Mnemonic&, const Mnemonic&) = default;
};

// The caption as it is shown.
std::string PlainCaption(std::string_view caption);
// The first mark of the caption.
std::optional<Mnemonic> MnemonicOf(std::string_view caption);
// A text that is shown as it is, whatever it contains, as a caption.
std::string CaptionOf(std::string_view plainText);

}  // namespace tolvane::host
