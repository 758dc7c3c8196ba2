#include "files/missing_libraries.h"

#include <windows.h>

#include <cctype>
#include <set>

namespace Files {
namespace {

// A library that is mapped as it would be for running, but neither runs nor loads others.
class Mapped {
 public:
  explicit Mapped(const std::filesystem::path& file)
      : handle(LoadLibraryExW(file.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {}
  Mapped(const Mapped&) = delete;
  Mapped& operator=(const Mapped&) = delete;
  ~Mapped() {
    if (handle != nullptr) FreeLibrary(handle);
  }

  // The file names in its import table.
  std::vector<std::string> imports() const {
    std::vector<std::string> names;
    if (handle == nullptr) return names;
    const auto& header = *at<IMAGE_NT_HEADERS>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
    if (header.OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR_MAGIC) return names;
    const DWORD table = header.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    if (table == 0) return names;
    for (const auto* entry = at<IMAGE_IMPORT_DESCRIPTOR>(table); entry->Name != 0; ++entry)
      names.emplace_back(at<char>(entry->Name));
    return names;
  }

 private:
  // The handle's two lowest bits tell how the file is mapped.
  template <class T>
  const T* at(DWORD offset) const {
    return reinterpret_cast<const T*>((reinterpret_cast<ULONG_PTR>(handle) & ~ULONG_PTR{3}) + offset);
  }

  HMODULE handle;
};

std::string lowerCase(std::string name) {
  for (char& letter : name) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  return name;
}

// Names that stand for a part of the system, not for a file.
bool isOfSystem(const std::string& name) { return name.starts_with("api-ms-") || name.starts_with("ext-ms-"); }

// Where the system finds a library; empty for nowhere.
std::filesystem::path place(const std::string& name) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = SearchPathW(nullptr, std::filesystem::path(name).c_str(), nullptr,
                                     static_cast<DWORD>(path.size()), path.data(), nullptr);
    if (length < path.size()) return path.substr(0, length);
    path.resize(length);
  }
}

}  // namespace

std::vector<std::string> missingLibraries(const std::filesystem::path& library) {
  std::vector<std::string> missing;
  std::set<std::string> known;
  std::vector<std::filesystem::path> open = {library};
  while (!open.empty()) {
    const Mapped image(std::exchange(open.back(), {}));
    open.pop_back();
    for (const std::string& name : image.imports()) {
      if (!known.insert(lowerCase(name)).second || isOfSystem(lowerCase(name))) continue;
      if (GetModuleHandleW(std::filesystem::path(name).c_str()) != nullptr) continue;  // it is loaded with all its own
      if (auto file = place(name); file.empty())
        missing.push_back(name);
      else
        open.push_back(std::move(file));
    }
  }
  return missing;
}

}  // namespace Files
