#include "files/missing_libraries.h"
#include "files/module.h"
#include "files/system_reason.h"
#include "formats/sentences.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace Files {

namespace {

std::string reasonFor(DWORD code, const std::filesystem::path& file) {
  if (code == ERROR_BAD_EXE_FORMAT) return Formats::sentence("it is no library for this program's kind of processor");
  std::string names;
  if (code == ERROR_MOD_NOT_FOUND)
    for (const std::string& name : missingLibraries(file)) names += (names.empty() ? "" : ", ") + name;
  if (!names.empty()) return Formats::sentence("these libraries that it needs are not found: {1}", names);
  return systemReason({static_cast<int>(code), std::system_category()});
}

}  // namespace

Module::Module(const std::filesystem::path& file) : handle(LoadLibraryW(std::filesystem::absolute(file).c_str())) {
  if (handle == nullptr) throw std::runtime_error(reasonFor(GetLastError(), std::filesystem::absolute(file)));
}

Module::~Module() {
  if (!stays) FreeLibrary(static_cast<HMODULE>(handle));
}

void* Module::symbol(const char* name) const {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

const char* const moduleEnding = ".dll";

std::filesystem::path programFolder() {
  std::wstring file(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    if (length == 0) throw std::runtime_error(Formats::sentence("The system does not tell where this program lies."));
    if (length < file.size()) return std::filesystem::path(file.substr(0, length)).parent_path();
    file.resize(file.size() * 2);
  }
}

}  // namespace Files
