#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/libreoffice/OfficeDesk.h"
#include "hosts/libreoffice/dialogs/in_office/Person.h"
#include "hosts/libreoffice/dialogs/in_office/SampleForm.h"
#include "src/host/Application.h"

namespace tolvane::libreoffice {

// What all cases share: an office with a book in its window, the port over it, and someone in front of it.
class DialogWorld {
 public:
  explicit DialogWorld(const Reference<css::uno::XComponentContext>& officeContext);

  // Has the form shown by the port, and someone at work on it until it is gone.
  void Show(host::Form& form, const std::function<void(Person&, Seen window)>& script);

  const Reference<css::uno::XComponentContext> context;
  const std::unique_ptr<OfficeHost> office;
  const host::Application application;
  const host::User user;
  Person person;
};

struct DialogCase {
  const char* name;
  void (*body)(DialogWorld& world);
};

std::vector<DialogCase> ControlCases();
std::vector<DialogCase> ListCases();
std::vector<DialogCase> LifeCases();
std::vector<DialogCase> LookCases();

// Waits for an event of the form, and for the status line to tell it.
void Happens(const Person& person, const Seen& window, const SampleForm& form, const std::string& event);

}  // namespace tolvane::libreoffice
