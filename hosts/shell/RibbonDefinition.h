#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/CommandBars.h"

namespace tolvane::shell {

enum class RibbonKind : std::uint8_t {
  Tab,
  Group,
  Button,
  Menu,
  DynamicMenu,
  SplitButton,
  Box,
  ButtonGroup,
  Separator,
  MenuSeparator,
  DialogBoxLauncher,
  ContextMenu,
  BuiltIn,  // one of the program's own controls, shown once more
};
std::string_view NameOf(RibbonKind kind);  // of its element

// How far elements of a definition, dynamic contents included, may lie within each other.
inline constexpr int kMaxRibbonDepth = 24;

// What an attribute says, or what its callback answers once it has been asked.
template <class T>
struct RibbonAnswer {
  T fixed{};
  bool asked = false;       // there is a callback for it
  std::optional<T> cached;  // what that answered
};

struct RibbonNode {
  RibbonKind kind = RibbonKind::Button;
  std::string id;     // of an own element; empty for separators without one
  std::string idMso;  // of one of the program's own
  int depth = 0;
  RibbonAnswer<std::string> label;
  RibbonAnswer<bool> enabled{.fixed = true, .cached = {}};
  RibbonAnswer<bool> visible{.fixed = true, .cached = {}};
  RibbonAnswer<std::optional<host::Picture>> image;
  bool hasFixedImage = false;
  bool hasAction = false;
  bool invalidateContentOnDrop = false;
  bool hasContent = false;  // of a dynamic menu: its content has been asked for
  std::string screentip;
  std::string supertip;
  std::string keytip;
  std::weak_ptr<RibbonNode> parent;
  std::vector<std::shared_ptr<RibbonNode>> children;
};

// A command of the program that the definition gives another meaning.
struct RibbonCommand {
  RibbonAnswer<bool> enabled{.fixed = true, .cached = {}};
  bool hasAction = false;
};

struct RibbonDefinition {
  bool hasOnLoad = false;
  std::map<std::string, RibbonCommand, std::less<>> commands;  // by the name of the command
  std::vector<std::shared_ptr<RibbonNode>> roots;              // tabs, then context menus
};

// Reads a customUI document (of 2006 or of 2009/07). What is wrong with it, or not known here, is ApplicationDefined
// and names the element.
RibbonDefinition ReadRibbonDefinition(std::string_view xml);

// Reads what a dynamic menu is filled with: a <menu> document of the same namespaces.
std::vector<std::shared_ptr<RibbonNode>> ReadRibbonContent(std::string_view xml,
                                                           const std::shared_ptr<RibbonNode>& menu);

}  // namespace tolvane::shell
