#include "host/ticket/names.h"

namespace Refhost {

Scope::Scope(const Node& element, const Scope* around)
    : declaring(around == nullptr ? nullptr : around->declaring),
      outer(declaring) {
  if (element.declarations.empty()) return;
  for (const auto& [prefix, nameSpace] : element.declarations) declared.emplace(prefix, &nameSpace);
  declaring = this;
}

const std::u16string* Scope::nameSpaceOf(std::u16string_view prefix) const {
  for (const Scope* scope = declaring; scope != nullptr; scope = scope->outer)
    if (const auto found = scope->declared.find(prefix); found != scope->declared.end()) return found->second;
  return nullptr;
}

std::optional<QName> Scope::resolve(std::u16string_view text) const {
  const auto colon = text.find(u':');
  if (colon == text.npos || colon == 0 || colon + 1 == text.size()) return {};
  const std::u16string* nameSpace = nameSpaceOf(text.substr(0, colon));
  if (nameSpace == nullptr) return {};
  return QName{std::u16string(text.substr(colon + 1)), *nameSpace};
}

std::optional<QName> Scope::resolveAttribute(const Node& element, std::u16string_view attribute) const {
  const std::u16string* value = attributeOf(element, {}, attribute);
  if (value == nullptr) return {};
  return resolve(*value);
}

const std::u16string* attributeOf(const Node& element, std::u16string_view nameSpace, std::u16string_view name) {
  for (const Node::Attribute& attribute : element.attributes)
    if (attribute.name == name && attribute.nameSpace == nameSpace) return &attribute.value;
  return nullptr;
}

}  // namespace Refhost
