#include "src/host/form/Caption.h"

namespace tolvane::host {

namespace {

// Captions are UTF-8, marks are ASCII, and the locale has no say in either.
std::optional<char> KeyOf(char character) {
  if ((character >= 'a' && character <= 'z') || (character >= '0' && character <= '9')) return character;
  if (character >= 'A' && character <= 'Z') return static_cast<char>(character - 'A' + 'a');
  return std::nullopt;
}

// Hands every character that is shown to `show`, with the key when it is marked.
template <class Show>
void Walk(std::string_view caption, Show show) {
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] != '&' || i + 1 == caption.size()) {
      show(caption[i], std::optional<char>());
    } else if (caption[i + 1] == '&') {
      show('&', std::optional<char>());
      ++i;
    } else if (const auto key = KeyOf(caption[i + 1])) {
      show(caption[++i], key);
    } else {
      show('&', std::optional<char>());
    }
  }
}

}  // namespace

std::string PlainCaption(std::string_view caption) {
  std::string plain;
  plain.reserve(caption.size());
  Walk(caption, [&](char shown, std::optional<char>) { plain += shown; });
  return plain;
}

std::optional<Mnemonic> MnemonicOf(std::string_view caption) {
  std::optional<Mnemonic> first;
  std::size_t position = 0;
  Walk(caption, [&](char, std::optional<char> key) {
    if (key && !first) first = Mnemonic{*key, position};
    ++position;
  });
  return first;
}

std::string CaptionOf(std::string_view plainText) {
  std::string caption;
  caption.reserve(plainText.size());
  for (const char character : plainText) {
    if (character == '&') caption += '&';
    caption += character;
  }
  return caption;
}

}  // namespace tolvane::host
