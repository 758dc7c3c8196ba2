#include "host/job_destination.h"

#include "files/whole_file.h"
#include "formats/names.h"
#include "formats/overlay_index.h"
#include "formats/sentences.h"
#include "host/documents/captured.h"
#include "host/documents/stores.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Refhost {

JobDestination::JobDestination(const FileWorld& fileWorld, PropertyModel& properties)
    : world(fileWorld),
      model(properties) {
  model.onChange([this] { follow(); });
}

JobDestination::~JobDestination() { restore(world.guard->longestWait); }

std::u16string JobDestination::named() const { return model.value(Formats::Prop::overlayDestFileName).value_or(u""); }

bool JobDestination::takesPlaceOf(const std::filesystem::path& file) {
  const std::u16string name = named();
  if (name.empty() || Files::pathFromText(name).lexically_normal() != file.lexically_normal()) return false;
  aside = name;
  toRestore.erase(name);
  return true;
}

void JobDestination::write(std::string_view bytes, std::optional<std::string_view> picture) {
  const std::u16string name = named();
  if (name.empty())
    throw std::runtime_error(
        Formats::sentence("The job has no destination: the property OverlayDestFileName is empty."));
  const std::filesystem::path file = Files::pathFromText(name);
  ChangeGuard::Lock lock;
  try {
    lock = world.guard->lock(world.disk, world.home);
    keepListed(file);
  } catch (const Files::DiskError&) {
    giveUp();
    restore({});
    throw;
  }
  const std::filesystem::path pictureFile = std::filesystem::path(file).replace_extension(".bmp");
  FileContent before = contentBefore(file);
  FileContent pictureBefore = picture ? contentBefore(pictureFile) : FileContent();
  writeCaptured(world.disk, file, bytes, picture);
  aside.clear();
  if (!world.changes) return;
  if (picture) world.changes->add(pictureFile, std::move(pictureBefore), std::string(*picture));
  world.changes->add(file, std::move(before), std::string(bytes));
}

// Since the plug-in has put the overlay into the index, another program may have written the index without it: there
// was no such file. It may even have given the file to another overlay.
void JobDestination::keepListed(const std::filesystem::path& file) const {
  const std::filesystem::path index = Files::folderOf(file) / Files::pathFromText(Formats::overlayIndexName);
  const bool isOverlay = model.value(Formats::Prop::ovlDestCreated) == Formats::Value::yes && !overlay.empty();
  if (!isOverlay || world.disk.kind(index) != Files::EntryKind::file) return;
  std::vector<Formats::IndexEntry> entries = Formats::readIndex(world.disk.read(index, storeLimit));
  const Formats::IndexEntry own{overlay, Files::pathText(file.filename())};
  if (std::find(entries.begin(), entries.end(), own) != entries.end()) return;
  if (std::any_of(entries.begin(), entries.end(), [&](const auto& entry) { return entry.fileName == own.fileName; }))
    throw Files::DiskError(
        Formats::sentence("{1} is the file of another overlay meanwhile; try again.", Files::shownPath(file)));
  entries.push_back(own);
  FileContent before = contentBefore(index);
  std::string after = Formats::indexBytes(entries);
  Files::replaceWhole(world.disk, index, after);
  if (world.changes) world.changes->add(index, std::move(before), std::move(after));
}

FileContent JobDestination::contentBefore(const std::filesystem::path& file) const {
  return world.changes ? world.changes->contentBefore(world.disk, file) : FileContent();
}

void JobDestination::follow() {
  if (const std::u16string name = named(); name != followed) {
    followed = name;
    overlay = Formats::storableName(model.value(Formats::Prop::overlayImageName).value_or(u""));
  }
  const bool isCancelled = model.value(Formats::Prop::cancelJob) == Formats::Value::yes;
  const bool isGivenUp = !aside.empty() && (named() != aside || isCancelled);
  if (isGivenUp) giveUp();
  restore(isGivenUp ? world.guard->longestWait : std::chrono::milliseconds(0));
}

void JobDestination::giveUp() {
  if (!aside.empty()) toRestore.insert(std::exchange(aside, {}));
}

void JobDestination::restore(std::chrono::milliseconds atMost) {
  if (toRestore.empty()) return;
  Files::tryTo([&] {
    const ChangeGuard::Lock lock = world.guard->lock(world.disk, world.home, atMost);
    std::erase_if(toRestore, [this](const std::u16string& name) {
      try {
        putBack(world.disk, Files::pathFromText(name));
        return true;
      } catch (const Files::DiskError&) {
        return false;
      }
    });
  });
}

}  // namespace Refhost
