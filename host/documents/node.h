// This host's document nodes: the interface for plug-ins (a name, a text, named children), and the other parts of an
// XML element, for the host's own readers and writers.
#pragma once

#include "host/object.h"
#include "kiln/dom.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Refhost {

class Node final : public Kiln::Dom::INode {
 public:
  struct Attribute {
    std::u16string nameSpace;  // empty for none
    std::u16string prefix;
    std::u16string name;
    std::u16string value;
  };

  explicit Node(std::u16string_view nodeName) : localName(nodeName) {}
  ~Node() override;

  static constexpr const char* interfaceName = "Refhost::Node";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : INode::queryInterface(asked);
  }

  // The element's namespace and preferred prefix; empty for none.
  std::u16string nameSpace;
  std::u16string prefix;
  std::vector<Attribute> attributes;

  // Prefixes declared on this element: prefix, namespace.
  std::vector<std::pair<std::u16string, std::u16string>> declarations;

  const std::vector<Kiln::SmartPtr<Node>>& children() const { return childNodes; }

  // Appends a child. Copies a node that already has a parent, or that contains this node.
  void append(Kiln::SmartPtr<Node> child);

  const std::u16string& localNameText() const { return localName; }
  const std::u16string& text() const { return ownText; }
  Kiln::SmartPtr<Node> copy() const;

  // Kiln::Dom::INode
  Kiln::WString name() override { return Refhost::text(localName); }
  Kiln::WString value() override { return Refhost::text(ownText); }
  void setValue(Kiln::WStringView text) override { ownText = text.view(); }
  std::int32_t childCount() override { return static_cast<std::int32_t>(childNodes.size()); }
  Kiln::SmartPtr<Kiln::Dom::INode> childAt(std::int32_t index) override;
  Kiln::SmartPtr<Kiln::Dom::INode> child(Kiln::WStringView name) override;
  Kiln::SmartPtr<Kiln::Dom::INode> childOrNew(Kiln::WStringView name) override;
  void setChild(Kiln::WStringView name, Kiln::SmartPtr<Kiln::Dom::INode> node) override;
  bool removeChild(Kiln::WStringView name) override;
  Kiln::SmartPtr<Kiln::Dom::INode> clone() override { return copy(); }

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  // The index of the first child with that name, or none. Nodes with many children build a hash index on the first
  // lookup, since stores look up each of their records by id.
  std::size_t find(std::u16string_view name) const;
  Kiln::SmartPtr<Node> adopt(Kiln::SmartPtr<Node> node);
  const Node& root() const;

  std::u16string localName;
  std::u16string ownText;
  Node* parent = nullptr;
  std::vector<Kiln::SmartPtr<Node>> childNodes;
  mutable std::unique_ptr<std::unordered_map<std::u16string_view, std::size_t>> index;  // keys are the children's names
};

}  // namespace Refhost
