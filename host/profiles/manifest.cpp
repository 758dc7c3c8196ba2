#include "host/profiles/manifest.h"

#include "formats/sentences.h"
#include "formats/text.h"
#include "host/documents/documents.h"

#include <stdexcept>

namespace Refhost {
namespace {

constexpr std::u16string_view rootName = u"Profile";
constexpr std::u16string_view versionName = u"version";
constexpr std::u16string_view modelName = u"model";
constexpr std::u16string_view valuesName = u"values";

// The version that this program writes, and the latest that it can read.
constexpr int presentVersion = 1;

// Property values are short, and a model has a hundred.
constexpr XmlLimits manifestLimits{std::size_t{16} << 20, 4, 10'000};

Kiln::SmartPtr<Node> element(std::u16string_view name, std::u16string_view text) {
  auto node = make<Node>(name);
  node->setValue(text);
  return node;
}

std::u16string childText(Node& node, std::u16string_view name) {
  const auto child = node.child(name);
  if (!child)
    throw std::runtime_error(
        Formats::sentence("its profile.xml has no element {1}.", Formats::quoted(Formats::toUtf8(name))));
  return child->value().str();
}

// An unsigned integer; -1 when invalid.
int number(std::u16string_view digits) {
  int value = 0;
  if (digits.empty() || digits.size() > 6) return -1;
  for (const char16_t unit : digits) {
    if (unit < u'0' || unit > u'9') return -1;
    value = value * 10 + (unit - u'0');
  }
  return value;
}

}  // namespace

std::string manifestBytes(const Manifest& manifest) {
  const auto root = make<Node>(rootName);
  root->append(element(versionName, Formats::toUtf16(std::to_string(presentVersion))));
  root->append(element(modelName, manifest.model));
  const auto values = make<Node>(valuesName);
  for (const auto& [name, value] : manifest.values) values->append(element(name, value));
  root->append(values);
  return writeXml(*root, NameEscaping::on);
}

Manifest readManifest(std::string_view bytes) {
  const auto root = readXml(bytes, std::string(manifestName), manifestLimits, NameEscaping::on);
  if (root->localNameText() != rootName)
    throw std::runtime_error(Formats::sentence("its profile.xml is that of something else."));
  const int version = number(childText(*root, versionName));
  if (version > presentVersion)
    throw std::runtime_error(
        Formats::sentence("it was made by a newer version of this program; bring this one up to date."));
  if (version < 1) throw std::runtime_error(Formats::sentence("its version is no number."));

  Manifest manifest;
  manifest.model = childText(*root, modelName);
  childText(*root, valuesName);
  for (const auto& value : Kiln::smartCast<Node>(root->child(valuesName))->children())
    manifest.values.emplace_back(value->localNameText(), value->text());
  return manifest;
}

}  // namespace Refhost
