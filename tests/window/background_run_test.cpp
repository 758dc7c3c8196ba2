// Tasks in the background: the bar, the stop, and how they end.
#include "host/profiles/archive.h"
#include "press/error.h"
#include "tests/window/open_window.h"
#include "window/dialogs/background_run.h"

#include <gtest/gtest.h>

#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <chrono>

namespace Window {
namespace {

class BackgroundRunTest : public testing::Test {
 protected:
  RunResult run(const std::function<void(const RunProgress&)>& task, std::chrono::milliseconds patience = {}) {
    return runWithProgress(task, {"Packing", "Packing it..."}, texts, open.window.get(), patience);
  }

  // Calls this every now and then while the bar is shown.
  void whileShown(const std::function<void(QProgressDialog&)>& look) {
    QObject::connect(&ticks, &QTimer::timeout, &ticks, [this, look] {
      if (auto* bar = open.window->findChild<QProgressDialog*>()) look(*bar);
    });
    ticks.start(20);
  }

  QTimer ticks;
  Testing::OpenWindow open;
  Texts texts{open.window->preferences().strings()};
};

void tellUntilStopped(const RunProgress& progress) {
  for (int step = 0; progress(step % 100, 100); ++step) QThread::msleep(5);
}

TEST_F(BackgroundRunTest, StopsWhenTheUserSaysSo) {
  whileShown([](QProgressDialog& bar) { bar.findChild<QPushButton*>()->click(); });
  const auto print = [](const RunProgress& progress) {
    tellUntilStopped(progress);
    throw Press::Stopped();
  };
  const auto pack = [](const RunProgress& progress) {
    tellUntilStopped(progress);
    throw Refhost::Stopped();
  };
  EXPECT_EQ(run(print).end, RunEnd::stopped);
  EXPECT_EQ(run(pack).end, RunEnd::stopped);
}

TEST_F(BackgroundRunTest, StopsByTheEscapeKey) {
  whileShown([](QProgressDialog& bar) { Testing::press(bar, Qt::Key_Escape); });
  EXPECT_EQ(run([](const RunProgress& progress) {
              tellUntilStopped(progress);
              throw Press::Stopped();
            }).end,
            RunEnd::stopped);
}

TEST_F(BackgroundRunTest, KeepsTheUserOutUntilItHasStopped) {
  bool wasAsked = false;
  bool isShown = false;
  bool canBeAskedAgain = true;
  std::atomic<bool> mayEnd = false;
  whileShown([&](QProgressDialog& bar) {
    if (!wasAsked) {
      wasAsked = true;
      return Testing::press(bar, Qt::Key_Escape);
    }
    isShown = bar.isVisible();
    canBeAskedAgain = bar.findChild<QPushButton*>()->isEnabled();
    mayEnd = true;
  });
  EXPECT_EQ(run([&](const RunProgress& progress) {
              tellUntilStopped(progress);
              while (!mayEnd) QThread::msleep(5);
              throw Press::Stopped();
            }).end,
            RunEnd::stopped);
  EXPECT_TRUE(isShown);
  EXPECT_FALSE(canBeAskedAgain);
}

TEST_F(BackgroundRunTest, ShowsWhatItDoesAndHowFarItIs) {
  std::atomic<int> highest = 0;
  QString title;
  QString doing;
  whileShown([&](QProgressDialog& bar) {
    highest = bar.value();
    title = bar.windowTitle();
    doing = bar.labelText();
  });
  const auto slow = [&](const RunProgress& progress) {
    progress(30, 40);
    while (highest < 750) QThread::msleep(5);
  };
  EXPECT_EQ(run(slow).end, RunEnd::done);
  EXPECT_EQ(highest, 750);
  EXPECT_EQ(title, "Packing");
  EXPECT_EQ(doing, "Packing it...");
}

TEST_F(BackgroundRunTest, ThatIsOverSoonShowsNoBar) {
  bool isShown = false;
  std::atomic<int> looks = 0;
  QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] { ++looks; });
  whileShown([&](QProgressDialog&) { isShown = true; });
  run(
      [&](const RunProgress&) {
        while (looks < 3) QThread::msleep(5);
      },
      std::chrono::hours(1));
  EXPECT_FALSE(isShown);
}

TEST_F(BackgroundRunTest, ThatLastsShowsABarByItself) {
  std::atomic<bool> isShown = false;
  whileShown([&](QProgressDialog& bar) { isShown = bar.isVisible(); });
  const RunResult result = run(
      [&](const RunProgress&) {
        while (!isShown) QThread::msleep(5);
      },
      runPatience);
  EXPECT_EQ(result.end, RunEnd::done);
  EXPECT_TRUE(isShown);
}

TEST_F(BackgroundRunTest, ThatFailsHasASentence) {
  const RunResult result = run([](const auto&) { throw Press::Error("No paper."); });
  EXPECT_EQ(result.end, RunEnd::failed);
  EXPECT_EQ(result.failure, "No paper.");
}

}  // namespace
}  // namespace Window
