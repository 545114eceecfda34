#include "hosts/libreoffice/BookListener.h"

#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/sheet/XActivationBroadcaster.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XEnhancedMouseClickBroadcaster.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/util/XChangesNotifier.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cppuhelper/implbase5.hxx>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

namespace {

// The rectangles of a range or of several, and the sheet that they are on.
struct Place {
  int sheet = -1;
  Rects areas;
};

Place PlaceOf(const Reference<css::uno::XInterface>& cells) {
  Place place;
  if (const Reference<css::sheet::XSheetCellRanges> ranges(cells, UNO_QUERY); ranges.is()) {
    for (const auto& address : ranges->getRangeAddresses()) {
      place.sheet = address.Sheet;
      place.areas.push_back(ToRect(address));
    }
  } else if (const Reference<css::sheet::XCellRangeAddressable> range(cells, UNO_QUERY); range.is()) {
    const auto address = range->getRangeAddress();
    place.sheet = address.Sheet;
    place.areas.push_back(ToRect(address));
  }
  return place;
}

}  // namespace

class BookListener::Ears final
    : public cppu::WeakImplHelper5<css::util::XChangesListener, css::sheet::XActivationEventListener,
                                   css::view::XSelectionChangeListener, css::awt::XEnhancedMouseClickHandler,
                                   css::util::XCloseListener> {
 public:
  explicit Ears(const std::shared_ptr<CalcWorkbook>& book) : book_(book), model_(book->model()) {}

  void Listen() {
    AtEdge([&] {
      As<css::util::XChangesNotifier>(model_)->addChangesListener(this);
      As<css::util::XCloseBroadcaster>(model_)->addCloseListener(this);
      const auto controller = model_->getCurrentController();
      if (!controller.is()) return;
      As<css::sheet::XActivationBroadcaster>(controller)->addActivationEventListener(this);
      As<css::view::XSelectionSupplier>(controller)->addSelectionChangeListener(this);
      As<css::sheet::XEnhancedMouseClickBroadcaster>(controller)->addEnhancedMouseClickHandler(this);
    });
  }

  void End() noexcept {
    book_.reset();
    try {
      As<css::util::XChangesNotifier>(model_)->removeChangesListener(this);
      As<css::util::XCloseBroadcaster>(model_)->removeCloseListener(this);
      const auto controller = model_->getCurrentController();
      if (!controller.is()) return;
      As<css::sheet::XActivationBroadcaster>(controller)->removeActivationEventListener(this);
      As<css::view::XSelectionSupplier>(controller)->removeSelectionChangeListener(this);
      As<css::sheet::XEnhancedMouseClickBroadcaster>(controller)->removeEnhancedMouseClickHandler(this);
    } catch (const css::uno::Exception&) {
      // The document went first.
    } catch (const host::HostError&) {
    }
  }

  void SAL_CALL changesOccurred(const css::util::ChangesEvent& event) override {
    Hear([&](CalcWorkbook& book) {
      std::map<std::shared_ptr<CalcWorksheet>, Rects> changed;
      for (const css::util::ElementChange& change : event.Changes) {
        OUString kind;
        change.Accessor >>= kind;
        if (kind != "cell-change" && kind != "insert-rows" && kind != "delete-rows" && kind != "insert-columns" &&
            kind != "delete-columns") {
          continue;
        }
        Place place = PlaceOf(Reference<css::uno::XInterface>(change.ReplacedElement, UNO_QUERY));
        const auto& sheets = book.sheets();
        if (place.sheet < 0 || static_cast<std::size_t>(place.sheet) >= sheets.size()) continue;
        Rects& areas = changed[sheets[static_cast<std::size_t>(place.sheet)]];
        areas.insert(areas.end(), place.areas.begin(), place.areas.end());
      }
      for (const auto& [sheet, areas] : changed) book.program().CellsEdited(*sheet, areas);
    });
  }

  void SAL_CALL activeSpreadsheetChanged(const css::sheet::ActivationEvent&) override {
    Hear([](CalcWorkbook& book) { book.UserActivatedSheet(); });
  }

  void SAL_CALL selectionChanged(const css::lang::EventObject&) override {
    Hear([](CalcWorkbook& book) {
      const Place place = PlaceOf(Reference<css::uno::XInterface>(
          As<css::view::XSelectionSupplier>(book.controller())->getSelection(), UNO_QUERY));
      const auto& sheets = book.sheets();
      if (place.sheet < 0 || static_cast<std::size_t>(place.sheet) >= sheets.size()) return;
      sheets[static_cast<std::size_t>(place.sheet)]->UserSelected(place.areas);
    });
  }

  sal_Bool SAL_CALL mousePressed(const css::awt::EnhancedMouseEvent& event) override {
    bool cancel = false;
    Hear([&](CalcWorkbook& book) {
      const bool twice = event.ClickCount == 2 && event.Buttons == css::awt::MouseButton::LEFT;
      const bool right = event.ClickCount == 1 && event.Buttons == css::awt::MouseButton::RIGHT;
      if (!twice && !right) return;
      CalcProgram& program = book.program();
      const auto sheet = book.activeSheet();
      const Place place = PlaceOf(event.Target);
      if (place.areas.empty() || !program.settings.enableEvents) return;
      const host::Range target = right ? sheet->RangeOver(sheet->Selected()) : sheet->RangeOver(place.areas);
      cancel = program.events.Ask([&](host::ApplicationEvents& listener, bool& answer) {
        if (!target.IsAlive()) return;
        if (twice) {
          listener.SheetBeforeDoubleClick(host::Worksheet(sheet), target, answer);
        } else {
          listener.SheetBeforeRightClick(host::Worksheet(sheet), target, answer);
        }
      });
    });
    return !cancel;
  }
  sal_Bool SAL_CALL mouseReleased(const css::awt::EnhancedMouseEvent&) override { return true; }

  void SAL_CALL queryClosing(const css::lang::EventObject&, sal_Bool) override {}
  void SAL_CALL notifyClosing(const css::lang::EventObject&) override {
    Hear([](CalcWorkbook& book) { book.program().Forget(book); });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  // Nothing that goes wrong in between concerns Calc.
  template <class Work>
  void Hear(const Work& work) {
    const auto book = book_.lock();
    if (book == nullptr || !book->IsAlive() || book->program().isEditing()) return;
    try {
      work(*book);
    } catch (const css::uno::Exception&) {
    } catch (const std::exception&) {
    }
  }

  std::weak_ptr<CalcWorkbook> book_;
  Reference<css::frame::XModel> model_;
};

BookListener::BookListener(const std::shared_ptr<CalcWorkbook>& book) : ears_(new Ears(book)) {
  kept_ = static_cast<cppu::OWeakObject*>(ears_);
  ears_->Listen();
}

BookListener::~BookListener() {
  ears_->End();
}

}  // namespace tolvane::libreoffice
