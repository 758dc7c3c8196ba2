// Fails unless libarchive packs and unpacks compressed ZIP archives. Without zlib it also builds, but packs without
// compression and cannot read compressed entries.

#include <archive.h>
#include <archive_entry.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

const std::string content(100'000, 'x');

/// A ZIP archive of one file; empty when it cannot be made.
std::vector<char> packed() {
  std::vector<char> bytes(2 * content.size());
  std::size_t used = 0;
  archive* writer = archive_write_new();
  archive_entry* entry = archive_entry_new();
  archive_entry_set_pathname(entry, "file");
  archive_entry_set_filetype(entry, AE_IFREG);
  archive_entry_set_size(entry, static_cast<la_int64_t>(content.size()));
  const bool isWritten =
      archive_write_set_format_zip(writer) == ARCHIVE_OK &&
      archive_write_open_memory(writer, bytes.data(), bytes.size(), &used) == ARCHIVE_OK &&
      archive_write_header(writer, entry) == ARCHIVE_OK &&
      archive_write_data(writer, content.data(), content.size()) == static_cast<la_ssize_t>(content.size()) &&
      archive_write_close(writer) == ARCHIVE_OK;
  archive_entry_free(entry);
  archive_write_free(writer);
  bytes.resize(isWritten ? used : 0);
  return bytes;
}

/// The content of the archive's file.
std::string unpacked(const std::vector<char>& bytes) {
  std::string text(content.size() + 1, '\0');
  archive* reader = archive_read_new();
  archive_read_support_format_zip_seekable(reader);
  archive_entry* entry = nullptr;
  la_ssize_t length = 0;
  if (archive_read_open_memory(reader, bytes.data(), bytes.size()) == ARCHIVE_OK &&
      archive_read_next_header(reader, &entry) == ARCHIVE_OK)
    length = archive_read_data(reader, text.data(), text.size());
  archive_read_free(reader);
  text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return text;
}

}  // namespace

int main() {
  const std::vector<char> archive = packed();
  if (archive.empty() || archive.size() > content.size() / 10) {
    std::printf("libarchive: it compresses nothing\n");
    return 1;
  }
  if (unpacked(archive) != content) {
    std::printf("libarchive: it does not read what it has packed\n");
    return 1;
  }
  return 0;
}
