// Opens the watermark store on a home with many local-data folders of 20 records each.
//
//   FirstOpening   the files are not in the written form yet: each is rewritten, and the merged copy created
//   LaterOpening   nothing is written
//   Adding         one watermark more: the user's file and the merged copy are written
//   ManyRecords    a user's file of many records, up to the most that are read
//
// "bytes" and "files" count what one iteration writes. The times grow linearly with the folders (see BigO), and include
// flushing each written file to the disk.
#include "tests/watermark/store_world.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int recordsInFolder = 20;

void putLocalData(const Home& home, std::int64_t folders) {
  for (std::int64_t folder = 0; folder < folders; ++folder) {
    std::string records;
    for (int i = 0; i < recordsInFolder; ++i) {
      const std::string id = "WM_" + std::to_string(folder * recordsInFolder + i);
      records += element(id, {{"label", "Watermark " + id},
                              {"stylename", "Watermark " + id},
                              {"fontname", "Arial"},
                              {"fontsize", "72"},
                              {"fontstyle", "Regular"},
                              {"colour", "#808080"},
                              {"angle", "45"},
                              {"positionX", "C"},
                              {"positionY", "C"},
                              {"printStyle", "Solid"},
                              {"transparency", "<intensity>0</intensity>"},
                              {"value", id}});
    }
    home.putLocalFile("folder" + std::to_string(folder), watermarkFile(records));
  }
}

// A store's world that counts writes.
struct Counted {
  explicit Counted(const Home& home) : world(home.folder.path) {
    world.set(u"kilnworks.tips.userdata.support", u"True");
    world.trace.listen([this](const Refhost::TraceEvent& event) {
      if (event.op != "write") return;
      bytes += std::stod(Testing::member(event, "bytes"));
      ++files;
    });
  }

  void report(benchmark::State& state) const {
    state.counters["bytes"] = benchmark::Counter(bytes, benchmark::Counter::kAvgIterations);
    state.counters["files"] = benchmark::Counter(files, benchmark::Counter::kAvgIterations);
    state.SetComplexityN(state.range(0));
  }

  StoreWorld world;
  double bytes = 0;
  double files = 0;
};

void FirstOpening(benchmark::State& state) {
  const Home home;
  Counted counted(home);
  for (auto _ : state) {
    state.PauseTiming();
    putLocalData(home, state.range(0));
    std::filesystem::remove(counted.world.userFile());
    std::filesystem::remove(counted.world.mergedCopy());
    state.ResumeTiming();
    benchmark::DoNotOptimize(counted.world.open());
  }
  counted.report(state);
}

void LaterOpening(benchmark::State& state) {
  const Home home;
  putLocalData(home, state.range(0));
  Counted counted(home);
  counted.world.open();
  counted.bytes = counted.files = 0;
  for (auto _ : state) benchmark::DoNotOptimize(counted.world.open());
  counted.report(state);
}

void Adding(benchmark::State& state) {
  const Home home;
  putLocalData(home, state.range(0));
  Counted counted(home);
  const auto store = counted.world.open();
  counted.bytes = counted.files = 0;
  for (auto _ : state) {
    const std::u16string id = StoreWorld::add(*store, u"one more");
    state.PauseTiming();
    const double bytes = counted.bytes;
    const double files = counted.files;
    store->removeRecord(id);
    counted.bytes = bytes;
    counted.files = files;
    state.ResumeTiming();
  }
  counted.report(state);
}

void ManyRecords(benchmark::State& state) {
  std::string records;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    const std::string id = "WM_" + std::to_string(i);
    records += element(id, {{"stylename", "name " + id}, {"value", id}});
  }
  const Home home;
  home.putUserFile(watermarkFile(records));
  StoreWorld world(home.folder.path);
  for (auto _ : state) benchmark::DoNotOptimize(world.open());
  state.SetComplexityN(state.range(0));
}

BENCHMARK(FirstOpening)->Arg(1)->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(LaterOpening)->Arg(1)->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(Adding)->Arg(1)->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(ManyRecords)
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace

BENCHMARK_MAIN();
