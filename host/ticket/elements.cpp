#include "host/ticket/elements.h"

#include <algorithm>

namespace Refhost {

Kiln::SmartPtr<Node> Elements::element(std::u16string_view type) const {
  auto node = make<Node>(type);
  node->nameSpace = PrintSchema::framework;
  node->prefix = schema.prefixOf(PrintSchema::framework);
  return node;
}

Kiln::SmartPtr<Node> Elements::element(std::u16string_view type, const QName& name) const {
  auto node = element(type);
  setAttribute(*node, {}, {}, u"name", schema.written(name));
  return node;
}

Kiln::SmartPtr<Node> Elements::value(std::u16string_view dataType, std::u16string_view text) const {
  auto node = element(u"Value");
  setAttribute(*node, PrintSchema::instance, schema.prefixOf(PrintSchema::instance), u"type",
               schema.written({std::u16string(dataType), std::u16string(PrintSchema::dataTypes)}));
  node->setValue(text);
  return node;
}

Kiln::SmartPtr<Node> Elements::value(const ValueType& type, std::u16string_view text) const {
  return value(dataTypeOf(type), text);
}

void Elements::makeRoot(Node& root) const {
  root.nameSpace = PrintSchema::framework;
  root.prefix = schema.prefixOf(PrintSchema::framework);
  setAttribute(root, {}, {}, u"version", u"1");
  std::erase_if(root.declarations, [this](const auto& declared) {
    return std::any_of(schema.prefixes.begin(), schema.prefixes.end(),
                       [&](const auto& own) { return own.first == declared.first; });
  });
  root.declarations.insert(root.declarations.begin(), schema.prefixes.begin(), schema.prefixes.end());
}

std::u16string_view dataTypeOf(const ValueType& type) {
  return type.form == ValueForm::integer ? u"integer" : u"string";
}

void setAttribute(Node& element, std::u16string_view nameSpace, std::u16string_view prefix, std::u16string_view name,
                  std::u16string_view value) {
  for (Node::Attribute& attribute : element.attributes)
    if (attribute.name == name && attribute.nameSpace == nameSpace) {
      attribute.value = value;
      return;
    }
  element.attributes.push_back(
      {std::u16string(nameSpace), std::u16string(prefix), std::u16string(name), std::u16string(value)});
}

}  // namespace Refhost
