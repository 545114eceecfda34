#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hosts/shell/RibbonDefinition.h"
#include "src/host/Gate.h"
#include "src/host/Ribbon.h"

namespace tolvane::shell {

// An element of the ribbon as the user sees it now.
struct RibbonItem {
  std::string id;  // of the program's own controls their name
  RibbonKind kind = RibbonKind::Button;
  bool visible = true;
  // Of one that is hidden, what is fixed: nothing is asked about it.
  bool enabled = true;
  std::string label;
  bool hasImage = false;
  std::string screentip;
  std::string supertip;
  std::string keytip;
  std::vector<RibbonItem> children;  // of a dynamic menu: as it was dropped last, none before
};

// The ribbon of one add-in: its definition, and who answers for it. Answers are asked for when they are needed and kept
// until the add-in takes them back. What a callback throws reaches whoever looked or clicked, and is not kept.
class Ribbon final : public host::RibbonBody, public std::enable_shared_from_this<Ribbon> {
  struct Key {};

 public:
  // Reads the definition (customUI, of 2006 or 2009/07) and, if it names an onLoad, hands the ribbon over. A definition
  // that is wrong is ApplicationDefined, and nobody has been called. `callbacks` lives until Close.
  static std::shared_ptr<Ribbon> Load(std::shared_ptr<host::Gate> gate, std::string_view definition,
                                      host::RibbonCallbacks& callbacks);
  Ribbon(Key, std::shared_ptr<host::Gate> gate, RibbonDefinition definition, host::RibbonCallbacks& callbacks);

  // The add-in or the program goes: handles are dead, nobody is asked any more.
  void Close() noexcept { callbacks_ = nullptr; }

  // The tabs and context menus.
  std::vector<RibbonItem> Look();
  // The user opens a dynamic menu: what it holds. InvalidCall for an id that none has, ApplicationDefined where the
  // user cannot get at it or its content is wrong, which leaves it as it was.
  std::vector<RibbonItem> Drop(std::string_view id);
  // The user clicks the element of that id, first opening the dynamic menu that it lies in. InvalidCall for an id that
  // none has, ApplicationDefined when it is hidden, disabled or nothing to click.
  void Click(std::string_view id);
  // The user gives one of the program's own commands, "Copy". True when the definition gives it another meaning that
  // cancelled the program's; ApplicationDefined when the definition has disabled it.
  bool Command(std::string_view id);

  bool IsAlive() const noexcept override { return callbacks_ != nullptr; }
  host::Gate& gate() const noexcept override { return *gate_; }
  void Invalidate() override;
  void InvalidateControl(std::string_view id) override;  // without effect for an id that none has

 private:
  using Node = std::shared_ptr<RibbonNode>;

  template <class T, class Ask>
  const T& Answer(RibbonAnswer<T>& answer, const Ask& ask);
  bool Enabled(RibbonNode& node);
  bool Visible(RibbonNode& node);
  RibbonItem LookAt(const Node& node);
  std::vector<RibbonItem> LookAtAll(const std::vector<Node>& nodes);
  void RequireReachable(const Node& node);
  bool IsReachable(const Node& node);

  Node FindStatic(std::string_view id) const;
  Node FindKnown(std::string_view id) const;
  Node FindByDropping(const std::vector<Node>& nodes, std::string_view id);
  Node Find(std::string_view id);

  void DropMenu(const Node& menu);
  void Enter(const std::vector<Node>& nodes);
  void ForgetAnswers(RibbonNode& node);
  void ForgetContent(RibbonNode& menu);
  void ForgetAll(const std::vector<Node>& nodes);
  void RemoveFromIndex(const std::vector<Node>& nodes);

  std::shared_ptr<host::Gate> gate_;
  host::RibbonCallbacks* callbacks_;  // null once it is closed
  RibbonDefinition definition_;
  std::unordered_map<std::string, std::weak_ptr<RibbonNode>> index_;  // by id, dropped contents included
};

}  // namespace tolvane::shell
