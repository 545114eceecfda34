#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tolvane::platform {

// All case mapping is that of no language in particular, so that a document means the same on every machine. Bytes that
// are not UTF-8 stay as they are. Texts with characters beyond ASCII may be up to 2 GiB long (std::length_error).

// Full Unicode case folding of a UTF-8 text: two texts are equal ignoring case when their folded forms are equal.
std::string FoldCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);
// Order ignoring case, by folded bytes: less than 0, 0, greater than 0.
int CompareIgnoringCase(std::string_view a, std::string_view b);
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

bool IsValidUtf8(std::string_view bytes);
// Characters (code points) of a valid UTF-8 text.
std::size_t CharacterCount(std::string_view text);

// --- characters (code points) one by one
// ------------------------------------------------------------------------------

inline constexpr char32_t kReplacementCharacter = 0xFFFD;
// The character at byte `at` of the text, which must not be at its end; `at` moves behind it. Bytes that are not UTF-8
// are one U+FFFD or several.
char32_t NextCharacter(std::string_view text, std::size_t& at);
void AppendCharacter(std::string& text, char32_t character);
bool IsLetter(char32_t character);
bool IsLetterOrDigit(char32_t character);
// A character that would become several stays as it is.
char32_t LowerCharacter(char32_t character);
char32_t TitleCharacter(char32_t character);
char32_t FoldCharacter(char32_t character);

// Decoders to UTF-8. A byte order mark is a character like any other: cut it off first. Bytes that mean nothing in the
// code page become U+FFFD, except Windows-1252's five unassigned bytes, which keep their number.
std::string FromUtf16Le(std::string_view bytes);
std::string FromUtf16Be(std::string_view bytes);
std::string FromWindows1252(std::string_view bytes);
// The system's code page: UTF-8 where the bytes are valid UTF-8, else Windows-1252.
std::string FromSystemCodePage(std::string_view bytes);

}  // namespace tolvane::platform
