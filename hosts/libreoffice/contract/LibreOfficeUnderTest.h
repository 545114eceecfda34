#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <filesystem>
#include <memory>
#include <vector>

#include "hosts/libreoffice/CalcHost.h"
#include "testing/ScriptedDesk.h"
#include "tests/contract/HostUnderTest.h"

namespace tolvane::contract {

// Calc with a scripted user; books are saved to real files in a folder that goes with it.
class LibreOfficeUnderTest final : public HostUnderTest {
 public:
  explicit LibreOfficeUnderTest(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);
  ~LibreOfficeUnderTest() override;

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
  std::string PathFor(std::string_view name) override { return (folder_ / std::string(name)).string(); }

 private:
  struct World {
    explicit World(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);
    std::vector<std::shared_ptr<host::RibbonCallbacks>> callbacks;  // outlive the host
    testing::ScriptedDesk desk;
    libreoffice::CalcHost host;
    host::Workbook addin;
  };
  com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
  std::filesystem::path root_;
  std::filesystem::path folder_;
  int cases_ = 0;
  std::unique_ptr<World> world_;
};

}  // namespace tolvane::contract
