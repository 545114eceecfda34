// The contract suite, run inside of an office.
#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <string>

#include "hosts/libreoffice/contract/LibreOfficeUnderTest.h"
#include "hosts/libreoffice/office/Office.h"
#include "tests/contract/Run.h"

namespace tolvane::office {

int Run(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  contract::Run run(std::make_unique<contract::LibreOfficeUnderTest>(context), contract::AllCases(),
                    contract::ReadMembers(std::string(TOLVANE_SOURCE_DIR) + "/src/host/members.tsv"),
                    contract::ReadKnownDifferences("libreoffice"));
  run.Register();
  const int result = RUN_ALL_TESTS();
  std::cout << "libreoffice: " << run.cases().size() << " cases, " << run.knownFailures() << " known differences.\n";
  return result;
}

}  // namespace tolvane::office
