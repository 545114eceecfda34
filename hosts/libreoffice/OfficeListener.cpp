#include "hosts/libreoffice/OfficeListener.h"

#include <algorithm>
#include <com/sun/star/document/XDocumentEventListener.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/theGlobalEventBroadcaster.hpp>
#include <cppuhelper/implbase1.hxx>
#include <string_view>

#include "hosts/libreoffice/CalcWorkbook.h"

namespace tolvane::libreoffice {

namespace {

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

class OfficeListener::Ears final : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
 public:
  explicit Ears(const std::shared_ptr<CalcProgram>& program) : program_(program), context_(program->context()) {}

  void Listen() {
    AtEdge([&] {
      const auto components = css::frame::Desktop::create(context_)->getComponents()->createEnumeration();
      while (components->hasMoreElements()) {
        const Reference<css::frame::XModel> model(components->nextElement(), UNO_QUERY);
        Hear([&](CalcProgram& program) { program.AdoptFromUser(model, false); });
      }
      css::frame::theGlobalEventBroadcaster::get(context_)->addDocumentEventListener(this);
    });
  }
  void End() noexcept {
    program_.reset();
    try {
      css::frame::theGlobalEventBroadcaster::get(context_)->removeDocumentEventListener(this);
    } catch (const css::uno::Exception&) {
      // The office is on its way out.
    }
  }

  void SAL_CALL documentEventOccured(const css::document::DocumentEvent& event) override {
    const std::string name = ToUtf8(event.EventName);
    const Reference<css::frame::XModel> model(event.Source, UNO_QUERY);
    if (!model.is()) return;
    Hear([&](CalcProgram& program) {
      if (name == "OnNew" || name == "OnLoad") return program.AdoptFromUser(model, name == "OnLoad");
      const auto book = program.BookOf(model);
      if (book == nullptr) return;
      if (name == "OnFocus") {
        if (!book->IsAddin()) program.ActivateBook(book);
      } else if (IsOneOf(name, {"OnSave", "OnSaveAs", "OnCopyTo"})) {
        book->WriteKeepsakes();
      } else if (IsOneOf(name, {"OnSaveDone", "OnSaveFailed", "OnSaveAsDone", "OnSaveAsFailed", "OnCopyToDone",
                                "OnCopyToFailed"})) {
        book->RemoveKeepsakes();
        if (name == "OnSaveAsDone") book->TakeUpFile();
        if (IsOneOf(name, {"OnSaveDone", "OnSaveAsDone"})) book->SetSaved(true);
      }
    });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  // Nothing that goes wrong in between concerns the office.
  template <class Work>
  void Hear(const Work& work) {
    const auto program = program_.lock();
    if (program == nullptr || program->hasEnded() || program->isEditing()) return;
    try {
      work(*program);
    } catch (const css::uno::Exception&) {
    } catch (const std::exception&) {
    }
  }

  std::weak_ptr<CalcProgram> program_;
  Reference<css::uno::XComponentContext> context_;
};

OfficeListener::OfficeListener(const std::shared_ptr<CalcProgram>& program) : ears_(new Ears(program)) {
  kept_ = static_cast<cppu::OWeakObject*>(ears_);
  ears_->Listen();
}

OfficeListener::~OfficeListener() {
  ears_->End();
}

}  // namespace tolvane::libreoffice
