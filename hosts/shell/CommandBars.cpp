#include "hosts/shell/CommandBars.h"

#include <utility>

#include "hosts/shell/Bar.h"
#include "hosts/shell/Clicking.h"
#include "hosts/shell/CommandBarWorld.h"
#include "hosts/shell/Control.h"
#include "platform/Text.h"
#include "src/host/form/Caption.h"

namespace tolvane::shell {

using host::BarPosition;
using host::ErrorNumber;
using host::HostError;

namespace {

// The first control that a test picks, each before those that it holds. The depth is bounded by kMaxMenuDepth.
template <class Picks>
std::shared_ptr<Control> FirstWithin(const ControlHolder& holder, const Picks& picks) {
  for (const auto& control : holder.controls()) {
    if (picks(*control)) return control;
    if (auto found = FirstWithin(*control, picks)) return found;
  }
  return nullptr;
}

void ListLasting(const ControlHolder& holder, const std::string& path, std::vector<std::string>& lasting) {
  for (const auto& control : holder.controls()) {
    const std::string own = path + "/" + host::PlainCaption(control->Caption());
    if (!control->BuiltIn() && !control->IsTemporary()) lasting.push_back(own);
    ListLasting(*control, own, lasting);
  }
}

}  // namespace

CommandBars::CommandBars(Surroundings surroundings)
    : world_(std::make_shared<CommandBarWorld>(
          CommandBarWorld{.gate = std::move(surroundings.gate),
                          .desk = surroundings.desk,
                          .runMacro = std::move(surroundings.runMacro),
                          .builtInEffect = std::move(surroundings.builtInEffect),
                          .activeSheetIsProtected = std::move(surroundings.activeSheetIsProtected),
                          .bars = {},
                          .listeners = {}})) {
  for (const BuiltInBar& bar : BuiltInBars()) world_->bars.push_back(Bar::MakeBuiltIn(world_, bar));
}

CommandBars::~CommandBars() {
  Close();
}

void CommandBars::Close() noexcept {
  world_->open = false;
  for (const auto& bar : world_->bars) bar->Kill();
  world_->bars.clear();
  world_->listeners.Clear();
}

void CommandBars::Click(const host::CommandBarControl& control) {
  const auto kept = world_;
  ClickOn(*kept, control);
}

std::vector<std::string> CommandBars::Lasting() const {
  std::vector<std::string> lasting;
  for (const auto& bar : world_->bars) {
    if (!bar->BuiltIn() && bar->IsTemporary()) continue;
    if (!bar->BuiltIn()) lasting.push_back(bar->Name());
    ListLasting(*bar, bar->Name(), lasting);
  }
  return lasting;
}

bool CommandBars::IsAlive() const noexcept {
  return world_->open;
}

host::Gate& CommandBars::gate() const noexcept {
  return *world_->gate;
}

std::vector<host::CommandBar> CommandBars::All() const {
  std::vector<host::CommandBar> handles;
  handles.reserve(world_->bars.size());
  for (const auto& bar : world_->bars) handles.emplace_back(bar);
  return handles;
}

host::CommandBar CommandBars::Item(std::string_view name) const {
  auto bar = Find(name);
  if (bar == nullptr) {
    throw HostError(ErrorNumber::InvalidCall, "There is no command bar \"" + std::string(name) + "\"");
  }
  return host::CommandBar(std::move(bar));
}

host::CommandBar CommandBars::Item(int index) const {
  if (index < 1 || static_cast<std::size_t>(index) > world_->bars.size()) {
    throw HostError(ErrorNumber::InvalidCall, "There is no command bar " + std::to_string(index) + " among " +
                                                  std::to_string(world_->bars.size()));
  }
  return host::CommandBar(world_->bars[static_cast<std::size_t>(index) - 1]);
}

host::CommandBar CommandBars::Add(const host::NewCommandBar& bar) {
  if (bar.position < BarPosition::Left || bar.position > BarPosition::Popup) {
    throw HostError(ErrorNumber::InvalidCall,
                    "A command bar cannot be added at position " + std::to_string(static_cast<int>(bar.position)));
  }
  host::NewCommandBar named = bar;
  if (named.name.empty()) named.name = FreeName();
  if (Find(named.name) != nullptr) {
    throw HostError(ErrorNumber::InvalidCall, "There is a command bar \"" + named.name + "\" already");
  }
  world_->bars.push_back(Bar::MakeOwn(world_, named));
  return host::CommandBar(world_->bars.back());
}

host::CommandBarControl CommandBars::FindControl(std::optional<int> id, std::optional<std::string> tag) const {
  const auto picks = [&](const Control& control) {
    return (!id.has_value() || control.Id() == *id) && (!tag.has_value() || control.Tag() == *tag);
  };
  for (const auto& bar : world_->bars) {  // the program's menu bar is always the first
    if (auto found = FirstWithin(*bar, picks)) return host::CommandBarControl(std::move(found));
  }
  return {};
}

std::shared_ptr<Bar> CommandBars::Find(std::string_view name) const {
  const std::string folded = platform::FoldCase(name);
  for (const auto& bar : world_->bars) {
    if (bar->FoldedName() == folded) return bar;
  }
  return nullptr;
}

// As Office names a bar that it is given no name for.
std::string CommandBars::FreeName() const {
  for (std::size_t number = 1;; ++number) {
    std::string name = "Custom " + std::to_string(number);
    if (Find(name) == nullptr) return name;
  }
}

}  // namespace tolvane::shell
