#include "effect/overlay/index.h"

#include "effect/list_order.h"
#include "effect/vocabulary.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace Effect {
namespace {

constexpr std::size_t nameUnits = 64;
constexpr std::size_t fileNameUnits = 13;
static_assert(2 * (nameUnits + fileNameUnits) == indexRecordBytes);

std::u16string readField(std::string_view bytes, std::size_t units) {
  std::u16string text;
  for (std::size_t i = 0; i < units; ++i) {
    const auto low = static_cast<unsigned char>(bytes[2 * i]);
    const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
    if (low == 0 && high == 0) break;
    text += static_cast<char16_t>(low | high << 8);
  }
  return text;
}

void writeField(std::string& bytes, std::u16string_view text, std::size_t units) {
  for (std::size_t i = 0; i < units; ++i) {
    const unsigned unit = i < text.size() ? text[i] : 0U;
    bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
    bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
  }
}

bool isSameName(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return lowerCase(x) == lowerCase(y); });
}

}  // namespace

std::vector<IndexEntry> readIndex(std::string_view bytes) {
  std::vector<IndexEntry> entries;
  entries.reserve(bytes.size() / indexRecordBytes);
  for (; bytes.size() >= indexRecordBytes; bytes.remove_prefix(indexRecordBytes))
    entries.push_back({readField(bytes, nameUnits), readField(bytes.substr(2 * nameUnits), fileNameUnits)});
  return entries;
}

std::string indexBytes(const std::vector<IndexEntry>& entries) {
  std::string bytes;
  bytes.reserve(entries.size() * indexRecordBytes);
  for (const IndexEntry& entry : entries) {
    writeField(bytes, entry.name, nameUnits);
    writeField(bytes, entry.fileName, fileNameUnits);
  }
  return bytes;
}

std::u16string storableName(std::u16string_view name) {
  return std::u16string(name.substr(0, std::min(name.find(u'\0'), nameUnits)));
}

bool isOverlayFileName(std::u16string_view fileName) {
  // The colon separates a drive or a file stream from the rest.
  return !fileName.empty() && fileName != u"." && fileName != u".." &&
         fileName.find_first_of(u"/\\:") == fileName.npos && !isSameName(fileName, overlayIndexName);
}

std::u16string thumbnailOf(std::u16string_view file) {
  const std::u16string_view name = lastPartOf(file);
  const std::size_t ending = name.size() - std::min(name.rfind(u'.'), name.size());
  return std::u16string(file.substr(0, file.size() - ending)) + u".bmp";
}

std::u16string overlayFileName(unsigned number) {
  char text[16];
  std::snprintf(text, sizeof text, "%05u.opa", number);
  return {text, std::find(text, std::end(text), '\0')};
}

std::u16string_view lastPartOf(std::u16string_view path) { return path.substr(path.find_last_of(u"/\\") + 1); }

}  // namespace Effect
