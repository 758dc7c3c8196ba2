// The import and export tables of the Windows binaries, read from the files.
#include <gmock/gmock.h>

#include <windows.h>

#include <winver.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSubsetOf;
using testing::Not;

// A 64-bit PE file.
class Image {
 public:
  explicit Image(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(stream), {});
    const auto dos = at<IMAGE_DOS_HEADER>(0);
    headerOffset = static_cast<std::size_t>(dos.e_lfanew);
    header = at<IMAGE_NT_HEADERS64>(headerOffset);
  }

  std::vector<std::string> exports() const {
    std::vector<std::string> names;
    const std::size_t offset = directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (offset == 0) return names;
    const auto table = at<IMAGE_EXPORT_DIRECTORY>(offset);
    const std::size_t first = offsetOf(table.AddressOfNames);
    for (DWORD i = 0; i < table.NumberOfNames; ++i)
      names.push_back(textAt(offsetOf(at<DWORD>(first + i * sizeof(DWORD)))));
    EXPECT_EQ(table.NumberOfNames, table.NumberOfFunctions);  // none without a name
    return names;
  }

  // The imported libraries, in lower case.
  std::vector<std::string> imports() const {
    std::vector<std::string> names;
    for (const auto& entry : importTables()) {
      std::string name = textAt(offsetOf(entry.Name));
      for (char& letter : name) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
      names.push_back(name);
    }
    return names;
  }

  std::vector<std::string> importedFunctions() const {
    std::vector<std::string> names;
    for (const auto& entry : importTables())
      for (std::size_t offset = offsetOf(entry.OriginalFirstThunk);; offset += sizeof(ULONGLONG)) {
        const auto function = at<ULONGLONG>(offset);
        if (function == 0) break;
        EXPECT_FALSE(IMAGE_SNAP_BY_ORDINAL64(function));
        names.push_back(textAt(offsetOf(static_cast<DWORD>(function)) + sizeof(WORD)));
      }
    return names;
  }

  bool isStripped() const { return header.FileHeader.NumberOfSymbols == 0; }

  // When it was built; 0 for unknown.
  DWORD timestamp() const { return header.FileHeader.TimeDateStamp; }
  std::size_t size() const { return bytes.size(); }

 private:
  template <class T>
  T at(std::size_t offset) const {
    T value;
    if (offset + sizeof value > bytes.size()) throw std::runtime_error("The file ends too early.");
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
  }

  std::vector<IMAGE_IMPORT_DESCRIPTOR> importTables() const {
    std::vector<IMAGE_IMPORT_DESCRIPTOR> tables;
    for (std::size_t offset = directory(IMAGE_DIRECTORY_ENTRY_IMPORT);; offset += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
      const auto table = at<IMAGE_IMPORT_DESCRIPTOR>(offset);
      if (table.Name == 0) return tables;
      tables.push_back(table);
    }
  }

  std::string textAt(std::size_t offset) const { return bytes.c_str() + offset; }

  // The file offset of an address in the loaded image.
  std::size_t offsetOf(DWORD address) const {
    const std::size_t sections =
        headerOffset + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + header.FileHeader.SizeOfOptionalHeader;
    for (std::size_t i = 0; i < header.FileHeader.NumberOfSections; ++i) {
      const auto section = at<IMAGE_SECTION_HEADER>(sections + i * sizeof(IMAGE_SECTION_HEADER));
      if (address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData)
        return address - section.VirtualAddress + section.PointerToRawData;
    }
    throw std::runtime_error("An address lies in no section.");
  }

  std::size_t directory(int index) const {
    const DWORD address = header.OptionalHeader.DataDirectory[index].VirtualAddress;
    return address == 0 ? 0 : offsetOf(address);
  }

  std::string bytes;
  std::size_t headerOffset = 0;
  IMAGE_NT_HEADERS64 header{};
};

// A string of the version resource.
std::wstring versionText(const char* file, const std::wstring& name) {
  const std::wstring path = std::filesystem::path(file).wstring();
  std::vector<char> resource(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  void* text = nullptr;
  UINT length = 0;
  const bool isFound =
      GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()) != 0 &&
      VerQueryValueW(resource.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text, &length) != 0;
  return isFound ? std::wstring(static_cast<const wchar_t*>(text)) : std::wstring();
}

bool hasIcon(const char* file) {
  const HMODULE image = LoadLibraryExW(std::filesystem::path(file).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  const bool isFound = FindResourceW(image, MAKEINTRESOURCEW(1), RT_GROUP_ICON) != nullptr;
  FreeLibrary(image);
  return isFound;
}

TEST(PluginLibrary, ExportsCreatePluginAndNothingElse) {
  EXPECT_THAT(Image(PLUGIN_FILE).exports(), ElementsAre("createPlugin"));
}

// msvcrt.dll is a part of every Windows.
TEST(PluginLibrary, AsksForTheSystemsOwnLibrariesAlone) {
  const std::vector<std::string> system = {"gdi32.dll", "kernel32.dll", "msvcrt.dll", "user32.dll"};
  EXPECT_THAT(Image(PLUGIN_FILE).imports(), IsSubsetOf(system));
}

// It runs in other people's processes, where virus scanners look for these.
TEST(PluginLibrary, NeitherStopsThreadsNorSetsClocksNorCatchesTheProcesssExceptions) {
  EXPECT_THAT(Image(PLUGIN_FILE).importedFunctions(),
              AllOf(Contains("GetDeviceCaps"), Not(Contains(AnyOf("SuspendThread", "SetThreadContext", "SetSystemTime",
                                                                  "AddVectoredExceptionHandler")))));
}

TEST(LibraryAndCommand, DoNotDependOnTheTimeOfTheirBuild) {
  EXPECT_EQ(Image(PLUGIN_FILE).timestamp(), 0U);
  EXPECT_EQ(Image(KILN_FILE).timestamp(), 0U);
}

TEST(PluginLibrary, IsStrippedAndOfAMegabyteAtMost) {
  const Image library(PLUGIN_FILE);
  EXPECT_TRUE(library.isStripped());
  EXPECT_LE(library.size(), 1'048'576U);
}

TEST(Command, AsksForTheSystemsOwnLibrariesAlone) {
  const std::vector<std::string> system = {"advapi32.dll", "gdi32.dll",   "kernel32.dll", "msvcrt.dll",
                                           "ole32.dll",    "shell32.dll", "user32.dll"};
  EXPECT_THAT(Image(KILN_FILE).imports(), IsSubsetOf(system));
}

TEST(LibraryAndCommand, SayWhatTheyAre) {
  for (const char* file : {PLUGIN_FILE, KILN_FILE}) {
    EXPECT_EQ(versionText(file, L"ProductName"), L"Zorvu Effects");
    EXPECT_EQ(versionText(file, L"ProductVersion"), L"" PRODUCT_VERSION);
    EXPECT_EQ(versionText(file, L"OriginalFilename"), std::filesystem::path(file).filename().wstring());
    EXPECT_FALSE(versionText(file, L"FileDescription").empty());
    EXPECT_EQ(versionText(file, L"CompanyName"), L"The Zorvu Effects project");
    EXPECT_EQ(versionText(file, L"LegalCopyright"), L"All rights reserved; no licence is granted yet");
    EXPECT_TRUE(hasIcon(file));
  }
}

}  // namespace
