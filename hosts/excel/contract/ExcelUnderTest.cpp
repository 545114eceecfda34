#include "hosts/excel/contract/ExcelUnderTest.h"

#include <stdexcept>

#include "hosts/excel/ExcelHost.h"
#include "hosts/excel/contract/ExcelUserActions.h"
#include "testing/excel/ApplicationObject.h"
#include "testing/excel/World.h"
#include "tests/contract/EmbeddedUnderTest.h"

namespace tolvane::contract {
namespace {

using excel::ComPtr;
using testing::excel::ApplicationObject;
using testing::excel::World;

class ExcelUnderTest final : public HostUnderTest {
 public:
  ExcelUnderTest() { Fresh(); }
  ~ExcelUnderTest() override { lookalike_.reset(); }

  void Fresh() override {
    RequireNoObjects();
    program_.Fresh();
    lookalike_ = std::make_unique<Lookalike>(program_);
  }

  host::Application application() override { return lookalike_->host.application(); }
  host::UserActions& user() override { return lookalike_->user; }
  host::Workbook addin() override { return application().ThisWorkbook(); }
  void OfferMacro(const host::Workbook& book, std::string_view name, std::function<host::CellValue()> macro) override {
    program_.OfferMacro(ProgramsOwn(book), name, std::move(macro));
  }
  // The ribbon is no part of Excel's object model: it calls the add-in.
  bool HasRibbon() const override { return false; }
  void LoadRibbon(std::string_view, std::shared_ptr<host::RibbonCallbacks>) override {
    throw std::logic_error("The Excel host has no ribbon yet.");
  }

  void AnswerMessage(host::MessageResult answer) override { program_.AnswerMessage(answer); }
  void AnswerFile(std::optional<std::string> path) override { program_.AnswerFile(std::move(path)); }
  void AnswerSaveFile(std::optional<std::string> path) override { program_.AnswerSaveFile(std::move(path)); }
  void AnswerForm(std::string name, std::function<void(host::Form&)> script) override {
    program_.AnswerForm(std::move(name), std::move(script));
  }
  void AnswerPopup(std::optional<std::string> caption) override { program_.AnswerPopup(std::move(caption)); }
  void PressKeyAhead(int virtualKey) override { program_.PressKeyAhead(virtualKey); }
  std::vector<std::string> asked() const override { return program_.asked(); }
  std::vector<std::string> Unanswered() const override { return program_.Unanswered(); }
  void SetClock(double now) override { program_.SetClock(now); }
  void PutPicture(std::string_view name, std::string bytes) override { program_.PutPicture(name, std::move(bytes)); }
  std::string PutFile(std::string_view name, std::string bytes) override {
    return program_.PutFile(name, std::move(bytes));
  }
  void DenyFile(std::string_view path) override { program_.DenyFile(path); }
  std::string PathFor(std::string_view name) override { return program_.PathFor(name); }

 private:
  struct Lookalike {
    explicit Lookalike(EmbeddedUnderTest& program)
        : world(std::make_shared<World>(program.application())),
          application(ComPtr<ApplicationObject>::Adopt(new ApplicationObject(world))),
          host(ComPtr<IDispatch>(application.get()), world->Of(program.addin()).AsObject()),
          user(program.user()) {}

    std::shared_ptr<World> world;
    ComPtr<ApplicationObject> application;
    excel::ExcelHost host;
    ExcelUserActions user;
  };

  // Lets go of the last program and counts what is left of it: every object of a program must go with its last
  // reference.
  void RequireNoObjects() {
    if (lookalike_ == nullptr) return;
    const std::shared_ptr<World> world = lookalike_->world;
    lookalike_.reset();
    if (world->objects() == 0) return;
    throw std::logic_error(std::to_string(world->objects()) + " COM objects were never released.");
  }

  EmbeddedUnderTest program_;
  std::unique_ptr<Lookalike> lookalike_;
};

}  // namespace

std::unique_ptr<HostUnderTest> MakeExcelUnderTest() {
  return std::make_unique<ExcelUnderTest>();
}

}  // namespace tolvane::contract
