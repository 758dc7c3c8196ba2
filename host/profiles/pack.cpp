#include "files/whole_file.h"
#include "formats/sentences.h"
#include "host/profiles/archive.h"
#include "host/profiles/archive_names.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <exception>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vector>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t chunkBytes = std::size_t{1} << 16;

using Entry = std::unique_ptr<archive_entry, decltype(&archive_entry_free)>;

struct SourceFile {
  fs::path path;
  std::string name;
  std::uint64_t bytes;
};

// The files below the folder, `first` before the others. Throws when they exceed the limits.
std::vector<SourceFile> filesBelow(const fs::path& folder, const fs::path& first, const ArchiveLimits& limits) {
  std::vector<SourceFile> files;
  std::uint64_t allBytes = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_directory()) continue;
    const fs::path inside = entry.path().lexically_relative(folder);
    const std::string name = Files::shownPath(inside.generic_string<fs::path::value_type>());
    if (const std::string problem = archiveNameProblem(name); !problem.empty())
      throw std::runtime_error(Formats::sentence("The file {1} cannot be packed: {2}", name, problem));
    files.push_back({entry.path(), name, entry.file_size()});
    allBytes += files.back().bytes;
    if (files.size() > limits.entries || files.back().bytes > limits.fileBytes || allBytes > limits.allBytes)
      throw std::runtime_error(
          Formats::sentence("There is more in the home than a profile can hold; delete overlays that are not needed."));
  }
  const std::string firstName = Files::shownPath(first);
  std::sort(files.begin(), files.end(), [&firstName](const SourceFile& a, const SourceFile& b) {
    return std::pair(a.name != firstName, a.name) < std::pair(b.name != firstName, b.name);
  });
  return files;
}

int inKilobytes(std::uint64_t bytes) { return static_cast<int>(bytes >> 10); }

// An archive being written to a file.
class Packer {
 public:
  Packer(Files::Disk& disk, const fs::path& file) : target(disk, file) {
    // Write blocks as they come, without padding the last one.
    check(archive_write_set_format_zip(archive.get()));
    check(archive_write_set_bytes_per_block(archive.get(), static_cast<int>(chunkBytes)));
    check(archive_write_set_bytes_in_last_block(archive.get(), 1));
    check(archive_write_open2(archive.get(), this, nullptr, write, nullptr, nullptr));
  }

  // Starts an entry without time, owner and permissions.
  void begin(const std::string& name, std::uint64_t bytes) {
    const Entry entry(archive_entry_new(), archive_entry_free);
    if (!entry) throw std::bad_alloc();
    archive_entry_set_pathname(entry.get(), name.c_str());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), 0644);
    archive_entry_set_size(entry.get(), static_cast<la_int64_t>(bytes));
    check(archive_write_header(archive.get(), entry.get()));
  }

  void add(std::string_view bytes) {
    const la_ssize_t taken = archive_write_data(archive.get(), bytes.data(), bytes.size());
    if (taken != static_cast<la_ssize_t>(bytes.size())) fail();
  }

  void finish() {
    check(archive_write_close(archive.get()));
    target.finish();
    target.putInPlace();
  }

 private:
  // Exceptions must not propagate through the library; stores them for later.
  static la_ssize_t write(struct archive*, void* packer, const void* bytes, std::size_t count) {
    Packer& self = *static_cast<Packer*>(packer);
    try {
      self.target.write({static_cast<const char*>(bytes), count});
      return static_cast<la_ssize_t>(count);
    } catch (...) {
      self.problem = std::current_exception();
      return ARCHIVE_FATAL;
    }
  }

  void check(int result) {
    if (result != ARCHIVE_OK) fail();
  }

  [[noreturn]] void fail() {
    if (problem) std::rethrow_exception(problem);
    const char* reason = archive_error_string(archive.get());
    throw std::runtime_error(Formats::sentence("{1} cannot be written: {2}.", Files::shownPath(target.path()),
                                               reason != nullptr ? reason : "?"));
  }

  Files::PendingFile target;
  std::exception_ptr problem;
  const std::unique_ptr<struct archive, decltype(&archive_write_free)> archive{archive_write_new(), archive_write_free};
};

}  // namespace

void pack(Files::Disk& disk, const fs::path& folder, const fs::path& first, const fs::path& file,
          const ArchiveLimits& limits, const Progress& progress) {
  const std::vector<SourceFile> sources = filesBelow(folder, first, limits);
  std::uint64_t total = 0;
  for (const SourceFile& source : sources) total += source.bytes;

  Files::sweepBeside(disk, file);
  Packer packer(disk, file);
  std::uint64_t done = 0;
  std::vector<char> block(chunkBytes);
  for (const SourceFile& source : sources) {
    packer.begin(source.name, source.bytes);
    std::ifstream stream(source.path, std::ios::binary);
    for (std::uint64_t left = source.bytes; left > 0;) {
      if (!progress(inKilobytes(done), inKilobytes(total))) throw Stopped();
      const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, chunkBytes));
      stream.read(block.data(), static_cast<std::streamsize>(wanted));
      if (!stream)
        throw std::runtime_error(Formats::sentence("The file {1} cannot be read.", Files::shownPath(source.path)));
      packer.add({block.data(), wanted});
      left -= wanted;
      done += wanted;
    }
  }
  packer.finish();
}

}  // namespace Refhost
