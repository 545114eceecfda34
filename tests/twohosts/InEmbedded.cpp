// The work in the embedded host, with real files.
#include <exception>
#include <iostream>

#include "engine/xlsx/BookLock.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "hosts/files/XlsxFiles.h"
#include "testing/ScriptedDesk.h"
#include "tests/twohosts/Scenario.h"

int main(int argc, char** argv) {
  using namespace tolvane;
  try {
    testing::ScriptedDesk desk;
    engine::SystemLockWorld world;
    files::XlsxFiles files(world);
    embedded::EmbeddedHost host(desk, files);
    twohosts::Run(host.application(), argc, argv);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
}
