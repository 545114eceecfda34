#include "hosts/shell/User.h"

#include "hosts/shell/Refusal.h"

namespace tolvane::shell {

host::MessageResult User::MsgBox(std::string_view text, int style, std::string_view title) {
  return around_.desk.MsgBox(text, style, title);
}

void User::ShowForm(host::Form& form) {
  // However the form goes, what waited for it goes on.
  class Up {
   public:
    explicit Up(User& user) : user_(user) {
      if (user_.formDepth_ == 0) user_.around_.formShown();
      ++user_.formDepth_;
    }
    ~Up() {
      if (--user_.formDepth_ == 0) user_.around_.formGone();
    }
    Up(const Up&) = delete;
    Up& operator=(const Up&) = delete;

   private:
    User& user_;
  };
  const Up up(*this);
  around_.desk.ShowForm(form);
}

std::optional<std::string> User::GetOpenFilename(const host::FileQuestion& question) {
  return around_.desk.GetOpenFilename(question);
}

std::optional<std::string> User::GetSaveAsFilename(const host::FileQuestion& question) {
  return around_.desk.GetSaveAsFilename(question);
}

std::optional<int> User::PeekKey() {
  return around_.desk.PeekKey();
}

// Both are asked: a key that went down in both ways counts once.
bool User::EscPressed() {
  const bool program = around_.takeEsc();
  return around_.desk.EscPressed() || program;
}

bool User::ClipboardHasText() const {
  return around_.clipboardHasText();
}

std::string User::ClipboardText() const {
  if (!around_.clipboardHasText()) Refuse("There is no text on the clipboard");
  return around_.clipboardText();
}

double User::Now() const {
  return around_.desk.Now();
}

std::optional<std::string> User::Setting(std::string_view application, std::string_view section,
                                         std::string_view key) const {
  return around_.desk.Setting(application, section, key);
}

void User::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) {
  around_.desk.SaveSetting(application, section, key, value);
}

void User::OpenBrowser(std::string_view address) {
  around_.desk.OpenBrowser(address);
}

void User::ShowHelp(std::string_view file, int topic) {
  around_.desk.ShowHelp(file, topic);
}

std::optional<std::string> User::HttpGet(std::string_view address) {
  return around_.desk.HttpGet(address);
}

std::optional<host::Picture> User::LoadPicture(std::string_view name) const {
  return around_.desk.LoadPicture(name);
}

bool User::FileExists(std::string_view path) const {
  return around_.desk.FileExists(path);
}

std::string User::ReadFile(std::string_view path) const {
  return around_.desk.ReadFile(path);
}

void User::AppendLine(std::string_view path, std::string_view line) {
  around_.desk.AppendLine(path, line);
}

}  // namespace tolvane::shell
