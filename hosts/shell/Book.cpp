#include "hosts/shell/Book.h"

#include "hosts/shell/Refusal.h"
#include "hosts/shell/Session.h"

namespace tolvane::shell {

bool Book::MayGoOn(const std::function<void(host::ApplicationEvents&, const host::Workbook&, bool&)>& ask) {
  if (!session().settings.enableEvents) return true;
  const host::Workbook self(shared_from_this());
  const bool cancelled =
      session().events.Ask([&](host::ApplicationEvents& listener, bool& cancel) { ask(listener, self, cancel); });
  return !cancelled && IsAlive();
}

bool Book::MaySave(bool saveAsUI) {
  return MayGoOn([saveAsUI](host::ApplicationEvents& listener, const host::Workbook& book, bool& cancel) {
    listener.WorkbookBeforeSave(book, saveAsUI, cancel);
  });
}

bool Book::MayClose() {
  return MayGoOn([](host::ApplicationEvents& listener, const host::Workbook& book, bool& cancel) {
    listener.WorkbookBeforeClose(book, cancel);
  });
}

bool Book::MayPrint() {
  return MayGoOn([](host::ApplicationEvents& listener, const host::Workbook& book, bool& cancel) {
    listener.WorkbookBeforePrint(book, cancel);
  });
}

void Book::Save() {
  if (!HasFile()) Refuse("The workbook \"" + Name() + "\" has no file yet; give it one with SaveAs.");
  const auto self = shared_from_this();
  if (MaySave(false)) WriteFile(FullName());
}

void Book::SaveAs(std::string_view path) {
  const auto self = shared_from_this();
  const std::string wanted(path);
  RequireFilePath(wanted);
  if (MaySave(false)) WriteFile(wanted);
}

void Book::Close(bool saveChanges) {
  const auto self = shared_from_this();
  if (!MayClose()) return;
  if (saveChanges && !Saved()) {
    if (!HasFile()) Refuse("The workbook \"" + Name() + "\" has no file to save its changes to; use SaveAs first.");
    if (!MaySave(false)) return;
    WriteFile(FullName());
  }
  session().CloseBook(*this);
}

}  // namespace tolvane::shell
