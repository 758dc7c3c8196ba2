#include "files/path_text.h"
#include "formats/sentences.h"
#include "host/profiles/archive.h"
#include "host/profiles/archive_names.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockBytes = std::size_t{1} << 16;

// The archive's table of contents is read completely before the first entry, at any length; this is far more than the
// limited number of entries needs.
constexpr std::uint64_t mostBytesOfContents = std::uint64_t{4} << 20;

void fail(archive* reader, int error, std::string_view reason) {
  archive_set_error(reader, error, "%s", std::string(reason).c_str());
}

// Feeds an archive's bytes to the library.
class Source {
 public:
  explicit Source(const fs::path& file) : stream(file, std::ios::binary), block(blockBytes) {
    if (!stream) throw std::runtime_error(Formats::sentence("The file {1} cannot be read.", Files::shownPath(file)));
    stream.seekg(0, std::ios::end);
    length = stream.tellg();
    stream.seekg(0);
  }

  // The end of what was read so far, out of `size`.
  std::int64_t place() const { return furthest; }
  std::int64_t size() const { return length; }

  // Sets the number of bytes that may be read from now on.
  void allow(std::uint64_t bytes) { left = bytes; }

  static la_ssize_t read(archive* reader, void* data, const void** bytes) {
    Source& self = *static_cast<Source*>(data);
    const std::int64_t from = self.stream.tellg();
    const auto count = static_cast<std::size_t>(std::clamp<std::int64_t>(self.length - from, 0, blockBytes));
    if (count > self.left) {
      fail(reader, EINVAL, Formats::sentenceTemplate("its table of contents is too long"));
      return ARCHIVE_FATAL;
    }
    self.left -= count;
    self.stream.read(self.block.data(), static_cast<std::streamsize>(count));
    if (!self.stream) {
      fail(reader, EIO, Formats::sentenceTemplate("the file cannot be read to its end"));
      return ARCHIVE_FATAL;
    }
    self.furthest = from + static_cast<std::int64_t>(count);
    *bytes = self.block.data();
    return static_cast<la_ssize_t>(count);
  }

  static la_int64_t seek(archive* reader, void* data, la_int64_t offset, int whence) {
    Source& self = *static_cast<Source*>(data);
    std::int64_t base = 0;
    if (whence == SEEK_END) base = self.length;
    if (whence == SEEK_CUR) base = self.stream.tellg();
    const std::int64_t place = base + offset;
    if (place < 0 || place > self.length) {
      fail(reader, EINVAL, Formats::sentenceTemplate("it points outside of itself"));
      return ARCHIVE_FATAL;
    }
    self.stream.seekg(place);
    return place;
  }

 private:
  std::ifstream stream;
  std::vector<char> block;
  std::int64_t length = 0;
  std::int64_t furthest = 0;
  std::uint64_t left = 0;
};

// A path in the system's units: bytes, or wide on Windows.
template <class Unit>
void setPath(archive_entry* entry, const std::basic_string<Unit>& path) {
  if constexpr (sizeof(Unit) == 1)
    archive_entry_copy_pathname(entry, path.c_str());
  else
    archive_entry_copy_pathname_w(entry, path.c_str());
}

// What the library says of damaged archives.
[[maybe_unused]] constexpr std::string_view faults[] = {
    Formats::sentenceTemplate("Unrecognized archive format"),
    Formats::sentenceTemplate("Truncated ZIP file data"),
    Formats::sentenceTemplate("Truncated ZIP file header"),
};

// Unpacks one archive into one folder, with the library's own writer and its security options.
class Unpacker {
 public:
  Unpacker(const fs::path& archiveFile, const fs::path& folder, const ArchiveLimits& most, const Progress& toTell)
      : file(archiveFile),
        root(fs::canonical(folder)),
        limits(most),
        progress(toTell),
        source(archiveFile) {
    archive* from = reader.get();
    archive_read_support_format_zip_seekable(from);
    archive_read_set_read_callback(from, Source::read);
    archive_read_set_seek_callback(from, Source::seek);
    archive_read_set_callback_data(from, &source);
    archive_write_disk_set_options(writer.get(), ARCHIVE_EXTRACT_SECURE_NODOTDOT | ARCHIVE_EXTRACT_SECURE_SYMLINKS |
                                                     ARCHIVE_EXTRACT_NO_OVERWRITE);
  }

  void run() {
    source.allow(mostBytesOfContents);
    check(archive_read_open1(reader.get()));
    archive_entry* entry = nullptr;
    for (;;) {
      const int result = archive_read_next_header(reader.get(), &entry);
      if (result == ARCHIVE_EOF) return;
      check(result);
      source.allow(limits.allBytes);
      unpack(*entry);
    }
  }

 private:
  void unpack(archive_entry& entry) {
    const char* name = archive_entry_pathname(&entry);
    admit(entry, name != nullptr ? name : "");
    if (archive_entry_filetype(&entry) == AE_IFDIR) return;  // folders are created with their content
    begin(name);
    copyData(name);
    if (archive_write_finish_entry(writer.get()) != ARCHIVE_OK) failToWrite();
  }

  // Throws when the entry is not allowed in a profile.
  void admit(archive_entry& entry, const std::string& name) {
    if (++entries > limits.entries) refuse(Formats::sentence("it has more than {1} entries.", limits.entries));
    const auto say = [&](const std::string& problem) {
      refuse(Formats::sentence("its entry {1}: {2}", Formats::quoted(shown(name)), problem));
    };
    if (const std::string problem = archiveNameProblem(name); !problem.empty()) say(problem);
    const auto type = archive_entry_filetype(&entry);
    if (archive_entry_symlink(&entry) != nullptr || archive_entry_hardlink(&entry) != nullptr || type == AE_IFLNK)
      say(Formats::sentence("it is a link."));
    if (type != AE_IFREG && type != AE_IFDIR) say(Formats::sentence("it is neither a file nor a folder."));
    if (archive_entry_is_encrypted(&entry) != 0) say(Formats::sentence("it is encrypted."));
    if (type == AE_IFDIR) return;
    if (!names.insert(withoutCase(name)).second)
      say(Formats::sentence("it is there twice, or under two names that differ only in case."));
    if (archive_entry_size_is_set(&entry) != 0)
      demandRoom(static_cast<std::uint64_t>(std::max<la_int64_t>(archive_entry_size(&entry), 0)), 0);
  }

  // Enforces the limits while unpacking, since the sizes in the archive may be wrong.
  void demandRoom(std::uint64_t more, std::uint64_t inThisFile) {
    if (inThisFile + more > limits.fileBytes || unpacked + more > limits.allBytes)
      refuse(Formats::sentence("it unpacks to more than a profile can hold."));
  }

  void begin(const std::string& name) {
    const std::unique_ptr<archive_entry, decltype(&archive_entry_free)> made(archive_entry_new(), archive_entry_free);
    if (!made) throw std::bad_alloc();
    setPath(made.get(), (root / name).native());
    archive_entry_set_filetype(made.get(), AE_IFREG);
    archive_entry_set_perm(made.get(), 0600);
    if (archive_write_header(writer.get(), made.get()) != ARCHIVE_OK) failToWrite();
  }

  void copyData(const std::string& name) {
    std::vector<char> block(blockBytes);
    for (std::uint64_t inThisFile = 0;;) {
      if (!progress(inKilobytes(source.place()), inKilobytes(source.size()))) throw Stopped();
      const la_ssize_t got = archive_read_data(reader.get(), block.data(), block.size());
      if (got < 0)
        refuse(Formats::sentence("its entry {1} is damaged: {2}.", Formats::quoted(shown(name)), reason(reader.get())));
      if (got == 0) return;
      const auto count = static_cast<std::uint64_t>(got);
      demandRoom(count, inThisFile);
      inThisFile += count;
      unpacked += count;
      if (archive_write_data(writer.get(), block.data(), static_cast<std::size_t>(got)) != got) failToWrite();
    }
  }

  static int inKilobytes(std::int64_t bytes) { return static_cast<int>(bytes >> 10); }

  // Escape sequences must not reach a terminal.
  static std::string shown(const std::string& name) {
    std::string text = name.substr(0, 100);
    std::replace_if(text.begin(), text.end(), [](char unit) { return unit < ' ' || unit > '~'; }, '?');
    return text;
  }

  static std::string reason(archive* from) {
    const char* text = archive_error_string(from);
    return text != nullptr ? Formats::sentence(text) : Formats::sentence("no reason is known");
  }

  void check(int result) const {
    if (result != ARCHIVE_OK)
      refuse(Formats::sentence("it cannot be read ({1}); get a new copy of it.", reason(reader.get())));
  }

  [[noreturn]] void refuse(const std::string& problem) const {
    throw std::runtime_error(Formats::sentence("{1} is refused as a profile: {2}", Files::shownPath(file), problem));
  }

  [[noreturn]] void failToWrite() const {
    const std::error_code code(archive_errno(writer.get()), std::generic_category());
    // The library says no more than that it could not write.
    const std::string why =
        code.value() > 0 ? Files::DiskError(root, "written", code).what() : reason(writer.get()) + ".";
    throw std::runtime_error(Formats::sentence("{1} cannot be unpacked: {2}", Files::shownPath(file), why));
  }

  const fs::path& file;
  const fs::path root;
  const ArchiveLimits& limits;
  const Progress& progress;
  Source source;
  const std::unique_ptr<archive, decltype(&archive_read_free)> reader{archive_read_new(), archive_read_free};
  const std::unique_ptr<archive, decltype(&archive_write_free)> writer{archive_write_disk_new(), archive_write_free};
  std::set<std::string> names;  // of files, in lower case
  std::size_t entries = 0;
  std::uint64_t unpacked = 0;
};

}  // namespace

void unpack(const fs::path& file, const fs::path& folder, const ArchiveLimits& limits, const Progress& progress) {
  // Opening a pipe would wait for its writer.
  const Files::EntryKind kind = Files::realDisk().kind(file);
  if (kind != Files::EntryKind::file)
    throw std::runtime_error(Formats::sentence("The file {1} cannot be read: {2}", Files::shownPath(file),
                                               kind == Files::EntryKind::none
                                                   ? Formats::sentence("there is no such file.")
                                                   : Formats::sentence("it is no ordinary file.")));
  Unpacker(file, folder, limits, progress).run();
}

}  // namespace Refhost
