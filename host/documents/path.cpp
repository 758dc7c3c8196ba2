#include "host/documents/path.h"

#include "files/whole_file.h"
#include "formats/sentences.h"
#include "host/documents/captured.h"
#include "host/documents/plugin_errors.h"
#include "host/documents/text_list.h"

#include <algorithm>
#include <set>
#include <vector>

namespace Refhost {
namespace {

namespace fs = std::filesystem;

// The maximum size of a copied file; copies go through memory.
constexpr std::size_t copyLimit = std::size_t{1} << 30;

// The file's content, if anybody needs to know.
FileContent contentBefore(const FileWorld& world, const fs::path& file) {
  return world.changes ? world.changes->contentBefore(world.disk, file) : FileContent();
}

bool isLinkToFolder(const Files::Entry& entry) { return entry.link && entry.kind == Files::EntryKind::folder; }

// The path without links; as it is when that cannot be determined.
fs::path realPath(const fs::path& path) {
  std::error_code error;
  fs::path real = fs::weakly_canonical(path, error);
  return error ? path : real;
}

// Removes links that lead to a folder on the way to `folder`, or to one that another entry stands for already. Without
// them nothing is read twice, and every recursive walk ends.
void removeRepetitions(const fs::path& folder, std::vector<Files::Entry>& entries) {
  if (std::none_of(entries.begin(), entries.end(), isLinkToFolder)) return;
  std::set<fs::path> known;
  fs::path way = fs::absolute(folder);
  known.insert(realPath(way));
  for (; way.has_relative_path(); way = way.parent_path()) known.insert(realPath(way.parent_path()));
  for (const Files::Entry& entry : entries)
    if (!entry.link) known.insert(realPath(folder) / entry.name);
  std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
  std::erase_if(entries, [&](const Files::Entry& entry) {
    return isLinkToFolder(entry) && !known.insert(realPath(folder / entry.name)).second;
  });
}

class Path final : public Kiln::Services::Path {
 public:
  Path(const FileWorld& fileWorld, fs::path filePath) : path(std::move(filePath)), world(fileWorld) {}

  static constexpr const char* interfaceName = "Refhost::Path";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Kiln::Services::Path::queryInterface(asked);
  }

  Kiln::WString text() override { return Refhost::text(Files::pathText(path)); }

  Kiln::SmartPtr<Kiln::Services::Path> join(Kiln::WStringView name) override {
    std::u16string joined = Files::pathText(path);
    for (std::u16string_view rest = name; !rest.empty();) {
      const auto end = std::find_if(rest.begin(), rest.end(), Files::isSeparator);
      const std::u16string_view part(rest.begin(), end);
      if (!part.empty()) {
        if (!joined.empty() && !Files::isSeparator(joined.back())) joined += u'/';
        joined += part;
      }
      rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    }
    return makePath(world, Files::pathFromText(joined));
  }

  Kiln::SmartPtr<Kiln::Services::Path> folder() override { return makePath(world, path.parent_path()); }
  Kiln::WString lastPart() override { return Refhost::text(Files::pathText(path.filename())); }

  bool exists() override {
    const bool isThere = readForPlugin(world, path, [this] {
      return world.disk.kind(path) != Files::EntryKind::none || isSetAside(world.disk, path);
    });
    if (!isThere) world.guard->saw(path, {});
    return isThere;
  }
  bool isFolder() override { return kind() == Files::EntryKind::folder; }

  Kiln::SmartPtr<Kiln::Services::TextList> list(Kiln::WStringView pattern) override {
    std::vector<Files::Entry> entries;
    if (isFolder()) entries = readForPlugin(world, path, [&] { return world.disk.entries(path); });
    removeRepetitions(path, entries);
    std::vector<std::u16string> names;
    for (const Files::Entry& entry : entries)
      if (std::u16string name = Files::pathText(entry.name); fits(name, pattern)) names.push_back(std::move(name));
    std::sort(names.begin(), names.end());
    return makeTextList(std::move(names));
  }

  void createFolder() override {
    forPlugin([&] { Files::createFolders(world.disk, path); });
  }

  bool remove() override {
    const bool removed = forPlugin([&] {
      const ChangeGuard::Lock lock = world.guard->lock(world.disk, world.home);
      const bool isDestination = world.isDestination && world.isDestination(path);
      FileContent before = contentBefore(world, path);
      const bool isTaken = takeAway(world.disk, path, isDestination);
      if (isTaken && world.changes) world.changes->add(path, std::move(before), {});
      return isTaken;
    });
    world.guard->wasChanged(path);
    if (removed) world.trace.record({"delete", {{"path", tracedPath(world, path)}}});
    return removed;
  }

  void copyTo(Kiln::SmartPtr<Kiln::Services::Path> to) override {
    const fs::path target = nativePath(to, "Path::copyTo");
    saveTraced(world, target, readForPlugin(world, path, [&] { return world.disk.read(path, copyLimit); }));
  }

  const fs::path path;

 private:
  Files::EntryKind kind() const {
    return readForPlugin(world, path, [this] { return world.disk.kind(path); });
  }

  const FileWorld& world;
};

// Throws Files::DiskError and FileChanged.
bool save(const FileWorld& world, const fs::path& path, std::string_view bytes) {
  const ChangeGuard::Lock lock = world.guard->lock(world.disk, world.home);
  if (!world.guard->isAsSeen(world.disk, path) && !Files::holds(world.disk, path, bytes)) {
    world.guard->lookAgain(path, lock);
    throw Own<Kiln::FileChanged>(
        heap(), Formats::sentence("{1} was changed by another program meanwhile; try again.", Files::shownPath(path)));
  }
  FileContent before = contentBefore(world, path);
  const bool isChanged = Files::replaceWhole(world.disk, path, bytes);
  if (isChanged && world.changes) world.changes->add(path, std::move(before), std::string(bytes));
  world.guard->wasChanged(path);
  return isChanged;
}

// With the platform's separators, without a trailing one.
fs::path tidied(fs::path path) {
  path.make_preferred();
  while (path.has_relative_path() && !path.has_filename()) path = path.parent_path();
  return path;
}

}  // namespace

Kiln::SmartPtr<Kiln::Services::Path> makePath(const FileWorld& world, fs::path path) {
  return make<Path>(world, tidied(std::move(path)));
}

fs::path nativePath(const Kiln::SmartPtr<Kiln::Services::Path>& path, std::string_view operation) {
  return givenBack<Path>(path, operation, "a path")->path;
}

std::u16string tracedPath(const FileWorld& world, const fs::path& path) {
  const fs::path home = tidied(world.home.lexically_normal());
  const fs::path inside = path.lexically_normal().lexically_relative(home);
  const bool isInside = !home.empty() && !inside.empty() && *inside.begin() != "..";
  std::u16string traced = Files::pathText(isInside ? inside : path);
  std::replace_if(traced.begin(), traced.end(), Files::isSeparator, u'/');
  return traced;
}

bool saveTraced(const FileWorld& world, const fs::path& path, std::string_view bytes) {
  if (!forPlugin([&] { return save(world, path, bytes); })) return false;
  world.trace.record({"write", {{"path", tracedPath(world, path)}, {"bytes", static_cast<double>(bytes.size())}}});
  return true;
}

// Each * matches nothing at first; on a mismatch, the last one matches one more unit.
bool fits(std::u16string_view name, std::u16string_view pattern) {
  std::size_t at = 0;
  std::size_t star = pattern.npos;
  std::size_t starAt = 0;
  std::size_t p = 0;
  while (at < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      starAt = at;
    } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[at])) {
      ++p;
      ++at;
    } else if (star != pattern.npos) {
      p = star + 1;
      at = ++starAt;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', p) == pattern.npos;
}

}  // namespace Refhost
