#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Value.h"

namespace tolvane::formulacases {

// What Calc came to. It saves an error of its own as #VALUE!, so its number is asked for apart.
struct CalcResult {
  engine::Value value;
  int error = 0;  // Calc's number of an error that Excel does not have; else 0
};

// Where LibreOffice Calc computes something else, and who is right by Excel's documentation. The file:
//
//   # a comment
//   == ours | theirs | both | unclear: why                 who is right; the reason of the entries below it
//   CASE <tab> OURS <tab> THEIRS                           an entry
//
// CASE is a written formula ("LEFT(A1,-1)", without its equals sign and the braces of an array formula) or the kind of
// a made one ("LEFT(words cell; number)"); it names a function or an operator. "*" in it stands for anything, and
// "<A|B>" at its beginning makes an entry for each. OURS and THEIRS are the results: number, text, boolean, error, a
// certain error, TRUE, FALSE, a number, a "text", or * for anything; not both are *. Calc has errors that Excel has
// not, such as Err:502 for any argument that a function cannot take.
struct KnownDifference {
  int line = 0;
  std::string pattern;
  std::string ours;
  std::string theirs;
  int used = 0;
};

class KnownDifferences {
 public:
  // Throws std::runtime_error that names the line for what cannot be read.
  explicit KnownDifferences(std::string_view text);
  static KnownDifferences Of(const std::filesystem::path& path);

  // Whether an entry says so; the first that does is counted as used.
  bool Allow(std::string_view theCase, const engine::Value& ours, const CalcResult& theirs);
  // Entries that no case needed.
  std::vector<KnownDifference> Unused() const;
  const std::vector<KnownDifference>& entries() const { return entries_; }

 private:
  std::vector<KnownDifference> entries_;
};

// A value as entries write it: 5, TRUE, #N/A, "text".
std::string Described(const engine::Value& value);
std::string Described(const CalcResult& result);

// Whether both programs mean the same result: numbers to nine digits, everything else exactly. An error that Excel does
// not have counts as #VALUE!, as Calc itself saves it. Calc saves an empty result as an empty text.
bool IsSame(const engine::Value& ours, const CalcResult& theirs);

}  // namespace tolvane::formulacases
