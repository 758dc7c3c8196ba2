#include "window/print_run.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <memory>

namespace Window {
namespace {

// A job that is printed sooner shows no bar at all.
constexpr int patienceMs = 400;
constexpr int barSteps = 1000;

struct Shared {
  std::atomic<int> step = 0;
  std::atomic<bool> stop = false;
  PrintResult result;
};

void run(const std::function<void(const Press::Progress&)>& job, Shared& shared) {
  try {
    job([&shared](int done, int total) {
      shared.step = total > 0 ? static_cast<int>(std::int64_t{done} * barSteps / total) : 0;
      return !shared.stop.load();
    });
  } catch (const Press::Cancelled&) {
    shared.result.end = PrintEnd::stopped;
  } catch (const std::exception& error) {
    shared.result = {PrintEnd::failed, QString::fromUtf8(error.what())};
  }
}

}  // namespace

PrintResult runWithProgress(const std::function<void(const Press::Progress&)>& job, const QString& name,
                            const Texts& texts, QWidget* parent) {
  Shared shared;
  const std::unique_ptr<QThread> worker(QThread::create([&] { run(job, shared); }));
  QEventLoop patience;
  QObject::connect(worker.get(), &QThread::finished, &patience, &QEventLoop::quit);
  QTimer::singleShot(patienceMs, &patience, &QEventLoop::quit);
  worker->start();
  patience.exec(QEventLoop::ExcludeUserInputEvents);

  if (!worker->isFinished()) {
    QProgressDialog bar(texts("PRINTING").arg(name), texts("STOP"), 0, barSteps, parent);
    bar.setWindowTitle(texts("PRINT_TITLE"));
    bar.setWindowModality(Qt::ApplicationModal);
    bar.setAutoReset(false);
    bar.setAutoClose(false);
    bar.setMinimumDuration(0);
    QEventLoop loop;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QObject::connect(&bar, &QProgressDialog::canceled, &bar, [&shared] { shared.stop = true; });
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &bar, [&] { bar.setValue(std::min(shared.step.load(), barSteps - 1)); });
    ticks.start(50);
    bar.show();
    if (!worker->isFinished()) loop.exec();
  }
  worker->wait();
  return shared.result;
}

PrintResult printWithProgress(const std::filesystem::path& document, const std::filesystem::path& out,
                              const Press::Effects& effects, const Texts& texts, QWidget* parent) {
  const auto job = [&](const Press::Progress& progress) { Press::printPdf(document, out, effects, progress); };
  return runWithProgress(job, toQt(document.filename().u16string()), texts, parent);
}

}  // namespace Window
