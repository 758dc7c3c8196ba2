#include "host/documents/documents.h"

#include "formats/sentences.h"
#include "formats/text.h"
#include "host/documents/escaping.h"

#include <stdexcept>

namespace Refhost {
namespace {

class NodeBuilder final : public XmlHandler {
 public:
  explicit NodeBuilder(NameEscaping nameEscaping) : escaping(nameEscaping) {}

  void startElement(XmlElement element) override {
    auto node = make<Node>(name(element.name));
    node->nameSpace = Formats::toUtf16(element.nameSpace);
    node->prefix = Formats::toUtf16(element.prefix);
    for (const XmlAttribute& attribute : element.attributes)
      node->attributes.push_back({Formats::toUtf16(attribute.nameSpace), Formats::toUtf16(attribute.prefix),
                                  Formats::toUtf16(attribute.name), plain(Formats::toUtf16(attribute.value))});
    for (const auto& [prefix, nameSpace] : element.declarations)
      node->declarations.emplace_back(Formats::toUtf16(prefix), Formats::toUtf16(nameSpace));
    open.push_back({std::move(node), {}});
  }

  void endElement() override {
    auto [node, characters] = std::move(open.back());
    open.pop_back();
    if (!node->children().empty()) trim(characters);
    if (!characters.empty()) node->setValue(plain(Formats::toUtf16(characters)));
    if (open.empty())
      root = std::move(node);
    else
      open.back().node->append(std::move(node));
  }

  void text(std::string_view characters) override { open.back().text += characters; }

  Kiln::SmartPtr<Node> root;

 private:
  struct Open {
    Kiln::SmartPtr<Node> node;
    std::string text;
  };

  static void trim(std::string& text) {
    text.erase(text.find_last_not_of(xmlSpace) + 1);
    text.erase(0, text.find_first_not_of(xmlSpace));
  }

  std::u16string name(std::string_view narrow) const {
    return escaping == NameEscaping::on ? unescapedName(Formats::toUtf16(narrow)) : Formats::toUtf16(narrow);
  }
  std::u16string plain(std::u16string text) const {
    return escaping == NameEscaping::on ? unescapedText(text) : std::move(text);
  }

  const NameEscaping escaping;
  std::vector<Open> open;  // from the root to the innermost element
};

std::string sourceOf(const Kiln::SmartPtr<Kiln::Services::BackingStoreIO>& store) {
  const auto file = Kiln::smartCast<Kiln::Services::FileBackingStoreIO>(store);
  return file ? Formats::toUtf8(file->path()->text().view()) : Formats::sentence("The document");
}

class Documents final : public Kiln::Services::Documents {
 public:
  Kiln::SmartPtr<Kiln::Dom::INode> createElement(Kiln::WStringView name, Kiln::WStringView prefix,
                                                 Kiln::WStringView nameSpace) override {
    // Plug-ins continue without an element when out of memory.
    const Kiln::SmartPtr<Node> node(new (heap()) Node(name.view()));
    if (!node) return {};
    node->prefix = prefix.view();
    node->nameSpace = nameSpace.view();
    return node;
  }

  Kiln::SmartPtr<Kiln::Dom::INode> read(Kiln::SmartPtr<Kiln::Services::BackingStoreIO> store) override {
    demandGiven(store, "Documents::read", "a store");
    const Kiln::String bytes = store->readAll();
    try {
      return readXml(bytes.view(), sourceOf(store), documentLimits, NameEscaping::on);
    } catch (const std::runtime_error& problem) {
      throw failure(problem.what());
    }
  }

  void write(Kiln::SmartPtr<Kiln::Dom::INode> root, Kiln::SmartPtr<Kiln::Services::BackingStoreIO> store) override {
    const auto own = givenBack<Node>(root, "Documents::write", "a root");
    demandGiven(store, "Documents::write", "a store");
    std::string bytes;
    try {
      bytes = writeXml(*own, NameEscaping::on);
    } catch (const std::runtime_error& problem) {
      throw failure(Formats::sentence("{1} cannot be written. {2}", sourceOf(store), problem.what()));
    }
    store->write(bytes);
    store->commit();
  }
};

}  // namespace

Kiln::SmartPtr<Node> readXml(std::string_view bytes, const std::string& source, const XmlLimits& limits,
                             NameEscaping escaping) {
  NodeBuilder builder(escaping);
  parseXml(bytes, source, limits, builder);
  return builder.root;
}

Kiln::SmartPtr<Kiln::Services::Documents> makeDocuments() { return make<Documents>(); }

}  // namespace Refhost
