// What the fuzz targets share.
#pragma once

#include "files/temporary_folder.h"
#include "tests/files/forwarding_disk.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

namespace Fuzzing {

// Ends the process, which the fuzzer reports as a finding, unless the condition holds.
inline void demand(bool holds) {
  if (!holds) std::abort();
}

// The input of a target.
inline std::string_view text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// The process's own folder, which goes with it. What is tested has its temporary files in the folder "tmp" there.
inline const std::filesystem::path& folder() {
  static const Files::TemporaryFolder own;
  static const std::filesystem::path path = [] {
    std::filesystem::create_directory(own.path() / "tmp");
    setenv("TMPDIR", (own.path() / "tmp").c_str(), 1);
    return own.path();
  }();
  return path;
}

inline void write(const std::filesystem::path& file, std::string_view bytes) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  demand(stream.flush().good());
}

inline std::string read(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Writes nowhere but in the process's folder, and does not wait for the medium.
class GuardedDisk final : public ForwardingDisk {
 public:
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    demandInside(temporary);
    demandInside(target);
    return std::make_unique<HastyFile>(disk.create(temporary, target));
  }
  void replace(const Path& temporary, const Path& target) override {
    demandInside(temporary);
    demandInside(target);
    disk.replace(temporary, target);
  }
  bool remove(const Path& file) override {
    demandInside(file);
    return disk.remove(file);
  }
  void createFolder(const Path& path) override {
    demandInside(path);
    disk.createFolder(path);
  }
  void syncFolder(const Path&) override {}

 private:
  class HastyFile final : public File {
   public:
    explicit HastyFile(std::unique_ptr<File> trueFile) : file(std::move(trueFile)) {}
    void write(std::string_view bytes) override { file->write(bytes); }
    void sync() override {}
    void close() override { file->close(); }

   private:
    std::unique_ptr<File> file;
  };

  static void demandInside(const Path& path) {
    const Path inside = std::filesystem::absolute(path).lexically_normal().lexically_relative(folder());
    demand(!inside.empty() && *inside.begin() != "..");
  }
};

}  // namespace Fuzzing
