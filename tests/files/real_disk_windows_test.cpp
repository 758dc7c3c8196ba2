// Forbidden names, attributes, and files that other programs have open.
#include "files/whole_file.h"
#include "scratch.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <memory>
#include <utility>

namespace fs = std::filesystem;

namespace {

// Opens a file exclusively, as another program might.
class Hold {
 public:
  explicit Hold(const fs::path& file)
      : handle(CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~Hold() { CloseHandle(handle); }
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;

 private:
  HANDLE handle;
};

// What the disk does between two attempts, for as long as this lives.
class Pause {
 public:
  explicit Pause(std::function<void()> pause) : usual(std::exchange(Files::pauseBetweenAttempts, std::move(pause))) {}
  ~Pause() { Files::pauseBetweenAttempts = usual; }
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;

 private:
  std::function<void()> usual;
};

// Runs the work while another program has the file open, and closes it after the third attempt.
template <class Work>
void whileHeld(const fs::path& file, const Work& work) {
  auto hold = std::make_unique<Hold>(file);
  int pauses = 0;
  const Pause pause([&] {
    if (++pauses == 3) hold.reset();
  });
  work();
  EXPECT_EQ(pauses, 3);
}

TEST(RealDisk, WaitsForAProgramThatLooksIntoAFile) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  std::string read;
  whileHeld(path, [&] { read = Files::realDisk().read(path, 100); });
  EXPECT_EQ(read, "old");
  whileHeld(path, [&] { EXPECT_TRUE(Files::replaceWhole(Files::realDisk(), path, "new")); });
  EXPECT_EQ(contentOf(path), "new");
  whileHeld(path, [&] { EXPECT_TRUE(Files::realDisk().remove(path)); });
  EXPECT_FALSE(fs::exists(path));
}

TEST(RealDisk, GivesAFileUpThatAnotherProgramKeeps) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  const auto temporary = scratch.folder / "temporary";
  put(temporary, "new");
  std::string sentence;
  int pauses = 0;
  {
    const Hold hold(path);
    const Pause pause([&] { ++pauses; });
    sentence = sentenceOf<Files::DiskError>([&] { Files::realDisk().replace(temporary, path); });
  }
  EXPECT_EQ(sentence,
            Files::shownPath(path) + " cannot be written: another program has it open; close it there and try again.");
  EXPECT_EQ(pauses, 49);
  EXPECT_EQ(contentOf(path), "old");
}

TEST(RealDisk, RefusesNamesThatStandForDevicesOrAreChanged) {
  const Scratch scratch;
  for (const char* name : {"NUL", "con.xml", "marks.xml.", "marks.xml ", "marks.xml:stream"}) {
    const std::string sentence =
        sentenceOf<Files::DiskError>([&] { Files::replaceWhole(Files::realDisk(), scratch.folder / name, "bytes"); });
    EXPECT_NE(sentence.find("choose another name."), sentence.npos) << name;
    EXPECT_EQ(Files::realDisk().kind(scratch.folder / name), Files::EntryKind::none);
  }
  EXPECT_TRUE(namesIn(scratch.folder).empty());
}

TEST(RealDisk, DoesNotReplaceAReadOnlyFile) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::remove);
  const std::string sentence =
      sentenceOf<Files::DiskError>([&] { Files::replaceWhole(Files::realDisk(), path, "new"); });
  EXPECT_NE(sentence.find("change the permissions"), sentence.npos) << sentence;
  EXPECT_EQ(contentOf(path), "old");
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::add);
}

}  // namespace
