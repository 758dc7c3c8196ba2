// XML parsing with limits, for every document that this host reads.
//
// A DOCTYPE is rejected except in string tables, so entities in documents are never expanded. Time and memory are
// linear in the size of the input.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Refhost {

// The limits of a format. Depth counts nested elements, 1 for the root.
struct XmlLimits {
  std::size_t bytes = 1 << 20;
  std::size_t depth = 32;
  std::size_t nodes = 20000;  // elements and attributes together
};

struct XmlAttribute {
  std::string nameSpace;  // empty for none
  std::string name;
  std::string value;
  std::string prefix;  // empty for none
};

struct XmlElement {
  std::string nameSpace;
  std::string name;
  std::string prefix;
  std::vector<XmlAttribute> attributes;
  std::size_t line = 0;  // of its start tag, from 1

  // Prefixes declared on this element, with their namespaces.
  std::vector<std::pair<std::string, std::string>> declarations;

  // The value of an attribute without a namespace; null when the element has none with that name.
  const std::string* find(std::string_view attribute) const;
};

// Receives a document's parts in order. Its exceptions propagate through parseXml.
class XmlHandler {
 public:
  virtual ~XmlHandler() = default;
  virtual void startElement(XmlElement element) = 0;
  virtual void endElement() = 0;
  virtual void text(std::string_view characters) = 0;
  virtual void comment(std::string_view) {}
};

// Parses UTF-8, or the encoding of the XML declaration if expat supports it. `source` is the document's name in
// messages. Throws std::runtime_error: one sentence with source and line.
void parseXml(std::string_view bytes, const std::string& source, const XmlLimits& limits, XmlHandler& handler);

// Reads the entities that a string table declares, in order; rejects other declarations and names that are declared
// already. Resolves character references in the texts, but not entity references. Throws like parseXml; adds source and
// line to a std::runtime_error of `declared`.
void parseEntities(std::string_view bytes, const std::string& source, const XmlLimits& limits,
                   const std::function<void(std::string_view name, std::string_view text)>& declared);

// A whole document as a tree, for the host's own small documents.
struct XmlTree {
  XmlElement element;
  std::vector<XmlTree> children;
  std::string text;  // of the element itself, concatenated
};

XmlTree readXmlTree(const std::filesystem::path& file, const XmlLimits& limits);

// "FILE:LINE: what", the form of all messages about documents.
std::string located(const std::string& source, std::size_t line, std::string_view what);

}  // namespace Refhost
