#pragma once

#include <memory>
#include <vector>

#include "hosts/embedded/EmbeddedHost.h"
#include "testing/MemoryBookFiles.h"
#include "testing/ScriptedDesk.h"
#include "tests/contract/HostUnderTest.h"

namespace tolvane::contract {

// The embedded host with a scripted user and files in memory; each case gets one of its own.
class EmbeddedUnderTest final : public HostUnderTest {
 public:
  EmbeddedUnderTest() { Fresh(); }

  void Fresh() override;
  host::Application application() override { return world_->host.application(); }
  host::UserActions& user() override { return world_->host.userActions(); }
  host::Workbook addin() override { return world_->addin; }
  void OfferMacro(const host::Workbook& book, std::string_view name, std::function<host::CellValue()> macro) override {
    world_->host.OfferMacro(book, name, std::move(macro));
  }
  bool HasRibbon() const override { return true; }
  void LoadRibbon(std::string_view definition, std::shared_ptr<host::RibbonCallbacks> callbacks) override;

  void AnswerMessage(host::MessageResult answer) override { world_->desk.Answer(answer); }
  void AnswerFile(std::optional<std::string> path) override { world_->desk.AnswerOpenFilename(std::move(path)); }
  void AnswerSaveFile(std::optional<std::string> path) override { world_->desk.AnswerSaveAsFilename(std::move(path)); }
  void AnswerForm(std::string name, std::function<void(host::Form&)> script) override {
    world_->desk.OnForm(std::move(name), std::move(script));
  }
  void AnswerPopup(std::optional<std::string> caption) override;
  void PressKeyAhead(int virtualKey) override { world_->desk.PressKey(virtualKey); }
  std::vector<std::string> asked() const override { return world_->desk.Log(); }
  std::vector<std::string> Unanswered() const override { return world_->desk.Unanswered(); }

  void SetClock(double now) override { world_->desk.SetNow(now); }
  void PutPicture(std::string_view name, std::string bytes) override {
    world_->desk.PutPicture(name, host::Picture{std::move(bytes)});
  }
  std::string PutFile(std::string_view name, std::string bytes) override;
  void DenyFile(std::string_view path) override { world_->desk.DenyFile(path); }
  std::string PathFor(std::string_view name) override { return "/contract/" + std::string(name); }

 private:
  // Templates are told by their extension, as those who save them do.
  class BookFiles final : public testing::MemoryBookFiles {
   public:
    void Save(const engine::Workbook& book, const std::string& path) override;
  };
  struct World {
    World();
    std::vector<std::shared_ptr<host::RibbonCallbacks>> callbacks;  // outlive the host
    testing::ScriptedDesk desk;
    BookFiles files;
    embedded::EmbeddedHost host;
    host::Workbook addin;
  };
  std::unique_ptr<World> world_;
};

}  // namespace tolvane::contract
