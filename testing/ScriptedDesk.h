#pragma once

#include <array>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "hosts/shell/Desk.h"

namespace tolvane::testing {

// The script and the program do not fit: a question that nobody expected, an answer that is none to it.
class ScriptError : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

// A user who does what a test told beforehand, at a machine that the test made up: nothing here depends on the real
// clock, files or network.
//
// Answers wait in one queue, in the order in which the questions will come; those that a form raises while it is up
// come after the form. A question that the next answer does not fit throws ScriptError and is kept in Unanswered, since
// the program may swallow the error.
class ScriptedDesk final : public shell::Desk {
 public:
  // --- what the user will do --------------------------------------------------------------------------------------
  // A message box; `text` is the whole of it.
  void Answer(host::MessageResult result, std::optional<std::string> text = std::nullopt);
  void AnswerOpenFilename(std::optional<std::string> path);    // none: cancelled
  void AnswerSaveAsFilename(std::optional<std::string> path);  // the same
  // Works on the form of that name; must leave it hidden or closed.
  void OnForm(std::string name, std::function<void(host::Form&)> script);
  void ChoosePopup(std::initializer_list<std::string_view> captions);  // from menu to menu
  void ChoosePopup(int position);                                      // from 1
  void LeavePopup();
  void PressKey(int keyCode) { keys_.push_back(keyCode); }  // waits for PeekKey
  void PressEscAtPoll(int pollsFromNow = 1);                // 1: the next

  // --- the machine ------------------------------------------------------------------------------------------------
  static constexpr double kStart = 39887.5;  // 2009-03-15 12:00
  void SetNow(double serial) { now_ = serial; }
  void PutSetting(std::string_view application, std::string_view section, std::string_view key, std::string_view value);
  void PutFile(std::string_view path, std::string_view bytes) { files_[std::string(path)] = bytes; }
  void DenyFile(std::string_view path) { denied_.insert(std::string(path)); }  // PermissionDenied from now on
  void UseRealFiles() { realFiles_ = true; }                                   // where there is none in memory
  void PutPicture(std::string_view name, host::Picture picture) { pictures_[std::string(name)] = std::move(picture); }
  void PutPage(std::string_view address, std::string_view text) { pages_[std::string(address)] = text; }

  // --- what happened ----------------------------------------------------------------------------------------------
  // A line for all that the user saw and all that left the program, without what is polled or only read:
  //   message "Delete 3 rows?" (Tolvane Accounts, 36): Yes
  const std::vector<std::string>& Log() const { return log_; }
  std::vector<std::string> Leftovers() const;  // answers and keys that nobody asked for
  const std::vector<std::string>& Unanswered() const { return unanswered_; }
  int EscPolls() const { return escPolls_; }

  host::MessageResult MsgBox(std::string_view text, int style, std::string_view title) override;
  void ShowForm(host::Form& form) override;
  host::CommandBarControl ShowPopup(const host::CommandBar& popup) override;
  std::optional<std::string> GetOpenFilename(const host::FileQuestion& question) override;
  std::optional<std::string> GetSaveAsFilename(const host::FileQuestion& question) override;
  std::optional<int> PeekKey() override;
  bool EscPressed() override;
  double Now() const override { return now_; }
  std::optional<std::string> Setting(std::string_view application, std::string_view section,
                                     std::string_view key) const override;
  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void OpenBrowser(std::string_view address) override;
  void ShowHelp(std::string_view file, int topic) override;
  std::optional<std::string> HttpGet(std::string_view address) override;  // none but the pages that were put
  std::optional<host::Picture> LoadPicture(std::string_view name) const override;
  bool FileExists(std::string_view path) const override;
  std::string ReadFile(std::string_view path) const override;
  void AppendLine(std::string_view path, std::string_view line) override;

 private:
  struct MessageAnswer {
    host::MessageResult result;
    std::optional<std::string> text;
  };
  struct OpenAnswer {
    std::optional<std::string> path;
  };
  struct SaveAsAnswer {
    std::optional<std::string> path;
  };
  struct FormAnswer {
    std::string name;
    std::function<void(host::Form&)> script;
  };
  struct PopupAnswer {
    std::vector<std::string> captions;
    int position = 0;  // where there are no captions; 0: the popup is left
  };
  using QueuedAnswer = std::variant<MessageAnswer, OpenAnswer, SaveAsAnswer, FormAnswer, PopupAnswer>;
  using SettingKey = std::array<std::string, 3>;  // folded: names ignore case

  static std::string Describe(const QueuedAnswer& answer);
  static SettingKey KeyOf(std::string_view application, std::string_view section, std::string_view key);
  [[noreturn]] void Fail(const std::string& problem);
  // Takes the next answer, which must be of this kind and fit.
  template <class Kind, class Fits>
  Kind Take(const std::string& question, const Fits& fits);

  std::deque<QueuedAnswer> answers_;
  std::deque<int> keys_;
  std::set<int> escPollsToCome_;  // by their number
  int escPolls_ = 0;
  double now_ = kStart;
  std::map<SettingKey, std::string> settings_;
  std::map<std::string, std::string, std::less<>> files_;
  std::set<std::string, std::less<>> denied_;
  bool realFiles_ = false;
  std::map<std::string, host::Picture, std::less<>> pictures_;
  std::map<std::string, std::string, std::less<>> pages_;
  std::vector<std::string> log_;
  std::vector<std::string> unanswered_;
};

}  // namespace tolvane::testing
