#include "platform/Xml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kStatement = R"(<?xml version="1.0" encoding="windows-1252"?>
<!-- two accounts -->
<OFX version='2'>
  <STMTTRNRS id="1"><STMTRS><BANKACCTFROM><BANKID>7</BANKID><ACCTID> 12 &amp; 34 </ACCTID></BANKACCTFROM></STMTRS></STMTTRNRS>
  <OTHER/>
  <STMTTRNRS id="2"><STMTRS><BANKACCTFROM><ACCTID>56</ACCTID></BANKACCTFROM></STMTRS></STMTTRNRS>
</OFX>
)";

std::vector<std::string> Names(const std::vector<XmlNode>& nodes) {
  std::vector<std::string> names;
  for (const XmlNode& node : nodes) names.push_back(node.Name());
  return names;
}

std::vector<std::string> Texts(const std::vector<XmlNode>& nodes) {
  std::vector<std::string> texts;
  for (const XmlNode& node : nodes) texts.push_back(node.Text());
  return texts;
}

std::string ParseProblem(std::string_view text) {
  try {
    ParseXml(text);
  } catch (const XmlError& error) {
    return error.what();
  }
  return "no error";
}

std::string Nested(std::size_t depth) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  text += "x";
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

TEST(ParseXml, GivesTheRootElement) {
  const XmlNode root = ParseXml(kStatement);
  EXPECT_EQ(root.Name(), "OFX");
  EXPECT_EQ(root.Attribute("version"), "2");
  EXPECT_EQ(root.Attribute("missing"), std::nullopt);
  EXPECT_EQ(root.NextSibling(), std::nullopt);
  EXPECT_THAT(Names(root.Children()), ElementsAre("STMTTRNRS", "OTHER", "STMTTRNRS"));
}

TEST(ParseXml, AcceptsAByteOrderMarkAndADocumentType) {
  EXPECT_EQ(ParseXml("\xEF\xBB\xBF<?xml version='1.0'?>\n<A>é</A>").Text(), "é");
  EXPECT_EQ(ParseXml("<!DOCTYPE A [<!ENTITY e \"<!--]>\"> <!-- ']> --> <?p ]> ?>]><A>&e;</A>").Text(), "&e;");
}

TEST(ParseXml, KeepsReferencesToDeclaredEntities) {
  const std::string bomb =
      "<!DOCTYPE A [<!ENTITY a 'ha'><!ENTITY b '&a;&a;&a;&a;'><!ENTITY f SYSTEM 'file:///etc/passwd'>]>"
      "<A x='&b;'>&b;&f;</A>";
  const XmlNode root = ParseXml(bomb);
  EXPECT_EQ(root.Text(), "&b;&f;");
  EXPECT_EQ(root.Attribute("x"), "&b;");
}

TEST(XmlNode, TextIsAllTextWithinAsItIs) {
  EXPECT_EQ(ParseXml("<A> x <B>y<!-- no --> </B><![CDATA[<&]]>\r\n<C/>&lt;&#x20AC;&#65;</A>").Text(), " x y <&\n<€A");
  EXPECT_EQ(ParseXml("<A>  </A>").Text(), "  ");
  EXPECT_EQ(ParseXml("<A/>").Text(), "");
  EXPECT_EQ(ParseXml("<A><B>1</B>2</A>").Children().front().Text(), "1");
}

TEST(XmlNode, SiblingsAreElements) {
  const XmlNode root = ParseXml("<A>x<B/>y<!-- z --><C/>z</A>");
  const XmlNode first = root.Children().front();
  ASSERT_TRUE(first.NextSibling());
  EXPECT_EQ(first.NextSibling()->Name(), "C");
  EXPECT_EQ(first.NextSibling()->NextSibling(), std::nullopt);
  EXPECT_EQ(*first.NextSibling(), root.Children().back());
}

TEST(XmlNode, SelectsRelativeToItself) {
  const XmlNode root = ParseXml(kStatement);
  const std::vector<XmlNode> statements = root.Select("//STMTTRNRS");
  ASSERT_EQ(statements.size(), 2U);
  EXPECT_EQ(statements[1].SelectSingle("STMTRS/BANKACCTFROM/ACCTID")->Text(), "56");
  EXPECT_EQ(statements[1].SelectSingle("STMTRS/BANKACCTFROM/BANKID"), std::nullopt);
  EXPECT_EQ(statements[1].SelectSingle("ACCTID"), std::nullopt);
  EXPECT_EQ(statements[1].SelectSingle("//ACCTID")->Text(), " 12 & 34 ");
  EXPECT_EQ(statements[0].SelectSingle("..//ACCTID[.='56']"), statements[1].SelectSingle(".//ACCTID"));
  EXPECT_THAT(root.Select("MISSING"), IsEmpty());
}

TEST(XmlNode, SelectsInDocumentOrder) {
  const XmlNode root = ParseXml("<A><B>1</B><C>2</C><B>3</B></A>");
  EXPECT_THAT(Texts(root.Select("C | B")), ElementsAre("1", "2", "3"));
  EXPECT_THAT(Texts(root.Select("B[2]/preceding-sibling::*")), ElementsAre("1", "2"));
  EXPECT_EQ(root.SelectSingle("C | B")->Text(), "1");
}

TEST(XmlNode, SelectsAttributesTextsAndTheDocument) {
  const XmlNode root = ParseXml("<A x='1' y='2'>t<B/></A>");
  const std::vector<XmlNode> attributes = root.Select("@*");
  EXPECT_THAT(Names(attributes), ElementsAre("x", "y"));
  EXPECT_THAT(Texts(attributes), ElementsAre("1", "2"));
  EXPECT_THAT(attributes[0].Children(), IsEmpty());
  EXPECT_EQ(attributes[0].Attribute("x"), std::nullopt);
  EXPECT_EQ(attributes[0].NextSibling(), std::nullopt);
  EXPECT_EQ(attributes[0].SelectSingle(".."), root);
  EXPECT_EQ(root.SelectSingle("text()")->Text(), "t");
  EXPECT_EQ(root.SelectSingle("text()")->Name(), "");
  EXPECT_THAT(Names(root.SelectSingle("/")->Children()), ElementsAre("A"));
}

TEST(XmlNode, KeepsItsDocument) {
  std::optional<XmlNode> leaf = ParseXml(kStatement).SelectSingle("//BANKID");
  EXPECT_EQ(leaf->Text(), "7");
}

TEST(XmlNode, SaysWhatIsWrongWithAnXPath) {
  const XmlNode root = ParseXml("<A/>");
  for (const std::string_view wrong : {"B[", "", "1 + 1", "unknown()", "$v"}) {
    EXPECT_THROW(root.Select(wrong), XPathError) << wrong;
  }
  EXPECT_THROW(root.Select(std::string_view("A\0B", 3)), XPathError);
  try {
    root.SelectSingle("B/[1]");
    FAIL();
  } catch (const XPathError& error) {
    EXPECT_THAT(error.what(), HasSubstr("XPath \"B/[1]\", character 3: "));
  }
}

TEST(XmlNode, RefusesADeeplyNestedXPath) {
  const XmlNode root = ParseXml("<A/>");
  EXPECT_THROW(root.Select(std::string(1'000'000, '(')), XPathError);
  std::string nested = "A";
  std::string path = ".";
  for (int i = 0; i < 100'000; ++i) {
    nested += "[A";
    path += "/.";
  }
  EXPECT_THROW(root.Select(nested), XPathError);
  EXPECT_THROW(root.Select(path), XPathError);
}

TEST(ParseXml, SaysWhereAndWhatIsWrong) {
  EXPECT_EQ(ParseProblem(""), "line 1, column 1: the document has no element");
  EXPECT_EQ(ParseProblem("<!-- x -->\n"), "line 2, column 1: the document has no element");
  EXPECT_EQ(ParseProblem("<A>\n <B>\r\n</A>"), "line 3, column 1: </A> closes <B> (line 2, column 2)");
  EXPECT_EQ(ParseProblem("<A/>\r</B>"), "line 2, column 1: </B> closes no element");
  EXPECT_EQ(ParseProblem("<A/>\n<B/>"), "line 2, column 1: <B> is a second root element");
  EXPECT_EQ(ParseProblem("<A/> x"), "line 1, column 6: text outside the root element");
  EXPECT_EQ(ParseProblem("é<A/>"), "line 1, column 1: text outside the root element");
  EXPECT_EQ(ParseProblem("<A>éé & b</A>"),
            "line 1, column 7: an '&' that begins no reference must be written as &amp;");
  EXPECT_EQ(ParseProblem("<A>1 < 2</A>"), "line 1, column 6: a '<' that begins no tag must be written as &lt;");
  EXPECT_EQ(ParseProblem("<A x='1' x='2'/>"), "line 1, column 10: the attribute x is given twice");
  EXPECT_EQ(ParseProblem("<A x='1'y='2'/>"), "line 1, column 9: the attribute y must be separated by a space");
  EXPECT_EQ(ParseProblem("<A x=1/>"), "line 1, column 6: the value of the attribute x must be quoted");
  EXPECT_EQ(ParseProblem("<A x/>"), "line 1, column 5: expected '=' after the attribute x");
  EXPECT_EQ(ParseProblem("<A x='<'/>"), "line 1, column 7: a '<' in the attribute x must be written as &lt;");
  EXPECT_EQ(ParseProblem("<A / >"), "line 1, column 5: expected '>' to end the tag <A> (line 1, column 1)");
  EXPECT_EQ(ParseProblem("<A></A x>"), "line 1, column 4: the end tag is not of the form </name>");
  EXPECT_EQ(ParseProblem(" <?xml version='1.0'?><A/>"),
            "line 1, column 2: the XML declaration must stand at the very beginning");
  EXPECT_EQ(ParseProblem("<A/><!DOCTYPE A>"),
            "line 1, column 5: a document type must stand once, before the root element");
  EXPECT_EQ(ParseProblem("<A>&#0;</A>"),
            "line 1, column 4: the reference names a character that is not allowed in XML");
  EXPECT_EQ(ParseProblem("<A>&#xD800;</A>"),
            "line 1, column 4: the reference names a character that is not allowed in XML");
  EXPECT_EQ(ParseProblem("<A>&#99999999999999999999;</A>"),
            "line 1, column 4: the reference names a character that is not allowed in XML");
  EXPECT_EQ(ParseProblem("<A>&#x;</A>"),
            "line 1, column 4: the character reference is not of the form &#123; or &#x7B;");
  EXPECT_EQ(ParseProblem(std::string_view("<A>\0</A>", 8)),
            "line 1, column 4: the character with the number 0 is not allowed in XML");
  EXPECT_EQ(ParseProblem("<A>\n\xC3\xA9\xFF</A>"), "line 2, column 2: the text is not UTF-8");
}

TEST(ParseXml, GivesLineAndColumnOfAnError) {
  try {
    ParseXml("<A>\n  <B></C></A>");
    FAIL();
  } catch (const XmlError& error) {
    EXPECT_EQ(error.Line(), 2U);
    EXPECT_EQ(error.Column(), 6U);
  }
}

TEST(ParseXml, CutsLongNamesInMessages) {
  std::string name;
  for (int i = 0; i < 1000; ++i) name += "é";
  EXPECT_LT(ParseProblem("<" + name + ">").size(), 200U);
}

TEST(ParseXml, RefusesEveryPrefixOfADocument) {
  const std::string_view whole =
      "<?xml version='1.0'?><!DOCTYPE A [<!ENTITY e 'x'>]><!-- c --><A x=\"1&amp;\"><B/><![CDATA[c]]>é&#65;<?p q?></A>";
  EXPECT_EQ(ParseProblem(whole), "no error");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THROW(ParseXml(whole.substr(0, length)), XmlError) << length;
  }
}

TEST(ParseXml, RefusesNestingBeyondTheLimit) {
  EXPECT_EQ(ParseProblem(Nested(kXmlMaxDepth)), "no error");
  EXPECT_THAT(ParseProblem(Nested(kXmlMaxDepth + 1)), HasSubstr("nested deeper than 1000 levels"));
  EXPECT_THAT(ParseProblem(Nested(1'000'000)), HasSubstr("nested deeper than 1000 levels"));
  std::string bomb;
  for (int i = 0; i < 1'000'000; ++i) bomb += "<a>";
  EXPECT_EQ(ParseProblem(bomb), "line 1, column 3001: elements are nested deeper than 1000 levels");
}

TEST(ParseXml, TheDeepestDocumentCanBeSearched) {
  const XmlNode root = ParseXml(Nested(kXmlMaxDepth));
  EXPECT_EQ(root.Text(), "x");
  EXPECT_EQ(root.Select("//a").size(), kXmlMaxDepth);
  EXPECT_EQ(root.Select("//a[.='x']").size(), kXmlMaxDepth);
  EXPECT_EQ(root.SelectSingle("//a[not(a)]")->Select("ancestor::*").size(), kXmlMaxDepth - 1);
}

TEST(ParseXml, ReadsManySiblings) {
  std::string text = "<A>";
  for (int i = 0; i < 100'000; ++i) text += "<B><C>" + std::to_string(i) + "</C></B>";
  text += "</A>";
  const XmlNode root = ParseXml(text);
  EXPECT_EQ(root.Select("//C").size(), 100'000U);
  EXPECT_EQ(root.SelectSingle("B[C='99999']/C")->Text(), "99999");
}

TEST(XmlNode, IsReadByManyThreads) {
  const XmlNode root = ParseXml(kStatement);
  std::vector<std::size_t> counts(4);
  std::vector<std::thread> threads;
  for (std::size_t& count : counts) {
    threads.emplace_back([&count, root] {
      for (int i = 0; i < 100; ++i) count += root.Select("//ACCTID | //BANKID").size();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(counts, testing::Each(300U));
}

}  // namespace
}  // namespace tolvane::platform
