// XML parsing with limits: every document that this host reads goes through here.
//
// A DOCTYPE is refused, but in a string table, so no entity of a document is ever expanded. Costs are linear in the
// size of the input, and a document costs no more than a small multiple of itself.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Refhost {

// What one format allows. Depth counts elements in one another, the root being 1.
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

  // Prefixes declared on this very element, each with its namespace.
  std::vector<std::pair<std::string, std::string>> declarations;

  // The value of an attribute without a namespace; null when it has none of that name.
  const std::string* find(std::string_view attribute) const;
};

// Receives a document's parts in order. What it throws passes through parseXml.
class XmlHandler {
 public:
  virtual ~XmlHandler() = default;
  virtual void startElement(XmlElement element) = 0;
  virtual void endElement() = 0;
  virtual void text(std::string_view characters) = 0;
  virtual void comment(std::string_view) {}
};

// Parses UTF-8 (or what the XML declaration says, of the encodings that expat knows). `source` names the document in
// messages. Throws std::runtime_error: one sentence with source and line.
void parseXml(std::string_view bytes, const std::string& source, const XmlLimits& limits, XmlHandler& handler);

// Reads the entities that a string table declares, in order; other declarations are allowed and ignored. In the texts,
// character references are resolved, references to entities are not. Throws as parseXml.
void parseEntities(std::string_view bytes, const std::string& source, const XmlLimits& limits,
                   const std::function<void(std::string_view name, std::string_view text)>& declared);

// A whole document as a tree, for the small ones that describe this host's own things.
struct XmlTree {
  XmlElement element;
  std::vector<XmlTree> children;
  std::string text;  // of the element itself, all of it joined
};

XmlTree readXmlTree(const std::filesystem::path& file, const XmlLimits& limits);

// "FILE:LINE: what", the form of every message about a document.
std::string located(const std::string& source, std::size_t line, std::string_view what);

}  // namespace Refhost
