#include "host/library.h"

#include "host/documents/path_text.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace Refhost {

Library::Library(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error))
    throw std::runtime_error("There is no plug-in library " + shownPath(file) + ".");
  const HMODULE loaded = LoadLibraryW(std::filesystem::absolute(file).c_str());
  if (loaded == nullptr)
    throw std::runtime_error("The plug-in library " + shownPath(file) + " cannot be loaded: system error " +
                             std::to_string(GetLastError()) + ".");
  factory = reinterpret_cast<Kiln::CreatePlugin*>(reinterpret_cast<void*>(GetProcAddress(loaded, "createPlugin")));
  if (factory == nullptr) {
    FreeLibrary(loaded);
    throw std::runtime_error("The library " + shownPath(file) + " is no plug-in: it exports no createPlugin.");
  }
  module = loaded;
}

Library::~Library() { FreeLibrary(static_cast<HMODULE>(module)); }

std::filesystem::path programFolder() {
  std::wstring file(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    if (length == 0) throw std::runtime_error("The system does not tell where this program lies.");
    if (length < file.size()) return std::filesystem::path(file.substr(0, length)).parent_path();
    file.resize(file.size() * 2);
  }
}

const char* defaultPluginName() { return "Zorvueffect.dll"; }

}  // namespace Refhost
