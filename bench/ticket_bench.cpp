// PrintTickets: the cost of a round trip, and its growth with foreign content.
#include "files/disk.h"
#include "host/documents/documents.h"
#include "host/model/properties.h"
#include "host/ticket/conversion.h"
#include "host/ticket/foreign_content.h"
#include "host/ticket/schema.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace {

using namespace Refhost;

struct World {
  World() {
    model->start(u"Watermark", u"Watermark");
    model->start(u"WatermarkText", u"Confidential");
    model->start(u"OverlayImage", u"OverlayImage");
    model->start(u"OverlaySourceFileName", u"C:\\Users\\somebody\\overlays\\01234.opa");
  }

  const std::filesystem::path resources = RESOURCES_FOLDER;
  Trace trace;
  Kiln::SmartPtr<PropertyModel> model = make<PropertyModel>(readModel(resources / "models", "standard"), trace);
  const std::string schemaBytes =
      Files::realDisk().read(resources / "effect" / "content" / "schema_effect.xml", 1 << 20);
  const TicketSchema schema = readSchema(*readXml(schemaBytes, "schema", documentLimits));
};

std::string write(World& world, const ForeignContent& foreign) {
  const auto root = make<Node>(u"PrintTicket");
  writeTicket(world.schema, *world.model, Kiln::PTLevel::job, *root);
  foreign.addTo(world.schema, *root);
  return writeXml(*root);
}

// Reads a ticket's bytes into the properties, and collects its foreign content.
ForeignContent read(World& world, const std::string& bytes) {
  const auto root = readXml(bytes, "ticket", documentLimits);
  for (const auto& [name, value] : readTicket(world.schema, *world.model, *root))
    world.model->child(name)->setValue(value);
  return {world.schema, *world.model, *root};
}

// Properties to bytes and back, with a number of foreign features in the ticket.
void roundTrip(benchmark::State& state) {
  World world;
  std::string foreignFeatures;
  for (long i = 0; i < state.range(0); ++i)
    foreignFeatures += "<psf:Feature name=\"kw:F" + std::to_string(i) +
                       "\"><psf:Option name=\"kw:On\"><psf:ScoredProperty name=\"kw:S\"><psf:Value "
                       "xsi:type=\"xsd:integer\">7</psf:Value></psf:ScoredProperty></psf:Option></psf:Feature>";
  std::string bytes = write(world, {});
  bytes.insert(bytes.rfind("</psf:PrintTicket>"), foreignFeatures);
  ForeignContent foreign = read(world, bytes);
  for (auto step : state) {
    (void)step;
    bytes = write(world, foreign);
    foreign = read(world, bytes);
  }
  state.SetComplexityN(state.range(0));
  state.counters["bytes"] = static_cast<double>(bytes.size());
}
BENCHMARK(roundTrip)->Unit(benchmark::kMicrosecond)->Arg(0);
BENCHMARK(roundTrip)
    ->Name("foreignFeatures")
    ->Unit(benchmark::kMicrosecond)
    ->RangeMultiplier(4)
    ->Range(1 << 8, 1 << 16)
    ->Complexity(benchmark::oN);

// The conversions without XML.
void nodesOnly(benchmark::State& state) {
  World world;
  for (auto step : state) {
    (void)step;
    const auto root = make<Node>(u"PrintTicket");
    writeTicket(world.schema, *world.model, Kiln::PTLevel::job, *root);
    benchmark::DoNotOptimize(readTicket(world.schema, *world.model, *root));
  }
}
BENCHMARK(nodesOnly)->Unit(benchmark::kMicrosecond);

void schemaIsRead(benchmark::State& state) {
  World world;
  for (auto step : state) {
    (void)step;
    benchmark::DoNotOptimize(readSchema(*readXml(world.schemaBytes, "schema", documentLimits)));
  }
}
BENCHMARK(schemaIsRead)->Unit(benchmark::kMicrosecond);

}  // namespace
