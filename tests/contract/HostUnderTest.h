#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/Application.h"
#include "src/host/Ribbon.h"
#include "src/host/UserActions.h"
#include "tests/contract/Sheet.h"

namespace tolvane::contract {

// What a case needs of a host beyond the port itself: a user who answers, a machine around the program, and a clean
// start. One implementation a host; cases see nothing else of it.
class HostUnderTest {
 public:
  virtual ~HostUnderTest() = default;

  // No book is open but the add-in's, every setting is as after a start, nothing is queued, nobody listens.
  virtual void Fresh() = 0;

  virtual host::Application application() = 0;
  virtual host::UserActions& user() = 0;
  // The add-in's own workbook.
  virtual host::Workbook addin() = 0;
  virtual void OfferMacro(const host::Workbook& book, std::string_view name,
                          std::function<host::CellValue()> macro) = 0;
  virtual bool HasRibbon() const = 0;
  // The callbacks are kept until Fresh.
  virtual void LoadRibbon(std::string_view definition, std::shared_ptr<host::RibbonCallbacks> callbacks) = 0;

  // What the user does when asked next, in this order. A question for which nothing fitting is queued is an error of
  // the case.
  virtual void AnswerMessage(host::MessageResult answer) = 0;
  virtual void AnswerFile(std::optional<std::string> path) = 0;  // to open; none: cancelled
  virtual void AnswerSaveFile(std::optional<std::string> path) = 0;
  virtual void AnswerForm(std::string name, std::function<void(host::Form&)> script) = 0;
  // The caption of the control to choose; none leaves the popup.
  virtual void AnswerPopup(std::optional<std::string> caption) = 0;
  virtual void PressKeyAhead(int virtualKey) = 0;
  // A line for all that the user was asked and shown since Fresh, in order, with the text that they saw.
  virtual std::vector<std::string> asked() const = 0;

  // Questions that no queued answer fitted; the program under test may have swallowed the error.
  virtual std::vector<std::string> Unanswered() const = 0;

  virtual void SetClock(double now) = 0;
  virtual void PutPicture(std::string_view name, std::string bytes) = 0;
  // Puts a file on the machine and gives its path.
  virtual std::string PutFile(std::string_view name, std::string bytes) = 0;
  virtual void DenyFile(std::string_view path) = 0;  // it can be neither read nor written
  // A path in a folder where books may be saved; nothing is there yet.
  virtual std::string PathFor(std::string_view name) = 0;

  // --- made of the above
  // ------------------------------------------------------------------------------------------------ A new book of one
  // empty sheet, in front.
  host::Workbook NewBook();
  // Its first sheet.
  Sheet NewSheet();
  // Saves a book that `build` has filled under this name, closes it and gives its path.
  std::string SavedBook(std::string_view name, const std::function<void(const host::Workbook&)>& build);
};

std::unique_ptr<HostUnderTest> MakeEmbeddedUnderTest();

}  // namespace tolvane::contract
