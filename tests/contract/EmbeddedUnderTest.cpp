#include "tests/contract/EmbeddedUnderTest.h"

#include "engine/model/Workbook.h"

namespace tolvane::contract {

void EmbeddedUnderTest::BookFiles::Save(const engine::Workbook& book, const std::string& path) {
  if (path.ends_with(".xltx")) {
    Put(path, book, Kind::Template);
  } else {
    MemoryBookFiles::Save(book, path);
  }
}

EmbeddedUnderTest::World::World() : host(desk, files) {
  auto book = std::make_unique<engine::Workbook>();
  if (book->sheetCount() == 0) book->AddSheet("Texts", 0);
  addin = host.AdoptAddin(std::move(book), "Addin.xlam", "/addin/Addin.xlam");
}

void EmbeddedUnderTest::Fresh() {
  world_.reset();
  world_ = std::make_unique<World>();
}

void EmbeddedUnderTest::LoadRibbon(std::string_view definition, std::shared_ptr<host::RibbonCallbacks> callbacks) {
  world_->callbacks.push_back(callbacks);
  world_->host.LoadRibbon(definition, *callbacks);
}

void EmbeddedUnderTest::AnswerPopup(std::optional<std::string> caption) {
  if (caption.has_value()) {
    world_->desk.ChoosePopup({*caption});
  } else {
    world_->desk.LeavePopup();
  }
}

std::string EmbeddedUnderTest::PutFile(std::string_view name, std::string bytes) {
  const std::string path = PathFor(name);
  world_->desk.PutFile(path, bytes);
  return path;
}

std::unique_ptr<HostUnderTest> MakeEmbeddedUnderTest() {
  return std::make_unique<EmbeddedUnderTest>();
}

}  // namespace tolvane::contract
