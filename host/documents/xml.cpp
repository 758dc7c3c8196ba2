#include "host/documents/xml.h"

#include "files/disk.h"
#include "formats/sentences.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <memory>
#include <set>
#include <stdexcept>

namespace Refhost {
namespace {

// What the parser says of documents that are no XML.
[[maybe_unused]] constexpr std::string_view faults[] = {
    Formats::sentenceTemplate("syntax error"),
    Formats::sentenceTemplate("no element found"),
    Formats::sentenceTemplate("not well-formed (invalid token)"),
    Formats::sentenceTemplate("unclosed token"),
    Formats::sentenceTemplate("mismatched tag"),
    Formats::sentenceTemplate("duplicate attribute"),
    Formats::sentenceTemplate("junk after document element"),
    Formats::sentenceTemplate("undefined entity"),
    Formats::sentenceTemplate("unknown encoding"),
    Formats::sentenceTemplate("unbound prefix"),
};

constexpr char separator = '\n';  // does not occur in namespaces and names

struct ParserDeleter {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserPointer = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter>;

// Splits expat's "namespace\nname\nprefix".
struct ExpatName {
  std::string_view nameSpace;
  std::string_view name;
  std::string_view prefix;

  explicit ExpatName(std::string_view triplet) {
    const auto first = triplet.find(separator);
    if (first == triplet.npos) {
      name = triplet;
      return;
    }
    nameSpace = triplet.substr(0, first);
    name = triplet.substr(first + 1);
    const auto second = name.find(separator);
    if (second == name.npos) return;
    prefix = name.substr(second + 1);
    name = name.substr(0, second);
  }
};

// Runs expat on one document. Carries exceptions of callbacks past expat's C frames.
class Parser {
 public:
  Parser(std::string sourceName, const XmlLimits& xmlLimits)
      : source(std::move(sourceName)),
        limits(xmlLimits),
        expat(XML_ParserCreateNS(nullptr, separator)) {
    if (!expat) throw std::bad_alloc();
    XML_SetReturnNSTriplet(expat.get(), 1);
    XML_SetUserData(expat.get(), this);
  }

  XML_Parser get() const { return expat.get(); }

  void run(std::string_view bytes) {
    if (bytes.size() > limits.bytes)
      throw std::runtime_error(Formats::sentence("{1} is larger than this host reads.", source));
    const auto status =
        XML_Parse(expat.get(), bytes.data(), static_cast<int>(std::min<std::size_t>(bytes.size(), maximumBytes)), 1);
    if (caught) std::rethrow_exception(caught);
    if (status == XML_STATUS_ERROR)
      throw std::runtime_error(message(Formats::sentence(XML_ErrorString(XML_GetErrorCode(expat.get())))));
  }

  // Runs a callback; stops the parser when it throws.
  template <class Work>
  void guarded(const Work& work) {
    if (caught) return;
    try {
      work();
    } catch (...) {
      caught = std::current_exception();
      XML_StopParser(expat.get(), XML_FALSE);
    }
  }

  void fail(std::string_view what) const { throw std::runtime_error(message(what)); }

  void count(std::size_t more) {
    nodes += more;
    if (nodes > limits.nodes) fail(Formats::sentence("there are more elements than this host reads."));
  }
  void enter() {
    if (++depth > limits.depth) fail(Formats::sentence("elements lie deeper in one another than this host reads."));
  }
  void leave() { --depth; }

  std::size_t line() const { return XML_GetCurrentLineNumber(expat.get()); }

 private:
  static constexpr std::size_t maximumBytes = std::numeric_limits<int>::max();

  std::string message(std::string_view what) const { return located(source, line(), what); }

  std::string source;
  const XmlLimits& limits;
  ParserPointer expat;
  std::exception_ptr caught;
  std::size_t nodes = 0;
  std::size_t depth = 0;
};

struct DocumentParser : Parser {
  DocumentParser(const std::string& sourceName, const XmlLimits& xmlLimits, XmlHandler& documentHandler)
      : Parser(sourceName, xmlLimits),
        handler(documentHandler) {
    XML_SetElementHandler(get(), onStart, onEnd);
    XML_SetCharacterDataHandler(get(), onText);
    XML_SetCommentHandler(get(), onComment);
    XML_SetStartNamespaceDeclHandler(get(), onNamespace);
    XML_SetStartDoctypeDeclHandler(get(), onDoctype);
  }

  static DocumentParser& self(void* data) { return *static_cast<DocumentParser*>(static_cast<Parser*>(data)); }

  static void onStart(void* data, const char* name, const char** attributes) {
    auto& parser = self(data);
    parser.guarded([&] {
      parser.enter();
      const ExpatName parts(name);
      XmlElement element{
          std::string(parts.nameSpace),          std::string(parts.name), std::string(parts.prefix), {}, parser.line(),
          std::exchange(parser.declarations, {})};
      for (; *attributes != nullptr; attributes += 2) {
        parser.count(1);
        const ExpatName attribute(attributes[0]);
        element.attributes.push_back({std::string(attribute.nameSpace), std::string(attribute.name), attributes[1],
                                      std::string(attribute.prefix)});
      }
      parser.count(1);
      parser.handler.startElement(std::move(element));
    });
  }
  static void onEnd(void* data, const char*) {
    auto& parser = self(data);
    parser.guarded([&] {
      parser.leave();
      parser.handler.endElement();
    });
  }
  static void onText(void* data, const char* characters, int length) {
    auto& parser = self(data);
    parser.guarded([&] { parser.handler.text({characters, static_cast<std::size_t>(length)}); });
  }
  static void onComment(void* data, const char* characters) {
    auto& parser = self(data);
    parser.guarded([&] { parser.handler.comment(characters); });
  }
  static void onNamespace(void* data, const char* prefix, const char* uri) {
    auto& parser = self(data);
    parser.guarded([&] {
      parser.count(1);
      parser.declarations.emplace_back(prefix == nullptr ? "" : prefix, uri == nullptr ? "" : uri);
    });
  }
  static void onDoctype(void* data, const char*, const char*, const char*, int) {
    auto& parser = self(data);
    parser.guarded([&] { parser.fail(Formats::sentence("a DOCTYPE is not allowed here.")); });
  }

  XmlHandler& handler;
  std::vector<std::pair<std::string, std::string>> declarations;
};

// Parses a string table as the internal subset of an otherwise empty document.
struct EntityParser : Parser {
  using Declared = std::function<void(std::string_view, std::string_view)>;

  EntityParser(const std::string& sourceName, const XmlLimits& xmlLimits, const Declared& declaredText)
      : Parser(sourceName, xmlLimits),
        declared(declaredText) {
    XML_SetEntityDeclHandler(get(), onEntity);
    // What no other handler takes goes to the default one: all that is no declaration of a new entity.
    XML_SetDefaultHandler(get(), onOther);
    XML_SetCommentHandler(get(), [](void*, const char*) {});
    XML_SetDoctypeDeclHandler(get(), [](void*, const char*, const char*, const char*, int) {}, [](void*) {});
    XML_SetElementHandler(get(), [](void*, const char*, const char**) {}, [](void*, const char*) {});
  }

  void run(std::string_view bytes) {
    skip(bytes, "\xEF\xBB\xBF");
    if (bytes.starts_with("<?xml")) bytes.remove_prefix(std::min(bytes.size(), bytes.find("?>") + 2));
    Parser::run("<!DOCTYPE strings [" + std::string(bytes) + "]><strings/>");
  }

  static void skip(std::string_view& bytes, std::string_view start) {
    if (bytes.starts_with(start)) bytes.remove_prefix(start.size());
  }

  static void onEntity(void* data, const char* name, int isParameter, const char* value, int length, const char*,
                       const char*, const char*, const char*) {
    auto& parser = self(data);
    parser.guarded([&] {
      parser.count(1);
      if (isParameter != 0 || value == nullptr) parser.fail("the entity " + std::string(name) + " has no text.");
      parser.names.insert(name);
      try {
        parser.declared(name, {value, static_cast<std::size_t>(length)});
      } catch (const std::runtime_error& problem) {
        parser.fail(problem.what());
      }
    });
  }

  static void onOther(void* data, const char* characters, int length) {
    auto& parser = self(data);
    const std::string token(characters, static_cast<std::size_t>(length));
    if (token.find_first_not_of(" \t\r\n") == token.npos) return;
    parser.guarded([&] {
      if (parser.names.contains(token)) parser.fail("the text " + token + " stands twice.");
      parser.fail("only entities with texts belong here.");
    });
  }

  static EntityParser& self(void* data) { return *static_cast<EntityParser*>(static_cast<Parser*>(data)); }

  const Declared& declared;
  std::set<std::string, std::less<>> names;
};

class TreeBuilder final : public XmlHandler {
 public:
  void startElement(XmlElement element) override { open.push_back({std::move(element), {}, {}}); }
  void endElement() override {
    XmlTree closed = std::move(open.back());
    open.pop_back();
    (open.empty() ? root : open.back().children.emplace_back()) = std::move(closed);
  }
  void text(std::string_view characters) override { open.back().text += characters; }

  XmlTree root;

 private:
  std::vector<XmlTree> open;  // from the root to the innermost element
};

}  // namespace

const std::string* XmlElement::find(std::string_view attribute) const {
  for (const XmlAttribute& candidate : attributes)
    if (candidate.nameSpace.empty() && candidate.name == attribute) return &candidate.value;
  return nullptr;
}

std::string located(const std::string& source, std::size_t line, std::string_view what) {
  return Formats::sentence("{1}:{2}: {3}", source, line, what);
}

void parseXml(std::string_view bytes, const std::string& source, const XmlLimits& limits, XmlHandler& handler) {
  DocumentParser(source, limits, handler).run(bytes);
}

void parseEntities(std::string_view bytes, const std::string& source, const XmlLimits& limits,
                   const std::function<void(std::string_view, std::string_view)>& declared) {
  EntityParser(source, limits, declared).run(bytes);
}

XmlTree readXmlTree(const std::filesystem::path& file, const XmlLimits& limits) {
  TreeBuilder builder;
  parseXml(Files::realDisk().read(file, limits.bytes), Files::shownPath(file), limits, builder);
  return std::move(builder.root);
}

}  // namespace Refhost
