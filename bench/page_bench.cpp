// Latency from a click to the drawn page: the window shows a page of a 1000-page text job, a setting is clicked, and
// the new picture is on the screen. Up to 50 ms feel instantaneous.
//
//   Mirror, Negative  toggles a page effect
//   Watermark         chooses another watermark
//   Overlay           moves the overlay above or below the page
//
// Each with the window in its initial size, and filling a 4K screen. The CPU column is the time of all threads, which
// is more reliable than wall-clock time on a busy machine.
#include "bench/press/sample_jobs.h"
#include "tests/window/open_window.h"

#include <benchmark/benchmark.h>

#include <QComboBox>
#include <QListWidget>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

namespace {

Testing::OpenWindow* open = nullptr;

// Returns when the page has been painted.
void settle() {
  while (!open->window->isSettled()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QCoreApplication::processEvents();
}

enum Size { asItOpens, filling4K };

void fit(const benchmark::State& state) {
  static const QSize opened = open->window->size();
  open->window->resize(state.range(0) == filling4K ? QSize(3840, 2160) : opened);
  QCoreApplication::processEvents();
  settle();
}

void click(benchmark::State& state, const char* name) {
  fit(state);
  auto& box = open->find<QCheckBox>(name);
  for (auto _ : state) {
    box.click();
    settle();
  }
  if (box.isChecked()) box.click();
  settle();
}

void Mirror(benchmark::State& state) { click(state, "ePTKWPageMirrorImage"); }

void Negative(benchmark::State& state) { click(state, "ePTKWPageNegativeImage"); }

void Watermark(benchmark::State& state) {
  fit(state);
  auto& list = open->find<QListWidget>("lst_selectedWatermark");
  for (auto _ : state) {
    Testing::press(list, list.currentRow() == list.count() - 1 ? Qt::Key_Up : Qt::Key_Down);
    QCoreApplication::processEvents();
    settle();
  }
}

void Overlay(benchmark::State& state) { click(state, "ePTKWJobOverlayImage_Layering"); }

#define OF_BOTH_SIZES(name)                                                                                            \
  BENCHMARK(name)                                                                                                      \
      ->ArgName("4K")                                                                                                  \
      ->Arg(asItOpens)                                                                                                 \
      ->Arg(filling4K)                                                                                                 \
      ->Unit(benchmark::kMillisecond)                                                                                  \
      ->UseRealTime()                                                                                                  \
      ->MeasureProcessCPUTime()
OF_BOTH_SIZES(Mirror);
OF_BOTH_SIZES(Negative);
OF_BOTH_SIZES(Watermark);
OF_BOTH_SIZES(Overlay);

void writeFile(const std::filesystem::path& name, const std::string& bytes) {
  std::ofstream file(name, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) std::abort();
}

// A home with one overlay: its file and its index record.
void storeOverlay(const std::filesystem::path& home) {
  const auto folder = home / "profile" / "overlays";
  std::filesystem::create_directories(folder);
  std::string record(154, '\0');
  const auto put = [&record](std::size_t place, std::string_view text) {
    for (const char letter : text) record[std::exchange(place, place + 2)] = letter;
  };
  put(0, "Form");
  put(128, "00001.opa");
  writeFile(folder / "ovlNmFl.flo", record);
  writeFile(folder / "00001.opa", textJob(1));
}

}  // namespace

int main(int count, char** arguments) {
  const QTemporaryDir folder;
  writeFile(folder.filePath("screen.json").toStdString(), R"({"screens": [{"name": "4K", "x": 0, "y": 0, "width": 3840,
    "height": 2160, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  writeFile(folder.filePath("job.pdf").toStdString(), textJob(1000));
  qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + folder.filePath("screen.json")).toUtf8());
  benchmark::Initialize(&count, arguments);
  const QApplication application(count, arguments);
  Testing::OpenWindow opened([&](Window::Request& request) {
    request.document = folder.filePath("job.pdf").toStdString();
    storeOverlay(request.preferences.home);
  });
  open = &opened;
  Testing::press(opened.find<QComboBox>("cmb_EffOverlay"), Qt::Key_End);
  settle();
  benchmark::RunSpecifiedBenchmarks();
}
