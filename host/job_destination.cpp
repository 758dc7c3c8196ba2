#include "host/job_destination.h"

#include "files/whole_file.h"
#include "formats/names.h"
#include "formats/overlay_index.h"
#include "host/documents/captured.h"
#include "host/documents/stores.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {

JobDestination::JobDestination(const FileWorld& fileWorld, PropertyModel& properties)
    : world(fileWorld),
      model(properties) {
  model.onChange([this] { follow(); });
}

std::u16string JobDestination::named() const { return model.value(Formats::Prop::overlayDestFileName).value_or(u""); }

bool JobDestination::takesPlaceOf(const std::filesystem::path& file) {
  const std::u16string name = named();
  if (name.empty() || Files::pathFromText(name).lexically_normal() != file.lexically_normal()) return false;
  aside = name;
  return true;
}

void JobDestination::write(std::string_view bytes, std::optional<std::string_view> picture) {
  const std::u16string name = named();
  if (name.empty()) throw std::runtime_error("The job has no destination: the property OverlayDestFileName is empty.");
  const std::filesystem::path file = Files::pathFromText(name);
  ChangeGuard::Lock lock;
  try {
    lock = world.guard->lock(world.disk, world.home);
    keepListed(file);
  } catch (const Files::DiskError&) {
    try {
      putBack(world.disk, file);
    } catch (const Files::DiskError&) {
      // The first failure is reported; it stays set aside until the folder is opened next.
    }
    throw;
  }
  writeCaptured(world.disk, file, bytes, picture);
  aside.clear();
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
    throw Files::DiskError(Files::shownPath(file) + " is the file of another overlay meanwhile; try again.");
  entries.push_back(own);
  Files::replaceWhole(world.disk, index, Formats::indexBytes(entries));
}

void JobDestination::follow() {
  if (const std::u16string name = named(); name != followed) {
    followed = name;
    overlay = Formats::storableName(model.value(Formats::Prop::overlayImageName).value_or(u""));
  }
  const bool isCancelled = model.value(Formats::Prop::cancelJob) == Formats::Value::yes;
  if (aside.empty() || (named() == aside && !isCancelled)) return;
  try {
    const ChangeGuard::Lock lock = world.guard->lock(world.disk, world.home);
    putBack(world.disk, Files::pathFromText(aside));
  } catch (const Files::DiskError&) {
    // It stays set aside until the folder is opened next.
  }
  aside.clear();
}

}  // namespace Refhost
