#include "testing/ScriptedDesk.h"

#include <utility>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tolvane::testing {

using host::ErrorNumber;
using host::HostError;
using host::MessageResult;

namespace {

std::string Quoted(std::string_view text) {
  return std::string("\"").append(text).append("\"");
}

std::string NameOf(MessageResult result) {
  switch (result) {
    case MessageResult::Ok:
      return "OK";
    case MessageResult::Cancel:
      return "Cancel";
    case MessageResult::Yes:
      return "Yes";
    case MessageResult::No:
      return "No";
  }
  return std::to_string(static_cast<int>(result));
}

bool HasButton(int style, MessageResult button) {
  switch (style & 15) {
    case host::message::kOkOnly:
      return button == MessageResult::Ok;
    case host::message::kOkCancel:
      return button == MessageResult::Ok || button == MessageResult::Cancel;
    case host::message::kYesNoCancel:
      return button != MessageResult::Ok;
    case host::message::kYesNo:
      return button == MessageResult::Yes || button == MessageResult::No;
    default:
      return false;
  }
}

std::string PathText(const std::optional<std::string>& path) {
  return path.has_value() ? *path : "cancelled";
}

constexpr auto kFitsAlways = [](const auto&) { return std::string(); };

}  // namespace

void ScriptedDesk::Answer(MessageResult result, std::optional<std::string> text) {
  answers_.emplace_back(MessageAnswer{result, std::move(text)});
}

void ScriptedDesk::AnswerOpenFilename(std::optional<std::string> path) {
  answers_.emplace_back(OpenAnswer{std::move(path)});
}

void ScriptedDesk::AnswerSaveAsFilename(std::optional<std::string> path) {
  answers_.emplace_back(SaveAsAnswer{std::move(path)});
}

void ScriptedDesk::OnForm(std::string name, std::function<void(host::Form&)> script) {
  answers_.emplace_back(FormAnswer{std::move(name), std::move(script)});
}

void ScriptedDesk::ChoosePopup(std::initializer_list<std::string_view> captions) {
  answers_.emplace_back(PopupAnswer{std::vector<std::string>(captions.begin(), captions.end())});
}

void ScriptedDesk::ChoosePopup(int position) {
  answers_.emplace_back(PopupAnswer{{}, position});
}

void ScriptedDesk::LeavePopup() {
  answers_.emplace_back(PopupAnswer{});
}

void ScriptedDesk::PressEscAtPoll(int pollsFromNow) {
  escPollsToCome_.insert(escPolls_ + pollsFromNow);
}

void ScriptedDesk::PutSetting(std::string_view application, std::string_view section, std::string_view key,
                              std::string_view value) {
  settings_[KeyOf(application, section, key)] = value;
}

std::vector<std::string> ScriptedDesk::Leftovers() const {
  std::vector<std::string> left;
  for (const QueuedAnswer& answer : answers_) left.push_back(Describe(answer));
  for (const int key : keys_) left.push_back("key " + std::to_string(key));
  for (const int poll : escPollsToCome_) left.push_back("Esc at poll " + std::to_string(poll));
  return left;
}

std::string ScriptedDesk::Describe(const QueuedAnswer& queued) {
  struct Describer {
    std::string operator()(const MessageAnswer& answer) const {
      return "message" + (answer.text.has_value() ? " " + Quoted(*answer.text) : "") + ": " + NameOf(answer.result);
    }
    std::string operator()(const OpenAnswer& answer) const { return "open file: " + PathText(answer.path); }
    std::string operator()(const SaveAsAnswer& answer) const { return "save file as: " + PathText(answer.path); }
    std::string operator()(const FormAnswer& answer) const { return "form " + answer.name; }
    std::string operator()(const PopupAnswer& answer) const {
      std::string text = "popup: ";
      if (answer.captions.empty()) return text + (answer.position == 0 ? "left" : std::to_string(answer.position));
      for (const std::string& caption : answer.captions)
        text += (&caption == &answer.captions[0] ? "" : " > ") + caption;
      return text;
    }
  };
  return std::visit(Describer{}, queued);
}

ScriptedDesk::SettingKey ScriptedDesk::KeyOf(std::string_view application, std::string_view section,
                                             std::string_view key) {
  return {platform::FoldCase(application), platform::FoldCase(section), platform::FoldCase(key)};
}

void ScriptedDesk::Fail(const std::string& problem) {
  unanswered_.push_back(problem);
  throw ScriptError(problem);
}

// `fits` tells what is wrong with the answer; an empty text: nothing.
template <class Kind, class Fits>
Kind ScriptedDesk::Take(const std::string& question, const Fits& fits) {
  if (answers_.empty()) Fail("no answer to " + question);
  auto* const answer = std::get_if<Kind>(&answers_.front());
  if (answer == nullptr) Fail("no answer to " + question + "; the next is for " + Describe(answers_.front()));
  if (const std::string wrong = fits(*answer); !wrong.empty()) {
    Fail("no answer to " + question + "; the next, for " + Describe(answers_.front()) + ", " + wrong);
  }
  Kind taken = std::move(*answer);
  answers_.pop_front();
  return taken;
}

MessageResult ScriptedDesk::MsgBox(std::string_view text, int style, std::string_view title) {
  const std::string question =
      "message " + Quoted(text) + " (" + std::string(title) + ", " + std::to_string(style) + ")";
  const auto answer = Take<MessageAnswer>(question, [&](const MessageAnswer& next) -> std::string {
    if (next.text.has_value() && *next.text != text) return "expects another text";
    if (!HasButton(style, next.result)) return "presses a button that it does not have";
    return {};
  });
  log_.push_back(question + ": " + NameOf(answer.result));
  return answer.result;
}

void ScriptedDesk::ShowForm(host::Form& form) {
  const std::string question = "form " + form.Name() + " " + Quoted(form.Title());
  if (!form.BeginShow()) {
    log_.push_back(question + " went before it was seen");
    return;
  }
  // Whatever goes wrong, a form that nobody works on any more must not stay up.
  struct Hidden {
    host::Form& form;
    ~Hidden() {
      if (form.IsShown()) form.Hide();
    }
  } const hidden{form};
  const auto answer = Take<FormAnswer>(question, [&](const FormAnswer& next) -> std::string {
    return next.name == form.Name() ? "" : "expects another form";
  });
  log_.push_back(question);
  answer.script(form);
  if (form.IsShown()) Fail("the script for " + question + " has left it up");
}

host::CommandBarControl ScriptedDesk::ShowPopup(const host::CommandBar& popup) {
  // Through the bodies: what the user looks at passes no gate.
  const std::string question = "popup " + Quoted(popup.body()->Name());
  const auto answer = Take<PopupAnswer>(question, kFitsAlways);
  log_.push_back(question + Describe(answer).substr(std::string_view("popup").size()));
  try {
    if (answer.captions.empty()) {
      return answer.position == 0 ? host::CommandBarControl() : popup.body()->ControlsItem(answer.position);
    }
    host::CommandBarControl chosen;
    for (const std::string& caption : answer.captions) {
      chosen = chosen.IsNothing() ? popup.body()->ControlsItem(caption) : chosen.body()->ControlsItem(caption);
    }
    return chosen;
  } catch (const HostError& error) {
    Fail("no such choice in " + question + ": " + error.what());
  }
}

std::optional<std::string> ScriptedDesk::GetOpenFilename(const host::FileQuestion& question) {
  const std::string text = "open file " + Quoted(question.title);
  auto answer = Take<OpenAnswer>(text, kFitsAlways);
  log_.push_back(text + ": " + PathText(answer.path));
  return std::move(answer.path);
}

std::optional<std::string> ScriptedDesk::GetSaveAsFilename(const host::FileQuestion& question) {
  const std::string text = "save file as " + Quoted(question.title);
  auto answer = Take<SaveAsAnswer>(text, kFitsAlways);
  log_.push_back(text + ": " + PathText(answer.path));
  return std::move(answer.path);
}

std::optional<int> ScriptedDesk::PeekKey() {
  if (keys_.empty()) return std::nullopt;
  const int key = keys_.front();
  keys_.pop_front();
  return key;
}

bool ScriptedDesk::EscPressed() {
  ++escPolls_;
  return !escPollsToCome_.empty() && escPollsToCome_.erase(escPolls_) > 0;
}

std::optional<std::string> ScriptedDesk::Setting(std::string_view application, std::string_view section,
                                                 std::string_view key) const {
  const auto found = settings_.find(KeyOf(application, section, key));
  return found == settings_.end() ? std::nullopt : std::optional(found->second);
}

void ScriptedDesk::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view value) {
  log_.push_back("setting " + std::string(application) + "/" + std::string(section) + "/" + std::string(key) + " = " +
                 Quoted(value));
  PutSetting(application, section, key, value);
}

void ScriptedDesk::OpenBrowser(std::string_view address) {
  log_.push_back("browser " + std::string(address));
}

void ScriptedDesk::ShowHelp(std::string_view file, int topic) {
  log_.push_back("help " + std::string(file) + ", topic " + std::to_string(topic));
}

std::optional<std::string> ScriptedDesk::HttpGet(std::string_view address) {
  const auto found = pages_.find(address);
  log_.push_back("http " + std::string(address) + (found == pages_.end() ? ": no answer" : ""));
  return found == pages_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<host::Picture> ScriptedDesk::LoadPicture(std::string_view name) const {
  const auto found = pictures_.find(name);
  return found == pictures_.end() ? std::nullopt : std::optional(found->second);
}

bool ScriptedDesk::FileExists(std::string_view path) const {
  return files_.contains(path) || (realFiles_ && platform::FileExists(platform::PathFromUtf8(path)));
}

std::string ScriptedDesk::ReadFile(std::string_view path) const {
  if (!FileExists(path)) throw HostError(ErrorNumber::FileNotFound, "File not found: " + std::string(path));
  if (denied_.contains(path)) throw HostError(ErrorNumber::PermissionDenied, "Permission denied: " + std::string(path));
  if (const auto found = files_.find(path); found != files_.end()) return found->second;
  try {
    return platform::ReadFile(platform::PathFromUtf8(path));
  } catch (const platform::FileError& error) {
    throw HostError(ErrorNumber::PermissionDenied, error.what());
  }
}

void ScriptedDesk::AppendLine(std::string_view path, std::string_view line) {
  if (denied_.contains(path)) throw HostError(ErrorNumber::PermissionDenied, "Permission denied: " + std::string(path));
  if (!realFiles_ || files_.contains(path)) {
    files_[std::string(path)].append(line).append("\r\n");
  } else {
    const auto file = platform::PathFromUtf8(path);
    if (file.has_parent_path() && !std::filesystem::is_directory(file.parent_path())) {
      throw HostError(ErrorNumber::PathNotFound, "Path not found: " + std::string(path));
    }
    try {
      platform::AppendLine(file, std::string(line) + "\r");
    } catch (const platform::FileError& error) {
      throw HostError(ErrorNumber::PermissionDenied, error.what());
    }
  }
  log_.push_back("line to " + std::string(path) + ": " + std::string(line));
}

}  // namespace tolvane::testing
