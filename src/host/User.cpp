#include "src/host/User.h"

namespace tolvane::host {

MessageResult User::MsgBox(std::string_view text, int style, std::string_view title) const {
  return Write("User.MsgBox", &UserBody::MsgBox, text, style, title);
}
void User::ShowForm(Form& form) const {
  Write("User.ShowForm", &UserBody::ShowForm, form);
}
std::optional<std::string> User::GetOpenFilename(const FileQuestion& question) const {
  return Write("User.GetOpenFilename", &UserBody::GetOpenFilename, question);
}
std::optional<std::string> User::GetSaveAsFilename(const FileQuestion& question) const {
  return Write("User.GetSaveAsFilename", &UserBody::GetSaveAsFilename, question);
}
std::optional<int> User::PeekKey() const {
  return Write("User.PeekKey", &UserBody::PeekKey);
}
bool User::EscPressed() const {
  return Read("User.EscPressed", &UserBody::EscPressed);
}
bool User::ClipboardHasText() const {
  return Read("User.ClipboardHasText", &UserBody::ClipboardHasText);
}
std::string User::ClipboardText() const {
  return Read("User.ClipboardText", &UserBody::ClipboardText);
}
double User::Now() const {
  return Read("User.Now", &UserBody::Now);
}
std::optional<std::string> User::Setting(std::string_view application, std::string_view section,
                                         std::string_view key) const {
  return Read("User.Setting", &UserBody::Setting, application, section, key);
}
void User::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) const {
  Write("User.SaveSetting", &UserBody::SaveSetting, application, section, key, value);
}
void User::OpenBrowser(std::string_view address) const {
  Write("User.OpenBrowser", &UserBody::OpenBrowser, address);
}
void User::ShowHelp(std::string_view file, int topic) const {
  Write("User.ShowHelp", &UserBody::ShowHelp, file, topic);
}
std::optional<std::string> User::HttpGet(std::string_view address) const {
  return Read("User.HttpGet", &UserBody::HttpGet, address);
}
std::optional<Picture> User::LoadPicture(std::string_view name) const {
  return Read("User.LoadPicture", &UserBody::LoadPicture, name);
}
bool User::FileExists(std::string_view path) const {
  return Read("User.FileExists", &UserBody::FileExists, path);
}
std::string User::ReadFile(std::string_view path) const {
  return Read("User.ReadFile", &UserBody::ReadFile, path);
}
void User::AppendLine(std::string_view path, std::string_view line) const {
  Write("User.AppendLine", &UserBody::AppendLine, path, line);
}

}  // namespace tolvane::host
