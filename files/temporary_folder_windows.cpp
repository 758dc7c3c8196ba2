#include "files/temporary_folder.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <random>
#include <string>

namespace Files {
namespace {

constexpr DWORD whole = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;  // a folder, not where a link leads

// An open folder that is not shared for deletion cannot be deleted.
class OpenFolder final : public Disk::Lock {
 public:
  explicit OpenFolder(const std::filesystem::path& folder)
      : handle(CreateFileW(folder.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, whole, nullptr)) {}
  ~OpenFolder() override {
    if (isOpen()) CloseHandle(handle);
  }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;

  bool isOpen() const { return handle != INVALID_HANDLE_VALUE; }

 private:
  const HANDLE handle;
};

}  // namespace

// The system's folder for temporary files belongs to the user, and folders in it inherit its access rights. An existing
// folder belongs to others.
std::filesystem::path newPrivateFolder(const std::filesystem::path& parent, const std::string& name,
                                       std::error_code& reason) {
  std::random_device random;
  for (int attempts = 0; attempts < 100; ++attempts) {
    const auto candidate = parent / (name + std::to_string(random()));
    if (std::filesystem::create_directory(candidate, reason)) return candidate;
    if (reason) return {};
  }
  reason = std::make_error_code(std::errc::file_exists);
  return {};
}

void removeEmptyFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::filesystem::remove(folder, ignored);
}

std::unique_ptr<Disk::Lock> holdFolder(const std::filesystem::path& folder) {
  auto opened = std::make_unique<OpenFolder>(folder);
  return opened->isOpen() ? std::move(opened) : nullptr;
}

bool isOwnAndFree(const std::filesystem::path& folder) {
  const DWORD attributes = GetFileAttributesW(folder.c_str());
  const bool isFolder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                        (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
  if (!isFolder) return false;
  const HANDLE probe = CreateFileW(folder.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                   nullptr, OPEN_EXISTING, whole, nullptr);
  if (probe == INVALID_HANDLE_VALUE) return false;
  CloseHandle(probe);
  return true;
}

}  // namespace Files
