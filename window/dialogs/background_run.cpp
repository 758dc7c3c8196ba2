#include "window/dialogs/background_run.h"

#include "host/profiles/archive.h"
#include "press/error.h"
#include "window/dialogs/plain_labels.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>

namespace Window {
namespace {

constexpr int barSteps = 1000;

struct Shared {
  std::atomic<int> step = 0;
  std::atomic<bool> stop = false;
  RunResult result;
};

void run(const std::function<void(const RunProgress&)>& task, Shared& shared) {
  try {
    task([&shared](int done, int total) {
      shared.step = total > 0 ? static_cast<int>(std::int64_t{done} * barSteps / total) : 0;
      return !shared.stop.load();
    });
  } catch (const Press::Stopped&) {
    shared.result.end = RunEnd::stopped;
  } catch (const Refhost::Stopped&) {
    shared.result.end = RunEnd::stopped;
  } catch (const std::exception& error) {
    shared.result = {RunEnd::failed, QString::fromUtf8(error.what())};
  }
}

}  // namespace

RunResult runWithProgress(const std::function<void(const RunProgress&)>& task, const RunName& name, const Texts& texts,
                          QWidget* parent, std::chrono::milliseconds patience) {
  Shared shared;
  const std::unique_ptr<QThread> worker(QThread::create([&] { run(task, shared); }));
  QEventLoop beforeBar;
  QObject::connect(worker.get(), &QThread::finished, &beforeBar, &QEventLoop::quit);
  QTimer::singleShot(patience, &beforeBar, &QEventLoop::quit);
  worker->start();
  beforeBar.exec(QEventLoop::ExcludeUserInputEvents);

  if (!worker->isFinished()) {
    QProgressDialog bar(plainText(name.doing), texts("STOP"), 0, barSteps, parent);
    showPlain(bar);
    bar.setWindowTitle(name.title);
    bar.setWindowModality(Qt::ApplicationModal);
    bar.setAutoReset(false);
    bar.setAutoClose(false);
    bar.setMinimumDuration(0);
    QEventLoop loop;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    // Keep the bar until the task has stopped, so that the windows stay disabled.
    auto* stop = bar.findChild<QPushButton*>();
    QObject::disconnect(&bar, SIGNAL(canceled()), &bar, SLOT(cancel()));  // must match Qt's connection
    const auto askToStop = [&shared, stop] {
      shared.stop = true;
      stop->setEnabled(false);
    };
    QObject::connect(&bar, &QProgressDialog::canceled, &bar, askToStop);
    QObject::connect(&bar, &QDialog::finished, &bar, askToStop);
    QObject::connect(&bar, &QDialog::finished, &bar, &QWidget::show, Qt::QueuedConnection);
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &bar, [&] { bar.setValue(std::min(shared.step.load(), barSteps - 1)); });
    ticks.start(50);
    bar.show();
    if (!worker->isFinished()) loop.exec();
  }
  worker->wait();
  return shared.result;
}

}  // namespace Window
