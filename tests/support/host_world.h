// The reference host with a new home and without a plug-in, for testing the plug-in's classes.
#pragma once

#include "files/disk.h"
#include "host/model/description.h"
#include "host/reference_host.h"
#include "tests/support/world.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace Testing {

inline std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class HostWorld {
 public:
  explicit HostWorld(std::filesystem::path homeFolder, Files::Disk& disk = Files::realDisk(),
                     std::string locale = "en-US")
      : home(std::move(homeFolder)),
        chrome(RESOURCES_FOLDER),
        strings(chrome, std::move(locale)),
        files{disk, trace, home},
        manager(Refhost::make<Refhost::PropertyManager>(
            Refhost::make<Refhost::PropertyModel>(
                Refhost::readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", "standard"), trace),
            trace)),
        host({face, trace, chrome, strings, files, *manager->model}) {
    set(u"kilnworks.user.path", (home / "user").u16string());
    set(u"kilnworks.user.userprofile", (home / "profile").u16string());
    set(u"kilnworks.pdlsettings.folder", u"overlays");
    set(u"kilnworks.user.localdata.path", (home / "localdata").u16string());
    trace.listen([this](const Refhost::TraceEvent& event) {
      if (event.op == "write") writes.push_back(member(event, "path"));
      if (event.op == "delete") deletions.push_back(member(event, "path"));
    });
  }

  void set(std::u16string_view key, std::u16string_view value) { manager->settings->set(key, value); }

  const std::filesystem::path home;
  RecordingFace face;
  Refhost::Trace trace;
  Refhost::ChromeFolders chrome;
  Refhost::StringTables strings;
  Refhost::FileWorld files;
  Kiln::SmartPtr<Refhost::PropertyManager> manager;
  Refhost::ReferenceHost host;

  // The files written and deleted so far, relative to the home.
  std::vector<std::string> writes;
  std::vector<std::string> deletions;
};

}  // namespace Testing
