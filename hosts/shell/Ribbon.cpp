#include "hosts/shell/Ribbon.h"

#include <utility>

#include "hosts/shell/Refusal.h"

namespace tolvane::shell {

using host::ErrorNumber;
using host::HostError;
using host::RibbonControl;

namespace {

using Node = std::shared_ptr<RibbonNode>;

// The outermost dynamic menu that a node lies in; null when it is there from the start.
Node OutermostDynamic(const Node& node) {
  Node outermost;
  for (Node above = node->parent.lock(); above != nullptr; above = above->parent.lock()) {
    if (above->kind == RibbonKind::DynamicMenu) outermost = above;
  }
  return outermost;
}

bool LiesIn(const Node& node, const RibbonNode& menu) {
  for (Node above = node->parent.lock(); above != nullptr; above = above->parent.lock()) {
    if (above.get() == &menu) return true;
  }
  return false;
}

// Without looking into dynamic menus, which would have to be opened first.
Node FindAmong(const std::vector<Node>& nodes, std::string_view id) {
  for (const Node& node : nodes) {
    if (node->id == id) return node;
    if (node->kind == RibbonKind::DynamicMenu) continue;
    if (Node found = FindAmong(node->children, id)) return found;
  }
  return nullptr;
}

// Throws when an id of the new content is taken by something outside of the menu.
void RequireFreeIds(const std::vector<Node>& nodes, const RibbonNode& menu,
                    const std::unordered_map<std::string, std::weak_ptr<RibbonNode>>& index) {
  for (const Node& node : nodes) {
    if (const auto found = index.find(node->id); !node->id.empty() && found != index.end()) {
      const Node other = found->second.lock();
      if (other != nullptr && !LiesIn(other, menu)) {
        Refuse("The content of the dynamic menu \"" + menu.id + "\" has \"" + node->id +
               "\", which is in the ribbon already");
      }
    }
    RequireFreeIds(node->children, menu, index);
  }
}

RibbonControl ControlOf(const RibbonNode& node) {
  return {node.id.empty() ? node.idMso : node.id};
}

std::string Title(const RibbonNode& node) {
  return std::string(NameOf(node.kind)) + " \"" + ControlOf(node).id + "\"";
}

}  // namespace

std::shared_ptr<Ribbon> Ribbon::Load(std::shared_ptr<host::Gate> gate, std::string_view definition,
                                     host::RibbonCallbacks& callbacks) {
  RibbonDefinition read = ReadRibbonDefinition(definition);
  const bool hasOnLoad = read.hasOnLoad;
  auto ribbon = std::make_shared<Ribbon>(Key{}, std::move(gate), std::move(read), callbacks);
  if (!hasOnLoad) return ribbon;
  try {
    callbacks.OnLoad(host::RibbonUI(ribbon));
  } catch (...) {
    ribbon->Close();  // the add-in may have kept the handle
    throw;
  }
  return ribbon;
}

Ribbon::Ribbon(Key, std::shared_ptr<host::Gate> gate, RibbonDefinition definition, host::RibbonCallbacks& callbacks)
    : gate_(std::move(gate)), callbacks_(&callbacks), definition_(std::move(definition)) {
  Enter(definition_.roots);
}

std::vector<RibbonItem> Ribbon::Look() {
  const auto kept = shared_from_this();
  return LookAtAll(definition_.roots);
}

std::vector<RibbonItem> Ribbon::Drop(std::string_view id) {
  const auto kept = shared_from_this();
  const Node menu = Find(id);
  if (menu->kind != RibbonKind::DynamicMenu) {
    throw HostError(ErrorNumber::InvalidCall, "The " + Title(*menu) + " is no dynamic menu");
  }
  RequireReachable(menu);
  DropMenu(menu);
  return LookAtAll(menu->children);
}

void Ribbon::Click(std::string_view id) {
  const auto kept = shared_from_this();
  const Node node = Find(id);
  RequireReachable(node);
  switch (node->kind) {
    case RibbonKind::Button:
      if (node->hasAction && IsAlive()) callbacks_->OnAction(ControlOf(*node));
      return;
    case RibbonKind::DynamicMenu:
      DropMenu(node);
      return;
    case RibbonKind::Menu:
    case RibbonKind::Tab:
      return;  // it opens
    default:
      Refuse("The " + Title(*node) + " is nothing that could be clicked");
  }
}

bool Ribbon::Command(std::string_view id) {
  const auto kept = shared_from_this();
  const auto found = definition_.commands.find(id);
  if (found == definition_.commands.end()) return false;
  const RibbonControl control{found->first};
  RibbonCommand& command = found->second;
  if (!Answer(command.enabled, [&] { return callbacks_->GetEnabled(control); })) {
    Refuse("The command \"" + found->first + "\" is disabled");
  }
  bool cancelDefault = false;
  if (command.hasAction && IsAlive()) callbacks_->OnCommand(control, cancelDefault);
  return cancelDefault;
}

void Ribbon::Invalidate() {
  ForgetAll(definition_.roots);
  for (auto& [id, command] : definition_.commands) command.enabled.cached.reset();
}

void Ribbon::InvalidateControl(std::string_view id) {
  if (const auto found = index_.find(std::string(id)); found != index_.end()) {
    if (const Node node = found->second.lock()) ForgetAnswers(*node);
  }
  if (const auto command = definition_.commands.find(id); command != definition_.commands.end()) {
    command->second.enabled.cached.reset();
  }
}

template <class T, class Ask>
const T& Ribbon::Answer(RibbonAnswer<T>& answer, const Ask& ask) {
  if (!answer.asked) return answer.fixed;
  if (!answer.cached.has_value()) {
    if (!IsAlive()) throw HostError(ErrorNumber::ObjectRequired, host::kObjectRequiredText);
    T told = ask();
    answer.cached = std::move(told);  // the callback may have invalidated what was kept: this is newer
  }
  return *answer.cached;
}

bool Ribbon::Enabled(RibbonNode& node) {
  return Answer(node.enabled, [&] { return callbacks_->GetEnabled(ControlOf(node)); });
}

bool Ribbon::Visible(RibbonNode& node) {
  return Answer(node.visible, [&] { return callbacks_->GetVisible(ControlOf(node)); });
}

RibbonItem Ribbon::LookAt(const Node& node) {
  RibbonItem item{.id = ControlOf(*node).id,
                  .kind = node->kind,
                  .visible = Visible(*node),
                  .enabled = node->enabled.fixed,
                  .label = node->label.fixed,
                  .hasImage = node->hasFixedImage,
                  .screentip = node->screentip,
                  .supertip = node->supertip,
                  .keytip = node->keytip,
                  .children = {}};
  if (!item.visible) return item;
  const RibbonControl control = ControlOf(*node);
  item.enabled = Enabled(*node);
  item.label = Answer(node->label, [&] { return callbacks_->GetLabel(control); });
  if (node->image.asked) {
    item.hasImage = Answer(node->image, [&] { return callbacks_->GetImage(control); }).has_value();
  }
  item.children = LookAtAll(node->children);
  return item;
}

// Goes over a copy: a callback may take a menu's content back.
std::vector<RibbonItem> Ribbon::LookAtAll(const std::vector<Node>& nodes) {
  const std::vector<Node> kept = nodes;
  std::vector<RibbonItem> items;
  items.reserve(kept.size());
  for (const Node& node : kept) items.push_back(LookAt(node));
  return items;
}

void Ribbon::RequireReachable(const Node& node) {
  for (Node at = node; at != nullptr; at = at->parent.lock()) {
    if (!Visible(*at)) Refuse("The " + Title(*at) + " is hidden and cannot be clicked");
    if (!Enabled(*at)) Refuse("The " + Title(*at) + " is disabled and cannot be clicked");
  }
}

bool Ribbon::IsReachable(const Node& node) {
  for (Node at = node; at != nullptr; at = at->parent.lock()) {
    if (!Visible(*at) || !Enabled(*at)) return false;
  }
  return true;
}

Node Ribbon::FindStatic(std::string_view id) const {
  const Node found = FindKnown(id);
  return found != nullptr && OutermostDynamic(found) == nullptr ? found : nullptr;
}

Node Ribbon::FindKnown(std::string_view id) const {
  const auto found = index_.find(std::string(id));
  return found == index_.end() ? nullptr : found->second.lock();
}

// Opens the dynamic menus that the user could open, one after the other, until one has the id.
Node Ribbon::FindByDropping(const std::vector<Node>& nodes, std::string_view id) {
  const std::vector<Node> kept = nodes;
  for (const Node& node : kept) {
    if (node->kind == RibbonKind::DynamicMenu) {
      if (!IsReachable(node)) continue;
      DropMenu(node);
      if (Node found = FindAmong(node->children, id)) return found;
    }
    if (Node found = FindByDropping(node->children, id)) return found;
  }
  return nullptr;
}

Node Ribbon::Find(std::string_view id) {
  if (Node found = FindStatic(id)) return found;
  // First where it was last time.
  if (const Node dropped = FindKnown(id)) {
    if (Node found = FindByDropping({OutermostDynamic(dropped)}, id)) return found;
  }
  if (Node found = FindByDropping(definition_.roots, id)) return found;
  throw HostError(ErrorNumber::InvalidCall, "The ribbon has no control \"" + std::string(id) + "\"");
}

void Ribbon::DropMenu(const Node& menu) {
  if (menu->hasContent && !menu->invalidateContentOnDrop) return;
  if (!IsAlive()) throw HostError(ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  const std::string content = callbacks_->GetContent(ControlOf(*menu));
  std::vector<Node> children;
  try {
    children = ReadRibbonContent(content, menu);
  } catch (const HostError& error) {
    Refuse("In the content of the dynamic menu \"" + menu->id + "\": " + error.what());
  }
  RequireFreeIds(children, *menu, index_);
  ForgetContent(*menu);
  menu->children = std::move(children);
  menu->hasContent = true;
  Enter(menu->children);
}

void Ribbon::Enter(const std::vector<Node>& nodes) {
  for (const Node& node : nodes) {
    if (!node->id.empty()) index_[node->id] = node;
    Enter(node->children);
  }
}

void Ribbon::ForgetAnswers(RibbonNode& node) {
  node.label.cached.reset();
  node.enabled.cached.reset();
  node.visible.cached.reset();
  node.image.cached.reset();
  if (node.kind == RibbonKind::DynamicMenu) ForgetContent(node);
}

void Ribbon::ForgetContent(RibbonNode& menu) {
  RemoveFromIndex(menu.children);
  menu.children.clear();
  menu.hasContent = false;
}

void Ribbon::ForgetAll(const std::vector<Node>& nodes) {
  for (const Node& node : nodes) {
    ForgetAnswers(*node);
    ForgetAll(node->children);
  }
}

void Ribbon::RemoveFromIndex(const std::vector<Node>& nodes) {
  for (const Node& node : nodes) {
    index_.erase(node->id);
    RemoveFromIndex(node->children);
  }
}

}  // namespace tolvane::shell
