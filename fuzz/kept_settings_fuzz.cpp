// Any bytes as the file that keeps a model's settings: it is read, or set aside and then nothing is kept; settings that
// are read are written and read again as they were. The same for any names and values.
#include "formats/text.h"
#include "fuzz/fuzzing.h"
#include "host/kept_settings.h"

namespace {

using namespace Refhost;
using Fuzzing::demand;

const std::filesystem::path& file() {
  static const std::filesystem::path path = settingsFile(Fuzzing::folder(), u"input");
  return path;
}

KeptSettings settings() {
  return readSettings(file(), [](const std::string&) { demand(false); });
}

TracePairs comingBack(const TracePairs& values) {
  Fuzzing::write(file(), settingsBytes(values));
  const KeptSettings kept = settings();
  demand(kept.setAside.empty());
  return kept.values;
}

void checkFile(std::string_view bytes) {
  static const ModelDescription model = readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", "standard");
  Fuzzing::write(file(), bytes);
  const KeptSettings kept = settings();
  demand(std::filesystem::exists(file()) == kept.setAside.empty());
  if (!kept.setAside.empty()) {
    demand(kept.values.empty() && Fuzzing::read(kept.setAside) == bytes);
    std::filesystem::remove(kept.setAside);
    return;
  }
  demand(comingBack(kept.values) == kept.values);
  const TracePairs usable = applicable(kept.values, model);
  demand(applicable(usable, model) == usable);
}

// What UTF-8 cannot carry is replaced once.
void checkValues(std::string_view bytes) {
  TracePairs values;
  while (!bytes.empty()) {
    const std::string_view name = bytes.substr(0, 8), value = bytes.substr(name.size(), 24);
    bytes.remove_prefix(name.size() + value.size());
    std::u16string wide;
    for (std::size_t i = 0; i + 1 < value.size(); i += 2)
      wide +=
          static_cast<char16_t>(static_cast<unsigned char>(value[i]) << 8 | static_cast<unsigned char>(value[i + 1]));
    values.emplace_back(Formats::toUtf16(name), wide);
  }
  const TracePairs kept = comingBack(values);
  demand(comingBack(kept) == kept);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  checkFile(Fuzzing::text(data, size));
  checkValues(Fuzzing::text(data, size));
  return 0;
}
