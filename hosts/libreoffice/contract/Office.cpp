// An office with the contract suite in it: the office's own main function, and the service that it is started with,
// which runs the suite on the main thread and then leaves.
#include <gtest/gtest.h>

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/libreoffice/Uno.h"
#include "hosts/libreoffice/contract/LibreOfficeUnderTest.h"
#include "tests/contract/Run.h"

namespace tolvane::contract {
namespace {

namespace css = com::sun::star;

int RunSuite(const css::uno::Reference<css::uno::XComponentContext>& context, const std::string& arguments) {
  std::vector<std::string> words = {"contract_libreoffice"};
  std::istringstream stream(arguments);
  for (std::string word; stream >> word;) words.push_back(word);
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  int count = static_cast<int>(words.size());
  ::testing::InitGoogleTest(&count, pointers.data());
  Run run(std::make_unique<LibreOfficeUnderTest>(context), AllCases(),
          ReadMembers(std::string(TOLVANE_SOURCE_DIR) + "/src/host/members.tsv"), ReadKnownDifferences("libreoffice"));
  run.Register();
  const int result = RUN_ALL_TESTS();
  std::cout << "libreoffice: " << run.cases().size() << " cases, " << run.knownFailures() << " known differences.\n";
  return result;
}

class ContractRun final : public cppu::WeakImplHelper1<css::task::XJobExecutor> {
 public:
  explicit ContractRun(css::uno::Reference<css::uno::XComponentContext> context) : context_(std::move(context)) {}

  void SAL_CALL trigger(const rtl::OUString&) override {
    int result = 2;
    try {
      const char* arguments = std::getenv("TOLVANE_CONTRACT_ARGUMENTS");
      result = RunSuite(context_, arguments == nullptr ? "" : arguments);
    } catch (const css::uno::Exception& failure) {
      std::cerr << "The suite ended early: " << libreoffice::ToUtf8(failure.Message) << '\n';
    } catch (const std::exception& failure) {
      std::cerr << "The suite ended early: " << failure.what() << '\n';
    }
    if (const char* verdict = std::getenv("TOLVANE_CONTRACT_VERDICT")) std::ofstream(verdict) << result << std::flush;
    std::cout.flush();
    std::fflush(nullptr);
    // Nothing of this office is of use any more; leaving by the front door would only ask about documents.
    std::_Exit(result);
  }

 private:
  css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace
}  // namespace tolvane::contract

// Called by the component that the office loads (Door.cpp).
com::sun::star::uno::XInterface* NewContractRun(com::sun::star::uno::XComponentContext* context) {
  return cppu::acquire(new tolvane::contract::ContractRun(context));
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
