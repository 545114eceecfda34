#include "hosts/embedded/EmbeddedUser.h"

#include "hosts/embedded/Refusal.h"

namespace tolvane::embedded {

host::MessageResult EmbeddedUser::MsgBox(std::string_view text, int style, std::string_view title) {
  return around_.desk.MsgBox(text, style, title);
}

void EmbeddedUser::ShowForm(host::Form& form) {
  // However the form goes, what waited for it goes on.
  class Up {
   public:
    explicit Up(EmbeddedUser& user) : user_(user) {
      if (user_.formDepth_ == 0) user_.around_.formShown();
      ++user_.formDepth_;
    }
    ~Up() {
      if (--user_.formDepth_ == 0) user_.around_.formGone();
    }
    Up(const Up&) = delete;
    Up& operator=(const Up&) = delete;

   private:
    EmbeddedUser& user_;
  };
  const Up up(*this);
  around_.desk.ShowForm(form);
}

std::optional<std::string> EmbeddedUser::GetOpenFilename(const host::FileQuestion& question) {
  return around_.desk.GetOpenFilename(question);
}

std::optional<std::string> EmbeddedUser::GetSaveAsFilename(const host::FileQuestion& question) {
  return around_.desk.GetSaveAsFilename(question);
}

std::optional<int> EmbeddedUser::PeekKey() {
  return around_.desk.PeekKey();
}

// Both are asked: a key that went down in both ways counts once.
bool EmbeddedUser::EscPressed() {
  const bool program = around_.takeEsc();
  return around_.desk.EscPressed() || program;
}

bool EmbeddedUser::ClipboardHasText() const {
  return around_.clipboardHasText();
}

std::string EmbeddedUser::ClipboardText() const {
  if (!around_.clipboardHasText()) Refuse("There is no text on the clipboard");
  return around_.clipboardText();
}

double EmbeddedUser::Now() const {
  return around_.desk.Now();
}

std::optional<std::string> EmbeddedUser::Setting(std::string_view application, std::string_view section,
                                                 std::string_view key) const {
  return around_.desk.Setting(application, section, key);
}

void EmbeddedUser::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view value) {
  around_.desk.SaveSetting(application, section, key, value);
}

void EmbeddedUser::OpenBrowser(std::string_view address) {
  around_.desk.OpenBrowser(address);
}

void EmbeddedUser::ShowHelp(std::string_view file, int topic) {
  around_.desk.ShowHelp(file, topic);
}

std::optional<std::string> EmbeddedUser::HttpGet(std::string_view address) {
  return around_.desk.HttpGet(address);
}

std::optional<host::Picture> EmbeddedUser::LoadPicture(std::string_view name) const {
  return around_.desk.LoadPicture(name);
}

bool EmbeddedUser::FileExists(std::string_view path) const {
  return around_.desk.FileExists(path);
}

std::string EmbeddedUser::ReadFile(std::string_view path) const {
  return around_.desk.ReadFile(path);
}

void EmbeddedUser::AppendLine(std::string_view path, std::string_view line) {
  around_.desk.AppendLine(path, line);
}

}  // namespace tolvane::embedded
