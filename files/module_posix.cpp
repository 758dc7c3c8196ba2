#include "files/module.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace Files {
namespace {

// The system begins most of its reasons with the file's name.
std::string lastReason(const std::filesystem::path& file) {
  const std::string reason = dlerror();
  const std::string start = std::filesystem::absolute(file).string() + ": ";
  return reason.starts_with(start) ? reason.substr(start.size()) : reason;
}

}  // namespace

Module::Module(const std::filesystem::path& file)
    : handle(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle == nullptr) throw std::runtime_error(lastReason(file));
}

Module::~Module() {
  if (!stays) dlclose(handle);
}

void* Module::symbol(const char* name) const { return dlsym(handle, name); }

const char* const moduleEnding = ".so";

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

}  // namespace Files
