#include "hosts/libreoffice/OfficeDesk.h"

#include <chrono>
#include <cmath>
#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxResults.hpp>
#include <com/sun/star/awt/MessageBoxType.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XMessageBoxFactory.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <com/sun/star/ui/dialogs/ExecutableDialogResults.hpp>
#include <com/sun/star/ui/dialogs/FilePicker.hpp>
#include <com/sun/star/ui/dialogs/TemplateDescription.hpp>
#include <cppuhelper/implbase1.hxx>
#include <ctime>
#include <filesystem>
#include <utility>

#include "hosts/libreoffice/dialogs/PopupMenus.h"
#include "platform/Files.h"
#include "platform/Http.h"

namespace tolvane::libreoffice {

namespace {

namespace buttons = css::awt::MessageBoxButtons;
namespace results = css::awt::MessageBoxResults;
namespace message = host::message;

constexpr std::chrono::milliseconds kHttpTimeout{10000};
constexpr std::size_t kLongestPage = 1 << 20;

constexpr int kButtonMask = 0xF, kIconMask = 0xF0;

sal_Int32 ButtonsOf(int style) {
  const bool second = (style & message::kDefaultButton2) != 0;
  switch (style & kButtonMask) {
    case message::kOkCancel:
      return buttons::BUTTONS_OK_CANCEL | (second ? buttons::DEFAULT_BUTTON_CANCEL : buttons::DEFAULT_BUTTON_OK);
    case message::kYesNo:
      return buttons::BUTTONS_YES_NO | (second ? buttons::DEFAULT_BUTTON_NO : buttons::DEFAULT_BUTTON_YES);
    case message::kYesNoCancel:
      return buttons::BUTTONS_YES_NO_CANCEL | (second ? buttons::DEFAULT_BUTTON_NO : buttons::DEFAULT_BUTTON_YES);
    default:
      return buttons::BUTTONS_OK;
  }
}

css::awt::MessageBoxType TypeOf(int style) {
  switch (style & kIconMask) {
    case message::kCritical:
      return css::awt::MessageBoxType_ERRORBOX;
    case message::kExclamation:
      return css::awt::MessageBoxType_WARNINGBOX;
    case message::kQuestion:
      return css::awt::MessageBoxType_QUERYBOX;
    case message::kInformation:
      // One of these has no other button than OK, whatever it is told.
      if ((style & kButtonMask) == message::kOkOnly) return css::awt::MessageBoxType_INFOBOX;
      [[fallthrough]];
    default:
      return css::awt::MessageBoxType_MESSAGEBOX;
  }
}

host::HostError ToHostError(const platform::FileError& failure, std::string_view path) {
  const std::filesystem::path file = platform::PathFromUtf8(path);
  std::error_code ignored;
  const bool isThere = std::filesystem::exists(file, ignored);
  const bool hasFolder = !file.has_parent_path() || std::filesystem::exists(file.parent_path(), ignored);
  const auto number = isThere     ? host::ErrorNumber::PermissionDenied
                      : hasFolder ? host::ErrorNumber::FileNotFound
                                  : host::ErrorNumber::PathNotFound;
  return host::HostError(number, failure.what());
}

class Keeper final : public cppu::WeakImplHelper1<css::frame::XTerminateListener> {
 public:
  explicit Keeper(std::shared_ptr<OfficeHost> host) : host_(std::move(host)) {}
  void SAL_CALL queryTermination(const css::lang::EventObject&) override {}
  void SAL_CALL notifyTermination(const css::lang::EventObject&) override { host_.reset(); }
  void SAL_CALL disposing(const css::lang::EventObject&) override { host_.reset(); }

 private:
  std::shared_ptr<OfficeHost> host_;
};

}  // namespace

OfficeDesk::OfficeDesk(const Reference<css::uno::XComponentContext>& context)
    : context_(context), forms_(context), settings_(platform::UserSettingsFile()) {}

host::MessageResult OfficeDesk::MsgBox(std::string_view text, int style, std::string_view title) {
  forms_.Redraw();
  return AtEdge([&] {
    const Reference<css::awt::XMessageBoxFactory> toolkit(css::awt::Toolkit::create(context_), UNO_QUERY_THROW);
    const auto box =
        toolkit->createMessageBox(forms_.Front(), TypeOf(style), ButtonsOf(style), ToUno(title), ToUno(text));
    switch (box->execute()) {
      case results::OK:
        return host::MessageResult::Ok;
      case results::YES:
        return host::MessageResult::Yes;
      case results::NO:
        return host::MessageResult::No;
      default:
        break;
    }
    const bool hasCancel =
        (style & kButtonMask) == message::kOkCancel || (style & kButtonMask) == message::kYesNoCancel;
    if (hasCancel) return host::MessageResult::Cancel;
    return (style & kButtonMask) == message::kYesNo ? host::MessageResult::No : host::MessageResult::Ok;
  });
}

void OfficeDesk::ShowForm(host::Form& form) {
  forms_.Show(form);
}

// The office tells nobody where the pointer is: the menu opens in the corner of the front window.
host::CommandBarControl OfficeDesk::ShowPopup(const host::CommandBar& popup) {
  forms_.Redraw();
  const auto front = forms_.Front();
  if (!front.is()) Refuse("The popup menu \"" + popup.body()->Name() + "\" has no window to open over.");
  return ShowPopupMenu(context_, front, 0, 0, popup);
}

std::optional<std::string> OfficeDesk::AskForFile(const host::FileQuestion& question, bool save) {
  namespace dialogs = css::ui::dialogs;
  forms_.Redraw();
  return AtEdge([&]() -> std::optional<std::string> {
    const auto picker = dialogs::FilePicker::createWithMode(
        context_, save ? dialogs::TemplateDescription::FILESAVE_SIMPLE : dialogs::TemplateDescription::FILEOPEN_SIMPLE);
    picker->setTitle(ToUno(question.title));
    int number = 0;
    for (const host::FileQuestion::Filter& filter : question.filters) {
      std::string patterns;
      for (const std::string& pattern : filter.patterns) patterns += (patterns.empty() ? "" : ";") + pattern;
      picker->appendFilter(ToUno(filter.description), ToUno(patterns));
      if (++number == question.filterIndex) picker->setCurrentFilter(ToUno(filter.description));
    }
    if (picker->execute() != dialogs::ExecutableDialogResults::OK) return std::nullopt;
    const auto files = picker->getSelectedFiles();
    if (!files.hasElements()) return std::nullopt;
    return ToPath(files[0]);
  });
}

std::optional<std::string> OfficeDesk::GetOpenFilename(const host::FileQuestion& question) {
  return AskForFile(question, false);
}

std::optional<std::string> OfficeDesk::GetSaveAsFilename(const host::FileQuestion& question) {
  return AskForFile(question, true);
}

// Days since the end of 1899, as spreadsheets count them.
double OfficeDesk::Now() const {
  constexpr double kSecondsOfDay = 86400;
  constexpr double kDaysBefore1970 = 25569;
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm local{};
  localtime_r(&seconds, &local);
  return kDaysBefore1970 + static_cast<double>(seconds + local.tm_gmtoff) / kSecondsOfDay;
}

std::optional<std::string> OfficeDesk::Setting(std::string_view application, std::string_view section,
                                               std::string_view key) const {
  return settings_.Find(application, section, key);
}

void OfficeDesk::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                             std::string_view value) {
  settings_.Set(application, section, key, value);
}

void OfficeDesk::OpenBrowser(std::string_view address) {
  AtEdge([&] {
    css::system::SystemShellExecute::create(context_)->execute(ToUno(address), OUString(),
                                                               css::system::SystemShellExecuteFlags::URIS_ONLY);
  });
}

void OfficeDesk::ShowHelp(std::string_view file, int) {
  Refuse("The help \"" + std::string(file) + "\" cannot be shown in LibreOffice yet.");
}

std::optional<std::string> OfficeDesk::HttpGet(std::string_view address) {
  return platform::HttpGet(address, kHttpTimeout, kLongestPage);
}

bool OfficeDesk::FileExists(std::string_view path) const {
  return platform::FileExists(platform::PathFromUtf8(path));
}

std::string OfficeDesk::ReadFile(std::string_view path) const {
  try {
    return platform::ReadFile(platform::PathFromUtf8(path));
  } catch (const platform::FileError& failure) {
    throw ToHostError(failure, path);
  }
}

void OfficeDesk::AppendLine(std::string_view path, std::string_view line) {
  try {
    platform::AppendLine(platform::PathFromUtf8(path), std::string(line) + '\r');  // ended by CR LF
  } catch (const platform::FileError& failure) {
    throw ToHostError(failure, path);
  }
}

OfficeHost::OfficeHost(const Reference<css::uno::XComponentContext>& context)
    : desk_(context), calc_(context, desk_, {}) {}

void KeepUntilTermination(const Reference<css::uno::XComponentContext>& context, std::shared_ptr<OfficeHost> host) {
  css::frame::Desktop::create(context)->addTerminateListener(new Keeper(std::move(host)));
}

}  // namespace tolvane::libreoffice
