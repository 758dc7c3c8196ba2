// Plug-in libraries, loaded by file name.
#pragma once

#include "host/object.h"
#include "kiln/plugin.h"

#include <filesystem>

namespace Refhost {

// A loaded library. Unloads with its last reference.
class Library final : public Kiln::Services::Library {
 public:
  // Throws std::runtime_error, one sentence with the file name, when the library cannot be loaded or has no
  // createPlugin.
  explicit Library(const std::filesystem::path& file);
  ~Library() override;

  Kiln::CreatePlugin& createPlugin() const { return *factory; }

 private:
  void* module = nullptr;
  Kiln::CreatePlugin* factory = nullptr;
};

// The plug-in library's file name on this system: "Zorvueffect.so", "Zorvueffect.dll".
const char* defaultPluginName();

// The folder of the running program and its libraries. Throws std::runtime_error when it cannot be determined.
std::filesystem::path programFolder();

}  // namespace Refhost
