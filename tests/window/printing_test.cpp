// "Print...": the file dialog, the run, and what is said of its end.
#include "window/print_run.h"

#include "press/sample.h"
#include "tests/window/open_window.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <fstream>

namespace Window {
namespace {

class PrintingTest : public testing::Test {
 protected:
  // Presses "Print...", and Save in the file dialog with this name.
  void print(const QString& name) {
    QTimer::singleShot(0, open.window.get(), [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      offered = dialog->selectedFiles().value(0);
      dialog->findChild<QLineEdit*>()->setText(name);
      QMetaObject::invokeMethod(dialog, "accept");
    });
    open.find<QPushButton>("PRINT_BUTTON").click();
  }

  QString said() {
    QCoreApplication::processEvents();
    auto* box = open.window->findChild<QMessageBox*>();
    return box == nullptr ? QString() : box->text();
  }

  QTemporaryDir folder;
  QString offered;
  Testing::OpenWindow open{[this](Request& request) {
    request.document = folder.filePath("letter.pdf").toStdString();
    std::ofstream(request.document, std::ios::binary) << Press::samplePdf();
  }};
};

TEST_F(PrintingTest, OffersANameBesideTheJob) {
  print(folder.filePath("out.pdf"));
  EXPECT_EQ(offered, folder.filePath("letter printed.pdf"));
}

TEST_F(PrintingTest, WritesTheJobWithItsEffectsAndSaysSo) {
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  const QImage shown = open.page();
  const QString out = folder.filePath("out.pdf");
  print(out);
  EXPECT_EQ(said(), "The job is printed to \u201cout.pdf\u201d.");

  Testing::OpenWindow again([&](Request& request) { request.document = out.toStdString(); });
  EXPECT_EQ(again.page(), shown);
}

TEST_F(PrintingTest, LeavesTheSettingsOpen) {
  print(folder.filePath("out.pdf"));
  EXPECT_TRUE(open.window->isVisible());
  EXPECT_NE(open.window->preferences().gui(), nullptr);
}

TEST_F(PrintingTest, ThatFailsSaysWhyAndLeavesTheFileAsItWas) {
  const QString out = folder.filePath("out.pdf");
  std::ofstream(out.toStdString()) << "as it was";
  std::ofstream(folder.filePath("letter.pdf").toStdString()) << "damaged meanwhile";
  QTimer::singleShot(200, open.window.get(), [] {
    // The question whether to replace the file.
    for (QWidget* top : QApplication::topLevelWidgets())
      if (auto* box = qobject_cast<QMessageBox*>(top)) box->button(QMessageBox::Yes)->click();
  });
  print(out);
  EXPECT_TRUE(said().contains("letter.pdf")) << said().toStdString();
  std::string kept;
  std::getline(std::ifstream(out.toStdString()), kept);
  EXPECT_EQ(kept, "as it was");
}

class PrintRunTest : public testing::Test {
 protected:
  Testing::OpenWindow open;
  Texts texts{open.window->preferences().strings()};
};

TEST_F(PrintRunTest, StopsWhenTheUserSaysSo) {
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] {
    if (auto* bar = open.window->findChild<QProgressDialog*>()) bar->findChild<QPushButton*>()->click();
  });
  ticks.start(50);
  const auto endless = [](const Press::Progress& progress) {
    for (int page = 0; progress(page % 100, 100); ++page) QThread::msleep(5);
    throw Press::Cancelled();
  };
  EXPECT_EQ(runWithProgress(endless, "job", texts, open.window.get()).end, PrintEnd::stopped);
}

TEST_F(PrintRunTest, ShowsHowFarItIs) {
  int highest = 0;
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] {
    if (auto* bar = open.window->findChild<QProgressDialog*>()) highest = std::max(highest, bar->value());
  });
  ticks.start(20);
  const auto slow = [](const Press::Progress& progress) {
    for (int page = 0; page < 40; ++page) {
      progress(page, 40);
      QThread::msleep(25);
    }
  };
  EXPECT_EQ(runWithProgress(slow, "job", texts, open.window.get()).end, PrintEnd::done);
  EXPECT_GT(highest, 500);
}

TEST_F(PrintRunTest, ThatFailsHasASentence) {
  const PrintResult result =
      runWithProgress([](const auto&) { throw Press::Error("No paper."); }, "job", texts, nullptr);
  EXPECT_EQ(result.end, PrintEnd::failed);
  EXPECT_EQ(result.failure, "No paper.");
}

}  // namespace
}  // namespace Window
