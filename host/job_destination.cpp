#include "host/job_destination.h"

#include "host/documents/captured.h"
#include "host/documents/path_text.h"

#include <stdexcept>

namespace Refhost {

JobDestination::JobDestination(Disk& fileDisk, PropertyModel& properties) : disk(fileDisk), model(properties) {
  model.onChange([this] { follow(); });
}

std::u16string JobDestination::named() const { return model.value(u"OverlayDestFileName").value_or(u""); }

bool JobDestination::takesPlaceOf(const std::filesystem::path& file) {
  const std::u16string name = named();
  if (name.empty() || pathFromText(name).lexically_normal() != file.lexically_normal()) return false;
  aside = name;
  return true;
}

void JobDestination::write(std::string_view bytes, std::optional<std::string_view> picture) {
  const std::u16string name = named();
  if (name.empty()) throw std::runtime_error("The job has no destination: the property OverlayDestFileName is empty.");
  writeCaptured(disk, pathFromText(name), bytes, picture);
  aside.clear();
}

void JobDestination::follow() {
  const bool isCancelled = model.value(u"CancelJob") == u"True";
  if (aside.empty() || (named() == aside && !isCancelled)) return;
  try {
    putBack(disk, pathFromText(aside));
  } catch (const DiskError&) {
    // It stays set aside until the folder is opened next.
  }
  aside.clear();
}

}  // namespace Refhost
