#include "platform/Text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <vector>

namespace tolvane::platform {
namespace {

// Texts made of characters with an unusual case mapping, and ASCII ones.
rc::Gen<std::string> AnyText() {
  const auto character =
      rc::gen::element<std::string>("a", "A", "k", "K", "z", "Z", "s", "i", "I", "1", "@", "[", "`", "{", "ß", "ẞ", "K",
                                    "ſ", "ﬁ", "ı", "İ", "Σ", "ς", "σ", "é", "É", "Ä", "ä", "日", "😀");
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(character), [](const std::vector<std::string>& all) {
    std::string text;
    for (const std::string& one : all) text += one;
    return text;
  });
}

int Sign(int number) {
  return (number > 0) - (number < 0);
}

TEST(FoldCase, FoldsAsciiLettersOnly) {
  EXPECT_EQ(FoldCase("@AZ[`az{09"), "@az[`az{09");
}

TEST(FoldCase, FoldsFully) {
  EXPECT_EQ(FoldCase("Straße"), "strasse");
  EXPECT_EQ(FoldCase("\u212Aelvin"), "kelvin");
  EXPECT_EQ(FoldCase("ΣΑΣ"), FoldCase("σας"));
  EXPECT_EQ(FoldCase("\uFB01n"), "fin");
}

TEST(CaseMapping, KeepsBytesThatAreNoUtf8) {
  EXPECT_EQ(FoldCase("A\xFFZ\xC3"), "a\xFFz\xC3");
  EXPECT_EQ(LowerCase("A\xFFZ\xC3"), "a\xFFz\xC3");
  EXPECT_EQ(UpperCase("a\xFFz\xC3"), "A\xFFZ\xC3");
}

TEST(FoldCase, IsIdempotent) {
  EXPECT_TRUE(rc::check([] {
    const std::string folded = FoldCase(*AnyText());
    RC_ASSERT(FoldCase(folded) == folded);
  }));
}

TEST(CompareIgnoringCase, IsTheOrderOfTheFoldedBytes) {
  EXPECT_TRUE(rc::check([] {
    const std::string a = *AnyText();
    const std::string b = *AnyText();
    RC_ASSERT(CompareIgnoringCase(a, b) == Sign(FoldCase(a).compare(FoldCase(b))));
    RC_ASSERT(CompareIgnoringCase(a, UpperCase(a)) == Sign(FoldCase(a).compare(FoldCase(UpperCase(a)))));
    RC_ASSERT(EqualIgnoringCase(a, b) == (FoldCase(a) == FoldCase(b)));
  }));
}

TEST(CompareIgnoringCase, KnowsPrefixesAndCharactersThatFoldToAscii) {
  EXPECT_LT(CompareIgnoringCase("abc", "ABCD"), 0);
  EXPECT_GT(CompareIgnoringCase("ABCD", "abc"), 0);
  EXPECT_EQ(CompareIgnoringCase("", ""), 0);
  EXPECT_LT(CompareIgnoringCase("", "é"), 0);
  EXPECT_TRUE(EqualIgnoringCase("MASSE", "maße"));
  EXPECT_TRUE(EqualIgnoringCase("k", "\u212A"));
  EXPECT_FALSE(EqualIgnoringCase("_", "\x1F"));
}

TEST(UpperAndLowerCase, MapAllLetters) {
  EXPECT_EQ(UpperCase("az{09é"), "AZ{09É");
  EXPECT_EQ(UpperCase("az{09"), "AZ{09");
  EXPECT_EQ(UpperCase("groß"), "GROSS");
  EXPECT_EQ(LowerCase("ÀÉ ÏÑ"), "àé ïñ");
  EXPECT_EQ(LowerCase("AZ["), "az[");
  EXPECT_EQ(LowerCase("ΟΔΟΣ"), "οδος");
}

TEST(IsValidUtf8, AcceptsTheShortestFormsOnly) {
  EXPECT_TRUE(IsValidUtf8(""));
  EXPECT_TRUE(IsValidUtf8("plain ASCII of more than eight bytes"));
  EXPECT_TRUE(IsValidUtf8("é日😀\U0010FFFF"));
  EXPECT_TRUE(IsValidUtf8(std::string_view("\0", 1)));
  EXPECT_FALSE(IsValidUtf8("\x80"));
  EXPECT_FALSE(IsValidUtf8("\xC0\x80"));
  EXPECT_FALSE(IsValidUtf8("\xE0\x80\xAF"));
  EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));      // a surrogate
  EXPECT_FALSE(IsValidUtf8("\xF4\x90\x80\x80"));  // beyond U+10FFFF
  EXPECT_FALSE(IsValidUtf8("12345678\xE6\x97"));  // cut off
}

TEST(CharacterCount, CountsCodePoints) {
  EXPECT_EQ(CharacterCount(""), 0U);
  EXPECT_EQ(CharacterCount("aé日😀"), 4U);
}

TEST(FromUtf16, DecodesPairsAndReplacesWhatIsNone) {
  EXPECT_EQ(FromUtf16Le(std::string_view("A\0\xE5\x65\x3D\xD8\x00\xDE", 8)), "A日😀");
  EXPECT_EQ(FromUtf16Be(std::string_view("\0A\x65\xE5\xD8\x3D\xDE\x00", 8)), "A日😀");
  EXPECT_EQ(FromUtf16Be(std::string_view("\xD8\x3D\0A", 4)), "\uFFFDA");
  EXPECT_EQ(FromUtf16Be("\xD8\x3D"), "\uFFFD");
  EXPECT_EQ(FromUtf16Be(std::string_view("\xDE\x00\0A", 4)), "\uFFFDA");
  EXPECT_EQ(FromUtf16Le(std::string_view("A\0B", 3)), "A\uFFFD");
  EXPECT_EQ(FromUtf16Le(""), "");
}

TEST(FromUtf16, GivesValidUtf8ForAnyBytes) {
  EXPECT_TRUE(rc::check([](const std::string& bytes) {
    RC_ASSERT(IsValidUtf8(FromUtf16Le(bytes)));
    RC_ASSERT(IsValidUtf8(FromUtf16Be(bytes)));
    RC_ASSERT(IsValidUtf8(FromWindows1252(bytes)));
    RC_ASSERT(CharacterCount(FromWindows1252(bytes)) == bytes.size());
  }));
}

TEST(FromWindows1252, KnowsThePunctuationAndKeepsUnassignedBytes) {
  EXPECT_EQ(FromWindows1252("\x80 \x85 \x93x\x94 \x9F \xE9\xFF"), "€ … “x” Ÿ éÿ");
  EXPECT_EQ(FromWindows1252("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(FromSystemCodePage, PrefersUtf8) {
  EXPECT_EQ(FromSystemCodePage("caf\xC3\xA9"), "café");
  EXPECT_EQ(FromSystemCodePage("caf\xE9"), "café");
}

}  // namespace
}  // namespace tolvane::platform
