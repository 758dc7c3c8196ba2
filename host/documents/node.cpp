#include "host/documents/node.h"

namespace Refhost {
namespace {

constexpr std::size_t indexedFrom = 24;  // children; linear search is as fast below

}  // namespace

Node::~Node() {
  for (const auto& child : childNodes) child->parent = nullptr;
}

const Node& Node::root() const {
  const Node* node = this;
  while (node->parent != nullptr) node = node->parent;
  return *node;
}

// Copies an ancestor, which would make a cycle.
Kiln::SmartPtr<Node> Node::adopt(Kiln::SmartPtr<Node> node) {
  if (node->parent != nullptr || node.get() == &root()) node = node->copy();
  node->parent = this;
  return node;
}

void Node::append(Kiln::SmartPtr<Node> child) {
  childNodes.push_back(adopt(std::move(child)));
  if (index) index->emplace(childNodes.back()->localName, childNodes.size() - 1);
}

std::size_t Node::find(std::u16string_view name) const {
  if (childNodes.size() < indexedFrom) {
    for (std::size_t i = 0; i < childNodes.size(); ++i)
      if (childNodes[i]->localName == name) return i;
    return none;
  }
  if (!index) {
    auto made = std::make_unique<std::unordered_map<std::u16string_view, std::size_t>>();
    for (std::size_t i = 0; i < childNodes.size(); ++i) made->emplace(childNodes[i]->localName, i);
    index = std::move(made);
  }
  const auto found = index->find(name);
  return found == index->end() ? none : found->second;
}

Kiln::SmartPtr<Kiln::Dom::INode> Node::childAt(std::int32_t place) {
  if (place < 0 || place >= childCount()) return {};
  return childNodes[static_cast<std::size_t>(place)];
}

Kiln::SmartPtr<Kiln::Dom::INode> Node::child(Kiln::WStringView name) {
  const std::size_t place = find(name);
  return place == none ? Kiln::SmartPtr<Node>() : childNodes[place];
}

Kiln::SmartPtr<Kiln::Dom::INode> Node::childOrNew(Kiln::WStringView name) {
  if (auto found = child(name)) return found;
  append(make<Node>(name.view()));
  return childNodes.back();
}

void Node::setChild(Kiln::WStringView name, Kiln::SmartPtr<Kiln::Dom::INode> node) {
  auto own = adopt(givenBack<Node>(node, "INode::setChild", "a node"));
  const std::size_t place = find(name);
  own->localName = name.view();
  if (place == none) {
    own->parent = nullptr;
    append(std::move(own));
    return;
  }
  if (index) index->erase(name);
  childNodes[place]->parent = nullptr;
  childNodes[place] = std::move(own);
  if (index) index->emplace(childNodes[place]->localName, place);
}

bool Node::removeChild(Kiln::WStringView name) {
  const std::size_t place = find(name);
  if (place == none) return false;
  index.reset();
  childNodes[place]->parent = nullptr;
  childNodes.erase(childNodes.begin() + static_cast<std::ptrdiff_t>(place));
  return true;
}

Kiln::SmartPtr<Node> Node::copy() const {
  auto twin = make<Node>(localName);
  twin->nameSpace = nameSpace;
  twin->prefix = prefix;
  twin->attributes = attributes;
  twin->declarations = declarations;
  twin->ownText = ownText;
  twin->childNodes.reserve(childNodes.size());
  for (const auto& child : childNodes) twin->append(child->copy());
  return twin;
}

}  // namespace Refhost
