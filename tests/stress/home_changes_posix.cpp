// Several processes change the watermarks or the overlays of one home at the same time, while this one looks. Each
// accepted change must be there from then on.
//
//   home_changes watermarks|overlays PROCESSES CHANGES
//
// Prints what has become of the changes; exits with 1 when one was lost.
#include "host/overlay_job.h"
#include "tests/overlay/overlay_home.h"
#include "tests/watermark/store_world.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <deque>
#include <iostream>
#include <map>
#include <memory>
#include <set>

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

enum State : unsigned char { unknown, present, leaving, gone };

constexpr unsigned mostProcesses = 64;
constexpr unsigned mostOfEach = 1U << 16;

// In memory that all processes share.
struct Record {
  std::atomic<unsigned> accepted;
  std::atomic<unsigned> refused;
  std::atomic<State> states[mostProcesses][mostOfEach];
};

std::string nameOf(unsigned process, unsigned number) {
  return "by " + std::to_string(process) + " no " + std::to_string(number);
}

// What one process does to the home. The operations throw when they are refused.
class Changer {
 public:
  virtual ~Changer() = default;
  virtual void add(const std::string& name) = 0;
  virtual void remove(const std::string& name) = 0;
};

class WatermarkChanger final : public Changer {
 public:
  explicit WatermarkChanger(const fs::path& home) : world(home), store(world.open()) {}

  void add(const std::string& name) override {
    ids[name] = StoreWorld::add(*store, Formats::toUtf16(name));
    if (ids[name].empty()) throw std::runtime_error("It was not added.");
  }
  void remove(const std::string& name) override {
    if (!store->removeRecord(ids.at(name))) throw std::runtime_error("It was not there.");
  }

  static Names presentIn(const fs::path& home) {
    Names names;
    const std::string bytes = Testing::bytesOf(home / "user" / "ZVeffect.xml");
    constexpr std::string_view start = "<stylename>";
    for (std::size_t at = bytes.find(start); at != bytes.npos; at = bytes.find(start, at)) {
      at += start.size();
      names.insert(bytes.substr(at, bytes.find('<', at) - at));
    }
    return names;
  }

 private:
  StoreWorld world;
  Kiln::SmartPtr<Watermarks> store;
  std::map<std::string, std::u16string> ids;
};

class OverlayChanger final : public Changer {
 public:
  explicit OverlayChanger(const fs::path& homeFolder) : home(homeFolder) {}

  // Through the plug-in, as "kiln overlay create" does.
  void add(const std::string& name) override {
    Testing::RecordingFace face;
    face.jobStep = Formats::toUtf16(name);
    Refhost::Options options = Testing::builtOptions();
    options.home = home;
    options.mode = Refhost::Mode::prePrint;
    options.properties = {{u"PrintJob", u"Overlay"}};
    Refhost::Preferences job(options, face);
    job.open();
    if (job.model().value(u"OvlDestCreated") != u"True") throw std::runtime_error("There is no destination.");
    Refhost::writeOverlay(job, {name, "picture"});
  }
  void remove(const std::string& name) override {
    OverlayStore world(home);
    const auto store = world.open();
    const std::int32_t known = store->findByLabel(Formats::toUtf16(name), false);
    if (known < 0) throw std::runtime_error("It is not listed.");
    const Effect::OverlayRecord record = store->record(known);
    if (!store->removeOverlay({record.label, record.diskpath, false})) throw std::runtime_error("It has no file.");
    store->save();
  }

  static Names presentIn(const fs::path& home) {
    Names names;
    const fs::path folder = home / "profile" / "overlays";
    for (const auto& [name, fileName] : Effect::readIndex(Testing::bytesOf(OverlayHome::index(folder))))
      if (Testing::bytesOf(folder / fileName) == Formats::toUtf8(name)) names.insert(Formats::toUtf8(name));
    return names;
  }

 private:
  fs::path home;
};

// Adds and removes until there are enough changes. Of its own, a process leaves two at a time.
void change(Record& record, const std::function<std::unique_ptr<Changer>()>& open, unsigned process, unsigned changes) {
  constexpr unsigned changesOfAnOpening = 40;
  constexpr std::size_t mostAtATime = 2;
  std::deque<unsigned> own;
  std::unique_ptr<Changer> changer = open();
  for (unsigned number = 0, made = 0; record.accepted < changes && number < mostOfEach; ++made) {
    try {
      if (made % changesOfAnOpening == changesOfAnOpening - 1 && own.empty()) changer = open();
      if (own.size() < mostAtATime && number % 4 != 3) {
        changer->add(nameOf(process, number));
        record.states[process][number] = present;
        own.push_back(number++);
      } else if (!own.empty()) {
        record.states[process][own.front()] = leaving;
        changer->remove(nameOf(process, own.front()));
        record.states[process][own.front()] = gone;
        own.pop_front();
      } else {
        ++number;
        continue;
      }
      ++record.accepted;
    } catch (const std::exception& problem) {
      ++record.refused;
      std::fprintf(stderr, "refused: %s\n", problem.what());
      // What becomes of a change that was refused is not asked.
      if (!own.empty() && record.states[process][own.front()] == leaving) own.pop_front();
      ++number;
    }
  }
}

struct Findings {
  Names missing;
  Names cameBack;
};

// Looks once, at what has not changed meanwhile.
void look(const Record& record, unsigned processes, const std::function<Names()>& read, Findings& findings) {
  const auto states = [&] {
    std::map<std::string, State> all;
    for (unsigned process = 0; process < processes; ++process)
      for (unsigned number = 0; number < mostOfEach; ++number)
        if (const State state = record.states[process][number]; state != unknown) all[nameOf(process, number)] = state;
    return all;
  };
  const auto before = states();
  const Names there = read();
  const auto after = states();
  for (const auto& [name, state] : before) {
    if (after.at(name) != state) continue;
    if (state == present && !there.contains(name)) findings.missing.insert(name);
    if (state == gone && there.contains(name)) findings.cameBack.insert(name);
  }
}

int run(const std::string& what, unsigned processes, unsigned changes) {
  const bool isOfOverlays = what == "overlays";
  const Testing::TemporaryFolder home;
  fs::create_directories(home.path / "user");
  fs::create_directories(home.path / "profile" / "overlays");
  void* const memory =
      ::mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) return 2;
  Record& record = *new (memory) Record;
  const auto open = [&]() -> std::unique_ptr<Changer> {
    if (isOfOverlays) return std::make_unique<OverlayChanger>(home.path);
    return std::make_unique<WatermarkChanger>(home.path);
  };
  const auto read = [&] {
    return isOfOverlays ? OverlayChanger::presentIn(home.path) : WatermarkChanger::presentIn(home.path);
  };

  for (unsigned process = 0; process < processes; ++process) {
    if (::fork() != 0) continue;
    change(record, open, process, changes);
    ::_exit(0);
  }
  Findings meanwhile;
  unsigned looks = 0;
  unsigned ended = 0;
  bool isClean = true;
  for (; ended < processes; ++looks) {
    look(record, processes, read, meanwhile);
    for (int status = 0; ::waitpid(-1, &status, WNOHANG) > 0; ++ended) isClean = isClean && status == 0;
  }
  Findings atEnd;
  look(record, processes, read, atEnd);

  std::cout << processes << " processes, " << record.accepted << " changes accepted, " << record.refused
            << " refused; lost at the end: " << atEnd.missing.size() << ", back at the end: " << atEnd.cameBack.size()
            << ", missing meanwhile: " << meanwhile.missing.size() << ", back meanwhile: " << meanwhile.cameBack.size()
            << ", in " << looks << " looks\n";
  const bool isWhole = atEnd.missing.empty() && atEnd.cameBack.empty() && meanwhile.missing.empty() &&
                       meanwhile.cameBack.empty() && record.accepted >= changes;
  return isClean && isWhole ? 0 : 1;
}

}  // namespace

int main(int count, char** words) {
  if (count != 4) return 2;
  const auto number = [&](int at) { return static_cast<unsigned>(std::stoul(words[at])); };
  return run(words[1], std::min(number(2), mostProcesses), number(3));
}
