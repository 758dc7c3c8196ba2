#include "host/ticket/lines.h"

#include "host/documents/documents.h"

namespace Refhost {
namespace {

// Counts the elements of `root` up to and including `element`; true when found.
bool countTo(const Node& element, const Node& root, std::size_t& count) {
  ++count;
  if (&element == &root) return true;
  for (const auto& child : root.children())
    if (countTo(element, *child, count)) return true;
  return false;
}

class LineFinder final : public XmlHandler {
 public:
  explicit LineFinder(std::size_t wantedElement) : wanted(wantedElement) {}

  void startElement(XmlElement element) override {
    if (++count == wanted) line = element.line;
  }
  void endElement() override {}
  void text(std::string_view) override {}

  std::size_t line = 0;

 private:
  const std::size_t wanted;
  std::size_t count = 0;
};

}  // namespace

std::size_t lineOf(const Node& element, const Node& root, std::string_view bytes) {
  std::size_t count = 0;
  if (!countTo(element, root, count)) return 0;
  LineFinder finder(count);
  parseXml(bytes, {}, documentLimits, finder);
  return finder.line;
}

}  // namespace Refhost
