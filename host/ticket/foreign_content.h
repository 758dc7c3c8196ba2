// What a loaded ticket says beyond the schema: other drivers' features, parameters and properties. It is kept, and goes
// into the next ticket unchanged.
//
// A part of a feature of the schema's own (a scored property beside those that the schema knows, for example) is kept
// for as long as the ticket has that feature, with that option.
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

  // Of a ticket that was read without an error.
  ForeignContent(const TicketSchema& schema, Kiln::Property& properties, const Node& root);

  // Adds it to the root of a ticket that was written with the same schema.
  void addTo(const TicketSchema& schema, Node& root) const;

 private:
  // What is foreign in one element that is not, and the prefixes which that element declared for it.
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
