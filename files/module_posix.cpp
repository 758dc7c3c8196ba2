#include "files/module.h"

#include <dlfcn.h>

#include <stdexcept>

namespace Files {

Module::Module(const std::filesystem::path& file)
    : handle(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle == nullptr) throw std::runtime_error(dlerror());
}

Module::~Module() {
  if (!stays) dlclose(handle);
}

void* Module::symbol(const char* name) const { return dlsym(handle, name); }

const char* const moduleEnding = ".so";

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

}  // namespace Files
