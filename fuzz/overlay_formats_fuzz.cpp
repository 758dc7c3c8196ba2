// Any bytes as an overlay index, and as a list of several overlays: what is read is written, and is read the same
// again.
#include "formats/file_list.h"
#include "formats/overlay_index.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace Formats;

void demand(bool holds) {
  if (!holds) std::abort();
}

void checkIndex(std::string_view bytes) {
  const auto entries = readIndex(bytes);
  demand(entries.size() == bytes.size() / indexRecordBytes);
  demand(readIndex(indexBytes(entries)) == entries);
  for (const IndexEntry& entry : entries) {
    demand(storableName(entry.name) == entry.name);
    if (isOverlayFileName(entry.fileName)) demand(lastPartOf(entry.fileName) == entry.fileName);
  }
}

void checkList(std::u16string_view list) {
  std::u16string written;
  std::size_t read = 0;
  for (std::u16string_view rest = list; !rest.empty(); ++read) {
    const FileListEntry entry = takeFirst(rest);
    append(written, entry.file, entry.pages);
  }
  std::u16string again;
  for (std::u16string_view rest = written; !rest.empty(); --read) {
    const FileListEntry entry = takeFirst(rest);
    demand(entry.hasPages);
    append(again, entry.file, entry.pages);
  }
  demand(read == 0 && again == written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  checkIndex(bytes);
  checkList(std::u16string(bytes.begin(), bytes.end()));
  return 0;
}
