// Plug-in libraries, loaded by file name.
#pragma once

#include "files/module.h"
#include "host/object.h"
#include "kiln/plugin.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// A loaded library. Unloads with its last reference.
class Library final : public Kiln::Services::Library {
 public:
  // Throws std::runtime_error, one sentence with the file name, when the library cannot be loaded or has no
  // createPlugin.
  explicit Library(const std::filesystem::path& file);

  // To be called before the library is used. Throws std::runtime_error, one sentence with both versions, when it speaks
  // another version of the contract than this program.
  void demandSameContract(Kiln::Host& host) const;

  // The library's plug-in of that name; null when it has none, or memory is out. Throws what its constructor throws.
  Kiln::SmartPtr<Kiln::UIPlugin> create(Kiln::Host& host, const Kiln::PropertyManager& manager, std::string_view name);

  Kiln::CreatePlugin& createPlugin() const { return *factory; }

  const std::filesystem::path& file() const { return path; }

 private:
  std::filesystem::path path;
  std::optional<Files::Module> module;
  Kiln::CreatePlugin* factory = nullptr;
};

// The plug-in library's file name on this system: "Zorvueffect.so", "Zorvueffect.dll".
std::string defaultPluginName();

}  // namespace Refhost
