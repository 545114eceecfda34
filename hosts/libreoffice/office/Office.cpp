// A program that is an office: the office's own main function, and the service that it is started with, which does what
// the program is for on the main thread and then leaves.
#include "hosts/libreoffice/office/Office.h"

#include <com/sun/star/task/XJobExecutor.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/libreoffice/Uno.h"

namespace tolvane::office {
namespace {

namespace css = com::sun::star;

int RunWithArguments(const css::uno::Reference<css::uno::XComponentContext>& context) {
  std::vector<std::string> words = {"office"};
  const char* arguments = std::getenv("TOLVANE_OFFICE_ARGUMENTS");
  std::istringstream stream(arguments == nullptr ? "" : arguments);
  for (std::string word; stream >> word;) words.push_back(word);
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return Run(context, static_cast<int>(words.size()), pointers.data());
}

class Service final : public cppu::WeakImplHelper1<css::task::XJobExecutor> {
 public:
  explicit Service(css::uno::Reference<css::uno::XComponentContext> context) : context_(std::move(context)) {}

  void SAL_CALL trigger(const rtl::OUString&) override {
    constexpr int kEndedEarly = 2;
    int result = kEndedEarly;
    try {
      result = RunWithArguments(context_);
    } catch (const css::uno::Exception& failure) {
      std::cerr << "The run ended early: " << libreoffice::ToUtf8(failure.Message) << '\n';
    } catch (const std::exception& failure) {
      std::cerr << "The run ended early: " << failure.what() << '\n';
    }
    if (const char* verdict = std::getenv("TOLVANE_OFFICE_VERDICT")) std::ofstream(verdict) << result << std::flush;
    std::cout.flush();
    std::fflush(nullptr);
    // Nothing of this office is of use any more; leaving by the front door would only ask about documents.
    std::_Exit(result);
  }

 private:
  css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace
}  // namespace tolvane::office

// Called by the component that the office loads (Door.cpp).
com::sun::star::uno::XInterface* NewOfficeService(com::sun::star::uno::XComponentContext* context) {
  return cppu::acquire(new tolvane::office::Service(context));
}

// Of the office, whose program is these three calls as well.
extern "C" {
void sal_detail_initialize(int argc, char** argv);
void sal_detail_deinitialize();
int soffice_main();
}

int main(int argc, char** argv) {
  sal_detail_initialize(argc, argv);
  const int result = soffice_main();
  sal_detail_deinitialize();
  return result;
}
