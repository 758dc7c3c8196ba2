// Ticket schemas: which property becomes which feature or parameter of a PrintTicket, as data. The format is described
// in docs/print-ticket.md.
#pragma once

#include "host/ticket/names.h"
#include "host/ticket/values.h"
#include "kiln/plugin.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Refhost {

// What is wrong with a document, and the element at which it is. The element's document outlives it.
class DocumentError : public std::runtime_error {
 public:
  DocumentError(const Node& place, const std::string& what) : std::runtime_error(what), element(&place) {}

  const Node* element;
};

// The parameter of this system's own that carries a property's value as it is, where the public form does not.
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

  // What the ticket says in the place of a value that its type does not have, in the ticket's form.
  std::optional<std::u16string> standIn;
  std::optional<ExactParameter> exact;

  // The property's value where the ticket says nothing; without one the property stays as it is.
  std::optional<std::u16string> absent;
};

struct OptionMapping {
  QName name;
  std::u16string value;

  // Scored properties, each with the parameter that it refers to, an index into TicketSchema::parameters.
  std::vector<std::pair<QName, std::size_t>> scored;
};

struct FeatureMapping {
  QName name;
  std::u16string property;
  Kiln::PTLevel scope;
  std::vector<OptionMapping> options;

  // The property's value that leaves the feature out, and that a ticket without the feature gives.
  std::optional<std::u16string> absent;

  // For the property's value while the feature around this one is left out; a feature that can be left out has only
  // features with one.
  std::optional<ExactParameter> exact;
  std::vector<FeatureMapping> features;

  const OptionMapping* optionOf(std::u16string_view value) const;
  const OptionMapping* optionOf(const QName& optionName) const;
};

struct TicketSchema {
  // The prefixes with which documents are written, each with its namespace; one for every namespace of the names below.
  std::vector<std::pair<std::u16string, std::u16string>> prefixes;
  std::vector<FeatureMapping> features;
  std::vector<ParameterMapping> parameters;

  // Every parameter that a ticket can have, exact ones included, with the property that it is of.
  struct Parameter {
    std::u16string property;
    ValueType type;
  };
  std::map<QName, Parameter> parameterTypes;

  // The prefix of one of the namespaces above.
  const std::u16string& prefixOf(std::u16string_view nameSpace) const;

  // A name as documents write it.
  std::u16string written(const QName& name) const;

  // The same for a message, which may have any name.
  std::string shown(const QName& name) const;
};

// Throws DocumentError: one sentence without its place.
TicketSchema readSchema(const Node& document);

}  // namespace Refhost
