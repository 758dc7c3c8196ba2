#include "formats/text.h"
#include "host/documents/documents.h"
#include "host/documents/escaping.h"

#include <map>
#include <optional>
#include <stdexcept>

namespace Refhost {
namespace {

constexpr std::u16string_view xmlNameSpace = u"http://www.w3.org/XML/1998/namespace";

class Writer {
 public:
  explicit Writer(NameEscaping nameEscaping) : escaping(nameEscaping) {}

  std::string write(const Node& root) {
    out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    element(root, 1);
    return std::move(out);
  }

 private:
  // An element's prefixes.
  struct Scope {
    std::map<std::u16string, std::u16string> settled;  // prefixes declared or used on the element, which are fixed now
    std::string declarations;                          // as attributes of the start tag
    std::vector<std::pair<std::u16string, std::optional<std::u16string>>> hidden;  // previous declarations
  };

  void element(const Node& node, std::size_t depth) {
    // Written documents must be readable.
    if (depth > documentLimits.depth) fail(node, "lies deeper in other elements than this host reads.");
    if (++elements > documentLimits.nodes) fail(node, "is one more than this host reads.");

    Scope scope;
    for (const auto& [prefix, nameSpace] : node.declarations) declare(scope, node, prefix, nameSpace);
    const std::string tag =
        qualified(scope, node, node.nameSpace, node.prefix, false) + nameOf(node, node.localNameText());
    std::string attributes;
    for (const Node::Attribute& attribute : node.attributes) {
      attributes += ' ';
      attributes += qualified(scope, node, attribute.nameSpace, attribute.prefix, true);
      attributes += plainName(node, attribute.name) + "=\"" + attributeText(node, attribute.value) + "\"";
    }

    out.append((depth - 1) * 2, ' ');
    out += '<' + tag + scope.declarations + attributes;
    content(node, tag, depth);
    if (out.size() > documentLimits.bytes) fail(node, "makes the document larger than this host reads.");
    for (auto before = scope.hidden.rbegin(); before != scope.hidden.rend(); ++before)
      if (before->second)
        visible[before->first] = *before->second;
      else
        visible.erase(before->first);
  }

  void content(const Node& node, const std::string& tag, std::size_t depth) {
    const bool hasChildren = !node.children().empty();
    if (!hasChildren && node.text().empty()) {
      out += "/>\n";
      return;
    }
    out += '>';
    out += elementText(node, node.text(), hasChildren);
    if (hasChildren) {
      out += '\n';
      for (const auto& child : node.children()) element(*child, depth + 1);
      out.append((depth - 1) * 2, ' ');
    }
    out += "</" + tag + ">\n";
  }

  // The prefix, with a colon, for a name in `nameSpace`; declares it if necessary.
  std::string qualified(Scope& scope, const Node& node, const std::u16string& nameSpace, std::u16string prefix,
                        bool isAttribute) {
    if (nameSpace.empty()) {
      // Unprefixed attributes have no namespace; unprefixed elements have the default one.
      if (!isAttribute && !isBound(u"", u"")) declare(scope, node, u"", u"");
      return {};
    }
    if (nameSpace == xmlNameSpace) return "xml:";
    const auto settled = scope.settled.find(prefix);
    const bool taken = settled != scope.settled.end() && settled->second != nameSpace;
    if (taken || (isAttribute && prefix.empty())) prefix = freePrefix(scope, nameSpace);
    if (!isBound(prefix, nameSpace)) declare(scope, node, prefix, nameSpace);
    scope.settled[prefix] = nameSpace;
    return prefix.empty() ? std::string() : Formats::toUtf8(prefix) + ":";
  }

  // The first of ns1, ns2 and so on that is undeclared, or already declared for this namespace.
  std::u16string freePrefix(const Scope& scope, const std::u16string& nameSpace) const {
    for (int number = 1;; ++number) {
      const std::u16string prefix = u"ns" + Formats::toUtf16(std::to_string(number));
      if (isBound(prefix, nameSpace) || (!visible.contains(prefix) && !scope.settled.contains(prefix))) return prefix;
    }
  }

  bool isBound(const std::u16string& prefix, const std::u16string& nameSpace) const {
    const auto found = visible.find(prefix);
    return found == visible.end() ? prefix.empty() && nameSpace.empty() : found->second == nameSpace;
  }

  void declare(Scope& scope, const Node& node, const std::u16string& prefix, const std::u16string& nameSpace) {
    if (prefix == u"xml" && nameSpace == xmlNameSpace) return;
    const bool reserved = prefix == u"xml" || prefix == u"xmlns";
    if (!prefix.empty() && (reserved || nameSpace.empty() || !isPlainName(prefix)))
      fail(node, "has a prefix that XML cannot declare: \"" + Formats::toUtf8(prefix) + "\".");
    if (const auto [before, isNew] = scope.settled.emplace(prefix, nameSpace); !isNew)
      fail(node, "declares the prefix \"" + Formats::toUtf8(prefix) + "\" a second time.");
    scope.declarations += prefix.empty() ? std::string(" xmlns") : " xmlns:" + Formats::toUtf8(prefix);
    scope.declarations += "=\"" + markup(node, nameSpace, true) + "\"";
    const auto found = visible.find(prefix);
    scope.hidden.emplace_back(prefix, found == visible.end() ? std::nullopt : std::optional(found->second));
    visible[prefix] = nameSpace;
  }

  std::string nameOf(const Node& node, std::u16string_view name) const {
    return escaping == NameEscaping::on ? escapedName(name) : plainName(node, name);
  }

  // Attributes are only created by reading documents, so their names need no escaping.
  static std::string plainName(const Node& node, std::u16string_view name) {
    if (!isPlainName(name)) fail(node, "has a name that XML cannot carry: \"" + Formats::toUtf8(name) + "\".");
    return Formats::toUtf8(name);
  }

  // White space around a text in mixed content would be read as formatting.
  std::string elementText(const Node& node, std::u16string_view text, bool hasChildren) const {
    if (escaping == NameEscaping::on) return markup(node, escapedText(text, hasChildren), false);
    return markup(node, text, false);
  }

  std::string attributeText(const Node& node, std::u16string_view text) const {
    return markup(node, escaping == NameEscaping::on ? escapedText(text, false) : std::u16string(text), true);
  }

  // Replaces markup characters by references, also carriage returns, which readers normalise to line feeds.
  std::string markup(const Node& node, std::u16string_view text, bool isAttribute) const {
    std::string marked;
    marked.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
      const char32_t c = Formats::nextCodePoint(text, i);
      if (isForbidden(c)) fail(node, "holds a character that XML cannot carry.");
      if (c == U'&')
        marked += "&amp;";
      else if (c == U'<')
        marked += "&lt;";
      else if (c == U'>')
        marked += "&gt;";
      else if (c == U'"' && isAttribute)
        marked += "&quot;";
      else if (c == U'\r' || (isAttribute && (c == U'\n' || c == U'\t')))
        marked += "&#" + std::to_string(static_cast<unsigned>(c)) + ";";
      else
        Formats::appendUtf8(marked, c);
    }
    return marked;
  }

  [[noreturn]] static void fail(const Node& node, const std::string& what) {
    throw std::runtime_error("A document cannot be written: its element \"" + Formats::toUtf8(node.localNameText()) +
                             "\" " + what);
  }

  const NameEscaping escaping;
  std::string out;
  std::size_t elements = 0;
  std::map<std::u16string, std::u16string> visible;  // prefixes declared by enclosing elements
};

}  // namespace

std::string writeXml(const Node& root, NameEscaping escaping) { return Writer(escaping).write(root); }

}  // namespace Refhost
