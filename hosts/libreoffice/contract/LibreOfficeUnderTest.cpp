#include "hosts/libreoffice/contract/LibreOfficeUnderTest.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace tolvane::contract {

namespace fs = std::filesystem;

namespace {

fs::path NewFolder() {
  std::string pattern = (fs::temp_directory_path() / "tolvane-contract-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("Cannot make a folder " + pattern + ".");
  return pattern;
}

}  // namespace

LibreOfficeUnderTest::World::World(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context)
    : host(context, desk, {}), addin(host.AdoptAddin("Addin.xlam")) {}

LibreOfficeUnderTest::LibreOfficeUnderTest(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context)
    : context_(context), root_(NewFolder()) {
  Fresh();
}

LibreOfficeUnderTest::~LibreOfficeUnderTest() {
  world_.reset();
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

void LibreOfficeUnderTest::Fresh() {
  world_.reset();
  world_ = std::make_unique<World>(context_);
  folder_ = root_ / std::to_string(++cases_);
  fs::create_directories(folder_);
}

void LibreOfficeUnderTest::LoadRibbon(std::string_view definition, std::shared_ptr<host::RibbonCallbacks> callbacks) {
  world_->callbacks.push_back(callbacks);
  world_->host.LoadRibbon(definition, *callbacks);
}

void LibreOfficeUnderTest::AnswerPopup(std::optional<std::string> caption) {
  if (caption.has_value()) {
    world_->desk.ChoosePopup({*caption});
  } else {
    world_->desk.LeavePopup();
  }
}

std::string LibreOfficeUnderTest::PutFile(std::string_view name, std::string bytes) {
  const std::string path = PathFor(name);
  std::ofstream(path, std::ios::binary) << bytes << std::flush;
  world_->desk.PutFile(path, bytes);
  return path;
}

}  // namespace tolvane::contract
