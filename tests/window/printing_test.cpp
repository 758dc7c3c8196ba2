// "Print...": the file dialog, and the final message.
#include "press/job/sample.h"
#include "tests/window/open_window.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
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
  // The question whether to replace the file.
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &looks, [&looks] {
    auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (question == nullptr) return;
    looks.stop();
    question->button(QMessageBox::Yes)->click();
  });
  looks.start(10);
  print(out);
  EXPECT_TRUE(said().contains("letter.pdf")) << said().toStdString();
  std::string kept;
  std::getline(std::ifstream(out.toStdString()), kept);
  EXPECT_EQ(kept, "as it was");
}

TEST_F(PrintingTest, TellsOfAFaceThatIsMissing) {
  auto& marks = open.find<QListWidget>("lst_selectedWatermark");
  Testing::press(marks, Qt::Key_Down);
  open.settle();
  auto& notes = open.find<QLabel>("notes");
  EXPECT_TRUE(notes.isHidden()) << notes.text().toStdString();
  open.window->preferences().set(u"WatermarkTextFont", u"No Such Face");
  open.settle();
  EXPECT_TRUE(notes.isVisible());
  EXPECT_TRUE(notes.text().contains("No Such Face")) << notes.text().toStdString();

  print(folder.filePath("out.pdf"));
  EXPECT_EQ(said(), "The job is printed to \u201cout.pdf\u201d.");
  EXPECT_EQ(open.window->findChild<QMessageBox*>()->informativeText(), notes.text());
}

}  // namespace
}  // namespace Window
