#include "check/exports.h"
#include "files/disk.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace Checking {
namespace {

// A 64-bit PE file.
class Image {
 public:
  explicit Image(std::string content) : bytes(std::move(content)) {
    if (!bytes.starts_with("MZ")) throw std::runtime_error("The library's file is no library of this system.");
    headerOffset = static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(0).e_lfanew);
    header = at<IMAGE_NT_HEADERS64>(headerOffset);
    if (header.OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC)
      throw std::runtime_error("The library's file is no 64-bit library of this system.");
  }

  std::vector<std::string> exports() const {
    std::vector<std::string> names;
    const DWORD address = header.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    if (address == 0) return names;
    const auto table = at<IMAGE_EXPORT_DIRECTORY>(offsetOf(address));
    for (DWORD i = 0; i < table.NumberOfNames; ++i)
      names.emplace_back(bytes.c_str() + offsetOf(at<DWORD>(offsetOf(table.AddressOfNames) + i * sizeof(DWORD))));
    for (DWORD i = table.NumberOfNames; i < table.NumberOfFunctions; ++i) names.push_back("#" + std::to_string(i));
    return names;
  }

 private:
  template <class T>
  T at(std::size_t offset) const {
    T value;
    if (offset > bytes.size() || bytes.size() - offset < sizeof value)
      throw std::runtime_error("The library's file ends too early.");
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
  }

  // The offset in the file of an address in the loaded image.
  std::size_t offsetOf(DWORD address) const {
    const std::size_t sections =
        headerOffset + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + header.FileHeader.SizeOfOptionalHeader;
    for (std::size_t i = 0; i < header.FileHeader.NumberOfSections; ++i) {
      const auto section = at<IMAGE_SECTION_HEADER>(sections + i * sizeof(IMAGE_SECTION_HEADER));
      const DWORD inSection = address - section.VirtualAddress;
      if (address >= section.VirtualAddress && inSection < section.SizeOfRawData &&
          section.PointerToRawData + inSection < bytes.size())
        return section.PointerToRawData + inSection;
    }
    throw std::runtime_error("The library's file has an address outside its sections.");
  }

  std::string bytes;
  std::size_t headerOffset = 0;
  IMAGE_NT_HEADERS64 header{};
};

}  // namespace

std::vector<std::string> exportsOf(const std::filesystem::path& library) {
  return Image(Files::realDisk().read(library, std::size_t{1} << 30)).exports();
}

}  // namespace Checking
