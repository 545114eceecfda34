#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/xlsx/XlsxError.h"

namespace tolvane::engine::xlsx {

// What a file may cost. A book of a million rows stays far below all of it; a file that was made to fill the memory
// ends in an error.
inline constexpr std::size_t kMostEntries = 65535;
// One part that is read as a whole; the cells of a sheet and the shared texts are streamed instead.
inline constexpr std::size_t kMostPartBytes = std::size_t{32} << 20;
// One tag or one text of a streamed part. A cell's text has at most 32767 characters.
inline constexpr std::size_t kMostTokenBytes = std::size_t{4} << 20;
inline constexpr std::size_t kMostDepth = 200;  // elements within each other; Excel's own stay below twenty
inline constexpr std::size_t kMostAttributes = 100;
inline constexpr std::size_t kMostNameBytes = 1000;  // of a tag

// That a file costs too much ends its reading, whatever else may be left out of it.
class OverBudget : public XlsxError {
 public:
  using XlsxError::XlsxError;
};

// Bytes that reading a file may take, inflated and in the model: so much for any file, and so many times its own size.
class Budget {
 public:
  static constexpr std::uint64_t kBase = std::uint64_t{128} << 20;

  explicit Budget(std::size_t fileBytes, std::uint64_t base = kBase)
      : left_(base + kTimes * static_cast<std::uint64_t>(fileBytes)) {}
  // What is spent from now on is spent on this part of the file.
  void ReadingPart(std::string_view name) { part_ = name; }
  void Spend(std::uint64_t bytes) {
    if (bytes > left_) {
      throw OverBudget("The part " + part_ +
                       " of the file holds far more than the size of the file allows for: it may have been made to "
                       "fill the memory");
    }
    left_ -= bytes;
  }

 private:
  static constexpr std::uint64_t kTimes = 100;
  std::uint64_t left_;
  std::string part_;
};

}  // namespace tolvane::engine::xlsx
