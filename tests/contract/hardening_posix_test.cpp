// What compiler and linker did to the built files against the use of memory errors.
#include <gmock/gmock.h>

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using testing::Contains;
using testing::HasSubstr;

// A 64-bit ELF file.
class Elf {
 public:
  explicit Elf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(stream), {});
    header = at<Elf64_Ehdr>(0);
  }

  template <class T>
  T at(std::size_t offset) const {
    T value{};
    if (offset + sizeof value <= bytes.size()) std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
  }

  template <class T>
  std::vector<T> table(std::size_t offset, std::size_t size) const {
    std::vector<T> entries;
    for (std::size_t i = 0; i + sizeof(T) <= size; i += sizeof(T)) entries.push_back(at<T>(offset + i));
    return entries;
  }

  std::vector<Elf64_Phdr> segments() const {
    return table<Elf64_Phdr>(header.e_phoff, header.e_phnum * sizeof(Elf64_Phdr));
  }
  std::vector<Elf64_Shdr> sections() const {
    return table<Elf64_Shdr>(header.e_shoff, header.e_shnum * sizeof(Elf64_Shdr));
  }

  // The value of a tag of the dynamic section; 0 when it is not there.
  std::uint64_t dynamic(std::int64_t tag) const {
    for (const Elf64_Phdr& segment : segments())
      if (segment.p_type == PT_DYNAMIC)
        for (const Elf64_Dyn& entry : table<Elf64_Dyn>(segment.p_offset, segment.p_filesz))
          if (entry.d_tag == tag) return entry.d_un.d_val;
    return 0;
  }

  // The names of the symbols that are taken from other libraries.
  std::vector<std::string> imports() const {
    std::vector<std::string> names;
    for (const Elf64_Shdr& section : sections()) {
      if (section.sh_type != SHT_DYNSYM) continue;
      const std::size_t texts = sections()[section.sh_link].sh_offset;
      for (const Elf64_Sym& symbol : table<Elf64_Sym>(section.sh_offset, section.sh_size))
        if (symbol.st_shndx == SHN_UNDEF) names.emplace_back(bytes.data() + texts + symbol.st_name);
    }
    return names;
  }

  std::string code() const {
    std::string all;
    for (const Elf64_Shdr& section : sections())
      if (section.sh_type == SHT_PROGBITS && (section.sh_flags & SHF_EXECINSTR) != 0)
        all += bytes.substr(section.sh_offset, section.sh_size);
    return all;
  }

  std::string bytes;
  Elf64_Ehdr header;
};

class Hardening : public testing::TestWithParam<const char*> {
 protected:
  const Elf file{GetParam()};
};

TEST_P(Hardening, AddressesOfFunctionsAreReadOnlyFromTheStart) {
  int readOnly = 0;
  for (const Elf64_Phdr& segment : file.segments()) readOnly += segment.p_type == PT_GNU_RELRO;
  EXPECT_EQ(readOnly, 1);
  EXPECT_TRUE((file.dynamic(DT_FLAGS) & DF_BIND_NOW) != 0 || (file.dynamic(DT_FLAGS_1) & DF_1_NOW) != 0);
}

TEST_P(Hardening, NothingWritableIsExecutable) {
  int stacks = 0;
  for (const Elf64_Phdr& segment : file.segments()) {
    EXPECT_NE(segment.p_flags & (PF_W | PF_X), unsigned{PF_W | PF_X}) << segment.p_type;
    stacks += segment.p_type == PT_GNU_STACK;
  }
  EXPECT_EQ(stacks, 1);
}

TEST_P(Hardening, ItsPlaceInMemoryIsDrawnAtRandom) { EXPECT_EQ(file.header.e_type, ET_DYN); }

TEST_P(Hardening, StackIsChecked) { EXPECT_THAT(file.imports(), Contains("__stack_chk_fail")); }

#ifdef __CET__
TEST_P(Hardening, IndirectJumpsLeadToMarkedPlacesOnly) { EXPECT_THAT(file.code(), HasSubstr("\xF3\x0F\x1E\xFA")); }
#endif

INSTANTIATE_TEST_SUITE_P(BuiltFiles, Hardening,
                         testing::Values(KILN_FILE, PLUGIN_FILE, WINDOW_FILE, PICTURES_FILE, PRINTERS_FILE,
                                         ARCHIVES_FILE));

TEST(HardenedProgram, IsBuiltToBeMoved) { EXPECT_NE(Elf(KILN_FILE).dynamic(DT_FLAGS_1) & DF_1_PIE, 0u); }

#ifdef IS_OPTIMISED_CODE_CHECKED
TEST(HardenedProgram, ChecksIndexesOfContainers) {
  for (const char* file : {KILN_FILE, PLUGIN_FILE})
    EXPECT_THAT(Elf(file).imports(), Contains(HasSubstr("glibcxx_assert_fail"))) << file;
}

TEST(HardenedProgram, ChecksTheSizesOfBuffers) {
  EXPECT_THAT(Elf(KILN_FILE).imports(), Contains(testing::EndsWith("_chk")));
  EXPECT_THAT(Elf(PLUGIN_FILE).imports(), Contains("__snprintf_chk"));
}
#endif

}  // namespace
