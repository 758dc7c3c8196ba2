// Locks, links and pipes, and processes that die with a lock.
#include "files/home_lock.h"
#include "files/temporary_folder.h"
#include "files/whole_file.h"
#include "scratch.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

using Files::HomeLock;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::chrono::milliseconds noWait{0};

// A process that does its work and then sleeps until it is killed.
class Process {
 public:
  template <class Work>
  explicit Process(const Work& work) {
    int ready[2] = {-1, -1};
    if (::pipe(ready) != 0) throw std::runtime_error("no pipe");
    number = ::fork();
    if (number == 0) {
      const auto kept = work();
      static_cast<void>(::write(ready[1], "!", 1));
      for (;;) ::pause();
    }
    char byte = 0;
    ::close(ready[1]);
    EXPECT_EQ(::read(ready[0], &byte, 1), 1);
    ::close(ready[0]);
  }
  ~Process() { kill(); }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void kill() {
    if (number <= 0) return;
    ::kill(number, SIGKILL);
    ::waitpid(number, nullptr, 0);
    number = 0;
  }

 private:
  pid_t number = 0;
};

TEST(HomeLockOfAProcess, IsGivenUpWhenItDies) {
  const Scratch home;
  Process other([&] { return std::make_unique<HomeLock>(Files::realDisk(), home.folder, noWait); });
  EXPECT_THROW(HomeLock(Files::realDisk(), home.folder, noWait), Files::DiskError);
  other.kill();
  const HomeLock lock(Files::realDisk(), home.folder, noWait);
  EXPECT_THROW(HomeLock(Files::realDisk(), home.folder, noWait), Files::DiskError);
}

TEST(HomeLock, CreatesNothingWhereALinkLeads) {
  const Scratch home;
  std::filesystem::create_symlink(home.folder / "victim", home.folder / ".kiln-lock");
  const HomeLock lock(Files::realDisk(), home.folder, noWait);
  EXPECT_THAT(namesIn(home.folder), ElementsAre(".kiln-lock"));
}

// The lock as another user takes it, who may only read its file: null while it is held.
int statusOfReader(const std::filesystem::path& home) {
  const pid_t child = ::fork();
  if (child == 0) {
    if (::chdir(home.c_str()) != 0) ::_exit(2);
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) ::_exit(3);
    if (::open(".kiln-lock", O_RDWR | O_CLOEXEC) >= 0) ::_exit(4);
    try {
      ::_exit(Files::realDisk().tryLock(".kiln-lock", Files::Disk::Missing::created) ? 0 : 1);
    } catch (...) {
      ::_exit(5);
    }
  }
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(HomeLock, IsThereForThoseWhoMayOnlyReadItsFile) {
  const Scratch home;
  std::filesystem::permissions(home.folder, std::filesystem::perms(0755));
  put(home.folder / ".kiln-lock", "");
  std::filesystem::permissions(home.folder / ".kiln-lock", std::filesystem::perms(0444));
  EXPECT_EQ(statusOfReader(home.folder), 0);
  const auto lock = Files::realDisk().tryLock(home.folder / ".kiln-lock", Files::Disk::Missing::refused);
  ASSERT_NE(lock, nullptr);
  EXPECT_EQ(statusOfReader(home.folder), 1);
}

TEST(HomeLock, DoesNotWaitForTheOtherEndOfAPipe) {
  const Scratch home;
  ASSERT_EQ(::mkfifo((home.folder / ".kiln-lock").c_str(), 0600), 0);
  const HomeLock lock(Files::realDisk(), home.folder, noWait);
  EXPECT_THROW(Files::realDisk().tryLock(home.folder / ".kiln-lock", Files::Disk::Missing::created), Files::DiskError);
}

void makeOld(const std::filesystem::path& path) {
  std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
}

// Its process number may be that of another machine, and its write may take hours.
TEST(Sweep, LeavesWhatIsBeingWrittenWhateverItsNameAndAge) {
  const Scratch scratch;
  const auto path = scratch.folder / ".kiln-2147483645-1.tmp";
  Process other([&] { return Files::realDisk().create(path, scratch.folder / "new"); });
  makeOld(path);
  Files::sweepTemporaries(Files::realDisk(), scratch.folder);
  Files::sweepBeside(Files::realDisk(), scratch.folder / "other");
  EXPECT_EQ(namesIn(scratch.folder).size(), 1u);
  other.kill();
  Files::sweepTemporaries(Files::realDisk(), scratch.folder);
  EXPECT_THAT(namesIn(scratch.folder), IsEmpty());
}

TEST(Sweep, OfAKilledProcessIsDoneByTheNextWhoWritesIntoTheFolder) {
  const Scratch scratch;
  put(scratch.folder / "other", "kept");
  {
    Process other([&] { return std::make_unique<Files::PendingFile>(Files::realDisk(), scratch.folder / "out.pdf"); });
    Files::sweepBeside(Files::realDisk(), scratch.folder / "out.pdf");
    EXPECT_EQ(namesIn(scratch.folder).size(), 2u);
  }
  Files::sweepBeside(Files::realDisk(), scratch.folder / "out.pdf");
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre("other"));
}

// Where the folders for temporary files are made.
class FolderForTemporaryFiles : public testing::Test {
 protected:
  FolderForTemporaryFiles() { ::setenv("TMPDIR", scratch.folder.c_str(), 1); }
  ~FolderForTemporaryFiles() override {
    if (before)
      ::setenv("TMPDIR", before->c_str(), 1);
    else
      ::unsetenv("TMPDIR");
  }

  const Scratch scratch;
  const std::optional<std::string> before =
      std::getenv("TMPDIR") != nullptr ? std::optional<std::string>(std::getenv("TMPDIR")) : std::nullopt;
};

TEST_F(FolderForTemporaryFiles, LosesThoseOfKilledProcesses) {
  {
    Process other([] {
      auto folder = std::make_unique<Files::TemporaryFolder>();
      put(folder->path() / "in.pdf", "half a job");
      return folder;
    });
    const Files::TemporaryFolder own;
    EXPECT_EQ(namesIn(scratch.folder).size(), 2u);
  }
  ASSERT_EQ(namesIn(scratch.folder).size(), 1u);
  const Files::TemporaryFolder next;
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre(next.path().filename().string()));
}

TEST_F(FolderForTemporaryFiles, KeepsOneThatIsHeldWhateverItsNameAndAge) {
  const auto folder = scratch.folder / ".kiln-folder-2147483645-a";
  std::filesystem::create_directory(folder);
  makeOld(folder);
  auto hold = Files::holdFolder(folder);
  Files::sweepTemporaryFolders(scratch.folder);
  EXPECT_EQ(namesIn(scratch.folder).size(), 1u);
  hold.reset();
  Files::sweepTemporaryFolders(scratch.folder);
  EXPECT_THAT(namesIn(scratch.folder), IsEmpty());
}

TEST_F(FolderForTemporaryFiles, KeepsOneThatItsProcessIsAboutToHold) {
  const auto folder = scratch.folder / (".kiln-folder-" + std::to_string(Files::processNumber()) + "-a");
  std::filesystem::create_directory(folder);
  Files::sweepTemporaryFolders(scratch.folder);
  EXPECT_TRUE(std::filesystem::exists(folder));
  makeOld(folder);
  Files::sweepTemporaryFolders(scratch.folder);
  EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST_F(FolderForTemporaryFiles, KeepsEverythingElse) {
  for (const char* name : {"kiln-1234", ".kiln-folder", ".kiln-folder-", ".kiln-folder-a-b", ".kiln-folder-1"})
    std::filesystem::create_directory(scratch.folder / name);
  put(scratch.folder / ".kiln-folder-2147483645-file", "a file");
  std::filesystem::create_directory(scratch.folder / "elsewhere");
  std::filesystem::create_directory_symlink(scratch.folder / "elsewhere",
                                            scratch.folder / ".kiln-folder-2147483645-link");
  const auto before = namesIn(scratch.folder);
  Files::sweepTemporaryFolders(scratch.folder);
  EXPECT_EQ(namesIn(scratch.folder), before);
}

}  // namespace
