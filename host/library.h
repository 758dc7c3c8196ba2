// Plug-in libraries, loaded by file name.
#pragma once

#include "host/object.h"
#include "kiln/plugin.h"

#include <filesystem>

namespace Refhost {

// A loaded library. Unloads when the last holder lets go.
class Library final : public Kiln::Services::Library {
 public:
  // Throws std::runtime_error: one sentence that names the file, when it cannot be loaded or has no createPlugin.
  explicit Library(const std::filesystem::path& file);
  ~Library() override;

  Kiln::CreatePlugin& createPlugin() const { return *factory; }

 private:
  void* module = nullptr;
  Kiln::CreatePlugin* factory = nullptr;
};

// The plug-in library's file name on this system: "Zorvueffect.so", "Zorvueffect.dll".
const char* defaultPluginName();

// The folder of the running program, where the libraries lie that come with it. Throws std::runtime_error when the
// system does not tell.
std::filesystem::path programFolder();

}  // namespace Refhost
