// Reading documents, up to the most that a document may have.
//
//   Records     elements with a text each
//   Attributes  attributes of one element
//   Prefixes    namespace declarations of one element
//   LongText    one text, in bytes
#include "host/documents/documents.h"
#include "host/documents/stores.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace Refhost;

void read(benchmark::State& state, std::string bytes) {
  state.counters["bytes"] = static_cast<double>(bytes.size());
  const auto store = memoryStore(std::move(bytes));
  for (auto _ : state) benchmark::DoNotOptimize(makeDocuments()->read(store));
  state.SetComplexityN(state.range(0));
}

void Records(benchmark::State& state) {
  std::string document = "<marks>";
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    const std::string name = "WM_" + std::to_string(i);
    document += "<" + name + ">Draft</" + name + ">";
  }
  read(state, document + "</marks>");
}

void Attributes(benchmark::State& state) {
  std::string document = "<a";
  for (std::int64_t i = 0; i < state.range(0); ++i) document += " b" + std::to_string(i) + "=''";
  read(state, document + "/>");
}

void Prefixes(benchmark::State& state) {
  std::string document = "<a";
  for (std::int64_t i = 0; i < state.range(0); ++i)
    document += " xmlns:p" + std::to_string(i) + "='urn:" + std::to_string(i) + "'";
  read(state, document + "/>");
}

void LongText(benchmark::State& state) {
  read(state, "<a>" + std::string(static_cast<std::size_t>(state.range(0)), 'x') + "</a>");
}

void sizes(benchmark::internal::Benchmark* reading, std::int64_t most) {
  reading->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
  for (const std::int64_t divisor : {100, 10, 1}) reading->Arg(most / divisor);
}

BENCHMARK(Records)->Apply([](auto* reading) { sizes(reading, 1'000'000); });
BENCHMARK(Attributes)->Apply([](auto* reading) { sizes(reading, 300'000); });
BENCHMARK(Prefixes)->Apply([](auto* reading) { sizes(reading, 100'000); });
BENCHMARK(LongText)->Apply([](auto* reading) { sizes(reading, 30 << 20); });

}  // namespace
