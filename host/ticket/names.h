// Namespaced names in attributes of tickets and schemas; a prefix means the namespace that is declared for it at that
// place.
#pragma once

#include "host/documents/node.h"

#include <compare>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

struct QName {
  std::u16string name;
  std::u16string nameSpace;

  auto operator<=>(const QName&) const = default;
};

namespace PrintSchema {
inline constexpr std::u16string_view framework =
    u"http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
inline constexpr std::u16string_view keywords =
    u"http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";
inline constexpr std::u16string_view instance = u"http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::u16string_view dataTypes = u"http://www.w3.org/2001/XMLSchema";
}  // namespace PrintSchema

// The prefixes declared for an element. The element and the enclosing scope outlive the scope.
class Scope {
 public:
  explicit Scope(const Node& root) : Scope(root, nullptr) {}
  Scope(const Node& element, const Scope& around) : Scope(element, &around) {}
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  // The namespace of a prefix; null for one that is not declared.
  const std::u16string* nameSpaceOf(std::u16string_view prefix) const;

  // Resolves a name such as "psk:Text". Nothing for a text without a prefix, which Print Schema documents require, or
  // with an undeclared one.
  std::optional<QName> resolve(std::u16string_view text) const;

  // The same for an element's attribute without a namespace; nothing also when the attribute is missing.
  std::optional<QName> resolveAttribute(const Node& element, std::u16string_view attribute) const;

 private:
  Scope(const Node& element, const Scope* around);

  // The nearest scope, this or an enclosing one, whose element declares prefixes; null for none.
  const Scope* declaring = nullptr;
  const Scope* outer = nullptr;
  std::map<std::u16string_view, const std::u16string*> declared;
};

// An attribute's value; null when the element has none with that name.
const std::u16string* attributeOf(const Node& element, std::u16string_view nameSpace, std::u16string_view name);

inline bool isFrameworkElement(const Node& element, std::u16string_view name) {
  return element.localNameText() == name && element.nameSpace == PrintSchema::framework;
}

}  // namespace Refhost
