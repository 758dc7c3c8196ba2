#include "scratch.h"

#include "host/documents/whole_file.h"

#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace Refhost;
namespace fs = std::filesystem;

namespace {

TEST(RealDisk, ReadsNoMoreThanItMay) {
  const Scratch scratch;
  put(scratch.folder / "ten", "0123456789");
  EXPECT_EQ(realDisk().read(scratch.folder / "ten", 10), "0123456789");
  EXPECT_THROW(realDisk().read(scratch.folder / "ten", 9), DiskError);
}

TEST(RealDisk, SaysWhichFileAndWhy) {
  const Scratch scratch;
  const auto none = scratch.folder / "none";
  EXPECT_EQ(sentenceOf<DiskError>([&] { realDisk().read(none, 10); }),
            shownPath(none) + " cannot be read: there is no such file or folder.");
  EXPECT_EQ(sentenceOf<DiskError>([&] { realDisk().read(scratch.folder, 10); }),
            shownPath(scratch.folder) + " cannot be read: it is a folder.");
}

TEST(RealDisk, CreatesNoFileWhereThereIsOne) {
  const Scratch scratch;
  put(scratch.folder / "there", "another program's");
  EXPECT_THROW(realDisk().create(scratch.folder / "there", scratch.folder / "marks.xml"), DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "there"), "another program's");
}

TEST(RealDisk, RemovesFilesOnly) {
  const Scratch scratch;
  put(scratch.folder / "file", "");
  EXPECT_TRUE(realDisk().remove(scratch.folder / "file"));
  EXPECT_FALSE(realDisk().remove(scratch.folder / "file"));
  EXPECT_THROW(realDisk().remove(scratch.folder), DiskError);
}

TEST(RealDisk, MakesAFolderThatIsThereOrNot) {
  const Scratch scratch;
  realDisk().createFolder(scratch.folder / "new");
  realDisk().createFolder(scratch.folder / "new");
  EXPECT_EQ(realDisk().kind(scratch.folder / "new"), EntryKind::folder);
  put(scratch.folder / "file", "");
  EXPECT_THROW(realDisk().createFolder(scratch.folder / "file"), DiskError);
}

TEST(RealDisk, TakesNamesOfEveryScript) {
  const Scratch scratch;
  const auto path = scratch.folder / pathFromText(u"Entw\u00FCrfe \u4E0B\u66F8\u304D \U0001F5A8.xml");
  EXPECT_TRUE(replaceWhole(realDisk(), path, "bytes"));
  EXPECT_EQ(realDisk().read(path, 100), "bytes");
  ASSERT_EQ(realDisk().entries(scratch.folder).size(), 1u);
  EXPECT_EQ(realDisk().entries(scratch.folder).front().name, path.filename());
}

TEST(RealDisk, TakesLongPaths) {
  const Scratch scratch;
  auto folder = scratch.folder;
  for (int i = 0; i < 4; ++i) {
    folder /= std::string(90, 'a');
    realDisk().createFolder(folder);
  }
  EXPECT_TRUE(replaceWhole(realDisk(), folder / "marks.xml", "bytes"));
  EXPECT_FALSE(replaceWhole(realDisk(), folder / "marks.xml", "bytes"));
  EXPECT_EQ(realDisk().entries(folder).size(), 1u);
  EXPECT_TRUE(realDisk().remove(folder / "marks.xml"));
}

// Whoever reads up to a zero would find another file.
TEST(RealDisk, RefusesAZeroInAName) {
  const Scratch scratch;
  put(scratch.folder / "other", "a person's own");
  const auto path = scratch.folder / pathFromText(std::u16string(u"other\0.xml", 10));
  EXPECT_EQ(realDisk().kind(path), EntryKind::none);
  EXPECT_THROW(realDisk().read(path, 100), DiskError);
  EXPECT_THROW(realDisk().remove(path), DiskError);
  EXPECT_THROW(replaceWhole(realDisk(), path, "bytes"), DiskError);
  EXPECT_EQ(contentOf(scratch.folder / "other"), "a person's own");
}

#if defined(_WIN32)

TEST(RealDisk, RefusesNamesThatStandForDevicesOrAreChanged) {
  const Scratch scratch;
  for (const char* name : {"NUL", "con.xml", "marks.xml.", "marks.xml ", "marks.xml:stream"}) {
    const std::string sentence =
        sentenceOf<DiskError>([&] { replaceWhole(realDisk(), scratch.folder / name, "bytes"); });
    EXPECT_NE(sentence.find("choose another name."), sentence.npos) << name;
    EXPECT_EQ(realDisk().kind(scratch.folder / name), EntryKind::none);
  }
  EXPECT_TRUE(namesIn(scratch.folder).empty());
}

TEST(RealDisk, DoesNotReplaceAReadOnlyFile) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::remove);
  const std::string sentence = sentenceOf<DiskError>([&] { replaceWhole(realDisk(), path, "new"); });
  EXPECT_NE(sentence.find("change the permissions"), sentence.npos) << sentence;
  EXPECT_EQ(contentOf(path), "old");
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::add);
}

#else

TEST(RealDisk, ReplacesALinkAndNotWhatItPointsTo) {
  const Scratch scratch;
  put(scratch.folder / "elsewhere", "a person's own");
  fs::create_symlink("elsewhere", scratch.folder / "marks.xml");
  EXPECT_TRUE(replaceWhole(realDisk(), scratch.folder / "marks.xml", "bytes"));
  EXPECT_EQ(contentOf(scratch.folder / "elsewhere"), "a person's own");
  EXPECT_FALSE(fs::is_symlink(scratch.folder / "marks.xml"));
  EXPECT_EQ(contentOf(scratch.folder / "marks.xml"), "bytes");
}

TEST(RealDisk, RemovesALinkAndNotWhatItPointsTo) {
  const Scratch scratch;
  put(scratch.folder / "elsewhere", "a person's own");
  fs::create_symlink("elsewhere", scratch.folder / "link");
  EXPECT_TRUE(realDisk().remove(scratch.folder / "link"));
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"elsewhere"});
}

TEST(RealDisk, KeepsTheOldFilesPermissions) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  for (const int bits : {0600, 0666}) {
    fs::permissions(path, fs::perms(bits));
    replaceWhole(realDisk(), path, "new " + std::to_string(bits));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(bits));
  }
}

TEST(RealDisk, NeitherWaitsForAPipeNorReplacesIt) {
  const Scratch scratch;
  const auto pipe = scratch.folder / "marks.xml";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(realDisk().kind(pipe), EntryKind::other);
  EXPECT_THROW(realDisk().read(pipe, 100), DiskError);
  EXPECT_THROW(replaceWhole(realDisk(), pipe, "bytes"), DiskError);
  EXPECT_TRUE(fs::is_fifo(pipe));
}

// Runs in a process without an administrator's rights, for whom nothing is write-protected.
template <class Work>
bool asOrdinaryUser(const Work& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isOrdinary = ::geteuid() != 0 || ::setuid(65534) == 0;
    ::_exit(isOrdinary && work() ? 0 : 1);
  }
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

constexpr std::string_view permissionAdvice =
    "cannot be written: this user has no permission; change the permissions of the file or its folder and try again.";

bool isRefusedForPermission(const fs::path& path) {
  return sentenceOf<DiskError>([&] { replaceWhole(realDisk(), path, "new"); }).ends_with(permissionAdvice);
}

TEST(RealDisk, SaysThatAFolderIsWriteProtected) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  fs::permissions(path, fs::perms(0666));
  fs::permissions(scratch.folder, fs::perms(0555));
  EXPECT_TRUE(asOrdinaryUser([&] { return isRefusedForPermission(path); }));
  fs::permissions(scratch.folder, fs::perms(0755));
  EXPECT_EQ(contentOf(path), "old");
}

TEST(RealDisk, DoesNotReplaceAReadOnlyFile) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  fs::permissions(path, fs::perms(0444));
  fs::permissions(scratch.folder, fs::perms(0777));
  EXPECT_TRUE(asOrdinaryUser([&] { return isRefusedForPermission(path); }));
  EXPECT_EQ(contentOf(path), "old");
  EXPECT_EQ(namesIn(scratch.folder), std::vector<std::string>{"marks.xml"});
}

#endif

}  // namespace
