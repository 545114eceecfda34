#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/host/CommandBars.h"
#include "src/host/Handle.h"

namespace tolvane::host {

class RibbonBody : public Body {
 public:
  virtual void Invalidate() = 0;
  virtual void InvalidateControl(std::string_view id) = 0;
};

// The ribbon as it is handed to the add-in when its definition has been loaded.
class RibbonUI : public Handle<RibbonBody> {
 public:
  using Handle::Handle;
  // What the callbacks answered about a control is forgotten and asked for again when it is needed.
  void Invalidate() const;
  void InvalidateControl(std::string_view id) const;
};

// A control of the ribbon, as its callbacks are told of it.
struct RibbonControl {
  std::string id;
};

// What a ribbon definition calls back. A host that has a ribbon asks; one that has none never does.
class RibbonCallbacks {
 public:
  virtual ~RibbonCallbacks() = default;
  virtual void OnLoad(const RibbonUI& ribbon) = 0;
  virtual bool GetEnabled(const RibbonControl& control) = 0;
  virtual bool GetVisible(const RibbonControl& control) = 0;
  virtual std::string GetLabel(const RibbonControl& control) = 0;
  virtual std::optional<Picture> GetImage(const RibbonControl& control) = 0;
  virtual std::string GetContent(const RibbonControl& control) = 0;  // of a dynamic menu: its XML
  virtual void OnAction(const RibbonControl& control) = 0;
  // A built-in command that the definition repurposes; `cancelDefault` keeps the host from its own effect.
  virtual void OnCommand(const RibbonControl& control, bool& cancelDefault) = 0;
};

}  // namespace tolvane::host
