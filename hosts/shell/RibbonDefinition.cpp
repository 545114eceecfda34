#include "hosts/shell/RibbonDefinition.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <set>
#include <utility>

#include "hosts/shell/Refusal.h"
#include "platform/Xml.h"

namespace tolvane::shell {

using platform::XmlNode;

namespace {

constexpr std::string_view kNamespace2006 = "http://schemas.microsoft.com/office/2006/01/customui";
constexpr std::string_view kNamespace2009 = "http://schemas.microsoft.com/office/2009/07/customui";

struct KindName {
  std::string_view element;
  RibbonKind kind;
};
constexpr KindName kKindNames[] = {
    KindName{"tab", RibbonKind::Tab},
    KindName{"group", RibbonKind::Group},
    KindName{"button", RibbonKind::Button},
    KindName{"menu", RibbonKind::Menu},
    KindName{"dynamicMenu", RibbonKind::DynamicMenu},
    KindName{"splitButton", RibbonKind::SplitButton},
    KindName{"box", RibbonKind::Box},
    KindName{"buttonGroup", RibbonKind::ButtonGroup},
    KindName{"separator", RibbonKind::Separator},
    KindName{"menuSeparator", RibbonKind::MenuSeparator},
    KindName{"dialogBoxLauncher", RibbonKind::DialogBoxLauncher},
    KindName{"contextMenu", RibbonKind::ContextMenu},
    KindName{"control", RibbonKind::BuiltIn},
};

constexpr auto KindBit(RibbonKind kind) {
  return 1U << static_cast<unsigned>(kind);
}
constexpr unsigned Kinds(std::initializer_list<RibbonKind> kinds) {
  unsigned bits = 0;
  for (const RibbonKind kind : kinds) bits |= KindBit(kind);
  return bits;
}

constexpr unsigned kMenuItems = Kinds({RibbonKind::Button, RibbonKind::Menu, RibbonKind::DynamicMenu,
                                       RibbonKind::SplitButton, RibbonKind::MenuSeparator, RibbonKind::BuiltIn});
constexpr unsigned kGroupItems =
    Kinds({RibbonKind::Button, RibbonKind::Menu, RibbonKind::DynamicMenu, RibbonKind::SplitButton, RibbonKind::Box,
           RibbonKind::ButtonGroup, RibbonKind::Separator, RibbonKind::DialogBoxLauncher, RibbonKind::BuiltIn});

// The kinds that may lie in one of this kind, as the schema of customUI has it.
constexpr unsigned MayHold(RibbonKind kind) {
  switch (kind) {
    case RibbonKind::Tab:
      return Kinds({RibbonKind::Group});
    case RibbonKind::Group:
    case RibbonKind::Box:
      return kGroupItems;
    case RibbonKind::Menu:
    case RibbonKind::ContextMenu:
      return kMenuItems;
    case RibbonKind::SplitButton:
      return Kinds({RibbonKind::Button, RibbonKind::Menu});
    case RibbonKind::ButtonGroup:
      return Kinds({RibbonKind::Button, RibbonKind::Menu, RibbonKind::DynamicMenu, RibbonKind::SplitButton,
                    RibbonKind::BuiltIn});
    case RibbonKind::DialogBoxLauncher:
      return Kinds({RibbonKind::Button});
    case RibbonKind::Button:
    case RibbonKind::DynamicMenu:
    case RibbonKind::Separator:
    case RibbonKind::MenuSeparator:
    case RibbonKind::BuiltIn:
      return 0;
  }
  return 0;
}

// Of the controls. Those behind the bar say how and where something is drawn, or what only the add-in reads.
constexpr std::array<std::string_view, 32> kControlAttributes{
    "id", "idMso", "idQ", "label", "getLabel", "enabled", "getEnabled", "visible", "getVisible", "image", "imageMso",
    "getImage", "screentip", "supertip", "keytip", "onAction", "getContent", "invalidateContentOnDrop",
    // |
    "tag", "size", "itemSize", "showLabel", "showImage", "description", "title", "boxStyle", "centerVertically",
    "autoScale", "insertBeforeMso", "insertAfterMso", "insertBeforeQ", "insertAfterQ"};

class Reader {
 public:
  RibbonDefinition ReadDefinition(std::string_view xml) {
    const XmlNode root = Parse(xml, "customUI");
    RefuseOtherAttributes(root, {"onLoad"});
    RibbonDefinition definition;
    definition.hasOnLoad = root.Attribute("onLoad").has_value();
    for (const XmlNode& part : root.Children()) {
      const std::string name = LocalName(part);
      if (name == "commands") {
        ReadCommands(part, definition);
      } else if (name == "ribbon") {
        ReadRibbon(part, definition);
      } else if (name == "contextMenus" && namespace_ == kNamespace2009) {
        RefuseOtherAttributes(part, {});
        ReadInto(part, Kinds({RibbonKind::ContextMenu}), nullptr, 1, definition.roots);
      } else {
        RefuseElement(part, root);
      }
    }
    return definition;
  }

  std::vector<std::shared_ptr<RibbonNode>> ReadContent(std::string_view xml, const std::shared_ptr<RibbonNode>& menu) {
    const XmlNode root = Parse(xml, "menu");
    RefuseOtherAttributes(root, {"title", "itemSize"});
    std::vector<std::shared_ptr<RibbonNode>> items;
    ReadInto(root, kMenuItems, menu, menu->depth + 1, items);
    return items;
  }

 private:
  XmlNode Parse(std::string_view xml, std::string_view rootName) {
    try {
      XmlNode root = platform::ParseXml(xml);
      const std::string name = root.Name();
      const std::size_t colon = name.find(':');
      prefix_ = colon == std::string::npos ? "" : name.substr(0, colon + 1);
      const std::string declaration =
          prefix_.empty() ? std::string("xmlns") : std::string("xmlns:").append(name, 0, colon);
      namespace_ = root.Attribute(declaration).value_or("");
      if (namespace_ != kNamespace2006 && namespace_ != kNamespace2009) {
        Refuse("The ribbon's definition is in no namespace of customUI, but in \"" + namespace_ + "\"");
      }
      if (LocalName(root) != rootName) {
        Refuse("The ribbon's definition begins with <" + name + ">, not with <" + std::string(rootName) + ">");
      }
      return root;
    } catch (const platform::XmlError& error) {
      Refuse(std::string("The ribbon's definition cannot be read: ") + error.what());
    }
  }

  // Elements of other namespaces get no name that is known here.
  std::string LocalName(const XmlNode& node) const {
    const std::string name = node.Name();
    if (!name.starts_with(prefix_)) return name;
    return name.substr(prefix_.size());
  }

  static std::string Describe(const XmlNode& node) {
    std::string text = "<";
    text += node.Name();
    for (const char* const key : {"id", "idMso", "idQ"}) {
      if (const auto value = node.Attribute(key))
        text.append(" ").append(key).append("=\"").append(*value).append("\"");
    }
    return text + ">";
  }

  [[noreturn]] static void RefuseElement(const XmlNode& node, const XmlNode& parent) {
    Refuse("The ribbon's definition has " + Describe(node) + " in " + Describe(parent) + ", which is not supported");
  }

  template <class Known>
  static void RefuseOtherAttributes(const XmlNode& node, const Known& known) {
    for (const XmlNode& attribute : node.Select("@*")) {
      const std::string name = attribute.Name();
      if (std::find(known.begin(), known.end(), name) == known.end()) {
        Refuse("The ribbon's definition has the attribute " + name + " at " + Describe(node) +
               ", which is not supported");
      }
    }
  }
  static void RefuseOtherAttributes(const XmlNode& node, std::initializer_list<std::string_view> known) {
    RefuseOtherAttributes<std::initializer_list<std::string_view>>(node, known);
  }

  static bool ReadBoolean(const XmlNode& node, std::string_view name, bool otherwise) {
    const auto text = node.Attribute(name);
    if (!text.has_value()) return otherwise;
    if (*text == "true" || *text == "1") return true;
    if (*text == "false" || *text == "0") return false;
    Refuse("In the ribbon's definition " + std::string(name) + " of " + Describe(node) + " is \"" + *text +
           "\", neither true nor false");
  }

  static bool ReadAsked(const XmlNode& node, std::initializer_list<std::string_view> fixed, std::string_view callback) {
    if (!node.Attribute(callback).has_value()) return false;
    for (const std::string_view name : fixed) {
      if (node.Attribute(name).has_value()) {
        Refuse("The ribbon's definition gives " + Describe(node) + " both " + std::string(name) + " and " +
               std::string(callback));
      }
    }
    return true;
  }

  static RibbonAnswer<bool> ReadEnabled(const XmlNode& node) {
    return {ReadBoolean(node, "enabled", true), ReadAsked(node, {"enabled"}, "getEnabled"), {}};
  }

  void ReadCommands(const XmlNode& commands, RibbonDefinition& definition) {
    RefuseOtherAttributes(commands, {});
    for (const XmlNode& element : commands.Children()) {
      if (LocalName(element) != "command") RefuseElement(element, commands);
      RefuseOtherAttributes(element, {"idMso", "enabled", "getEnabled", "onAction"});
      const std::string id = element.Attribute("idMso").value_or("");
      if (id.empty()) Refuse("The ribbon's definition has a <command> without idMso");
      const RibbonCommand command{ReadEnabled(element), element.Attribute("onAction").has_value()};
      if (!definition.commands.emplace(id, command).second) RefuseTwice(id);
    }
  }

  void ReadRibbon(const XmlNode& ribbon, RibbonDefinition& definition) {
    RefuseOtherAttributes(ribbon, {"startFromScratch"});
    for (const XmlNode& part : ribbon.Children()) {
      if (LocalName(part) != "tabs") RefuseElement(part, ribbon);
      RefuseOtherAttributes(part, {});
      ReadInto(part, Kinds({RibbonKind::Tab}), nullptr, 1, definition.roots);
    }
  }

  void ReadInto(const XmlNode& element, unsigned kinds, const std::shared_ptr<RibbonNode>& parent, int depth,
                std::vector<std::shared_ptr<RibbonNode>>& nodes) {
    if (depth > kMaxRibbonDepth) {
      Refuse("The elements of the ribbon's definition lie more than " + std::to_string(kMaxRibbonDepth) +
             " deep within each other, at " + Describe(element));
    }
    for (const XmlNode& child : element.Children()) {
      const std::string name = LocalName(child);
      const auto* const found = std::find_if(std::begin(kKindNames), std::end(kKindNames),
                                             [&](const KindName& known) { return known.element == name; });
      if (found == std::end(kKindNames) || (kinds & KindBit(found->kind)) == 0) RefuseElement(child, element);
      auto node = ReadNode(child, found->kind, depth);
      node->parent = parent;
      ReadInto(child, MayHold(node->kind), node, depth + 1, node->children);
      nodes.push_back(std::move(node));
    }
  }

  std::shared_ptr<RibbonNode> ReadNode(const XmlNode& element, RibbonKind kind, int depth) {
    RefuseOtherAttributes(element, kControlAttributes);
    auto node = std::make_shared<RibbonNode>();
    node->kind = kind;
    node->depth = depth;
    ReadIds(element, *node);
    node->label = {element.Attribute("label").value_or(""), ReadAsked(element, {"label"}, "getLabel"), {}};
    node->enabled = ReadEnabled(element);
    node->visible = {ReadBoolean(element, "visible", true), ReadAsked(element, {"visible"}, "getVisible"), {}};
    node->image.asked = ReadAsked(element, {"image", "imageMso"}, "getImage");
    node->hasFixedImage = element.Attribute("image").has_value() || element.Attribute("imageMso").has_value();
    node->hasAction = element.Attribute("onAction").has_value();
    if (node->hasAction && kind != RibbonKind::Button) {
      Refuse("The ribbon's definition gives " + Describe(element) + " an onAction, which only buttons have");
    }
    if (element.Attribute("getContent").has_value() != (kind == RibbonKind::DynamicMenu)) {
      Refuse("In the ribbon's definition a dynamicMenu, and nothing else, has getContent: " + Describe(element));
    }
    node->invalidateContentOnDrop = ReadBoolean(element, "invalidateContentOnDrop", false);
    node->screentip = element.Attribute("screentip").value_or("");
    node->supertip = element.Attribute("supertip").value_or("");
    node->keytip = element.Attribute("keytip").value_or("");
    return node;
  }

  void ReadIds(const XmlNode& element, RibbonNode& node) {
    const auto id = element.Attribute("id");
    const auto idQ = element.Attribute("idQ");
    const auto idMso = element.Attribute("idMso");
    const int count = (id ? 1 : 0) + (idQ ? 1 : 0) + (idMso ? 1 : 0);
    const bool needsNone = node.kind == RibbonKind::Separator || node.kind == RibbonKind::MenuSeparator ||
                           node.kind == RibbonKind::DialogBoxLauncher;
    if (count > 1 || (count == 0 && !needsNone)) {
      Refuse("In the ribbon's definition " + Describe(element) + " needs exactly one of id, idQ and idMso");
    }
    if ((node.kind == RibbonKind::BuiltIn || node.kind == RibbonKind::ContextMenu) && !idMso) {
      Refuse("In the ribbon's definition " + Describe(element) + " needs an idMso");
    }
    node.idMso = idMso.value_or("");
    node.id = id ? *id : idQ.value_or("");
    if (count == 1 && node.id.empty() && node.idMso.empty()) {
      Refuse("In the ribbon's definition the id of " + Describe(element) + " is empty");
    }
    if (!node.id.empty() && !ids_.insert(node.id).second) RefuseTwice(node.id);
  }

  [[noreturn]] static void RefuseTwice(const std::string& id) {
    Refuse("The ribbon's definition has \"" + id + "\" twice");
  }

  std::string prefix_;
  std::string namespace_;
  std::set<std::string> ids_;
};

}  // namespace

std::string_view NameOf(RibbonKind kind) {
  for (const KindName& known : kKindNames) {
    if (known.kind == kind) return known.element;
  }
  return {};
}

RibbonDefinition ReadRibbonDefinition(std::string_view xml) {
  return Reader().ReadDefinition(xml);
}

std::vector<std::shared_ptr<RibbonNode>> ReadRibbonContent(std::string_view xml,
                                                           const std::shared_ptr<RibbonNode>& menu) {
  return Reader().ReadContent(xml, menu);
}

}  // namespace tolvane::shell
