#include "host/documents/stores.h"

#include "formats/sentences.h"
#include "host/documents/plugin_errors.h"

namespace Refhost {
namespace {

class FileStore final : public Kiln::Services::FileBackingStoreIO {
 public:
  FileStore(const FileWorld& fileWorld, Kiln::SmartPtr<Kiln::Services::Path> path)
      : world(fileWorld),
        givenPath(std::move(path)),
        file(nativePath(givenPath, "Host::file")) {}

  Kiln::SmartPtr<Kiln::Services::Path> path() override { return givenPath; }
  Kiln::String readAll() override {
    const std::string bytes = readForPlugin(world, file, [&] { return world.disk.read(file, storeLimit); });
    world.guard->saw(file, bytes);
    return text(bytes);
  }
  void write(Kiln::StringView bytes) override { pending += bytes.view(); }

  // Drops the bytes of a failed commit, which the next one would store as well.
  void commit() override {
    const std::string bytes = std::exchange(pending, {});
    try {
      saveTraced(world, file, bytes);
    } catch (const Kiln::Exception&) {
      if (world.homeProblem.empty() || hasFolder()) throw;
      throw failure(Formats::sentence("{1} cannot be written, because {2}", Files::shownPath(file), world.homeProblem));
    }
  }

 private:
  bool hasFolder() const {
    bool isThere = false;
    Files::tryTo([&] { isThere = world.disk.kind(file.parent_path()) == Files::EntryKind::folder; });
    return isThere;
  }

  const FileWorld& world;
  Kiln::SmartPtr<Kiln::Services::Path> givenPath;
  std::filesystem::path file;
  std::string pending;
};

class ResourceStore final : public Kiln::Services::BackingStoreIO {
 public:
  explicit ResourceStore(std::filesystem::path resourceFile) : file(std::move(resourceFile)) {}

  Kiln::String readAll() override {
    return text(forPlugin([&] { return Files::realDisk().read(file, storeLimit); }));
  }
  void write(Kiln::StringView) override { refuse(); }
  void commit() override { refuse(); }

 private:
  [[noreturn]] void refuse() const {
    throw failure(Formats::sentence("{1} came with the program and is not written.", Files::shownPath(file)));
  }

  std::filesystem::path file;
};

class MemoryStore final : public Kiln::Services::BackingStoreIO {
 public:
  explicit MemoryStore(std::string bytes) : stored(std::move(bytes)) {}

  Kiln::String readAll() override { return text(stored); }
  void write(Kiln::StringView bytes) override { pending += bytes.view(); }
  void commit() override { stored = std::exchange(pending, {}); }

 private:
  std::string stored;
  std::string pending;
};

}  // namespace

Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> fileStore(const FileWorld& world,
                                                             Kiln::SmartPtr<Kiln::Services::Path> path) {
  return make<FileStore>(world, std::move(path));
}

Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resourceStore(std::filesystem::path file) {
  return make<ResourceStore>(std::move(file));
}

Kiln::SmartPtr<Kiln::Services::BackingStoreIO> memoryStore(std::string bytes) {
  return make<MemoryStore>(std::move(bytes));
}

}  // namespace Refhost
