#include "check/exports.h"
#include "files/disk.h"

#include <elf.h>

#include <cstring>
#include <stdexcept>

namespace Checking {
namespace {

template <class T>
T at(const std::string& bytes, std::size_t offset) {
  T value;
  if (offset > bytes.size() || bytes.size() - offset < sizeof value)
    throw std::runtime_error("The library's file ends too early.");
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

}  // namespace

std::vector<std::string> exportsOf(const std::filesystem::path& library) {
  const std::string bytes = Files::realDisk().read(library, std::size_t{1} << 30);
  if (!bytes.starts_with(ELFMAG) || at<Elf64_Ehdr>(bytes, 0).e_ident[EI_CLASS] != ELFCLASS64)
    throw std::runtime_error("The library's file is no 64-bit library of this system.");
  const auto header = at<Elf64_Ehdr>(bytes, 0);
  std::vector<std::string> names;
  for (unsigned i = 0; i < header.e_shnum; ++i) {
    const auto section = at<Elf64_Shdr>(bytes, header.e_shoff + i * sizeof(Elf64_Shdr));
    if (section.sh_type != SHT_DYNSYM) continue;
    const auto texts = at<Elf64_Shdr>(bytes, header.e_shoff + section.sh_link * sizeof(Elf64_Shdr));
    for (std::size_t offset = 0; offset < section.sh_size; offset += sizeof(Elf64_Sym)) {
      const auto symbol = at<Elf64_Sym>(bytes, section.sh_offset + offset);
      const std::size_t name = texts.sh_offset + symbol.st_name;
      if (symbol.st_shndx != SHN_UNDEF && name < bytes.size()) names.emplace_back(bytes.c_str() + name);
    }
  }
  return names;
}

}  // namespace Checking
