// Forbidden names, attributes, and files that other programs have open.
#include "scratch.h"

#include "host/documents/whole_file.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <thread>

using namespace Refhost;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

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

// Runs the work while another program has the file open for some time.
template <class Work>
void whileHeld(const fs::path& file, std::chrono::milliseconds time, const Work& work) {
  auto hold = std::make_unique<Hold>(file);
  std::thread other([&] {
    std::this_thread::sleep_for(time);
    hold.reset();
  });
  work();
  other.join();
}

TEST(RealDisk, WaitsForAProgramThatLooksIntoAFile) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  std::string read;
  whileHeld(path, 60ms, [&] { read = realDisk().read(path, 100); });
  EXPECT_EQ(read, "old");
  whileHeld(path, 60ms, [&] { EXPECT_TRUE(replaceWhole(realDisk(), path, "new")); });
  EXPECT_EQ(contentOf(path), "new");
  whileHeld(path, 60ms, [&] { EXPECT_TRUE(realDisk().remove(path)); });
  EXPECT_FALSE(fs::exists(path));
}

TEST(RealDisk, GivesAFileUpThatAnotherProgramKeeps) {
  const Scratch scratch;
  const auto path = scratch.folder / "marks.xml";
  put(path, "old");
  const auto temporary = scratch.folder / "temporary";
  put(temporary, "new");
  std::string sentence;
  {
    const Hold hold(path);
    sentence = sentenceOf<DiskError>([&] { realDisk().replace(temporary, path); });
  }
  EXPECT_EQ(sentence,
            shownPath(path) + " cannot be written: another program has it open; close it there and try again.");
  EXPECT_EQ(contentOf(path), "old");
}

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

}  // namespace
