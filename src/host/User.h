#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/CommandBars.h"
#include "src/host/Constants.h"
#include "src/host/Handle.h"

namespace tolvane::host {

class Form;

struct FileQuestion {
  struct Filter {
    std::string description;
    std::vector<std::string> patterns;  // "*.ofx"
  };
  std::string title;
  std::vector<Filter> filters;
  int filterIndex = 1;  // the one that is offered first, from 1
};

class UserBody : public Body {
 public:
  virtual MessageResult MsgBox(std::string_view text, int style, std::string_view title) = 0;
  virtual void ShowForm(Form& form) = 0;
  virtual std::optional<std::string> GetOpenFilename(const FileQuestion& question) = 0;
  virtual std::optional<std::string> GetSaveAsFilename(const FileQuestion& question) = 0;
  virtual std::optional<int> PeekKey() = 0;
  virtual bool EscPressed() = 0;
  virtual bool ClipboardHasText() const = 0;
  virtual std::string ClipboardText() const = 0;
  virtual double Now() const = 0;
  virtual std::optional<std::string> Setting(std::string_view application, std::string_view section,
                                             std::string_view key) const = 0;
  virtual void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view value) = 0;
  virtual void OpenBrowser(std::string_view address) = 0;
  virtual void ShowHelp(std::string_view file, int topic) = 0;
  virtual std::optional<std::string> HttpGet(std::string_view address) = 0;
  virtual std::optional<Picture> LoadPicture(std::string_view name) const = 0;
  virtual bool FileExists(std::string_view path) const = 0;
  virtual std::string ReadFile(std::string_view path) const = 0;
  virtual void AppendLine(std::string_view path, std::string_view line) = 0;
};

// The person at the machine and what surrounds the spreadsheet program: what is asked of them, the keys they press, the
// clipboard, the clock, their settings and files.
class User : public Handle<UserBody> {
 public:
  using Handle::Handle;

  // `style` adds up the constants of namespace message.
  MessageResult MsgBox(std::string_view text, int style, std::string_view title) const;
  // Shows a form as a modal dialog over the program and returns when it has been hidden or closed. Forms nest.
  void ShowForm(Form& form) const;
  std::optional<std::string> GetOpenFilename(const FileQuestion& question) const;  // none: cancelled
  std::optional<std::string> GetSaveAsFilename(const FileQuestion& question) const;

  // Takes one waiting key press; its virtual key code (27 is Esc).
  std::optional<int> PeekKey() const;
  // Whether Esc is down or was pressed since the last poll. Cheap: it is asked in long loops.
  bool EscPressed() const;
  // The text that another program, or this one, put on the clipboard; lines end in LF or CR LF.
  bool ClipboardHasText() const;
  std::string ClipboardText() const;
  double Now() const;  // local date and time as a serial number

  std::optional<std::string> Setting(std::string_view application, std::string_view section,
                                     std::string_view key) const;
  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) const;
  void OpenBrowser(std::string_view address) const;       // ApplicationDefined when it cannot
  void ShowHelp(std::string_view file, int topic) const;  // topic 0: the start; ApplicationDefined when it cannot
  std::optional<std::string> HttpGet(std::string_view address) const;  // a short text; none on any failure
  std::optional<Picture> LoadPicture(std::string_view name) const;     // from the program's resources

  bool FileExists(std::string_view path) const;
  std::string ReadFile(std::string_view path) const;  // its bytes; FileNotFound, PermissionDenied
  void AppendLine(std::string_view path,
                  std::string_view line) const;  // ended by CR LF; PermissionDenied, PathNotFound
};

}  // namespace tolvane::host
