#include "host/library.h"

#include "host/documents/path_text.h"

#include <dlfcn.h>

#include <stdexcept>

namespace Refhost {

Library::Library(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error))
    throw std::runtime_error("There is no plug-in library " + shownPath(file) + ".");
  module = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr)
    throw std::runtime_error("The plug-in library " + shownPath(file) + " cannot be loaded: " + dlerror() + ".");
  factory = reinterpret_cast<Kiln::CreatePlugin*>(dlsym(module, "createPlugin"));
  if (factory == nullptr) {
    dlclose(module);
    throw std::runtime_error("The library " + shownPath(file) + " is no plug-in: it exports no createPlugin.");
  }
}

Library::~Library() { dlclose(module); }

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

const char* defaultPluginName() { return "Zorvueffect.so"; }

}  // namespace Refhost
