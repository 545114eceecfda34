#pragma once

#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <rtl/ref.hxx>
#include <string>
#include <string_view>

#include "hosts/libreoffice/Uno.h"
#include "hosts/libreoffice/dialogs/FormLayout.h"

namespace tolvane::libreoffice {

// A line to type into, laid over a part of another control.
class LabelEditor {
 public:
  enum class End { Kept, GivenUp };
  // `ended` is called once, by Enter, Esc or when the focus goes elsewhere; the editor must outlive that call.
  LabelEditor(const Reference<css::uno::XComponentContext>& context, const Reference<css::awt::XWindowPeer>& under,
              const Box& box, std::string_view text, std::function<void(End)> ended);
  ~LabelEditor();
  LabelEditor(const LabelEditor&) = delete;
  LabelEditor& operator=(const LabelEditor&) = delete;

  std::string Text() const;

 private:
  class Ears;
  class FirstEar;
  void ListenFirst(bool on);

  Reference<css::awt::XExtendedToolkit> toolkit_;
  Reference<css::awt::XWindowPeer> window_;
  rtl::Reference<Ears> ears_;
  rtl::Reference<FirstEar> firstEar_;
};

}  // namespace tolvane::libreoffice
