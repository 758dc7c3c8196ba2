#include "press/job/write_behind.h"
#include "tests/press/small_disk.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <system_error>

using Files::PendingFile;
using Files::realDisk;
using Press::WriteBehind;
using testing::IsEmpty;

namespace {

// A text of this length without repetition.
std::string text(std::size_t size) {
  std::string made;
  while (made.size() < size) made += std::to_string(made.size()) + ' ';
  made.resize(size);
  return made;
}

}  // namespace

TEST(WriteBehind, WritesEverythingInOrder) {
  const TestFolder folder;
  PendingFile file(realDisk(), folder / "out");
  WriteBehind out(file);
  const std::string all = text(30'000'000);
  std::size_t done = 0;
  for (const std::size_t size :
       std::initializer_list<std::size_t>{0, 1, 65'535, 1, 65'536, 65'537, 7, 12'000'000, 100, 131'072, 17'000'000}) {
    out.write(all.data() + done, size);
    done += size;
  }
  out.write(all.data() + done, all.size() - done);
  out.complete();
  file.finish();
  file.putInPlace();
  EXPECT_TRUE(read(folder / "out") == all);
}

TEST(WriteBehind, WritesNothingWhereThereIsNothing) {
  const TestFolder folder;
  PendingFile file(realDisk(), folder / "out");
  WriteBehind(file).complete();
  file.finish();
  file.putInPlace();
  EXPECT_EQ(read(folder / "out"), "");
}

TEST(WriteBehind, CanBeGivenUp) {
  const TestFolder folder;
  {
    PendingFile file(realDisk(), folder / "out");
    WriteBehind out(file);
    const std::string all = text(5'000'000);
    out.write(all.data(), all.size());
  }
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(WriteBehind, TellsAFailureAtItsEnd) {
  const TestFolder folder;
  {
    const SmallDisk disk(3'000'000);
    PendingFile file(realDisk(), folder / "out");
    WriteBehind out(file);
    const std::string all = text(30'000'000);
    out.write(all.data(), all.size());
    try {
      out.complete();
      ADD_FAILURE() << "It was written.";
    } catch (const Files::DiskError& error) {
      EXPECT_EQ(error.code(), std::errc::file_too_large);
    }
  }
  EXPECT_THAT(folder.names(), IsEmpty());
}
