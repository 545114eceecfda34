#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/model/Sheet.h"
#include "hosts/embedded/Clipboard.h"

namespace tolvane::embedded {

// What stood in copied cells, taken out of their sheet so that it can be pasted over them. All places count from 0 at
// the top left of the copy; gaps between copied rows and columns are closed. Formats are those of the book it is for.
struct CopiedCells {
  struct Content {
    int row;
    int column;
    engine::Value value;
    engine::ExpressionPtr formula;
    std::optional<engine::Rect> array;  // of an array formula: the area in the copy, in its first cell
  };
  struct Block {
    engine::Rect place;  // top, left, bottom, right in the copy
    engine::FormatId format;
  };
  struct Link {
    engine::Rect place;
    engine::Hyperlink link;
  };
  struct Rule {
    std::vector<engine::Rect> places;
    engine::Validation rule;
  };
  struct Stretch {  // rows or columns as such; only of whole ones
    int first;
    int last;
    engine::Band band;
  };

  int rows = 0;
  int columns = 0;
  bool wholeRows = false;
  bool wholeColumns = false;
  std::vector<Content> contents;
  std::vector<Block> formats;  // of whole rows or columns: the cells' own formats only
  std::vector<engine::Rect> merges;
  std::vector<Rule> validations;
  std::vector<Link> links;
  std::vector<Stretch> bands;

  // `to`: the workbook that the formats are for.
  static CopiedCells Take(const Clipboard::Cells& cells, engine::Workbook& to);
};

}  // namespace tolvane::embedded
