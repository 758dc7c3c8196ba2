// Any bytes as a profile that is imported into a home with a watermark and an overlay. Nothing changes outside of the
// home; a profile that is refused leaves the home as it was, and importing one again changes nothing.
//
// What begins as a ZIP archive does is taken as it is. Other bytes are packed into one, since few changes of an archive
// leave its checksums right: entries with the byte 30 between them, each a name, a line feed and the content.
#include "formats/overlay_index.h"
#include "fuzz/fuzzing.h"
#include "host/kept_settings.h"
#include "host/profiles/profile.h"
#include "tests/profile/folders.h"
#include "tests/profile/zip.h"

#include <stdexcept>

namespace {

using Fuzzing::demand;
using Fuzzing::folder;

std::string archiveOf(std::string_view text) {
  std::vector<Zip::Entry> entries;
  while (!text.empty()) {
    const std::string_view entry = text.substr(0, text.find('\x1E'));
    text.remove_prefix(std::min(entry.size() + 1, text.size()));
    const std::string_view name = entry.substr(0, entry.find('\n'));
    entries.push_back({std::string(name), std::string(entry.substr(std::min(name.size() + 1, entry.size())))});
  }
  return Zip::archive(entries);
}

class Home {
 public:
  Home() { fill(); }

  const std::filesystem::path path = folder() / "home";

  Refhost::Manifest import(const std::filesystem::path& file) {
    Refhost::ProfileHome into = Refhost::ProfileHome::closed(path);
    into.translate = [](std::u16string_view text) { return std::u16string(text); };
    into.settingsFile = [this](const std::u16string& model) { return Refhost::settingsFile(path, model); };
    return Refhost::importProfile(disk, file, into, [](int, int) { return true; });
  }

  void fill() {
    std::filesystem::remove_all(path);
    Fuzzing::write(path / "user" / "ZVeffect.xml",
                   "<Watermarks>\n"
                   "  <_x0030_><label>$IDS_NONE;</label><stylename>$IDS_NONE;</stylename></_x0030_>\n"
                   "  <WM_1><label>One</label><stylename>One</stylename><colour>#808080</colour><value>WM_1</value>"
                   "<downloaded>False</downloaded></WM_1>\n</Watermarks>\n");
    const auto overlays = path / "profile" / "overlays";
    Fuzzing::write(overlays / "00001.opa", "form");
    Fuzzing::write(overlays / "00001.bmp", "picture");
    Fuzzing::write(overlays / "ovlNmFl.flo", Formats::indexBytes({{u"Letterhead", u"00001.opa"}}));
    full = Testing::treeOf(path);
  }

  bool isAsFilled() const { return Testing::treeOf(path) == full; }

 private:
  Fuzzing::GuardedDisk disk;
  Testing::Tree full;
};

void demandNothingOutside() {
  demand(std::filesystem::is_empty(folder() / "tmp"));
  for (const auto& entry : std::filesystem::directory_iterator(folder())) {
    const auto name = entry.path().filename();
    demand(name == "home" || name == "tmp" || name == "profile.zip");
  }
}

void check(Home& home, std::string_view bytes) {
  const auto file = folder() / "profile.zip";
  Fuzzing::write(file, bytes.starts_with("PK") ? std::string(bytes) : archiveOf(bytes));
  try {
    const Refhost::Manifest first = home.import(file);
    const Testing::Tree imported = Testing::treeOf(home.path);
    const Refhost::Manifest second = home.import(file);
    demand(Testing::treeOf(home.path) == imported);
    demand(second.model == first.model && second.values == first.values);
    home.fill();
  } catch (const std::runtime_error&) {
    demand(home.isAsFilled());
  }
  demandNothingOutside();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Home& home = *new Home;
  check(home, Fuzzing::text(data, size));
  return 0;
}
