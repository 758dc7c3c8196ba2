// XML formats as data: the elements and attributes that a reader takes. docs/formats.md describes them.
#pragma once

#include "host/documents/xml.h"

#include <span>
#include <string>
#include <string_view>

namespace Refhost {

// Lists of names are words divided by blanks.
struct ElementFormat {
  std::string_view name;

  // The elements that it may be in; empty for a root.
  std::string_view within;

  // Its attributes, a "!" behind those that it must have.
  std::string_view attributes;

  // Attributes that it shares with other elements.
  std::string_view sharedAttributes = {};

  bool mayBeIn(std::string_view parent) const;
  bool hasAttribute(std::string_view attribute) const;
};

struct DocumentFormat {
  // Of all elements; attributes have none.
  std::string_view nameSpace;
  std::span<const ElementFormat> elements;

  // Null for an unknown name.
  const ElementFormat* find(std::string_view name) const;
};

// Calls `visit` with each word of a list, and whether a "!" is behind it.
template <class Visit>
void eachWord(std::string_view words, const Visit& visit) {
  while (!words.empty()) {
    std::string_view word = words.substr(0, words.find(' '));
    words.remove_prefix(word.size() == words.size() ? word.size() : word.size() + 1);
    const bool isMarked = word.ends_with('!');
    if (isMarked) word.remove_suffix(1);
    if (!word.empty()) visit(word, isMarked);
  }
}

// Rejects elements and attributes that the format does not have, missing attributes, and text. Throws
// std::runtime_error, one sentence with the line; `source` is the document's name in it.
void demandFormat(const DocumentFormat& format, const XmlTree& document, const std::string& source);

}  // namespace Refhost
