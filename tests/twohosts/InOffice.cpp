// The work in LibreOffice Calc.
#include "hosts/libreoffice/CalcHost.h"
#include "hosts/libreoffice/office/Office.h"
#include "testing/ScriptedDesk.h"
#include "tests/twohosts/Scenario.h"

namespace tolvane::office {

int Run(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc, char** argv) {
  testing::ScriptedDesk desk;
  libreoffice::CalcHost host(context, desk, {});
  twohosts::Run(host.application(), argc, argv);
  return 0;
}

}  // namespace tolvane::office
