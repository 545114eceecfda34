#pragma once

#include "books/Lists.h"
#include "books/Styles.h"
#include "books/Table.h"
#include "src/host/Worksheet.h"

namespace tolvane::books {

// A sheet's table has a line for a cell or a range, applied in their order, so that later lines fill in what earlier
// ones laid out. Its columns:
// - where: an A1 address; whole columns and rows as C:C and 4:4.
// - names: defined names that refer to it, hidden; "book:" in front of one makes it the book's, else it is the sheet's.
// - content: "=" begins a formula, what reads as a number is one, an apostrophe in front makes a text of anything.
// - style: one of styles.tsv.
// - format: a number format of formats.tsv.
// - look: words out of left centre right general wrap bold italic unlocked merge unruled width=12 height=24 list=NAME
//   colour=19. "unruled" takes the lines between rows away; a colour is an index into the palette, for cells that the
//   program fills by it as well.
// - link: a place in the book and the tip, apart by " | ".

// Defines the names alone: contents and formulas of all sheets may refer to them.
void NameCells(const host::Worksheet& sheet, const Table& table);
void FillCells(const host::Worksheet& sheet, const Table& table, const Formats& formats, const Lists& lists);

}  // namespace tolvane::books
