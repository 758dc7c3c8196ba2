// Untrusted archives: rejection, and that nothing is written outside the folder.
#include "files/temporary_folder.h"
#include "host/profiles/archive.h"
#include "host/profiles/archive_names.h"
#include "tests/profile/profile_world.h"
#include "tests/profile/zip.h"

#include <gmock/gmock.h>

#include <functional>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

using namespace Refhost;
using namespace Testing;
using testing::AllOf;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using Path = std::filesystem::path;

class Archive : public testing::Test {
 protected:
  // The error message for the archive; empty when it is accepted.
  std::string refusal(const std::string& bytes, const ArchiveLimits& limits = {}) {
    writeFile(file, bytes);
    std::filesystem::remove_all(to);
    std::filesystem::create_directories(to);
    try {
      unpack(file, to, limits, goOn);
      return {};
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }
  std::string refusal(const std::vector<Zip::Entry>& entries, const ArchiveLimits& limits = {}) {
    return refusal(Zip::archive(entries), limits);
  }

  void packTo(const Path& target, const Progress& progress = goOn) {
    pack(Files::realDisk(), from, "profile.xml", target, {}, progress);
  }

  Files::TemporaryFolder folder;
  Path from = folder.path() / "from";
  Path to = folder.path() / "to";
  Path file = folder.path() / "archive.zip";
};

TEST_F(Archive, BringsBackWhatWasPacked) {
  std::string large(300'000, 'x');
  for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>(i * 7919 >> 3);
  put(from / "profile.xml", "<Profile/>");
  put(from / "overlays" / "12345.opa", large);
  put(from / "overlays" / "12345.bmp", "");
  packTo(file);
  std::filesystem::create_directories(to);
  unpack(file, to, {}, goOn);
  EXPECT_EQ(treeOf(to), treeOf(from));
}

TEST_F(Archive, OfTheSameContentHasTheSameBytes) {
  put(from / "b", "two");
  put(from / "profile.xml", "first");
  packTo(file);
  std::filesystem::remove_all(from);
  put(from / "profile.xml", "first");
  put(from / "b", "two");
  packTo(folder.path() / "second.zip");
  EXPECT_EQ(bytesOf(file), bytesOf(folder.path() / "second.zip"));
  EXPECT_LT(bytesOf(file).find("profile.xml"), bytesOf(file).find("b"));
}

TEST_F(Archive, MadeByHandIsAnArchive) {
  EXPECT_EQ(refusal({{"overlays/", "", 040755}, {"overlays/a", "bytes"}, {"b", ""}}), "");
  EXPECT_EQ(treeOf(to), (Tree{{"overlays/", ""}, {"overlays/a", "bytes"}, {"b", ""}}));
}

TEST_F(Archive, WithNamesThatLeadElsewhereIsRefused) {
  for (const char* name : {"../a",
                           "a/../../b",
                           "a/..",
                           "..",
                           ".",
                           "./a",
                           "/a",
                           "/",
                           "a//b",
                           "..\\a",
                           "a\\..\\..\\b",
                           "C:a",
                           "C:\\a",
                           "\\\\server\\a",
                           "a:stream",
                           "con",
                           "overlays/NUL.opa",
                           "a ",
                           "a.",
                           "a\nb",
                           "a\x7f",
                           "caf\xc3\xa9",
                           ""})
    EXPECT_THAT(refusal({{"before", "b"}, {name, "bytes"}}), AllOf(StartsWith(file.string()), HasSubstr("refused")))
        << name;
  EXPECT_THAT(refusal({{std::string(201, 'a'), "bytes"}}), HasSubstr("too long"));
  EXPECT_THAT(treeOf(folder.path()), testing::UnorderedElementsAre(testing::Key("archive.zip"), testing::Key("to/")));
}

TEST_F(Archive, WithLinksAndDevicesIsRefused) {
  EXPECT_THAT(refusal({{"overlays/12345.opa", "/etc/passwd", 0120777}}), HasSubstr("is a link"));
  for (const unsigned kind : {0020000U, 0060000U, 0140000U})
    EXPECT_THAT(refusal({{"overlays/12345.opa", "", kind | 0644U}}), HasSubstr("neither a file nor a folder")) << kind;
  EXPECT_THAT(refusal({{"overlays", folder.path().string(), 0120777}, {"overlays/escaped", "x"}}), HasSubstr("link"));
  EXPECT_THAT(treeOf(to), IsEmpty());
}

TEST_F(Archive, WithNamesThatDifferOnlyInCaseIsRefused) {
  EXPECT_THAT(refusal({{"overlays/a.opa", "1"}, {"overlays/A.opa", "2"}}), HasSubstr("differ only in case"));
  EXPECT_THAT(refusal({{"Overlays/a.opa", "1"}, {"overlays/a.opa", "2"}}), HasSubstr("differ only in case"));
  EXPECT_THAT(refusal({{"a", "1"}, {"a", "2"}}), HasSubstr("there twice"));
}

TEST_F(Archive, WithAFileWhereAFolderBelongsIsRefused) {
  EXPECT_THAT(refusal({{"overlays", "1"}, {"overlays/a", "2"}}), Not(IsEmpty()));
}

TEST_F(Archive, ThatIsEncryptedIsRefused) {
  EXPECT_THAT(refusal({{"a", "0123456789abcdef", 0100644, std::nullopt, true}}), HasSubstr("encrypted"));
}

TEST_F(Archive, OfTooManyEntriesIsRefused) {
  const ArchiveLimits limits;
  std::vector<Zip::Entry> entries(limits.entries + 1);
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i].name = std::to_string(i) + "/";
  for (auto& entry : entries) entry.mode = 040755;
  EXPECT_THAT(refusal(entries), HasSubstr("more than 10000 entries"));
  entries.pop_back();
  EXPECT_EQ(refusal(entries), "");
}

// The library would read it into memory completely: ten million entries take gigabytes.
TEST_F(Archive, WithATableOfContentsBeyondMeasureIsRefusedBeforeItIsRead) {
  std::vector<Zip::Entry> entries(100'000);
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i].name = std::to_string(i);
  EXPECT_THAT(refusal(entries), HasSubstr("table of contents is too long"));
}

TEST_F(Archive, ThatSaysItUnpacksToAHundredGigabytesIsRefused) {
  EXPECT_THAT(refusal({{"a", "x", 0100644, std::uint64_t{100} << 30}}), HasSubstr("more than a profile can hold"));
  EXPECT_THAT(treeOf(to), IsEmpty());
}

TEST_F(Archive, ThatUnpacksToMoreThanTheLimitsIsRefused) {
  const ArchiveLimits limits{10, 1000, 1500};
  put(from / "a", std::string(1001, 'x'));
  packTo(file);
  EXPECT_THAT(refusal(bytesOf(file), limits), HasSubstr("more than a profile can hold"));
  put(from / "a", std::string(1000, 'x'));
  put(from / "b", std::string(501, 'x'));
  packTo(file);
  EXPECT_THAT(refusal(bytesOf(file), limits), HasSubstr("more than a profile can hold"));
  put(from / "b", std::string(500, 'x'));
  packTo(file);
  EXPECT_EQ(refusal(bytesOf(file), limits), "");
}

// A megabyte of zeros is a kilobyte in the archive, which claims a size of ten bytes.
TEST_F(Archive, ThatLiesAboutItsSizesIsRefused) {
  put(from / "a", std::string(1 << 20, '\0'));
  packTo(file);
  std::string bytes = bytesOf(file);
  std::string said;
  Zip::append(said, 1 << 20, 4);
  std::string lie;
  Zip::append(lie, 10, 4);
  std::size_t lies = 0;
  for (std::size_t at = bytes.find(said); at != bytes.npos; at = bytes.find(said, at)) {
    bytes.replace(at, 4, lie);
    ++lies;
  }
  ASSERT_GE(lies, 1U);
  EXPECT_THAT(refusal(bytes, {10, 1000, 1000}), Not(IsEmpty()));
  for (const auto& [name, content] : treeOf(to)) EXPECT_LE(content.size(), 1000U);
}

TEST_F(Archive, CutOffAnywhereIsRefused) {
  put(from / "profile.xml", "<Profile/>");
  put(from / "b", "some more bytes");
  packTo(file);
  const std::string bytes = bytesOf(file);
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_THAT(refusal(bytes.substr(0, length)), HasSubstr("refused as a profile")) << length;
  EXPECT_EQ(refusal(bytes), "");
}

TEST_F(Archive, WithAnyByteChangedIsRefusedOrHoldsWhatItHeld) {
  put(from / "profile.xml", "<Profile/>");
  put(from / "b", "some more bytes");
  packTo(file);
  const std::string bytes = bytesOf(file);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string changed = bytes;
    changed[at] = static_cast<char>(changed[at] ^ 0x41);
    if (!refusal(changed).empty()) continue;
    for (const auto& [name, content] : treeOf(to))
      EXPECT_THAT(content, AnyOf("", "<Profile/>", "some more bytes")) << at;
  }
  EXPECT_THAT(treeOf(folder.path() / "outside"), IsEmpty());
}

TEST_F(Archive, ThatIsNoneIsRefused) {
  EXPECT_THAT(refusal(std::string()), HasSubstr("cannot be read"));
  EXPECT_THAT(refusal(std::string("%PDF-1.7\n")), HasSubstr("cannot be read"));
  EXPECT_THROW(unpack(folder.path() / "none.zip", to, {}, goOn), std::runtime_error);
  EXPECT_THROW(unpack(folder.path(), to, {}, goOn), std::runtime_error);
#ifndef _WIN32
  ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  EXPECT_THROW(unpack(folder.path() / "pipe", to, {}, goOn), std::runtime_error);
#endif
}

TEST_F(Archive, ThatIsStoppedWhileItIsPackedLeavesTheFileAsItWas) {
  put(from / "profile.xml", std::string(1 << 20, 'x'));
  writeFile(file, "as it was");
  for (int last = 0; last < 16; ++last) {
    int calls = 0;
    EXPECT_THROW(packTo(file, [&](int, int) { return calls++ < last; }), Stopped);
  }
  EXPECT_EQ(treeOf(folder.path()).size(), 3U);  // only the folder, the file in it, and the archive
  EXPECT_EQ(bytesOf(file), "as it was");
}

TEST_F(Archive, TellsHowFarItIs) {
  put(from / "profile.xml", std::string(1 << 20, 'x'));
  std::vector<int> steps;
  packTo(file, [&](int done, int total) {
    EXPECT_EQ(total, 1024);
    steps.push_back(done);
    return true;
  });
  EXPECT_EQ(steps.size(), 16U);
  EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
  std::filesystem::create_directories(to);
  int calls = 0;
  EXPECT_THROW(unpack(file, to, {}, [&](int done, int total) { return done <= total && ++calls < 5; }), Stopped);
  EXPECT_EQ(calls, 5);
}

TEST_F(Archive, OfMoreThanAProfileCanHoldIsNotPacked) {
  put(from / "a", std::string(11, 'x'));
  EXPECT_THROW(pack(Files::realDisk(), from, "a", file, {10, 10, 100}, goOn), std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Archive, ThatCannotBeWrittenNamesTheFile) {
  put(from / "a", "x");
  try {
    packTo(folder.path() / "none" / "archive.zip");
    FAIL() << "written";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("archive.zip"));
  }
}

TEST(ArchiveNames, ArePlainOnEverySystem) {
  for (const char* name : {"profile.xml", "overlays/", "overlays/12345.opa", "a b/c"})
    EXPECT_EQ(archiveNameProblem(name), "") << name;
}

}  // namespace
