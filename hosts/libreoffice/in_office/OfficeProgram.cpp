// An office with a suite of tests in it: the office's own main function, and the service that it is started with, which
// runs the suite on the main thread and then leaves.
#include "hosts/libreoffice/in_office/OfficeProgram.h"

#include <com/sun/star/task/XJobExecutor.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "hosts/libreoffice/Uno.h"

namespace tolvane::libreoffice {
namespace {

int RunWith(const Reference<css::uno::XComponentContext>& context, const std::string& arguments) {
  std::vector<std::string> words = {"suite"};
  std::istringstream stream(arguments);
  for (std::string word; stream >> word;) words.push_back(word);
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return RunSuite(context, static_cast<int>(words.size()), pointers.data());
}

class SuiteRun final : public cppu::WeakImplHelper1<css::task::XJobExecutor> {
 public:
  explicit SuiteRun(Reference<css::uno::XComponentContext> context) : context_(std::move(context)) {}

  void SAL_CALL trigger(const OUString&) override {
    int result = 2;
    try {
      const char* arguments = std::getenv("TOLVANE_SUITE_ARGUMENTS");
      result = RunWith(context_, arguments == nullptr ? "" : arguments);
    } catch (const css::uno::Exception& failure) {
      std::cerr << "The suite ended early: " << ToUtf8(failure.Message) << '\n';
    } catch (const std::exception& failure) {
      std::cerr << "The suite ended early: " << failure.what() << '\n';
    }
    if (const char* verdict = std::getenv("TOLVANE_SUITE_VERDICT")) std::ofstream(verdict) << result << std::flush;
    std::cout.flush();
    std::fflush(nullptr);
    // Nothing of this office is of use any more; leaving by the front door would only ask about documents.
    std::_Exit(result);
  }

 private:
  Reference<css::uno::XComponentContext> context_;
};

}  // namespace
}  // namespace tolvane::libreoffice

// Called by the component that the office loads (Door.cpp).
com::sun::star::uno::XInterface* NewSuiteRun(com::sun::star::uno::XComponentContext* context) {
  return cppu::acquire(new tolvane::libreoffice::SuiteRun(context));
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
