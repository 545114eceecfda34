// The dialogs of the office, tested in a real one: someone who sees by accessibility works on forms.
#include <algorithm>
#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <memory>

#include "hosts/libreoffice/dialogs/in_office/DialogCase.h"
#include "hosts/libreoffice/office/Office.h"

namespace tolvane::libreoffice {

namespace {

class CaseTest final : public ::testing::Test {
 public:
  CaseTest(DialogWorld& world, const DialogCase& tested) : world_(world), case_(tested) {}
  void TestBody() override { case_.body(world_); }

 private:
  DialogWorld& world_;
  DialogCase case_;
};

// To be looked at: until someone closes it.
void StaysUp(DialogWorld& world) {
  SampleForm form;
  world.user.ShowForm(form);
}

}  // namespace

DialogWorld::DialogWorld(const Reference<css::uno::XComponentContext>& officeContext)
    : context(officeContext),
      office(std::make_unique<OfficeHost>(officeContext)),
      application(office->calc().application()),
      user(application.User()),
      person(officeContext) {
  application.Workbooks().Add();
}

void DialogWorld::Show(host::Form& form, const std::function<void(Person&, Seen window)>& script) {
  person.Do([&] { user.ShowForm(form); }, [&](Person& someone) { script(someone, someone.Window(form.Title())); });
}

void Happens(const Person& person, const Seen& window, const SampleForm& form, const std::string& event) {
  person.Until("the event " + event,
               [&] { return std::find(form.events.begin(), form.events.end(), event) != form.events.end(); });
  person.Part(window, css::accessibility::AccessibleRole::LABEL, form.events.back());
}

}  // namespace tolvane::libreoffice

namespace tolvane::office {

int Run(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc, char** argv) {
  using namespace libreoffice;
  ::testing::InitGoogleTest(&argc, argv);
  DialogWorld world(context);
  std::vector<DialogCase> cases;
  for (const auto& some : {ControlCases(), ListCases(), LifeCases(), LookCases()}) {
    cases.insert(cases.end(), some.begin(), some.end());
  }
  cases.push_back({"DISABLED_StaysUp", StaysUp});
  for (const DialogCase& one : cases) {
    ::testing::RegisterTest("Dialogs", one.name, nullptr, nullptr, __FILE__, __LINE__,
                            [&world, one]() -> ::testing::Test* { return new CaseTest(world, one); });
  }
  return RUN_ALL_TESTS();
}

}  // namespace tolvane::office
