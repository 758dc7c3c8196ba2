// Plug-in libraries, loaded by file name.
#pragma once

#include "files/module.h"
#include "host/object.h"
#include "kiln/plugin.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Refhost {

// A loaded library. Unloads with its last reference.
class Library final : public Kiln::Services::Library {
 public:
  // Throws std::runtime_error, one sentence with the file name, when the library cannot be loaded or has no
  // createPlugin.
  explicit Library(const std::filesystem::path& file);

  Kiln::CreatePlugin& createPlugin() const { return *factory; }

 private:
  std::optional<Files::Module> module;
  Kiln::CreatePlugin* factory = nullptr;
};

// The plug-in library's file name on this system: "Zorvueffect.so", "Zorvueffect.dll".
std::string defaultPluginName();

}  // namespace Refhost
