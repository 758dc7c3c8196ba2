// The built kiln, whose calls of the system fail one at a time. What a person has is there afterwards, and a command
// that could not do all of its work says so.
#include "fault_cases.h"
#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <iterator>

namespace {

namespace fs = std::filesystem;
using testing::StartsWith;

using Tree = std::map<std::string, std::string>;

// The files below a folder by their relative paths, but temporary ones.
Tree treeOf(const fs::path& folder) {
  Tree tree;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file() && entry.path().extension() != ".tmp")
      tree[entry.path().lexically_relative(folder).string()] = readFile(entry.path());
  return tree;
}

void put(const fs::path& file, const std::string& bytes) {
  fs::create_directories(file.parent_path());
  writeFile(file, bytes);
}

std::string watermarks(const std::string& id, const std::string& name) {
  return "<Watermarks><" + id + "><label>" + name + "</label><value>" + id +
         "</value><fontsize>72</fontsize><fontstyle>Regular</fontstyle><colour>#808080</colour><angle>0</angle>"
         "<positionX>C</positionX><positionY>C</positionY><printStyle>Solid</printStyle></" +
         id + "></Watermarks>";
}

// An index record: two UTF-16 fields, of 128 and 26 bytes.
std::string record(const std::string& name, const std::string& file) {
  std::string bytes(154, '\0');
  for (std::size_t i = 0; i < name.size(); ++i) bytes[2 * i] = name[i];
  for (std::size_t i = 0; i < file.size(); ++i) bytes[128 + 2 * i] = file[i];
  return bytes;
}

class KilnOnFaultyCalls : public testing::Test {
 protected:
  KilnOnFaultyCalls() {
    put(home / "user" / "ZVeffect.xml", watermarks("WM_1", "Mine"));
    put(home / "localdata" / "a" / "ZVeffect.xml", watermarks("WM_a", "From a"));
    put(overlays / "ovlNmFl.flo", record("Letterhead", "00001.opa") + record("Terms", "00002.opa"));
    for (const char* file : {"00001.opa", "00001.bmp", "00002.opa", "00002.bmp"}) put(overlays / file, file);
    // The first opening brings the files into the written form.
    EXPECT_EQ(kiln({"profile", "export", archive.string()}).status, 0);
  }

  Outcome kiln(std::vector<std::string> words, const std::vector<std::string>& environment = {}) const {
    words.insert(words.end(), {"--home", home.string()});
    return runKiln(words, {}, environment);
  }

  // What the run printed, and whether the fault took place.
  struct Run {
    Outcome outcome;
    bool hasFailed;
  };

  Run kilnWith(const CallFault& fault, const fs::path& in, const std::vector<std::string>& words) const {
    const fs::path log = testFolder() / "calls";
    fs::remove(log);
    const Outcome outcome = kiln(words, FaultyCalls::environment(FAULTY_CALLS_FILE, planOf(fault, in), log.string()));
    return {outcome, ('\n' + readFile(log)).find("\n! ") != std::string::npos};
  }

  // Runs a command that changes nothing in the home.
  void readOnFaultyCalls(const std::vector<std::string>& words) {
    const Tree before = treeOf(home);
    const Outcome sound = kiln(words);
    ASSERT_EQ(sound.status, 0) << sound.err;
    const std::string good = readFile(archive);
    int refusals = 0;
    for (const char* call : {"stat", "lstat", "fstat", "open", "read", "opendir", "readdir"})
      forEveryFaultOf(call, {EIO}, [&](const CallFault& fault) {
        const Run run = kilnWith(fault, home, words);
        EXPECT_EQ(treeOf(home), before) << fault;
        EXPECT_TRUE(readFile(archive) == good) << fault;
        if (run.outcome.status == 0) {
          EXPECT_EQ(run.outcome.out, sound.out) << fault << ": " << run.outcome.err;
        } else {
          ++refusals;
          EXPECT_THAT(run.outcome.err, StartsWith("kiln: ")) << fault;
        }
        return run.hasFailed;
      });
    EXPECT_GT(refusals, 5);
  }

  const fs::path home = testFolder() / "home";
  const fs::path overlays = home / "profile" / "overlays";
  const fs::path archive = testFolder() / "profile.zip";
};

TEST_F(KilnOnFaultyCalls, ListsEveryOverlayOrRefusesAndChangesNothing) { readOnFaultyCalls({"overlay", "list"}); }

TEST_F(KilnOnFaultyCalls, WritesTheSameTicketOrRefusesAndChangesNothing) {
  readOnFaultyCalls({"ticket", "--watermark", "Mine", "--overlay", "Letterhead"});
}

TEST_F(KilnOnFaultyCalls, ExportsEverythingOrLeavesTheOldArchive) {
  readOnFaultyCalls({"profile", "export", archive.string()});
}

// The case that matters most: the file of a person's watermarks, which cannot be examined or read just once.
TEST_F(KilnOnFaultyCalls, NeitherSeedsNorSetsAsideAFileThatCannotBeReadOnce) {
  const fs::path file = home / "user" / "ZVeffect.xml";
  const std::string mine = readFile(file);
  for (const char* call : {"stat", "open", "fstat", "read"}) {
    int refusals = 0;
    forEveryFaultOf(call, errorsOfCalls.at(call), [&](const CallFault& fault) {
      const Run run = kilnWith(fault, file, {"overlay", "list"});
      EXPECT_EQ(readFile(file), mine) << fault;
      EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1) << fault;
      refusals += run.outcome.status == 2 ? 1 : 0;
      return run.hasFailed;
    });
    EXPECT_GT(refusals, 0) << call;
  }
}

TEST_F(KilnOnFaultyCalls, ImportsEverythingOrNothing) {
  const fs::path other = testFolder() / "other";
  fs::copy(home, other, fs::copy_options::recursive);
  put(home / "user" / "ZVeffect.xml", watermarks("WM_2", "Theirs"));
  put(overlays / "ovlNmFl.flo", record("Form", "00003.opa"));
  put(overlays / "00003.opa", "form");
  ASSERT_EQ(kiln({"profile", "export", archive.string()}).status, 0);
  const auto reset = [&] {
    fs::remove_all(home);
    fs::copy(other, home, fs::copy_options::recursive);
  };
  // The next opening completes what it finds begun.
  const auto opened = [&] {
    EXPECT_EQ(kiln({"overlay", "list"}).status, 0);
    return treeOf(home);
  };
  const std::vector<std::string> words = {"profile", "import", archive.string()};
  reset();
  const Tree before = opened();
  ASSERT_EQ(kiln(words).status, 0);
  const Tree after = opened();
  ASSERT_NE(after, before);
  int refusals = 0;
  for (const auto& [call, errors] : errorsOfCalls)
    forEveryFaultOf(call, {errors.front()}, [&](const CallFault& fault) {
      reset();
      const Run run = kilnWith(fault, home, words);
      const Tree now = opened();
      EXPECT_TRUE(now == after || (now == before && run.outcome.status != 0)) << fault << run.outcome.err;
      refusals += run.outcome.status != 0 ? 1 : 0;
      return run.hasFailed;
    });
  EXPECT_GT(refusals, 30);
}

#ifndef KILN_WITHOUT_PRINTING
TEST_F(KilnOnFaultyCalls, PrintsTheWholeFileOrLeavesTheOldOne) {
  const fs::path job = testFolder() / "job.pdf";
  ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
  const fs::path out = testFolder() / "printed" / "out.pdf";
  put(out, "old");
  const std::vector<std::string> words = {"print", job.string(), out.string(), "--watermark", "Mine"};
  ASSERT_EQ(kiln(words).status, 0);
  const std::string printed = readFile(out);
  int refusals = 0;
  for (const auto& [call, errors] : errorsOfCalls)
    forEveryFaultOf(call, {errors.front(), errors.back()}, [&](const CallFault& fault) {
      put(out, "old");
      const Run run = kilnWith(fault, out.parent_path(), words);
      const std::string now = readFile(out);
      const bool isNew = samePages(now, printed);
      EXPECT_TRUE(isNew || (now == "old" && run.outcome.status != 0)) << fault << run.outcome.err;
      if (fault.call != "unlink") {
        EXPECT_EQ(std::distance(fs::directory_iterator(out.parent_path()), {}), 1) << fault;
      }
      refusals += run.outcome.status != 0 ? 1 : 0;
      return run.hasFailed;
    });
  EXPECT_GT(refusals, 8);
}

TEST_F(KilnOnFaultyCalls, NeverPrintsOverTheJobItself) {
  const fs::path job = testFolder() / "jobs" / "job.pdf";
  put(job, "");
  ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
  const std::string before = readFile(job);
  fs::create_symlink("job.pdf", testFolder() / "jobs" / "same.pdf");
  for (const char* call : {"stat", "lstat", "fstat", "open"})
    forEveryFaultOf(call, {EIO}, [&](const CallFault& fault) {
      const Run run =
          kilnWith(fault, job.parent_path(), {"print", job.string(), (testFolder() / "jobs" / "same.pdf").string()});
      EXPECT_NE(run.outcome.status, 0) << fault;
      EXPECT_TRUE(readFile(job) == before) << fault;
      return run.hasFailed;
    });
}

TEST_F(KilnOnFaultyCalls, DrawsAPictureOrLeavesTheOldOne) {
  const fs::path job = testFolder() / "job.pdf";
  ASSERT_EQ(runKiln({"sample", job.string()}).status, 0);
  const fs::path out = testFolder() / "drawn" / "page.png";
  for (const auto& [call, errors] : errorsOfCalls)
    forEveryFaultOf(call, {errors.front()}, [&](const CallFault& fault) {
      put(out, "old");
      const fs::path log = testFolder() / "calls";
      fs::remove(log);
      const Outcome outcome =
          runKiln({"picture", job.string(), out.string()}, {},
                  FaultyCalls::environment(FAULTY_CALLS_FILE, planOf(fault, out.parent_path()), log.string()));
      const std::string now = readFile(out);
      EXPECT_TRUE(now.starts_with("\x89PNG") || (now == "old" && outcome.status != 0)) << fault << outcome.err;
      return ('\n' + readFile(log)).find("\n! ") != std::string::npos;
    });
}
#endif

}  // namespace
