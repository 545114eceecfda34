// Files that are not what they seem, or that somebody else holds.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "hosts/libreoffice/in_office/OfficeCase.h"

namespace tolvane::libreoffice {

namespace {

constexpr auto kRefused = host::ErrorNumber::ApplicationDefined;

// Nothing opened, nothing left open.
void ExpectRefused(OfficeUnderTest& office, const std::string& path, std::string_view part) {
  EXPECT_TRUE(Fails(kRefused, part, [&] { office.application().Workbooks().Open(path); })) << path;
  EXPECT_EQ(office.application().Workbooks().Count(), 0) << path;
}

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string SavedBook(OfficeUnderTest& office, std::string_view name) {
  const host::Workbook book = office.application().Workbooks().Add();
  book.Worksheets().Item(1).Range("A1").SetValue("kept");
  const std::string path = office.PathFor(name);
  book.SaveAs(path);
  book.Close(false);
  return path;
}

// As another program's files, whether or not the office has that program, too.
void ATextDocumentNamedLikeAWorkbookIsRefused(OfficeUnderTest& office) {
  constexpr std::string_view kLetter = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" office:version="1.2"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 office:mimetype="application/vnd.oasis.opendocument.text"><office:body><office:text>
<text:p>Dear Sir</text:p></office:text></office:body></office:document>)";
  ExpectRefused(office, office.PutFile("Letter.xlsx", kLetter), "Letter.xlsx");
  ExpectRefused(office, office.PutFile("Plain.xlsx", "Dear Sir,\nwith regards\n"), "Plain.xlsx");
  ExpectRefused(office, office.PutFile("Empty.xlsx", ""), "Empty.xlsx");
}

void AnImageNamedLikeAWorkbookIsRefused(OfficeUnderTest& office) {
  // The smallest picture: one pixel, as a GIF.
  constexpr std::string_view kPixel(
      "GIF89a\1\0\1\0\x80\0\0\0\0\0\xff\xff\xff!\xf9\4\1\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\1D\0;", 43);
  ExpectRefused(office, office.PutFile("Picture.xlsx", kPixel), "Picture.xlsx");
  ExpectRefused(office, office.PutFile("Picture.gif", kPixel), "Picture.gif");
}

void ADamagedWorkbookIsRefused(OfficeUnderTest& office) {
  const std::string whole = Bytes(SavedBook(office, "Whole.xlsx"));
  ExpectRefused(office, office.PutFile("Half.xlsx", std::string_view(whole).substr(0, whole.size() / 2)), "Half.xlsx");
}

void AFolderAndNothingAreRefused(OfficeUnderTest& office) {
  ExpectRefused(office, office.PathFor("Nowhere.xlsx"), "There is no file");
  std::filesystem::create_directory(office.PathFor("Folder.xlsx"));
  ExpectRefused(office, office.PathFor("Folder.xlsx"), "There is no file");
}

// As another user's office marks a file that it has open: name, system user, machine, time, profile.
void ABookThatAnotherUserHasOpenCanBeSavedElsewhere(OfficeUnderTest& office) {
  const std::string path = SavedBook(office, "Shared.xlsx");
  const std::string before = Bytes(path);
  office.PutFile(".~lock.Shared.xlsx#", ",another,elsewhere,20.11.2026 10:00,file:///home/another/profile;");
  const host::Workbook book = office.application().Workbooks().Open(path);
  EXPECT_EQ(book.Worksheets().Item(1).Range("A1").Value().single(), host::CellValue("kept"));
  const host::Range cell = book.Worksheets().Item(1).Range("A1");
  cell.SetValue("changed");
  EXPECT_TRUE(Fails(kRefused, "opened for reading only", [&] { book.Save(); }));
  EXPECT_EQ(Bytes(path), before);
  book.SaveAs(office.PathFor("Mine.xlsx"));
  book.Worksheets().Item(1).Range("A2").SetValue("more");
  book.Save();
  EXPECT_TRUE(book.Saved());
}

void ABookOpenedReadOnlyByHandCannotBeSavedUnderItsName(OfficeUnderTest& office) {
  const std::string path = SavedBook(office, "ReadOnly.xlsx");
  const std::string before = Bytes(path);
  const auto model = office.OpenByHand(path, true);
  const host::Workbook book = office.application().Workbooks().Item("ReadOnly.xlsx");
  const host::Range cell = book.Worksheets().Item(1).Range("A1");
  EXPECT_TRUE(Fails(kRefused, "opened for reading only", [&] { cell.SetValue("changed"); }));
  EXPECT_TRUE(Fails(kRefused, "opened for reading only", [&] { cell.EntireRow().Insert(); }));
  EXPECT_EQ(cell.Value().single(), host::CellValue("kept"));
  EXPECT_TRUE(Fails(kRefused, "opened for reading only", [&] { book.Save(); }));
  EXPECT_EQ(Bytes(path), before);
  office.CloseByHand(model);
}

void AFolderThatCannotBeWrittenToIsRefused(OfficeUnderTest& office) {
  const host::Workbook book = office.application().Workbooks().Add();
  const std::string name = book.Name();
  EXPECT_TRUE(Fails(kRefused, "", [&] { book.SaveAs(office.PathFor("no/such/folder/Book.xlsx")); }));
  EXPECT_EQ(book.Name(), name);
  EXPECT_EQ(book.Path(), "");
  EXPECT_TRUE(book.Names().All().empty());
}

}  // namespace

std::vector<OfficeCase> BadInputCases() {
  return {
      {"BadInput", "ATextDocumentNamedLikeAWorkbookIsRefused", ATextDocumentNamedLikeAWorkbookIsRefused},
      {"BadInput", "AnImageNamedLikeAWorkbookIsRefused", AnImageNamedLikeAWorkbookIsRefused},
      {"BadInput", "ADamagedWorkbookIsRefused", ADamagedWorkbookIsRefused},
      {"BadInput", "AFolderAndNothingAreRefused", AFolderAndNothingAreRefused},
      {"BadInput", "ABookThatAnotherUserHasOpenCanBeSavedElsewhere", ABookThatAnotherUserHasOpenCanBeSavedElsewhere},
      {"BadInput", "ABookOpenedReadOnlyByHandCannotBeSavedUnderItsName",
       ABookOpenedReadOnlyByHandCannotBeSavedUnderItsName},
      {"BadInput", "AFolderThatCannotBeWrittenToIsRefused", AFolderThatCannotBeWrittenToIsRefused},
  };
}

}  // namespace tolvane::libreoffice
