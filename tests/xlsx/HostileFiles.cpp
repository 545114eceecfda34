#include "tests/xlsx/HostileFiles.h"

#include <utility>

#include "tests/xlsx/RawZip.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {

namespace {

constexpr const char* kSheet = "xl/worksheets/sheet1.xml";
constexpr const char* kMain = "xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
constexpr const char* kTooMuch = "far more than the size of the file allows";

std::string Repeated(std::string_view text, int times) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

// `text` with each "#" replaced by the number of its round.
std::string Numbered(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) {
    for (const char c : text) {
      if (c == '#') {
        all += std::to_string(i);
      } else {
        all.push_back(c);
      }
    }
  }
  return all;
}

std::function<std::string()> Sheet(std::string content) {
  return [content = std::move(content)] { return TestFile(content).Bytes(); };
}

std::function<std::string()> SheetOf(const char* before, const char* repeated, int times, const char* after) {
  return [=] { return TestFile(before + Numbered(repeated, times) + after).Bytes(); };
}

std::function<std::string()> Part(const char* path, std::function<std::string()> content) {
  return [=] { return TestFile().Set(path, content()).Bytes(); };
}

// A part of the workbook's, linked as `kind`.
std::function<std::string()> Linked(const char* kind, std::function<std::string()> content) {
  return [=] {
    TestFile file;
    file.Link("xl/workbook.xml", {std::string("rId9 ") + kind + " linked.xml"});
    return file.Set("xl/linked.xml", content()).Bytes();
  };
}

RawEntry Packed(const std::string& name, const std::string& content) {
  RawEntry entry{name, Deflated(content), 8};
  entry.crc = ChecksumOf(content);
  entry.size = static_cast<std::uint32_t>(content.size());
  return entry;
}

std::string WorkbookWith(const std::string& content) {
  return std::string("<workbook ") + kMain + " xmlns:r=\"r\">" + content + "</workbook>";
}

constexpr const char* kOneSheet = "<sheets><sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets>";

void AddArchives(std::vector<HostileFile>& files) {
  files.push_back({"empty", [] { return std::string(); }, {"is empty"}});
  files.push_back({"text", [] { return std::string(100000, 'x'); }, {"no directory"}});
  files.push_back({"encrypted",
                   [] { return std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") + std::string(5000, '\0'); },
                   {"encrypted with a password"}});
  files.push_back({"cut off",
                   [] {
                     const std::string bytes = TestFile().Bytes();
                     return bytes.substr(0, bytes.size() * 2 / 3);
                   },
                   {"may have been cut off"}});
  files.push_back({"an archive of something else",
                   [] {
                     return RawZip({{"a.txt", "text"}});
                   },
                   {"[Content_Types].xml is missing"}});
  files.push_back({"nothing in it", [] { return RawZip({}); }, {"[Content_Types].xml is missing"}});
  files.push_back({"an encrypted part", [] { return RawZip({{"a", "x", 0, 1}}); }, {"part a is encrypted"}});
  files.push_back({"an unknown packing",
                   [] {
                     return RawZip({{"a", "x", 12}});
                   },
                   {"part a", "packed in an unknown way"}});
  files.push_back({"two parts of one name",
                   [] {
                     return RawZip({{"a/B", "x"}, {"A/b", "y"}});
                   },
                   {"two parts named A/b"}});
  files.push_back({"a name that leads away", [] { return RawZip({{"../a", "x"}}); }, {"has the name \"../a\""}});
  files.push_back({"two names of one part",
                   [] {
                     RawEntry entry{"a", "x"};
                     entry.localName = "b";
                     return RawZip({entry});
                   },
                   {"part a goes by another name"}});
  files.push_back({"overlapping parts",
                   [] {
                     // The second lies within the first.
                     RawEntry second{"b", "inner"};
                     const std::string inner = RawZip({second});
                     RawEntry first{"a", inner};
                     second.offset = 30 + 1;
                     return RawZip({first, second});
                   },
                   {"a and b overlap"}});
  files.push_back({"a part told many times",
                   [] {
                     std::vector<RawEntry> entries(1, {"a0", Deflated(std::string(1'000'000, 'a'))});
                     for (int i = 1; i < 5000; ++i) {
                       entries.push_back({"a" + std::to_string(i), ""});
                       entries.back().offset = 0;
                       entries.back().localName = "a0";
                     }
                     return RawZip(entries);
                   },
                   {"part a1 goes by another name"}});
  files.push_back({"a part behind the end",
                   [] {
                     RawEntry entry{"a", "x"};
                     entry.offset = 4'000'000'000;
                     return RawZip({entry});
                   },
                   {"part a is not where it should be"}});
  files.push_back({"a part that is longer than it says",
                   [] {
                     RawEntry entry{"[Content_Types].xml", Deflated(std::string(5'000'000, ' ')), 8};
                     entry.size = 10;
                     return RawZip({entry});
                   },
                   {"[Content_Types].xml is longer than it says"}});
  files.push_back({"a part that is shorter than it says",
                   [] {
                     RawEntry entry{"[Content_Types].xml", Deflated("<Types/>"), 8};
                     entry.size = 30'000'000;
                     return RawZip({entry});
                   },
                   {"[Content_Types].xml is shorter than it says"}});
  files.push_back({"a wrong checksum",
                   [] {
                     RawEntry entry{"[Content_Types].xml", "<Types/>"};
                     entry.crc = 1;
                     return RawZip({entry});
                   },
                   {"[Content_Types].xml does not match its checksum"}});
  files.push_back({"a part over its limit",
                   [] {
                     RawEntry entry{"[Content_Types].xml", Deflated("x"), 8};
                     entry.size = 4'000'000'000;
                     return RawZip({entry});
                   },
                   {"[Content_Types].xml", "too large"}});
}

void AddXml(std::vector<HostileFile>& files) {
  files.push_back({"a billion laughs",
                   Part(kSheet,
                        [] {
                          std::string types = "<!DOCTYPE a [<!ENTITY l0 \"ha\">";
                          for (int i = 1; i < 30; ++i) {
                            types += "<!ENTITY l" + std::to_string(i) + " \"" +
                                     Repeated("&l" + std::to_string(i - 1) + ";", 10) + "\">";
                          }
                          return types + "]>" + Worksheet("<sheetData/>&l29;");
                        }),
                   {kSheet, "declares a document type"}});
  files.push_back(
      {"an external entity",
       Part("xl/workbook.xml", [] { return "<!DOCTYPE a SYSTEM \"file:///etc/passwd\">" + WorkbookWith(kOneSheet); }),
       {"xl/workbook.xml", "declares a document type"}});
  files.push_back({"an unknown entity",
                   Sheet("<sheetData><row><c t=\"str\"><v>&b;</v></c></row></sheetData>"),
                   {kSheet, "entity &b;"}});
  files.push_back({"a million nested elements", SheetOf("<sheetData/>", "<a>", 1'000'000, ""), {kSheet, "200 deep"}});
  files.push_back({"nested elements in the workbook",
                   Part("xl/workbook.xml", [] { return "<workbook>" + Repeated("<a>", 1'000'000); }),
                   {"xl/workbook.xml", "200 deep"}});
  files.push_back({"a long text",
                   [] {
                     return TestFile("<sheetData><row><c t=\"str\"><v>" + std::string(10'000'000, 'a') +
                                     "</v></c></row></sheetData>")
                         .Bytes();
                   },
                   {kSheet, "4 megabytes"}});
  files.push_back({"a long tag name",
                   [] { return TestFile("<sheetData/><" + std::string(3'000'000, 'a') + "/>").Bytes(); },
                   {kSheet, "name of more than 1000"}});
  files.push_back({"many attributes",
                   [] { return TestFile("<sheetData/><a " + Numbered("a#='' ", 200'000) + "/>").Bytes(); },
                   {kSheet, "more than 100 attributes"}});
  // Each tag with a prefix asks for its namespace.
  files.push_back({"many namespaces",
                   [] {
                     std::string open;
                     for (int depth = 0; depth < 150; ++depth) {
                       open += "<a";
                       for (int i = 0; i < 90; ++i) {
                         open += " xmlns:p" + std::to_string(depth * 90 + i) + "=\"" + std::string(kMain).substr(7);
                       }
                       open += ">";
                     }
                     return TestFile("<sheetData/>" + open + Repeated("<p0:a/>", 1'000'000)).Bytes();
                   },
                   {kSheet, "32 prefixes"}});
  files.push_back({"a link twice",
                   [] {
                     return TestFile().Link("xl/workbook.xml", {"rId1 styles a.xml", "rId1 styles b.xml"}).Bytes();
                   },
                   {"xl/_rels/workbook.xml.rels", "two links with the id rId1"}});
  files.push_back({"millions of links",
                   [] {
                     return RawZip(
                         {Packed("[Content_Types].xml", "<Types/>"),
                          Packed("_rels/.rels", "<Relationships>" + Numbered("<Relationship Id=\"#\"/>", 300'000) +
                                                    "<Relationship Id=\"0\"/></Relationships>")});
                   },
                   {"_rels/.rels", "two links with the id 0"}});
  files.push_back({"millions of content types",
                   [] {
                     return RawZip({Packed("[Content_Types].xml",
                                           "<Types>" + Repeated("<Default a=\"1\"/>", 1'500'000) + "</Types>")});
                   },
                   {"[Content_Types].xml", kTooMuch}});
}

void AddCells(std::vector<HostileFile>& files) {
  files.push_back({"millions of cells",
                   [] {
                     const std::string row = "<row>" + Repeated("<c><v>1</v></c>", 400) + "</row>";
                     return TestFile("<sheetData>" + Repeated(row, 12'000) + "</sheetData>").Bytes();
                   },
                   {kSheet, kTooMuch}});
  // Each in a place of its own, which costs most.
  files.push_back({"scattered cells",
                   [] {
                     std::string rows;
                     for (int i = 0; i < 16'000; ++i) {
                       const std::string row = std::to_string(i * 64 + 1);
                       rows += "<row r=\"" + row + "\">";
                       for (const char* column : {"A", "CC", "DD", "EE", "FF", "GG", "HH", "ZZ", "ABC", "XFD"}) {
                         rows += "<c r=\"" + (column + row) + "\"><v>1</v></c>";
                       }
                       rows += "</row>";
                     }
                     return TestFile("<sheetData>" + rows + "</sheetData>").Bytes();
                   },
                   {kSheet, kTooMuch}});
  files.push_back({"the same row again and again",
                   SheetOf("<sheetData>", "<row r=\"1\" ht=\"1\"/><row r=\"2\" ht=\"2\"/>", 700'000, "</sheetData>"),
                   {kSheet, kTooMuch}});
  files.push_back(
      {"a row beyond the grid", Sheet("<sheetData><row r=\"1048577\"/></sheetData>"), {kSheet, "row 1048577"}});
  files.push_back({"a cell beyond the grid",
                   Sheet("<sheetData><row r=\"1\"><c r=\"XFE1\"/></row></sheetData>"),
                   {kSheet, "cell XFE1"}});
  files.push_back({"columns beyond the grid",
                   Sheet("<cols><col min=\"1\" max=\"99999999\"/></cols><sheetData/>"),
                   {kSheet, "columns 1 to 99999999"}});
  files.push_back({"a format that is not there",
                   Sheet("<sheetData><row><c s=\"70000\"/></row></sheetData>"),
                   {kSheet, "format 70000"}});
  files.push_back({"a text that is not there",
                   Sheet("<sheetData><row><c t=\"s\"><v>4000000000</v></c></row></sheetData>"),
                   {kSheet, "shared text 4000000000"}});
  files.push_back({"formulas by the million",
                   SheetOf("<sheetData>", "<row><c><f>A1+1</f></c><c><f>B#*2</f></c></row>", 350'000, "</sheetData>"),
                   {kSheet, kTooMuch}});
  files.push_back(
      {"formulas that name one of many sheets",
       [] {
         TestFile file("<sheetData>" + Repeated("<row><c><f>S1999!A1</f></c></row>", 500'000) + "</sheetData>");
         std::string sheets = "<sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/>";
         std::vector<std::string> links;
         for (int i = 1; i < 2000; ++i) {
           const std::string number = std::to_string(i);
           sheets += "<sheet name=\"S" + number + "\" sheetId=\"1" + number + "\" r:id=\"r" + number + "\"/>";
           links.push_back("r" + number + " worksheet s" + number + ".xml");
           file.Set("xl/s" + number + ".xml", Worksheet("<sheetData/>"));
         }
         file.Link("xl/workbook.xml", links);
         return file.Set("xl/workbook.xml", WorkbookWith("<sheets>" + sheets + "</sheets>")).Bytes();
       },
       {kSheet, kTooMuch}});
  // Shared formulas of a text that nobody can read, moved to each cell.
  files.push_back({"a long shared formula",
                   [] {
                     return TestFile("<sheetData><row><c><f t=\"shared\" si=\"0\">T[" + std::string(1'000'000, 'x') +
                                     "</f></c></row>" +
                                     Repeated("<row><c><f t=\"shared\" si=\"0\"/></c></row>", 100'000) + "</sheetData>")
                         .Bytes();
                   },
                   {kSheet, kTooMuch}});
  files.push_back(
      {"shared formulas that are nowhere",
       SheetOf("<sheetData>", "<row><c><f t=\"shared\" si=\"#\"/></c></row>", 250'000, "</sheetData><sheetData/>"),
       {kSheet, "cells twice"}});
  files.push_back({"data tables by the million",
                   SheetOf("<sheetData>", "<row><c><f t=\"dataTable\"/></c></row>", 1'040'000, "</sheetData>"),
                   {kSheet, kTooMuch}});
  files.push_back({"an array formula over the grid",
                   Sheet("<sheetData><row><c><f t=\"array\" ref=\"A1:XFD1048576\">1</f></c></row></sheetData>"),
                   {kSheet, "impossible area"}});
  files.push_back(
      {"array formulas that fill the grid",
       SheetOf("<sheetData>", "<row><c/><c><f t=\"array\" ref=\"B#:XFC#\">1</f></c></row>", 400, "</sheetData>"),
       {kSheet, ""}});
  files.push_back({"a deep formula",
                   [] {
                     return TestFile("<sheetData><row><c><f>" + Repeated("(", 1'000'000) +
                                     "</f></c></row></sheetData><sheetData/>")
                         .Bytes();
                   },
                   {kSheet, "cells twice"}});
}

void AddLists(std::vector<HostileFile>& files) {
  files.push_back({"merges by the million",
                   SheetOf("<sheetData/><mergeCells>", "<mergeCell ref=\"A1:B2\"/>", 1'400'000, "</mergeCells>"),
                   {kSheet, kTooMuch}});
  files.push_back(
      {"validations by the million",
       SheetOf("<sheetData/><dataValidations>", "<dataValidation sqref=\"A1\"/>", 1'000'000, "</dataValidations>"),
       {kSheet, kTooMuch}});
  files.push_back(
      {"areas by the million",
       [] {
         const std::string rule = "<dataValidation sqref=\"" + Repeated("A1 ", 1'300'000) + "\"/>";
         return TestFile("<sheetData/><dataValidations>" + Repeated(rule, 7) + "</dataValidations>").Bytes();
       },
       {kSheet, kTooMuch}});
  files.push_back({"conditional formats by the million",
                   SheetOf("<sheetData/>", "<conditionalFormatting sqref=\"A1\"/>", 1'000'000, ""),
                   {kSheet, ""}});
  files.push_back(
      {"links of cells by the million",
       [] {
         TestFile file("<sheetData/><hyperlinks>" + Numbered("<hyperlink ref=\"A1\" r:id=\"i#\"/>", 100'000) +
                       "<hyperlink ref=\"A1\" r:id=\"j\"/></hyperlinks>");
         return file
             .Set("xl/worksheets/_rels/sheet1.xml.rels",
                  "<Relationships>" + Numbered("<Relationship Id=\"i#\" Target=\"t#\"/>", 100'000) + "</Relationships>")
             .Bytes();
       },
       {kSheet, "hyperlink whose target j is not there"}});
  files.push_back(
      {"empty elements by the million",
       [] {
         return TestFile("<sheetData/><ignoredErrors>" + Repeated("<a/>", 2'500'000) + "</ignoredErrors>").Bytes();
       },
       {kSheet, kTooMuch}});
  files.push_back(
      {"comments of XML by the million",
       [] { return TestFile("<sheetData/><mergeCells>" + Repeated("<!---->", 4'000'000) + "</mergeCells>").Bytes(); },
       {kSheet, kTooMuch}});
  files.push_back({"names by the million",
                   Part("xl/workbook.xml",
                        [] {
                          return WorkbookWith(
                              kOneSheet +
                              ("<definedNames>" + Numbered("<definedName name=\"n_#\">1</definedName>", 230'000)) +
                              "</definedNames>");
                        }),
                   {"xl/workbook.xml", kTooMuch}});
  files.push_back({"too many sheets",
                   Part("xl/workbook.xml",
                        [] {
                          return WorkbookWith("<sheets>" + Numbered("<sheet name=\"s#\" r:id=\"rId1\"/>", 5000) +
                                              "</sheets>");
                        }),
                   {"xl/workbook.xml", "two sheets in one part"}});
  files.push_back({"one drawing linked many times",
                   [] {
                     TestFile file;
                     std::vector<std::string> links;
                     for (int i = 0; i < 20'000; ++i) links.push_back("r" + std::to_string(i) + " drawing ../d.xml");
                     file.Link(kSheet, links);
                     return file.Set("xl/d.xml", "<d>" + Repeated("<a/>", 2'000'000) + "</d>").Bytes();
                   },
                   {"xl/d.xml", kTooMuch}});
}

void AddTextsAndStyles(std::vector<HostileFile>& files) {
  files.push_back({"texts by the million",
                   Linked("sharedStrings",
                          [] { return std::string("<sst ") + kMain + ">" + Repeated("<si/>", 6'000'000) + "</sst>"; }),
                   {"xl/linked.xml", kTooMuch}});
  files.push_back(
      {"rich texts by the million",
       Linked("sharedStrings",
              [] { return std::string("<sst ") + kMain + ">" + Repeated("<si><r/></si>", 2'500'000) + "</sst>"; }),
       {"xl/linked.xml", kTooMuch}});
  files.push_back(
      {"formats by the million",
       Linked("styles",
              [] { return "<styleSheet><cellXfs>" + Repeated("<xf/>", 1'000'000) + "</cellXfs></styleSheet>"; }),
       {"xl/linked.xml", "too many cellXfs"}});
  files.push_back({"number formats by the million",
                   Linked("styles",
                          [] {
                            return "<styleSheet><numFmts>" +
                                   Numbered("<numFmt numFmtId=\"#\" formatCode=\"0\"/>", 70'000) +
                                   "</numFmts></styleSheet>";
                          }),
                   {"xl/linked.xml", "too many numFmts"}});
  // Each of the records holds it.
  files.push_back({"a long number format",
                   Linked("styles",
                          [] {
                            return "<styleSheet><numFmts><numFmt numFmtId=\"200\" formatCode=\"" +
                                   std::string(1'000'000, '0') + "\"/></numFmts><cellXfs>" +
                                   Repeated("<xf numFmtId=\"200\"/>", 60'000) + "</cellXfs></styleSheet>";
                          }),
                   {"xl/linked.xml", kTooMuch}});
  files.push_back(
      {"a font that is not there",
       Linked("styles", [] { return std::string("<styleSheet><cellXfs><xf fontId=\"99\"/></cellXfs></styleSheet>"); }),
       {"xl/linked.xml", "fontId 99"}});
  files.push_back({"a theme that is too large",
                   Linked("theme", [] { return "<a>" + Repeated("<a/>", 2'500'000) + "</a>"; }),
                   {"xl/linked.xml", kTooMuch}});
}

}  // namespace

std::vector<HostileFile> HostileFiles() {
  std::vector<HostileFile> files;
  AddArchives(files);
  AddXml(files);
  AddCells(files);
  AddLists(files);
  AddTextsAndStyles(files);
  return files;
}

}  // namespace tolvane::xlsxtest
