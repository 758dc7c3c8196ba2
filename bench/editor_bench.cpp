// Latency from a typed character to the updated preview: the watermark editor fills a 4K screen at 200 %, one character
// is typed, and the screen is painted. A frame lasts 16 ms.
//
//   Typing            black text, the most common case
//   TypingSeeThrough  half transparent, rotated and in a face without a bold design
//   Turning           one step of the angle's scroll bar
//   OpeningFaces      the list of the machine's faces, each named in its own
#include "tests/window/open_window.h"
#include "window/dialogs/dialog_window.h"

#include <benchmark/benchmark.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

#include <cstdlib>

namespace {

QWidget* editor = nullptr;

template <class Widget>
Widget& find(const char* name) {
  return *editor->findChild<Widget*>(name);
}

void type(const QString& text) {
  auto& line = find<QLineEdit>("txt_EffWMTxtBox");
  for (const QChar letter : text) {
    QKeyEvent down(QEvent::KeyPress, 0, {}, letter);
    QCoreApplication::sendEvent(&line, &down);
  }
  QCoreApplication::processEvents();
}

void startWith(const QString& text) {
  find<QLineEdit>("txt_EffWMTxtBox").selectAll();
  type(text);
}

// Each iteration types one letter, and restarts before the box is full.
void typeOn(benchmark::State& state) {
  int typed = 0;
  for (auto _ : state) {
    if (typed++ % 20 == 0) {
      state.PauseTiming();
      startWith("Confidential");
      state.ResumeTiming();
    }
    type("g");
  }
}

void Typing(benchmark::State& state) { typeOn(state); }

void TypingSeeThrough(benchmark::State& state) {
  find<QSlider>("scr_EffWMAngScroll").setValue(45);
  find<QAbstractButton>("rad_EffWMTrans").click();
  find<QSlider>("scr_EffWMOpaScroll").setValue(50);
  typeOn(state);
}

void Turning(benchmark::State& state) {
  startWith("Confidential");
  auto& angle = find<QSlider>("scr_EffWMAngScroll");
  for (auto _ : state) {
    angle.setValue((angle.value() + 1) % 90);
    QCoreApplication::processEvents();
  }
}

void OpeningFaces(benchmark::State& state) {
  auto& faces = find<QComboBox>("cmb_EffWMFonNam");
  for (auto _ : state) {
    faces.showPopup();
    QCoreApplication::processEvents();
    state.PauseTiming();
    faces.hidePopup();
    QCoreApplication::processEvents();
    state.ResumeTiming();
  }
  state.counters["faces"] = faces.count();
}

BENCHMARK(Typing)->Unit(benchmark::kMillisecond);
BENCHMARK(TypingSeeThrough)->Unit(benchmark::kMillisecond);
BENCHMARK(Turning)->Unit(benchmark::kMillisecond);
BENCHMARK(OpeningFaces)->Unit(benchmark::kMillisecond);

// Qt reads its offscreen configuration from a file.
QString screenFile(const QTemporaryDir& folder) {
  QFile file(folder.filePath("screen.json"));
  if (!file.open(QIODevice::WriteOnly)) std::abort();
  file.write(R"({"screens": [{"name": "4K", "x": 0, "y": 0, "width": 3840, "height": 2160,
                 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  return file.fileName();
}

}  // namespace

int main(int count, char** arguments) {
  const QTemporaryDir folder;
  qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screenFile(folder)).toUtf8());
  qputenv("QT_SCALE_FACTOR", "2");
  benchmark::Initialize(&count, arguments);
  const QApplication application(count, arguments);
  Testing::OpenWindow open;
  QTimer::singleShot(0, open.window.get(), [] {
    editor = QApplication::activeModalWidget();
    editor->showMaximized();
    QCoreApplication::processEvents();
    benchmark::RunSpecifiedBenchmarks();
    qobject_cast<QDialog*>(editor)->reject();
  });
  open.find<QPushButton>("btn_WMAdd").click();
}
