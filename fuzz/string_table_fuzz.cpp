// Any bytes as a string table: its texts, written as a table, are read again as they were.
#include "formats/text.h"
#include "fuzz/fuzzing.h"
#include "host/chrome/strings.h"

#include <stdexcept>

namespace {

using namespace Refhost;

std::string escaped(std::string_view text) {
  std::string result;
  for (const char unit : text) {
    switch (unit) {
      case '&': result += "&amp;"; break;
      case '%':
      case '"':
      case '\r': result += "&#" + std::to_string(int{unit}) + ";"; break;
      default: result += unit;
    }
  }
  return result;
}

std::string written(const StringTable& table) {
  std::string bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  for (const auto& [name, text] : table)
    bytes += "<!ENTITY " + Formats::toUtf8(name) + " \"" + escaped(Formats::toUtf8(text)) + "\">\n";
  return bytes;
}

void check(std::string_view bytes) {
  const auto file = Fuzzing::folder() / "strings.dtd";
  Fuzzing::write(file, bytes);
  StringTable table;
  try {
    table = readStrings(file);
  } catch (const std::runtime_error&) {
    return;
  }
  Fuzzing::write(file, written(table));
  Fuzzing::demand(readStrings(file) == table);
  for (const auto& [name, text] : table)
    if (name.starts_with(u"IDS_")) Fuzzing::demand(referencedName(u'$' + name + u';') == name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(Fuzzing::text(data, size));
  return 0;
}
