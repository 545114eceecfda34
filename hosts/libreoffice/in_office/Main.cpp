// Tests of the host that need a running Calc and what only Calc has.
#include <gtest/gtest.h>

#include "hosts/libreoffice/in_office/OfficeCase.h"
#include "hosts/libreoffice/office/Office.h"

namespace tolvane::libreoffice {
namespace {

class OfficeTest : public ::testing::Test {
 public:
  OfficeTest(const Reference<css::uno::XComponentContext>& context, const OfficeCase& one)
      : context_(context), case_(one) {}
  void TestBody() override {
    try {
      OfficeUnderTest office(context_);
      case_.run(office);
    } catch (const std::exception& failure) {
      ADD_FAILURE() << failure.what();
    } catch (const css::uno::Exception& failure) {
      ADD_FAILURE() << ToUtf8(failure.Message);
    }
  }

 private:
  Reference<css::uno::XComponentContext> context_;
  OfficeCase case_;
};

}  // namespace
}  // namespace tolvane::libreoffice

namespace tolvane::office {

int Run(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc, char** argv) {
  using namespace libreoffice;
  ::testing::InitGoogleTest(&argc, argv);
  for (const auto& cases : {ByHandCases(), BadInputCases(), CarriedCases()}) {
    for (const OfficeCase& one : cases) {
      ::testing::RegisterTest(one.suite.c_str(), one.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                              [context, one]() -> ::testing::Test* { return new OfficeTest(context, one); });
    }
  }
  return RUN_ALL_TESTS();
}

}  // namespace tolvane::office
