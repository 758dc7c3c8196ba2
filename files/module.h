// Libraries that are loaded by file name: plug-ins, and the product's own that are loaded on demand.
#pragma once

#include <filesystem>

namespace Files {

// A loaded library. The destructor unloads it, unless it is to stay.
class Module {
 public:
  // Throws std::runtime_error: the system's reason, without the file's name and a full stop.
  explicit Module(const std::filesystem::path& file);
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  // An exported function, null when there is none; valid while the library is loaded.
  template <class Function>
  Function* function(const char* name) const {
    return reinterpret_cast<Function*>(symbol(name));
  }

  // For libraries that cannot be unloaded, or whose functions are used until the program ends.
  void keepLoaded() { stays = true; }

 private:
  void* symbol(const char* name) const;

  void* handle;
  bool stays = false;
};

// The ending of libraries' file names on this system: ".so", ".dll".
extern const char* const moduleEnding;

// The folder of the running program and its libraries. Throws std::runtime_error when it cannot be determined.
std::filesystem::path programFolder();

}  // namespace Files
