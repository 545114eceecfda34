#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/xlsx/BookLock.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "hosts/files/XlsxFiles.h"
#include "platform/TemporaryFolder.h"
#include "src/host/Application.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::books {

// The workbooks that the build made, opened in a host of their own.
class OpenBooks : public ::testing::Test {
 protected:
  static std::string SharePath(std::string_view name) { return std::string(TOLVANE_SHARE) + "/" + std::string(name); }
  // A template opens as a new book.
  host::Workbook Open(std::string_view name) { return application().Workbooks().Open(SharePath(name)); }
  host::Workbook AccountsBook() { return Open("Accounts Book.xltm"); }
  host::Workbook Breakdown() { return Open("Breakdown.xltm"); }
  host::Workbook Addin() { return Open("Tolvane Accounts.xlam"); }

  host::Application application() { return host_.application(); }
  embedded::EmbeddedHost& host() { return host_; }

  static host::Worksheet SheetOf(const host::Workbook& book, std::string_view codeName) {
    for (const host::Worksheet& sheet : book.Worksheets().All()) {
      if (sheet.CodeName() == codeName) return sheet;
    }
    ADD_FAILURE() << "no sheet has the code name " << codeName;
    return {};
  }

  static int ColumnOf(const host::Worksheet& sheet, std::string_view name) { return sheet.Range(name).Column(); }
  static int RowOf(const host::Worksheet& sheet, std::string_view name) { return sheet.Range(name).Row(); }
  static std::string TextOf(const host::Range& cell) {
    const host::CellValue value = cell.Value().single();
    return value.isText() ? std::string(value.text()) : std::string();
  }
  // A sheet of an account, as the program makes it.
  static host::Worksheet AccountSheet(const host::Workbook& book, std::string_view name) {
    const host::Worksheet original = SheetOf(book, "wksSheetTemplate");
    original.SetVisible(host::SheetVisibility::Hidden);
    original.CopyAfter(SheetOf(book, "wksBalanceSheet"));
    original.SetVisible(host::SheetVisibility::VeryHidden);
    const host::Worksheet copy = book.Worksheets().Item(original.Name() + " (2)");
    copy.SetName(name);
    copy.SetVisible(host::SheetVisibility::Visible);
    copy.Unprotect();
    return copy;
  }
  static std::string Prefix(const host::Worksheet& sheet) {
    std::string prefix = "='";
    for (const char c : sheet.Name()) prefix.append(c == '\'' ? 2 : 1, c);
    return prefix + "'!";
  }
  // Rows below a table's header, each from its first column on; the names of the columns follow.
  static void PutRows(const host::Worksheet& sheet, const host::CellBlock& rows,
                      const std::vector<std::pair<std::string, std::string>>& columnNames) {
    const host::Range start = sheet.Range("ptrTableStart").Offset(1, 0);
    start.Resize(rows.rows(), rows.columns()).SetValue(rows);
    for (const auto& [name, column] : columnNames) {
      const host::Range cells = sheet.Range(column).Offset(1, 0).Resize(rows.rows(), 1);
      sheet.Names().Add(name, Prefix(sheet) + cells.Address(), false);
    }
  }
  static void SetCategories(const host::Workbook& book, const std::vector<std::string>& items) {
    const host::Worksheet lists = SheetOf(book, "wksLists");
    lists.Unprotect();
    const host::Range first = lists.Range("ptrISCategories").Offset(1, 0);
    host::CellBlock block(static_cast<int>(items.size()) + 1, 1);
    for (std::size_t i = 0; i < items.size(); ++i) block.at(static_cast<int>(i) + 1, 1) = items[i];
    block.at(block.rows(), 1) = "Unallocated";
    first.Resize(block.rows(), 1).SetValue(block);
    book.Names().Add("lstISCategories", Prefix(lists) + first.Resize(static_cast<int>(items.size()), 1).Address(),
                     false);
    book.Names().Add("lstISCategoriesExt", Prefix(lists) + first.Resize(block.rows(), 1).Address(), false);
  }

 private:
  testing::ScriptedDesk desk_;
  engine::SystemLockWorld locks_;
  files::XlsxFiles files_{locks_};
  embedded::EmbeddedHost host_{desk_, files_};
};

inline const std::vector<std::pair<std::string, std::string>> kAccountRanges = {{"rngType", "ptrColumnType"},
                                                                                {"rngAmount", "ptrColumnAmount"},
                                                                                {"rngPeriod", "ptrColumnPeriod"},
                                                                                {"rngCategory", "ptrColumnISCategory"}};
inline const std::vector<std::pair<std::string, std::string>> kAdjustmentRanges = {
    {"rngAmount", "ptrColumnAmount"},
    {"rngPeriod", "ptrColumnPeriod"},
    {"rngCategoryMinus", "ptrColumnCategoryMinus"},
    {"rngCategoryPlus", "ptrColumnCategoryPlus"}};

}  // namespace tolvane::books
