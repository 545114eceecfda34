#pragma once

#include <vector>

#include "hosts/embedded/EmbeddedHost.h"
#include "src/host/Application.h"
#include "testing/MemoryBookFiles.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::bench {

// An embedded host with one book: a table of `rows` rows by 9 cells like that of an account, on request with as many
// formulas on another sheet, one for each row, and with names and validations that point into the table.
class BookOfSize {
 public:
  explicit BookOfSize(int rows);
  void AddFormulasNamesAndValidations();

  host::Application application() { return host_.application(); }
  const host::Worksheet& table() const { return table_; }
  host::Range tableRange() const { return table_.Cells(1, 1).Resize(rows_, 9); }
  int rows() const { return rows_; }

  // A tenth as many rows as the table has, scattered evenly, as runs of one row each.
  std::vector<host::RowRun> ScatteredRows() const;

  static host::CellBlock Table(int rows);

 private:
  int rows_;
  testing::ScriptedDesk desk_;
  testing::MemoryBookFiles files_;
  embedded::EmbeddedHost host_{desk_, files_};
  host::Workbook book_;
  host::Worksheet table_;
};

}  // namespace tolvane::bench
