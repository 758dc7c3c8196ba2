// Elements of Print Schema documents.
#pragma once

#include "host/ticket/schema.h"

namespace Refhost {

// Creates elements with a schema's prefixes. The schema outlives it.
class Elements {
 public:
  explicit Elements(const TicketSchema& ticketSchema) : schema(ticketSchema) {}

  // An element of the framework, with or without a name attribute.
  Kiln::SmartPtr<Node> element(std::u16string_view type) const;
  Kiln::SmartPtr<Node> element(std::u16string_view type, const QName& name) const;

  // A Value element; `dataType` is a local name of the XML Schema types, for example "integer".
  Kiln::SmartPtr<Node> value(std::u16string_view dataType, std::u16string_view text) const;
  Kiln::SmartPtr<Node> value(const ValueType& type, std::u16string_view text) const;

  // Sets a document root's namespace and version, and adds the declarations of all prefixes.
  void makeRoot(Node& root) const;

 private:
  const TicketSchema& schema;
};

// The data type of a value, a local name of the XML Schema types.
std::u16string_view dataTypeOf(const ValueType& type);

void setAttribute(Node& element, std::u16string_view nameSpace, std::u16string_view prefix, std::u16string_view name,
                  std::u16string_view value);

}  // namespace Refhost
