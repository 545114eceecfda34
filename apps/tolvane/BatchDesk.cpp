#include "apps/tolvane/BatchDesk.h"

#include <chrono>
#include <ctime>
#include <iostream>

#include "apps/tolvane/TextTable.h"
#include "platform/Files.h"
#include "platform/Http.h"

namespace tolvane::app {
namespace {

using host::ErrorNumber;
using host::HostError;

// The button that Enter would press.
host::MessageResult DefaultAnswer(int style) {
  const bool second = (style & host::message::kDefaultButton2) != 0;
  switch (style & 0xF) {
    case host::message::kOkCancel:
      return second ? host::MessageResult::Cancel : host::MessageResult::Ok;
    case host::message::kYesNo:
    case host::message::kYesNoCancel:
      return second ? host::MessageResult::No : host::MessageResult::Yes;
    default:
      return host::MessageResult::Ok;
  }
}

}  // namespace

host::MessageResult BatchDesk::MsgBox(std::string_view text, int style, std::string_view title) {
  std::cerr << VisibleText(title) << ": " << VisibleText(text) << '\n';
  return DefaultAnswer(style);
}

void BatchDesk::ShowForm(host::Form&) {
  throw HostError(ErrorNumber::ApplicationDefined, "A form cannot be filled in here; give its answers as options.");
}

host::CommandBarControl BatchDesk::ShowPopup(const host::CommandBar&) {
  return {};
}

std::optional<std::string> BatchDesk::GetOpenFilename(const host::FileQuestion&) {
  return std::nullopt;
}

std::optional<std::string> BatchDesk::GetSaveAsFilename(const host::FileQuestion&) {
  return std::nullopt;
}

std::optional<int> BatchDesk::PeekKey() {
  return std::nullopt;
}

bool BatchDesk::EscPressed() {
  return false;
}

double BatchDesk::Now() const {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm local{};
  localtime_r(&now, &local);
  const auto day = std::chrono::sys_days(std::chrono::year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday);
  constexpr int kSerialOf1970 = 25569;
  constexpr double kSecondsADay = 86400;
  return kSerialOf1970 + static_cast<double>(day.time_since_epoch().count()) +
         (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / kSecondsADay;
}

std::optional<std::string> BatchDesk::Setting(std::string_view application, std::string_view section,
                                              std::string_view key) const {
  return platform::FileSettings(platform::UserSettingsFile()).Find(application, section, key);
}

void BatchDesk::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value) {
  platform::FileSettings(platform::UserSettingsFile()).Set(application, section, key, value);
}

void BatchDesk::OpenBrowser(std::string_view address) {
  throw HostError(ErrorNumber::ApplicationDefined,
                  "There is no browser here; open this address yourself: " + std::string(address));
}

void BatchDesk::ShowHelp(std::string_view file, int) {
  throw HostError(ErrorNumber::ApplicationDefined,
                  "There is no help viewer here; open this file yourself: " + std::string(file));
}

std::optional<std::string> BatchDesk::HttpGet(std::string_view address) {
  return platform::HttpGet(address, std::chrono::seconds(10), 64 * 1024);
}

std::optional<host::Picture> BatchDesk::LoadPicture(std::string_view) const {
  return std::nullopt;
}

bool BatchDesk::FileExists(std::string_view path) const {
  return platform::FileExists(platform::PathFromUtf8(path));
}

std::string BatchDesk::ReadFile(std::string_view path) const {
  if (!FileExists(path)) throw HostError(ErrorNumber::FileNotFound, "There is no file " + std::string(path) + ".");
  try {
    return platform::ReadFile(platform::PathFromUtf8(path));
  } catch (const platform::FileError& error) {
    throw HostError(ErrorNumber::PermissionDenied, error.what());
  }
}

void BatchDesk::AppendLine(std::string_view path, std::string_view line) {
  try {
    platform::AppendLine(platform::PathFromUtf8(path), std::string(line) + '\r');
  } catch (const platform::FileError& error) {
    throw HostError(ErrorNumber::PermissionDenied, error.what());
  }
}

}  // namespace tolvane::app
