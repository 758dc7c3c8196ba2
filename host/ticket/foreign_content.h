// Content of a loaded ticket beyond the schema: other drivers' features, parameters and properties. It is kept and
// added to the next ticket unchanged.
//
// Foreign parts of a feature in the schema (an unknown scored property, for example) are kept as long as the ticket has
// that feature with the same option.
#pragma once

#include "host/ticket/schema.h"
#include "kiln/property.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Refhost {

class ForeignContent {
 public:
  ForeignContent() = default;

  // `root` is a ticket that was read without an error.
  ForeignContent(const TicketSchema& schema, Kiln::Property& properties, const Node& root);

  // Adds the content to the root of a ticket written with the same schema.
  void addTo(const TicketSchema& schema, Node& root) const;

 private:
  // The foreign content of a known element, and the prefixes that the element declared for it.
  struct Content {
    std::vector<std::pair<std::u16string, std::u16string>> declarations;
    std::vector<Kiln::SmartPtr<Node>> nodes;
  };
  struct Feature {
    QName name;
    Content content;
    std::optional<QName> option;
    Content ofOption;
    std::vector<Feature> features;
  };

  class Reader;

  static void add(const Content& content, Node& element);
  static void add(const TicketSchema& schema, const std::vector<Feature>& features, Node& parent);

  Content ofRoot;
  std::vector<Feature> ofFeatures;
};

}  // namespace Refhost
