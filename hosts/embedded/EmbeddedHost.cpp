#include "hosts/embedded/EmbeddedHost.h"

#include <utility>

#include "hosts/embedded/EmbeddedApplication.h"
#include "hosts/embedded/EmbeddedUserActions.h"
#include "hosts/embedded/EmbeddedWorkbook.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Program.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/shell/CommandBars.h"
#include "hosts/shell/Ribbon.h"
#include "hosts/shell/User.h"

namespace tolvane::embedded {

class EmbeddedHost::Impl {
 public:
  Impl(shell::Desk& desk, BookFiles& files, Options options)
      : program(std::make_shared<Program>(desk, files, std::move(options))),
        commandBars(std::make_shared<shell::CommandBars>(shell::CommandBars::Surroundings{
            program->gate, desk, [this](std::string_view macro) { program->RunCommand(macro); },
            [this](int id) { program->DoBuiltInControl(id); },
            [this] {
              const auto sheet = program->activeSheet();
              return sheet != nullptr && sheet->ProtectContents();
            }})),
        user(std::make_shared<shell::User>(shell::User::Surroundings{
            program->gate, desk, [this] { return program->clipboard.HasText(); },
            [this] { return program->clipboard.Text(); }, [this] { return program->cancelKey.TakeEsc(); },
            [this] { program->events.FormShown(); }, [this] { program->events.FormGone(); }})),
        application(std::make_shared<EmbeddedApplication>(EmbeddedApplication::Parts{program, commandBars, user})),
        actions(program, commandBars, [this] { return ribbon; }) {
    program->OnSentKeys([this] {
      while (const auto key = program->keys.TakeSent()) actions.Press(*key);
    });
  }

  ~Impl() {
    if (ribbon != nullptr) ribbon->Close();
    commandBars->Close();
    user->Close();
    program->End();
  }

  host::Workbook Adopt(std::unique_ptr<engine::Workbook> book, std::string name, std::string path, bool isAddin) {
    if (book == nullptr || book->sheetCount() == 0) Refuse("A workbook needs at least one sheet.");
    Program::Opening opening;
    opening.book = std::move(book);
    opening.name = std::move(name);
    opening.path = std::move(path);
    opening.isAddin = isAddin;
    return host::Workbook(program->Open(std::move(opening)));
  }

  std::shared_ptr<Program> program;
  std::shared_ptr<shell::CommandBars> commandBars;
  std::shared_ptr<shell::User> user;
  std::shared_ptr<EmbeddedApplication> application;
  std::shared_ptr<shell::Ribbon> ribbon;
  EmbeddedUserActions actions;
};

EmbeddedHost::EmbeddedHost(shell::Desk& desk, BookFiles& files, Options options)
    : impl_(std::make_unique<Impl>(desk, files, std::move(options))) {}

EmbeddedHost::~EmbeddedHost() = default;

host::Application EmbeddedHost::application() {
  return host::Application(impl_->application);
}

host::UserActions& EmbeddedHost::userActions() {
  return impl_->actions;
}

host::Workbook EmbeddedHost::Adopt(std::unique_ptr<engine::Workbook> book, std::string name, std::string path) {
  return impl_->Adopt(std::move(book), std::move(name), std::move(path), false);
}

host::Workbook EmbeddedHost::AdoptAddin(std::unique_ptr<engine::Workbook> book, std::string name, std::string path) {
  const host::Workbook adopted = impl_->Adopt(std::move(book), std::move(name), std::move(path), true);
  impl_->program->SetThisBook(std::static_pointer_cast<EmbeddedWorkbook>(adopted.body()));
  return adopted;
}

const engine::Workbook& EmbeddedHost::BookOf(const host::Workbook& book) const {
  if (!book.IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return static_cast<const EmbeddedWorkbook&>(*book.body()).book();
}

void EmbeddedHost::OfferMacro(const host::Workbook& book, std::string_view name,
                              std::function<host::CellValue()> macro) {
  if (!book.IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  impl_->program->macros.Offer(book.body()->Key(), name, std::move(macro));
}

void EmbeddedHost::LoadRibbon(std::string_view definition, host::RibbonCallbacks& callbacks) {
  auto loaded = shell::Ribbon::Load(impl_->program->gate, definition, callbacks);
  if (impl_->ribbon != nullptr) impl_->ribbon->Close();
  impl_->ribbon = std::move(loaded);
}

}  // namespace tolvane::embedded
