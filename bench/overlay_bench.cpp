// The overlay store and its formats.
//
//   Opening    the store of a home with 20 overlays in each of many local-data folders
//   Deleting   one overlay of such a home, with the index written
//   ReadIndex  parsing an index, in bytes per second
//   FileList   parsing a list of overlays, in bytes per second
//   Thumbnail  the host's validation of a thumbnail
#include "formats/file_list.h"
#include "tests/overlay/overlay_home.h"
#include "tests/overlay/thumbnails.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int overlaysInFolder = 20;

void putLocalData(const OverlayHome& home, std::int64_t folders) {
  for (std::int64_t folder = 0; folder < folders; ++folder) {
    OverlayHome::Names names;
    for (int i = 0; i < overlaysInFolder; ++i) {
      const std::string number = std::to_string(10'000 + folder * overlaysInFolder + i);
      names.emplace_back(Formats::toUtf16("form " + number), Formats::toUtf16(number + ".opa"));
    }
    home.putLocal("folder" + std::to_string(folder), names);
  }
}

void Opening(benchmark::State& state) {
  const OverlayHome home;
  putLocalData(home, state.range(0));
  OverlayStore world(home.folder.path);
  world.set(u"kilnworks.tips.userdata.support", u"True");
  std::int32_t count = 0;
  for (auto _ : state) count = world.open()->count();
  state.counters["overlays"] = count;
  state.SetComplexityN(state.range(0));
}

void Deleting(benchmark::State& state) {
  const OverlayHome home;
  putLocalData(home, state.range(0));
  OverlayStore world(home.folder.path);
  for (auto _ : state) {
    state.PauseTiming();
    home.putUser({{u"mine", u"00001.opa"}});
    const auto store = world.open();
    state.ResumeTiming();
    store->removeOverlay(u"00001.opa", false);
    store->save();
  }
  state.SetComplexityN(state.range(0));
}

void ReadIndex(benchmark::State& state) {
  std::string bytes;
  for (int i = 0; i < 10'000; ++i) bytes += recordBytes(u"A form of the personnel department", u"01234.opa");
  for (auto _ : state) benchmark::DoNotOptimize(Effect::readIndex(bytes));
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * state.iterations());
}

void FileList(benchmark::State& state) {
  std::u16string list;
  for (int i = 0; i < 10'000; ++i) Effect::append(list, u"/home/someone/profile/overlays/01234.opa", u"1,3,5-9");
  for (auto _ : state)
    for (std::u16string_view rest = list; !rest.empty();) benchmark::DoNotOptimize(Effect::takeFirst(rest));
  state.SetBytesProcessed(static_cast<std::int64_t>(list.size() * sizeof(char16_t)) * state.iterations());
}

void Thumbnail(benchmark::State& state) {
  const OverlayHome home;
  const auto file = home.folder.path / "thumbnail.bmp";
  Testing::writeFile(file, bitmap(182, 256));
  OverlayStore world(home.folder.path);
  for (auto _ : state) benchmark::DoNotOptimize(world.host.image(file.u16string(), {}));
}

BENCHMARK(Opening)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(Deleting)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(ReadIndex)->Unit(benchmark::kMillisecond);
BENCHMARK(FileList)->Unit(benchmark::kMillisecond);
BENCHMARK(Thumbnail)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
