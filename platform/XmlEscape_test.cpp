#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <vector>

#include "platform/Xml.h"

namespace tolvane::platform {
namespace {

TEST(EscapeXml, WritesMarkupAsReferences) {
  EXPECT_EQ(EscapeXml("a<b>&\"c'"), "a&lt;b&gt;&amp;&quot;c&apos;");
  EXPECT_EQ(EscapeXml("\t\r\n"), "&#9;&#13;&#10;");
  EXPECT_EQ(EscapeXml("é日😀"), "é日😀");
}

TEST(EscapeXml, WritesForbiddenCharactersByNumber) {
  EXPECT_EQ(EscapeXml(std::string_view("a\0\x1F", 3)), "a_x0000__x001F_");
  EXPECT_EQ(EscapeXml("\uFFFE\uFFFF\uFFFD"), "_xFFFE__xFFFF_\uFFFD");
}

TEST(EscapeXml, KeepsTextThatLooksLikeAnEscape) {
  EXPECT_EQ(EscapeXml("_x0041_"), "_x005F_x0041_");
  EXPECT_EQ(EscapeXml("_x0041_x0042_"), "_x005F_x0041_x005F_x0042_");
  EXPECT_EQ(EscapeXml("_x0041\x01"), "_x005F_x0041_x0001_");
  EXPECT_EQ(EscapeXml("_x004_ _X0041_ x_"), "_x004_ _X0041_ x_");
}

TEST(UnescapeXml, ReadsPairsOfSurrogatesAndKeepsHalves) {
  EXPECT_EQ(UnescapeXml("_x00e9_"), "é");
  EXPECT_EQ(UnescapeXml("_xD83D__xDE00_"), "😀");
  EXPECT_EQ(UnescapeXml("_xD83D__x0041_"), "_xD83D_A");
  EXPECT_EQ(UnescapeXml("_xDE00_"), "_xDE00_");
  EXPECT_EQ(UnescapeXml("_xD83D_"), "_xD83D_");
  EXPECT_EQ(UnescapeXml("_x00"), "_x00");
}

TEST(EscapeXml, IsUndoneByParsingAndUnescaping) {
  EXPECT_TRUE(rc::check([] {
    const auto piece =
        rc::gen::element<std::string>("_", "_x", "0041", "D83D", "_xDE00_", "\x01", std::string(1, '\0'), "\uFFFE", "é",
                                      "😀", "<", ">", "&", "\"", "'", "\r", "\n", "\t", " ", "]]>", "&amp;");
    std::string text;
    for (const std::string& one : *rc::gen::container<std::vector<std::string>>(piece)) text += one;
    const std::string escaped = EscapeXml(text);
    const XmlNode root = ParseXml("<A x=\"" + escaped + "\" y='" + escaped + "'>" + escaped + "</A>");
    RC_ASSERT(UnescapeXml(root.Text()) == text);
    RC_ASSERT(UnescapeXml(root.Attribute("x").value()) == text);
    RC_ASSERT(UnescapeXml(root.Attribute("y").value()) == text);
  }));
}

}  // namespace
}  // namespace tolvane::platform
