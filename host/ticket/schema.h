// Ticket schemas: the mapping of properties to features and parameters of a PrintTicket, as data. docs/formats.md
// describes the format.
#pragma once

#include "host/documents/format.h"
#include "host/ticket/names.h"
#include "host/ticket/values.h"
#include "kiln/plugin.h"

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Refhost {

// An error in a document, with the element concerned. The element's document outlives it.
class DocumentError : public std::runtime_error {
 public:
  DocumentError(const Node& place, const std::string& what) : std::runtime_error(what), element(&place) {}

  const Node* element;
};

// A parameter of this system's own with the exact value of a property that the public form cannot represent.
struct ExactParameter {
  QName name;
  ValueType type;
};

struct ParameterMapping {
  QName name;
  std::u16string property;
  Kiln::PTLevel scope;
  ValueType type;
  OutOfRange outOfRange = OutOfRange::refused;
  std::u16string unit;

  // The stand-in, in the ticket's form, for a value that the type cannot represent.
  std::optional<std::u16string> standIn;
  std::optional<ExactParameter> exact;

  // The property's value when the ticket has no such parameter; without one the property is unchanged.
  std::optional<std::u16string> absent;
};

struct OptionMapping {
  QName name;
  std::u16string value;

  // Scored properties, each with the index of its parameter in TicketSchema::parameters.
  std::vector<std::pair<QName, std::size_t>> scored;
};

struct FeatureMapping {
  QName name;
  std::u16string property;
  Kiln::PTLevel scope;
  std::vector<OptionMapping> options;

  // The property's value when the ticket does not have the feature; writing that value omits the feature.
  std::optional<std::u16string> absent;

  // Holds the property's value while the enclosing feature is omitted; required in features below one that can be
  // omitted.
  std::optional<ExactParameter> exact;
  std::vector<FeatureMapping> features;

  // The feature that has the same property and precedence over this one.
  std::optional<QName> aliasOf;

  const OptionMapping* optionOf(std::u16string_view value) const;
  const OptionMapping* optionOf(const QName& optionName) const;
};

struct TicketSchema {
  // The prefixes of written documents, with their namespaces; covers the namespaces of all names below.
  std::vector<std::pair<std::u16string, std::u16string>> prefixes;
  std::vector<FeatureMapping> features;
  std::vector<ParameterMapping> parameters;

  // All parameters that a ticket can have, including exact ones, with their properties.
  struct Parameter {
    std::u16string property;
    ValueType type;
  };
  std::map<QName, Parameter> parameterTypes;

  // The prefix of one of the namespaces above.
  const std::u16string& prefixOf(std::u16string_view nameSpace) const;

  // The prefixed name, as written in documents.
  std::u16string written(const QName& name) const;

  // The same for messages, where any name may occur.
  std::string shown(const QName& name) const;
};

// The format of a schema.
extern const DocumentFormat ticketSchemaFormat;

// Whether there is a property with that name; empty when any name may be one.
using KnowsProperty = std::function<bool(std::u16string_view)>;

// Throws DocumentError: one sentence without the position.
TicketSchema readSchema(const Node& document, const KnowsProperty& knowsProperty = {});

}  // namespace Refhost
