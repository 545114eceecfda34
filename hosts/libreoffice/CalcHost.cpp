#include "hosts/libreoffice/CalcHost.h"

#include <map>
#include <utility>

#include "hosts/libreoffice/BookListener.h"
#include "hosts/libreoffice/CalcApplication.h"
#include "hosts/libreoffice/CalcUserActions.h"
#include "hosts/libreoffice/CalcWorkbook.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/libreoffice/OfficeListener.h"
#include "hosts/shell/CommandBars.h"
#include "hosts/shell/Ribbon.h"
#include "hosts/shell/User.h"

namespace tolvane::libreoffice {

class CalcHost::Impl {
 public:
  Impl(const Reference<css::uno::XComponentContext>& context, shell::Desk& desk, CalcProgram::Options options)
      : program(std::make_shared<CalcProgram>(context, desk, std::move(options))),
        commandBars(std::make_shared<shell::CommandBars>(shell::CommandBars::Surroundings{
            program->gate, desk, [this](std::string_view macro) { program->RunCommand(macro); },
            [this](int id) { program->DoBuiltInControl(id); },
            [this] {
              const auto sheet = program->activeSheet();
              return sheet != nullptr && sheet->ProtectContents();
            }})),
        user(std::make_shared<shell::User>(shell::User::Surroundings{
            program->gate, desk, [this] { return program->ClipboardHasText(); },
            [this] { return program->ClipboardText(); }, [this] { return program->cancelKey.TakeEsc(); },
            [this] { program->events.FormShown(); }, [this] { program->events.FormGone(); }})),
        actions(program, commandBars, [this] { return ribbon; }),
        application(std::make_shared<CalcApplication>(CalcApplication::Parts{program, commandBars, user})) {
    program->OnSentKeys([this] {
      while (const auto key = program->keys.TakeSent()) actions.Press(*key);
    });
    program->onAdopted = [this](CalcWorkbook& book) {
      listeners.emplace(&book, std::make_unique<BookListener>(book.Self()));
    };
    program->onForgotten = [this](CalcWorkbook& book) { listeners.erase(&book); };
    officeListener = std::make_unique<OfficeListener>(program);
  }

  ~Impl() {
    officeListener.reset();
    if (ribbon != nullptr) ribbon->Close();
    commandBars->Close();
    user->Close();
    program->End();
  }

  std::shared_ptr<CalcProgram> program;
  std::shared_ptr<shell::CommandBars> commandBars;
  std::shared_ptr<shell::User> user;
  std::shared_ptr<shell::Ribbon> ribbon;
  CalcUserActions actions;
  std::shared_ptr<CalcApplication> application;
  std::map<const CalcWorkbook*, std::unique_ptr<BookListener>> listeners;
  std::unique_ptr<OfficeListener> officeListener;
};

CalcHost::CalcHost(const Reference<css::uno::XComponentContext>& context, shell::Desk& desk,
                   CalcProgram::Options options)
    : impl_(std::make_unique<Impl>(context, desk, std::move(options))) {}

CalcHost::~CalcHost() = default;

host::Application CalcHost::application() {
  return host::Application(impl_->application);
}

host::UserActions& CalcHost::userActions() {
  return impl_->actions;
}

host::Workbook CalcHost::AdoptAddin(std::string name) {
  return host::Workbook(impl_->program->AdoptAddin(std::move(name)));
}

void CalcHost::OfferMacro(const host::Workbook& book, std::string_view name, std::function<host::CellValue()> macro) {
  impl_->program->macros.Offer(BodyOf(book)->Key(), name, std::move(macro));
}

void CalcHost::LoadRibbon(std::string_view definition, host::RibbonCallbacks& callbacks) {
  auto loaded = shell::Ribbon::Load(impl_->program->gate, definition, callbacks);
  if (impl_->ribbon != nullptr) impl_->ribbon->Close();
  impl_->ribbon = std::move(loaded);
}

}  // namespace tolvane::libreoffice
