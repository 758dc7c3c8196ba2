// What is saved, and what is looked at, when the calls of the system fail.
#include "fault_cases.h"
#include "files/file_set.h"
#include "files/whole_file.h"
#include "scratch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

namespace fs = std::filesystem;
using FaultyCalls::Plan;
using FaultyCalls::Report;
using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string oldBytes = "the old content";
const std::string newBytes(100'000, 'n');

struct Result {
  std::string failure;  // empty when the work succeeded
  Report report;
};

template <class Work>
Result during(const Plan& plan, const Work& work) {
  FaultyCalls::make(plan);
  Result result;
  result.failure = sentenceOf<Files::DiskError>(work);
  result.report = FaultyCalls::end();
  return result;
}

// The two ways to save a file: at once, and in pieces.
void saveAtOnce(const fs::path& file) { Files::replaceWhole(Files::realDisk(), file, newBytes); }

void saveInPieces(const fs::path& file) {
  Files::PendingFile pending(Files::realDisk(), file);
  for (std::size_t at = 0; at < newBytes.size(); at += 30'000)
    pending.write(std::string_view(newBytes).substr(at, 30'000));
  pending.finish();
  pending.putInPlace();
}

struct Way {
  const char* name;
  void (*save)(const fs::path& file);
};

class SavedFile : public testing::TestWithParam<Way> {
 protected:
  void SetUp() override { put(file, oldBytes); }

  Result save(const Plan& plan) {
    return during(plan, [this] { GetParam().save(file); });
  }

  // The calls with paths relative to the folder, and "*" for the temporary file; consecutive equal ones once.
  std::vector<std::string> callsOf(const Report& report) const {
    std::vector<std::string> calls;
    for (std::string line : report.calls) {
      const std::string folder = scratch.folder.string();
      for (std::size_t at; (at = line.find(folder)) != line.npos;) {
        const bool isBelow = at + folder.size() < line.size() && line[at + folder.size()] == '/';
        line.replace(at, folder.size() + (isBelow ? 1 : 0), isBelow ? "" : "the folder");
      }
      const std::size_t start = line.find(".kiln-");
      if (start != line.npos) line.replace(start, line.find(".tmp", start) + 4 - start, "*");
      if (calls.empty() || calls.back() != line) calls.push_back(line);
    }
    return calls;
  }

  // Whether the target has been replaced when these calls were made.
  static bool isReplaced(const Report& report) {
    return std::any_of(report.calls.begin(), report.calls.end(),
                       [](const std::string& line) { return line.starts_with("rename "); });
  }

  Scratch scratch;
  const fs::path file = scratch.folder / "marks.xml";
};

TEST_P(SavedFile, IsOldOrNewWhicheverCallFailsAndNothingIsLeftBesideIt) {
  int faults = 0;
  for (const auto& [call, errors] : errorsOfCalls)
    faults += forEveryFaultOf(call, errors, [&](const CallFault& fault) {
      put(file, oldBytes);
      const Result result = save(planOf(fault, scratch.folder));
      const bool hasFailed = !result.report.failed.empty();
      const std::string content = contentOf(file);
      if (result.failure.empty()) {
        EXPECT_EQ(content, newBytes) << fault;
      } else if (content != oldBytes) {
        // The flush of the folder is the last step, when the file is in place already.
        EXPECT_EQ(content, newBytes) << fault;
        EXPECT_EQ(result.report.failed, scratch.folder.string()) << fault << ": " << result.failure;
      }
      EXPECT_EQ(result.report.open, 0) << fault;
      if (fault.call != "unlink") {
        EXPECT_THAT(namesIn(scratch.folder), ElementsAre("marks.xml")) << fault;
      }
      return hasFailed;
    });
  EXPECT_GT(faults, 40);
}

// Each of these means that the content is not on the medium, or may not be.
TEST_P(SavedFile, IsNotReportedAsSavedWhenItsContentCannotBeStored) {
  for (const char* call : {"write", "fsync", "close", "rename"})
    for (const int error : errorsOfCalls.at(call)) {
      if (error == EINTR) continue;
      const int faults = forEveryFaultOf(call, {error}, [&](const CallFault& fault) {
        put(file, oldBytes);
        const Result result = save(planOf(fault, scratch.folder));
        const std::string& failed = result.report.failed;
        const bool isFlushOfTheFolder = fault.call == "fsync" && failed == scratch.folder;
        EXPECT_EQ(!result.failure.empty(), failed.ends_with(".tmp") || isFlushOfTheFolder) << fault << " of " << failed;
        return !failed.empty();
      });
      EXPECT_GT(faults, 0) << call;
    }
}

TEST_P(SavedFile, IsSavedAllTheSameWhenSignalsInterrupt) {
  for (const char* call : {"open", "write", "fsync", "close"})
    EXPECT_GT(forEveryFaultOf(call, {EINTR},
                              [&](const CallFault& fault) {
                                put(file, oldBytes);
                                const Result result = save(planOf(fault, scratch.folder));
                                EXPECT_EQ(result.failure, "") << fault;
                                EXPECT_EQ(contentOf(file), newBytes) << fault;
                                return !result.report.failed.empty();
                              }),
              0)
        << call;
}

TEST_P(SavedFile, IsSavedWholeWhenTheSystemTakesItInSmallPieces) {
  for (const long amount : {1L, 777L, 4096L}) {
    put(file, oldBytes);
    const Result result = save({scratch.folder.string(), "write", amount == 1 ? 1 : -1, 0, amount});
    EXPECT_EQ(result.failure, "");
    EXPECT_FALSE(result.report.failed.empty());
    EXPECT_TRUE(contentOf(file) == newBytes) << amount;
  }
}

TEST_P(SavedFile, IsOldWhenTheSystemTakesNothing) {
  const Result result = save({scratch.folder.string(), "write", -1, 0, 0});
  EXPECT_NE(result.failure, "");
  EXPECT_EQ(contentOf(file), oldBytes);
  EXPECT_THAT(namesIn(scratch.folder), ElementsAre("marks.xml"));
}

TEST_P(SavedFile, IsFlushedBeforeItReplacesTheOldOneAndTheFolderAfterwards) {
  const Result result = save({scratch.folder.string(), "", 0, 0, 0});
  std::vector<std::string> calls = callsOf(result.report);
  // Before the first write, files are only looked at, and the temporary one is created.
  calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), "write *"));
  EXPECT_THAT(calls, ElementsAre("write *", "fsync *", "close *", "rename * marks.xml", "open the folder",
                                 "fsync the folder", "close the folder"));
}

TEST_P(SavedFile, IsNotFlushedTwiceAfterAFailedFlush) {
  const Result result = save({scratch.folder.string(), "fsync", 1, EIO, 0});
  const std::vector<std::string> calls = callsOf(result.report);
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "fsync *"), 1);
  EXPECT_FALSE(isReplaced(result.report));
}

// On file systems that cannot flush folders, and in folders that may only be written to.
TEST_P(SavedFile, IsSavedWhereItsFolderCannotBeFlushedAtAll) {
  const Result unable = save({scratch.folder.string(), "fsync", 2, EINVAL, 0});
  EXPECT_EQ(unable.failure, "");
  EXPECT_EQ(unable.report.failed, scratch.folder.string());
  EXPECT_EQ(contentOf(file), newBytes);
}

INSTANTIATE_TEST_SUITE_P(Way, SavedFile, testing::Values(Way{"AtOnce", saveAtOnce}, Way{"InPieces", saveInPieces}),
                         [](const auto& each) { return each.param.name; });

class LookedAt : public testing::Test {
 protected:
  void SetUp() override {
    put(file, oldBytes);
    fs::create_directory(scratch.folder / "folder");
    fs::create_symlink(file, scratch.folder / "link");
  }
  Plan plan(const std::string& call, int at, int error) const { return {scratch.folder.string(), call, at, error, 0}; }

  Scratch scratch;
  const fs::path file = scratch.folder / "marks.xml";
};

TEST_F(LookedAt, FileThatCannotBeExaminedIsNotTakenForAMissingOne) {
  for (const int error : {EIO, EACCES, ENOMEM, EOVERFLOW, ESTALE, ETIMEDOUT, EINTR})
    EXPECT_EQ(during(plan("stat", 1, error), [&] { Files::realDisk().kind(file); }).failure.find(file.string()), 0U)
        << strerrorname_np(error);
}

TEST_F(LookedAt, FileThatCannotBeThereIsAMissingOne) {
  for (const int error : {ENOENT, ENOTDIR, ELOOP, ENAMETOOLONG}) {
    Files::EntryKind kind = Files::EntryKind::other;
    EXPECT_EQ(during(plan("stat", 1, error), [&] { kind = Files::realDisk().kind(file); }).failure, "");
    EXPECT_EQ(kind, Files::EntryKind::none);
  }
  EXPECT_EQ(Files::realDisk().kind(file / "below"), Files::EntryKind::none);
  EXPECT_EQ(Files::realDisk().kind(scratch.folder / std::string(300, 'n')), Files::EntryKind::none);
  fs::create_symlink("circle", scratch.folder / "circle");
  EXPECT_EQ(Files::realDisk().kind(scratch.folder / "circle"), Files::EntryKind::none);
}

TEST_F(LookedAt, FolderIsListedWholeOrNotAtAll) {
  for (const char* call : {"opendir", "readdir", "open"})
    forEveryFaultOf(call, {EIO, EMFILE}, [&](const CallFault& fault) {
      std::vector<Files::Entry> entries;
      const Result result =
          during(planOf(fault, scratch.folder), [&] { entries = Files::realDisk().entries(scratch.folder); });
      if (result.failure.empty()) {
        EXPECT_EQ(entries.size(), 3U) << fault;
      } else {
        EXPECT_THAT(entries, IsEmpty()) << fault;
      }
      return !result.report.failed.empty();
    });
  EXPECT_NE(during(plan("readdir", 2, EIO), [&] { Files::realDisk().entries(scratch.folder); }).failure, "");
}

TEST_F(LookedAt, EntryThatCannotBeExaminedIsListedAsUnknown) {
  using Files::EntryKind;
  int unknown = 0;
  forEveryFaultOf("stat", {EIO, EACCES}, [&](const CallFault& fault) {
    std::vector<Files::Entry> entries;
    const Result result =
        during(planOf(fault, scratch.folder), [&] { entries = Files::realDisk().entries(scratch.folder); });
    EXPECT_EQ(result.failure, "");
    EXPECT_EQ(entries.size(), 3U) << fault;
    for (const Files::Entry& entry : entries) {
      const bool isFailed = result.report.failed == (scratch.folder / entry.name).string();
      EXPECT_EQ(entry.kind, isFailed                 ? EntryKind::unknown
                            : entry.name == "folder" ? EntryKind::folder
                                                     : EntryKind::file)
          << fault << entry.name;
      EXPECT_EQ(entry.link, entry.name == "link");
      unknown += entry.kind == EntryKind::unknown ? 1 : 0;
    }
    return !result.report.failed.empty();
  });
  EXPECT_EQ(unknown, 6);
}

TEST_F(LookedAt, FileIsReadWholeOrNotAtAll) {
  for (const char* call : {"open", "fstat", "read"})
    EXPECT_GT(forEveryFaultOf(call, errorsOfCalls.at(call),
                              [&](const CallFault& fault) {
                                std::string bytes;
                                const Result result = during(planOf(fault, scratch.folder),
                                                             [&] { bytes = Files::realDisk().read(file, 1000); });
                                EXPECT_EQ(bytes, result.failure.empty() ? oldBytes : "") << fault;
                                EXPECT_EQ(result.failure.empty(), fault.error == EINTR || result.report.failed.empty())
                                    << fault;
                                EXPECT_EQ(result.report.open, 0) << fault;
                                return !result.report.failed.empty();
                              }),
              0);
  std::string bytes;
  EXPECT_EQ(
      during({scratch.folder.string(), "read", -1, 0, 1}, [&] { bytes = Files::realDisk().read(file, 1000); }).failure,
      "");
  EXPECT_EQ(bytes, oldBytes);
}

TEST_F(LookedAt, LinkIsFollowedOrTheFailureTold) {
  for (const auto& [call, errors] : errorsOfCalls)
    forEveryFaultOf(call, errors, [&](const CallFault& fault) {
      fs::path target;
      const Result result =
          during(planOf(fault, scratch.folder), [&] { target = Files::linkTarget(scratch.folder / "link"); });
      if (result.failure.empty()) {
        EXPECT_EQ(target, fs::canonical(file)) << fault;
      }
      return !result.report.failed.empty();
    });
}

TEST_F(LookedAt, FoldersAreMadeOrTheFailureTold) {
  const fs::path deep = scratch.folder / "new" / "deeper";
  for (const auto& [call, errors] : errorsOfCalls)
    forEveryFaultOf(call, errors, [&](const CallFault& fault) {
      fs::remove_all(scratch.folder / "new");
      const Result result =
          during(planOf(fault, scratch.folder), [&] { Files::createFolders(Files::realDisk(), deep); });
      EXPECT_TRUE(fs::is_directory(deep) || !result.failure.empty()) << fault;
      return !result.report.failed.empty();
    });
}

TEST_F(LookedAt, FileIsRemovedOrTheFailureTold) {
  for (const int error : {EIO, EACCES, EROFS, EBUSY}) {
    EXPECT_NE(during(plan("unlink", 1, error), [&] { Files::realDisk().remove(file); }).failure, "");
    EXPECT_EQ(contentOf(file), oldBytes);
  }
}

// Several files that are replaced together.
TEST(FileSetOnFaultyCalls, IsAsBeforeOrAsAfterWhicheverCallFails) {
  using Contents = std::map<std::string, std::string>;
  int faults = 0;
  for (const auto& [call, errors] : errorsOfCalls)
    faults += forEveryFaultOf(call, {errors.front()}, [&](const CallFault& fault) {
      const Scratch scratch;
      const Contents before = {{"one", "1"}, {"two", "2"}};
      const Contents after = {{"one", "first"}, {"two", "second"}, {"three", "third"}};
      for (const auto& [name, bytes] : before) put(scratch.folder / name, bytes);
      const Result result = during(planOf(fault, scratch.folder), [&] {
        Files::FileSet set(Files::realDisk(), scratch.folder / "journal");
        for (const auto& [name, bytes] : after) set.write(scratch.folder / name, bytes);
        set.commit();
      });
      Files::completeFileSet(Files::realDisk(), scratch.folder / "journal");
      Contents now;
      for (const std::string& name : namesIn(scratch.folder))
        if (!name.ends_with(".tmp")) now[name] = contentOf(scratch.folder / name);
      EXPECT_THAT(now, AnyOf(before, after)) << fault;
      if (result.failure.empty()) {
        EXPECT_EQ(now, after) << fault;
      }
      return !result.report.failed.empty();
    });
  EXPECT_GT(faults, 40);
}

}  // namespace
