#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/model/Geometry.h"
#include "src/host/Constants.h"

namespace tolvane::embedded {

class EmbeddedWorksheet;

// What the system's clipboard holds: cells of this program while they are in copy or cut mode, else a text, else
// nothing.
class Clipboard {
 public:
  // The cells where these rows and these columns of a sheet meet.
  struct Cells {
    std::shared_ptr<EmbeddedWorksheet> sheet;
    std::vector<engine::Run> rows;
    std::vector<engine::Run> columns;
  };

  host::CutCopyMode mode() const { return mode_; }
  const Cells& cells() const { return cells_; }  // while in a mode
  void Put(Cells cells, host::CutCopyMode mode);
  // The cells go; a text stays.
  void EndMode();

  bool HasText() const;
  // Of cells: what they show, a tab between columns, CR LF behind each row; made when it is asked for.
  std::string Text() const;
  void PutText(std::string text);

 private:
  host::CutCopyMode mode_ = host::CutCopyMode::None;
  Cells cells_;
  std::string text_;
};

}  // namespace tolvane::embedded
