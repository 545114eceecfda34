#include "tests/contract/Property.h"

#include <rapidcheck.h>

#include <sstream>

namespace tolvane::contract {

::testing::AssertionResult Holds(const std::string& description, int examples, const std::function<void()>& property) {
  rc::detail::TestParams parameters;
  parameters.seed = 20090315;
  parameters.maxSuccess = examples;
  parameters.maxSize = 30;
  const auto result =
      rc::detail::checkTestable(property, rc::detail::TestMetadata{description, description}, parameters);
  if (result.template is<rc::detail::SuccessResult>()) return ::testing::AssertionSuccess();
  std::ostringstream text;
  rc::detail::printResultMessage(result, text);
  return ::testing::AssertionFailure() << description << ": " << text.str();
}

}  // namespace tolvane::contract
