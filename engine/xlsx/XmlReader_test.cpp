#include "engine/xlsx/XmlReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::engine::xlsx {
namespace {

using ::testing::HasSubstr;
using Event = XmlReader::Event;

std::string ProblemIn(std::string_view xml) {
  XmlReader reader(xml, "part");
  try {
    while (reader.Next() != Event::Eof) {
    }
  } catch (const XlsxError& error) {
    return error.what();
  }
  return "none";
}

TEST(XmlReader, TellsTagsTextsAndAttributes) {
  XmlReader reader(
      "<?xml version='1.0'?><!-- > --><a x='1 > 0' y = \"&lt;&#65;&#x42;&quot;\">t&amp;<![CDATA[<&]]><b/>u</a>\n",
      "part");
  ASSERT_EQ(reader.Next(), Event::Start);
  EXPECT_EQ(reader.local(), "a");
  EXPECT_EQ(reader.Raw("x"), "1 > 0");
  EXPECT_EQ(reader.Decoded("y"), "<AB\"");
  EXPECT_EQ(reader.Raw("z"), std::nullopt);
  ASSERT_EQ(reader.Next(), Event::Text);
  EXPECT_EQ(reader.text(), "t&");
  ASSERT_EQ(reader.Next(), Event::Text);
  EXPECT_EQ(reader.text(), "<&");
  ASSERT_EQ(reader.Next(), Event::Start);
  EXPECT_EQ(reader.depth(), 2u);
  ASSERT_EQ(reader.Next(), Event::End);
  EXPECT_EQ(reader.local(), "b");
  ASSERT_EQ(reader.Next(), Event::Text);
  ASSERT_EQ(reader.Next(), Event::End);
  EXPECT_EQ(reader.local(), "a");
  EXPECT_EQ(reader.Next(), Event::Eof);
}

TEST(XmlReader, KnowsTheMainNamespaceByAnyPrefixAndInBothSpellings) {
  for (const char* uri :
       {"http://schemas.openxmlformats.org/spreadsheetml/2006/main", "http://purl.oclc.org/ooxml/spreadsheetml/main"}) {
    const std::string xml =
        "<x:a xmlns:x=\"" + std::string(uri) + "\"><b/><c xmlns=\"" + uri + "\"><x:d/></c><e xmlns=\"other\"/></x:a>";
    XmlReader reader(xml, "part");
    std::string main;
    for (Event event = reader.Next(); event != Event::Eof; event = reader.Next()) {
      if (event == Event::Start && reader.space() == XmlReader::Space::Main) main += reader.local();
    }
    EXPECT_EQ(main, "acd");
  }
}

TEST(XmlReader, CapturesElementsAsTheyAreWritten) {
  XmlReader reader("<a><b  x='1'><c/>t &amp; u</b><d/></a>", "part");
  reader.Next();
  reader.Next();
  EXPECT_EQ(reader.SkipAndCapture(), "<b  x='1'><c/>t &amp; u</b>");
  ASSERT_EQ(reader.Next(), Event::Start);
  EXPECT_EQ(reader.SkipAndCapture(), "<d/>");
  EXPECT_EQ(reader.Next(), Event::End);
}

TEST(XmlReader, ReadsStreamsLongerThanItsWindow) {
  // Tags, texts and captured elements across every border of the window.
  std::string xml = "<a>";
  for (int i = 0; i < 60000; ++i) xml += "<b n=\"" + std::to_string(i) + "\">text " + std::to_string(i) + "</b>";
  const std::string big(1'000'000, 'y');
  xml += "<big>" + big + "</big></a>";
  ZipWriter zip;
  zip.Add("part", xml);
  const ZipArchive archive(zip.Finish());
  Budget budget(archive.bytes().size());
  ZipEntryStream stream(archive, archive.entries()[0], budget);
  XmlReader reader(stream, "part");
  ASSERT_EQ(reader.Next(), Event::Start);
  for (int i = 0; i < 60000; ++i) {
    ASSERT_EQ(reader.Next(), Event::Start);
    ASSERT_EQ(reader.Raw("n"), std::to_string(i));
    if (i % 2 == 0) {
      ASSERT_EQ(reader.ReadText(), "text " + std::to_string(i));
    } else {
      ASSERT_EQ(reader.SkipAndCapture(), "<b n=\"" + std::to_string(i) + "\">text " + std::to_string(i) + "</b>");
    }
  }
  ASSERT_EQ(reader.Next(), Event::Start);
  EXPECT_EQ(reader.ReadText(), big);
  EXPECT_EQ(reader.Next(), Event::End);
  EXPECT_EQ(reader.Next(), Event::Eof);
}

TEST(XmlReader, SaysWhatIsWrong) {
  EXPECT_THAT(ProblemIn(""), HasSubstr("breaks off"));
  EXPECT_THAT(ProblemIn("<a>"), HasSubstr("breaks off"));
  EXPECT_THAT(ProblemIn("<a"), HasSubstr("breaks off"));
  EXPECT_THAT(ProblemIn("<a x=\"1>"), HasSubstr("breaks off"));
  EXPECT_THAT(ProblemIn("<a></b>"), HasSubstr("</b>"));
  EXPECT_THAT(ProblemIn("</a>"), HasSubstr("</a>"));
  EXPECT_THAT(ProblemIn("<a/><b/>"), HasSubstr("two root elements"));
  EXPECT_THAT(ProblemIn("<a/>text"), HasSubstr("outside"));
  EXPECT_THAT(ProblemIn("<a x/>"), HasSubstr("without a value"));
  EXPECT_THAT(ProblemIn("<a x=1/>"), HasSubstr("without quotes"));
  EXPECT_THAT(ProblemIn("<a>&nbsp;</a>"), HasSubstr("entity &nbsp;"));
  EXPECT_THAT(ProblemIn("<a>&#xD800;</a>"), HasSubstr("entity"));
  EXPECT_THAT(ProblemIn("<!DOCTYPE a><a/>"), HasSubstr("document type"));
  EXPECT_THAT(ProblemIn("<?xml version='1.0'?><?xml version='1.0'?><a/>"), HasSubstr("in its middle"));
  EXPECT_EQ(ProblemIn("<?xml version='1.0'?><?xml-other?><a/>"), "none");
  EXPECT_THAT(ProblemIn("<?xml?><?xml"), HasSubstr("breaks off"));
  EXPECT_EQ(ProblemIn("\xEF\xBB\xBF<a/>"), "none");
}

// What is kept as it is written must be XML.
TEST(XmlReader, KnowsWhatANameIs) {
  EXPECT_THAT(ProblemIn("<<a/>"), HasSubstr("no name"));
  EXPECT_THAT(ProblemIn("<a\"b\"/>"), HasSubstr("no name"));
  EXPECT_THAT(ProblemIn("<a x \"y\"=\"1\"/>"), HasSubstr("no name"));
  EXPECT_THAT(ProblemIn("<a =\"1\"/>"), HasSubstr("no name"));
  EXPECT_THAT(ProblemIn("<a x=\"<\"/>"), HasSubstr("a < in it"));
  EXPECT_THAT(ProblemIn("<a x='1' y='1' x='1'/>"), HasSubstr("an attribute twice"));
  EXPECT_THAT(ProblemIn("<a a='' b='' c='' d='' e='' f='' g='' h='' i='' b=''/>"), HasSubstr("an attribute twice"));
  EXPECT_EQ(ProblemIn("<a a='' b='' c='' d='' e='' f='' g='' h='' i='' j=''/>"), "none");
  EXPECT_EQ(ProblemIn("<a:b-c.d_\xC3\xA9 e:f=\">\"/>"), "none");
}

TEST(XmlReader, NamespacesCostLittle) {
  std::string xml = "<a", other = "<a";
  for (int i = 0; i < 40; ++i) {
    xml += " xmlns:p" + std::to_string(i) + "=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
    other += " xmlns:p" + std::to_string(i) + "=\"other\"";
  }
  EXPECT_THAT(ProblemIn(xml + "/>"), HasSubstr("32 prefixes"));
  EXPECT_EQ(ProblemIn(other + "/>"), "none");
}

}  // namespace
}  // namespace tolvane::engine::xlsx
