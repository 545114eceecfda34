#pragma once

#include <string>

#include "books/BookTables.h"
#include "src/host/Application.h"

namespace tolvane::books {

// A new book made of the tables of one folder: sheets.tsv, names.tsv and a table for each sheet, with the shared
// styles. It is left open, unsaved, with its first sheet in front.
host::Workbook BuildBook(const host::Application& application, const BookTables& tables, const std::string& folder);

// The add-in workbook: what commands there are, what the sheets are called, and what stands on bars and menus.
host::Workbook BuildAddin(const host::Application& application, const BookTables& tables);

}  // namespace tolvane::books
