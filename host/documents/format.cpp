#include "host/documents/format.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {
namespace {

bool hasWord(std::string_view words, std::string_view wanted) {
  bool found = false;
  eachWord(words, [&](std::string_view word, bool) { found = found || word == wanted; });
  return found;
}

// Checks one document.
class FormatCheck {
 public:
  FormatCheck(const DocumentFormat& documentFormat, const std::string& sourceName)
      : format(documentFormat),
        source(sourceName) {}

  void demandRoot(const XmlElement& root) const {
    std::string known;
    for (const ElementFormat& candidate : format.elements)
      if (candidate.within.empty()) {
        if (candidate.name == root.name) return;
        known += (known.empty() ? "a " : " or a ") + tag(candidate.name);
      }
    fail(root, "the root is a " + tag(root.name) + ", not " + known + ".");
  }

  void demand(const XmlTree& tree) const {
    const XmlElement& element = tree.element;
    const ElementFormat* own = format.find(element.name);
    if (own == nullptr) fail(element, tag(element.name) + " is not known here.");
    if (element.nameSpace != format.nameSpace)
      fail(element, tag(element.name) + " is not in the namespace " + inQuotes(format.nameSpace) + ".");
    demandAttributes(*own, element);
    if (tree.text.find_first_not_of(" \t\r\n") != tree.text.npos)
      fail(element, tag(element.name) + " has a text, which is not known here.");
    for (const XmlTree& child : tree.children) {
      const ElementFormat* inner = format.find(child.element.name);
      if (inner != nullptr && !inner->mayBeIn(element.name))
        fail(child.element, tag(child.element.name) + " does not belong into " + tag(element.name) + ".");
      demand(child);
    }
  }

 private:
  static std::string tag(std::string_view name) { return "<" + std::string(name) + ">"; }
  static std::string inQuotes(std::string_view text) { return '"' + std::string(text) + '"'; }

  [[noreturn]] void fail(const XmlElement& element, const std::string& what) const {
    throw std::runtime_error(located(source, element.line, what));
  }

  void demandAttributes(const ElementFormat& own, const XmlElement& element) const {
    for (const XmlAttribute& attribute : element.attributes)
      if (!attribute.nameSpace.empty() || !own.hasAttribute(attribute.name))
        fail(element, tag(element.name) + " takes no attribute " + attribute.name + ".");
    eachWord(own.attributes, [&](std::string_view attribute, bool isMandatory) {
      if (isMandatory && element.find(attribute) == nullptr)
        fail(element, tag(element.name) + " has no " + std::string(attribute) + ".");
    });
  }

  const DocumentFormat& format;
  const std::string& source;
};

}  // namespace

bool ElementFormat::mayBeIn(std::string_view parent) const { return hasWord(within, parent); }

bool ElementFormat::hasAttribute(std::string_view attribute) const {
  return hasWord(attributes, attribute) || hasWord(sharedAttributes, attribute);
}

const ElementFormat* DocumentFormat::find(std::string_view name) const {
  const auto found =
      std::find_if(elements.begin(), elements.end(), [name](const ElementFormat& each) { return each.name == name; });
  return found == elements.end() ? nullptr : &*found;
}

void demandFormat(const DocumentFormat& format, const XmlTree& document, const std::string& source) {
  const FormatCheck check(format, source);
  check.demandRoot(document.element);
  check.demand(document);
}

}  // namespace Refhost
