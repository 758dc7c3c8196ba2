// ZIP archives assembled by hand, to create invalid ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zip {

struct Entry {
  std::string name;
  std::string bytes;
  unsigned mode = 0100644;  // Unix file type and permissions

  // The size in the archive's headers; nothing for the actual one.
  std::optional<std::uint64_t> saidSize = std::nullopt;
  bool isEncrypted = false;
};

inline std::uint32_t checksum(const std::string& bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

inline void append(std::string& to, std::uint64_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) to += static_cast<char>(static_cast<unsigned char>(number >> 8 * i & 0xFF));
}

// The fields common to the local header and the central directory: from the required version to the length of the extra
// field. Sizes above 4 GB are in that field.
inline std::string facts(const Entry& entry) {
  const bool isLarge = entry.saidSize && *entry.saidSize > 0xFFFFFFFE;
  std::string header;
  append(header, 45, 2);
  append(header, entry.isEncrypted ? 1 : 0, 2);
  append(header, 0, 2);           // stored uncompressed
  append(header, 0x00210000, 4);  // 1980
  append(header, checksum(entry.bytes), 4);
  append(header, entry.bytes.size(), 4);
  append(header, isLarge ? 0xFFFFFFFF : entry.saidSize.value_or(entry.bytes.size()), 4);
  append(header, entry.name.size(), 2);
  append(header, isLarge ? 12 : 0, 2);
  return header;
}

inline std::string largeSize(const Entry& entry) {
  std::string field;
  if (!entry.saidSize || *entry.saidSize <= 0xFFFFFFFE) return field;
  append(field, 1, 2);
  append(field, 8, 2);
  append(field, *entry.saidSize, 8);
  return field;
}

inline std::string archive(const std::vector<Entry>& entries) {
  std::string bytes;
  std::string contents;
  for (const Entry& entry : entries) {
    contents += "PK\1\2";
    append(contents, 0x0314, 2);  // made on Unix
    contents += facts(entry);
    append(contents, 0, 6);  // comment, disk, attributes
    append(contents, std::uint64_t{entry.mode} << 16, 4);
    append(contents, bytes.size(), 4);
    contents += entry.name + largeSize(entry);
    bytes += "PK\3\4" + facts(entry) + entry.name + largeSize(entry) + entry.bytes;
  }
  const std::size_t start = bytes.size();
  bytes += contents + "PK\5\6";
  append(bytes, 0, 4);
  append(bytes, entries.size(), 2);
  append(bytes, entries.size(), 2);
  append(bytes, contents.size(), 4);
  append(bytes, start, 4);
  append(bytes, 0, 2);
  return bytes;
}

}  // namespace Zip
