// What undo keeps of files, and how it restores them.
#include "files/file_set.h"
#include "host/documents/file_changes.h"
#include "tests/files/forwarding_disk.h"
#include "tests/files/model_disk.h"

#include <gmock/gmock.h>

namespace {

using namespace Refhost;
using Contents = ModelDisk::Contents;
using State = FileChanges::State;

const std::filesystem::path home = "home";
const std::filesystem::path journal = home / "import.journal";
const std::filesystem::path index = home / "overlays" / "index.flo";
const std::filesystem::path form = home / "overlays" / "12345.opa";
const std::filesystem::path picture = home / "overlays" / "12345.bmp";

// A form was added to an index.
const Contents before = {{index, "old index"}};
const Contents after = {{form, "form"}, {index, "new index"}, {picture, "picture"}};

FileChanges addition() {
  FileChanges changes;
  changes.add(index, "old index", "new index");
  changes.add(form, {}, "form");
  changes.add(picture, {}, "picture");
  return changes;
}

std::unique_ptr<ModelDisk> diskWith(const Contents& files) {
  auto disk = std::make_unique<ModelDisk>();
  for (const auto& folder : {home, home / "overlays"}) disk->createFolder(folder);
  for (const auto& [path, bytes] : files) disk->place(path, bytes);
  return disk;
}

// The index with the files that it lists, after the next opening.
Contents opened(const Contents& left) {
  const auto disk = diskWith(left);
  Files::completeFileSet(*disk, journal);
  Contents files = disk->seen();
  std::erase_if(files, [](const auto& file) { return file.first.extension() == ".tmp"; });
  if (files.at(index) == "old index") std::erase_if(files, [](const auto& file) { return file.first != index; });
  return files;
}

// All states that a loss of power may leave.
std::set<Contents> afterLosses(const Contents& start, State wanted) {
  const auto disk = diskWith(start);
  std::set<Contents> left;
  disk->look = [&](const std::set<Contents>& states) {
    for (const Contents& state : states) left.insert(opened(state));
  };
  addition().restore(*disk, journal, wanted);
  return left;
}

TEST(FileChanges, TakeAnActionBackAndDoItAgain) {
  const auto disk = diskWith(after);
  addition().restore(*disk, journal, State::before);
  EXPECT_EQ(disk->seen(), before);
  addition().restore(*disk, journal, State::after);
  EXPECT_EQ(disk->seen(), after);
}

TEST(FileChanges, AreRestoredWholeOrNotAtAllWheneverThePowerFails) {
  EXPECT_EQ(afterLosses(after, State::before), (std::set<Contents>{before, after}));
  EXPECT_EQ(afterLosses(before, State::after), (std::set<Contents>{before, after}));
}

TEST(FileChanges, LeaveEverythingWhenOneFileIsAnother) {
  for (const Contents& other : {Contents{{form, "form"}, {index, "another index"}, {picture, "picture"}},
                                Contents{{form, "form"}, {index, "new index"}}}) {
    const auto disk = diskWith(other);
    EXPECT_THROW(addition().restore(*disk, journal, State::before), ChangedSince);
    EXPECT_EQ(disk->seen(), other);
  }
}

TEST(FileChanges, AreOneWhereAFileChangedTwice) {
  FileChanges changes;
  changes.add(index, "1", "2");
  changes.add(index, "2", "3");
  EXPECT_TRUE(changes.isComplete());
  EXPECT_EQ(changes.bytes(), 2u);
  const auto disk = diskWith({{index, "3"}});
  changes.restore(*disk, journal, State::before);
  EXPECT_EQ(disk->seen(), (Contents{{index, "1"}}));
}

TEST(FileChanges, AreIncompleteWhenAnotherProgramChangedTheFileInBetween) {
  FileChanges changes;
  changes.add(index, "1", "2");
  changes.add(index, "theirs", "3");
  EXPECT_FALSE(changes.isComplete());
  EXPECT_FALSE(changes.isEmpty());
}

TEST(FileChanges, AreIncompleteWhenTheyAreTooLarge) {
  FileChanges changes;
  changes.add(form, {}, std::string(FileChanges::mostBytes, 'x'));
  EXPECT_TRUE(changes.isComplete());
  changes.add(index, {}, "1");
  EXPECT_FALSE(changes.isComplete());
  EXPECT_EQ(changes.bytes(), 0u);
}

TEST(FileChanges, AreIncompleteWhenTheContentBeforeCannotBeRead) {
  class Unreadable final : public ForwardingDisk {
   public:
    using ForwardingDisk::ForwardingDisk;
    std::string read(const Path& file, std::size_t) override {
      throw Files::DiskError(file, "read", std::make_error_code(std::errc::io_error));
    }
  };
  const auto disk = diskWith(before);
  Unreadable unreadable(*disk);
  FileChanges changes;
  EXPECT_EQ(changes.contentBefore(unreadable, form), std::nullopt) << "there is none";
  EXPECT_TRUE(changes.isComplete());
  changes.contentBefore(unreadable, index);
  EXPECT_FALSE(changes.isComplete());
}

TEST(FileChanges, FollowWhatIsWrittenAfterThem) {
  FileChanges changes = addition();
  FileChanges further;
  further.add(index, "new index", "newer index");
  further.add(home / "other", {}, "other");
  changes.extend(State::after, further);
  const auto disk = diskWith({{form, "form"}, {index, "newer index"}, {picture, "picture"}});
  changes.restore(*disk, journal, State::before);
  EXPECT_EQ(disk->seen(), before);
  changes.restore(*disk, journal, State::after);
  EXPECT_EQ(disk->seen().at(index), "newer index");
}

}  // namespace
