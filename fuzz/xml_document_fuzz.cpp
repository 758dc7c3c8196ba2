// Any bytes as a document: what is read is written, and is read and written again to the same bytes.
#include "host/documents/documents.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace {

using namespace Refhost;

constexpr XmlLimits limits{1 << 16, 32, 4000};

Kiln::SmartPtr<Node> parsed(std::string_view bytes, NameEscaping escaping) {
  try {
    return readXml(bytes, "input", limits, escaping);
  } catch (const std::runtime_error&) {
    return {};
  }
}

void check(std::string_view bytes, NameEscaping escaping) {
  const auto root = parsed(bytes, escaping);
  if (!root) return;
  const std::string written = writeXml(*root, escaping);
  const auto again = readXml(written, "written", documentLimits, escaping);
  if (writeXml(*again, escaping) != written) std::abort();
  if (writeXml(*root->copy(), escaping) != written) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  check(bytes, NameEscaping::on);
  check(bytes, NameEscaping::off);
  return 0;
}
