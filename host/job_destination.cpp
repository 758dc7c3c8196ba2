#include "host/job_destination.h"

#include "files/path_text.h"
#include "formats/names.h"
#include "host/documents/captured.h"

#include <stdexcept>

namespace Refhost {

JobDestination::JobDestination(Files::Disk& fileDisk, PropertyModel& properties) : disk(fileDisk), model(properties) {
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
  writeCaptured(disk, Files::pathFromText(name), bytes, picture);
  aside.clear();
}

void JobDestination::follow() {
  const bool isCancelled = model.value(Formats::Prop::cancelJob) == Formats::Value::yes;
  if (aside.empty() || (named() == aside && !isCancelled)) return;
  try {
    putBack(disk, Files::pathFromText(aside));
  } catch (const Files::DiskError&) {
    // It stays set aside until the folder is opened next.
  }
  aside.clear();
}

}  // namespace Refhost
