#include "effect/watermark/watermark_file.h"

#include "effect/watermark/numbers.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace Effect {
namespace {

// A limit on damaged or hostile files; a record takes about two kilobytes of memory.
constexpr std::int32_t mostRecords = 100'000;

}  // namespace

// The host's file store, remembering the bytes read and written.
class SeenStore final : public Kiln::Services::FileBackingStoreIO {
 public:
  SeenStore(Kiln::Allocator& lentAllocator, Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> fileStore)
      : allocator(lentAllocator),
        store(std::move(fileStore)) {}

  Kiln::SmartPtr<Kiln::Services::Path> path() override { return store->path(); }
  Kiln::String readAll() override {
    isWhole = false;
    Kiln::String bytes = store->readAll();
    isWhole = true;
    seen = bytes;
    return bytes;
  }
  void write(Kiln::StringView bytes) override {
    pending += bytes.view();
    store->write(bytes);
  }
  void commit() override {
    store->commit();
    seen = Kiln::String(allocator, std::exchange(pending, {}));
  }

  // Whether the last read got the whole content.
  bool wasReadWhole() const { return isWhole; }

  bool isAsSeen() { return seen && store->readAll().view() == seen->view(); }

 private:
  Kiln::Allocator& allocator;
  Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> store;
  std::string pending;
  std::optional<Kiln::String> seen;  // nothing before the first read or write
  bool isWhole = false;
};

WatermarkFile::WatermarkFile(Kiln::Host& lender, Kiln::SmartPtr<Kiln::Services::Path> filePath)
    : host(lender),
      path(std::move(filePath)),
      store(newStore()) {}

WatermarkFile::~WatermarkFile() = default;

Kiln::SmartPtr<SeenStore> WatermarkFile::newStore() const {
  Kiln::SmartPtr<SeenStore> made(new (host.allocator()) SeenStore(host.allocator(), host.file(path)));
  if (!made) throw std::bad_alloc();
  return made;
}

void WatermarkFile::forget() { store = newStore(); }

void WatermarkFile::refuseIfBlocked() const {
  if (!blockedBecause.empty()) throw Kiln::Exception(host.allocator(), blockedBecause);
}

Node WatermarkFile::read() {
  refuseIfBlocked();
  return path->exists() ? readDocument() : Node();
}

Node WatermarkFile::readIfChanged() {
  refuseIfBlocked();
  return path->exists() && !store->isAsSeen() ? readDocument() : Node();
}

Node WatermarkFile::readDocument() {
  Node root;
  try {
    root = host.documents()->read(store);
  } catch (const Kiln::Exception& problem) {
    if (!store->wasReadWhole()) throw;
    throw DamagedFile(host.allocator(), problem.what());
  }
  if (root->childCount() > mostRecords)
    throw DamagedFile(host.allocator(), "A watermark file holds more than 100000 records.");
  return root;
}

// Writes through a new store, so that bytes of a failed commit are not part of the next write.
void WatermarkFile::write(const Node& root) {
  refuseIfBlocked();
  const auto fresh = newStore();
  host.documents()->write(root, fresh);
  store = fresh;
}

void WatermarkFile::copyFrom(Name resource) {
  refuseIfBlocked();
  const auto fresh = newStore();
  fresh->write(host.resource(resource)->readAll());
  fresh->commit();
  store = fresh;
}

Kiln::SmartPtr<Kiln::Services::Path> WatermarkFile::setAside() {
  const auto folder = path->folder();
  for (std::int64_t number = 1;; ++number) {
    auto copy = folder->join(u"ZVeffect.damaged-" + decimalText(number) + u".xml");
    const bool isTaken = copy->exists();
    if (isTaken && !holdsTheSame(*copy)) continue;
    if (!isTaken) path->copyTo(copy);
    return copy;
  }
}

// Treats an unreadable file as different: an extra copy does no harm.
bool WatermarkFile::holdsTheSame(Kiln::Services::Path& other) const {
  try {
    return host.file(path)->readAll().view() == host.file(&other)->readAll().view();
  } catch (const Kiln::Exception&) {
    return false;
  }
}

std::vector<Node> recordsOf(Kiln::Dom::INode& root) {
  std::vector<std::pair<Kiln::WString, Node>> named;
  for (std::int32_t i = 0; i < root.childCount(); ++i) {
    Node record = root.childAt(i);
    Kiln::WString id = record->name();
    named.emplace_back(std::move(id), std::move(record));
  }
  std::stable_sort(named.begin(), named.end(),
                   [](const auto& a, const auto& b) { return a.first.view() < b.first.view(); });
  std::vector<Node> records;
  records.reserve(named.size());
  for (auto& [id, record] : named) records.push_back(std::move(record));
  return records;
}

}  // namespace Effect
