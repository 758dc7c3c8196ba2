// A plug-in's library: loaded by its file name, and asked for the version of the contract before anything else.
#pragma once

#include "objects.h"

#include "kiln/plugin.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace ExampleHost {

// Unloads with its last reference, which the host holds: a plug-in's code runs until all that it made is gone.
class Library final : public Kiln::Services::Library {
 public:
  explicit Library(const std::filesystem::path& file)
#ifdef _WIN32
      : handle(LoadLibraryW(std::filesystem::absolute(file).c_str())) {
    if (handle == nullptr) throw std::runtime_error("The library cannot be loaded.");
    createPlugin =
        reinterpret_cast<Kiln::CreatePlugin*>(reinterpret_cast<void*>(GetProcAddress(handle, "createPlugin")));
#else
      : handle(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) throw std::runtime_error(dlerror());
    createPlugin = reinterpret_cast<Kiln::CreatePlugin*>(dlsym(handle, "createPlugin"));
#endif
    if (createPlugin == nullptr) throw std::runtime_error("The library exports no createPlugin.");
  }

  ~Library() override {
#ifdef _WIN32
    FreeLibrary(handle);
#else
    dlclose(handle);
#endif
  }

  Kiln::SmartPtr<Kiln::UIPlugin> create(Kiln::Host& host, const Kiln::PropertyManager& manager, std::string_view name) {
    Kiln::VersionExchange versions;
    createPlugin(host, nullptr, Kiln::String(memory, Kiln::versionQuestion), &versions, nullptr);
    if (!versions.plugin.worksWith(versions.host))
      throw std::runtime_error("The plug-in has version " + std::to_string(versions.plugin.major) +
                               " of the contract, and this host " + std::to_string(versions.host.major) + ".");
    Kiln::SmartPtr<Kiln::UIPlugin> plugin(createPlugin(host, manager, Kiln::String(memory, name), nullptr, this));
    if (!plugin) throw std::runtime_error("The library has no plug-in " + std::string(name) + ".");
    return plugin;
  }

 private:
#ifdef _WIN32
  HMODULE handle;
#else
  void* handle;
#endif
  Kiln::CreatePlugin* createPlugin = nullptr;
};

}  // namespace ExampleHost
