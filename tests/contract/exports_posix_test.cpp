// The built library's symbol table.
#include <gtest/gtest.h>

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

template <class T>
T at(const std::string& bytes, std::size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// The names of the dynamic symbols that a 64-bit ELF library defines.
std::vector<std::string> definedSymbols(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  const auto header = at<Elf64_Ehdr>(bytes, 0);
  std::vector<std::string> names;
  for (unsigned i = 0; i < header.e_shnum; ++i) {
    const auto section = at<Elf64_Shdr>(bytes, header.e_shoff + i * sizeof(Elf64_Shdr));
    if (section.sh_type != SHT_DYNSYM) continue;
    const auto texts = at<Elf64_Shdr>(bytes, header.e_shoff + section.sh_link * sizeof(Elf64_Shdr));
    for (std::size_t offset = 0; offset < section.sh_size; offset += sizeof(Elf64_Sym)) {
      const auto symbol = at<Elf64_Sym>(bytes, section.sh_offset + offset);
      if (symbol.st_shndx != SHN_UNDEF) names.emplace_back(bytes.data() + texts.sh_offset + symbol.st_name);
    }
  }
  return names;
}

TEST(PluginLibrary, ExportsCreatePluginAndNothingElse) {
  EXPECT_EQ(definedSymbols(PLUGIN_FILE), std::vector<std::string>{"createPlugin"});
}

}  // namespace
