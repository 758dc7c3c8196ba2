// "Print...": what is checked first, the dialogs, and the final message.
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/window/answers.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>

#include <fstream>

namespace Window {
namespace {

class PrintingTest : public testing::Test {
 protected:
  // Presses "Print...", Print in the dialog, and Save in the file dialog with this name.
  void print(const QString& name) {
    const auto save = [&](QWidget& dialog) {
      offered = dynamic_cast<QFileDialog&>(dialog).selectedFiles().value(0);
      Testing::file(name)(dialog);
    };
    answers.during([this] { open.find<QPushButton>("PRINT_BUTTON").click(); }, {Testing::button("Print"), save});
    EXPECT_EQ(answers.unexpected, QStringList());
  }

  QString said() {
    QCoreApplication::processEvents();
    auto* box = open.window->findChild<QMessageBox*>();
    return box == nullptr ? QString() : box->text();
  }

  std::string recorded() const {
    std::ifstream script(folder.filePath("session.drive").toStdString(), std::ios::binary);
    return {std::istreambuf_iterator<char>(script), {}};
  }

  QTemporaryDir folder;
  QString offered;
  Testing::OpenWindow open{[this](Request& request) {
    request.document = folder.filePath("letter.pdf").toStdString();
    request.record = folder.filePath("session.drive").toStdString();
    std::ofstream(request.document, std::ios::binary) << Press::samplePdf();
  }};
  Testing::Answers answers{open};
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

TEST_F(PrintingTest, IsOfTheChosenPages) {
  const QString out = folder.filePath("out.pdf");
  const auto choosePages = [](QWidget& dialog) {
    Testing::type(*dialog.findChild<QLineEdit*>("printPages"), "2-3");
    Testing::button("Print")(dialog);
  };
  answers.choose("PRINT", {choosePages, Testing::file(out)});
  EXPECT_EQ(Press::Job(out.toStdString()).pageCount(), 2);
}

TEST_F(PrintingTest, OfAJobThatCannotBePrintedIsRefusedBeforeATargetIsAskedFor) {
  std::ofstream(folder.filePath("letter.pdf").toStdString()) << "damaged meanwhile";
  answers.choose("PRINT", {});
  EXPECT_EQ(answers.unexpected, QStringList());
  EXPECT_TRUE(said().contains("letter.pdf\" is not a PDF")) << said().toStdString();
}

TEST_F(PrintingTest, ThatIsCancelledPrintsNothing) {
  answers.choose("PRINT", {Testing::escape});
  EXPECT_EQ(said(), QString());
}

TEST_F(PrintingTest, ThatIsCancelledChangesNothing) {
  // What accepting the preferences clears.
  Refhost::Preferences& preferences = open.window->preferences();
  preferences.set(u"OverlayDestFileName", u"earlier.opa");
  const std::string before = recorded();
  answers.choose("PRINT", {Testing::escape});
  answers.choose("PRINT", {Testing::button("Print"), Testing::escape});
  EXPECT_EQ(open.value(u"OverlayDestFileName"), "earlier.opa");
  EXPECT_EQ(recorded(), before);
  print(folder.filePath("out.pdf"));
  EXPECT_EQ(open.value(u"OverlayDestFileName"), "");
  EXPECT_TRUE(recorded().starts_with(before + "print\n#= {\"ok\":true}\n")) << recorded();
}

TEST_F(PrintingTest, ThatFailsSaysWhyAndLeavesTheFileAsItWas) {
  const QString out = folder.filePath("out.pdf");
  std::ofstream(out.toStdString()) << "as it was";
  const auto damageAndSave = [&](QWidget& dialog) {
    std::ofstream(folder.filePath("letter.pdf").toStdString()) << "damaged meanwhile";
    Testing::file(out)(dialog);
  };
  const auto replace = [](QWidget& dialog) { dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Yes)->click(); };
  answers.choose("PRINT", {Testing::button("Print"), damageAndSave, replace});
  EXPECT_TRUE(said().contains("letter.pdf")) << said().toStdString();
  std::string kept;
  std::getline(std::ifstream(out.toStdString()), kept);
  EXPECT_EQ(kept, "as it was");
}

TEST_F(PrintingTest, AsksForAFileWithTheFactsOfOthersInFull) {
  std::vector<std::string> cutOff = {"nothing shown"};
  answers.choose("OPEN", {[&](QWidget& dialog) {
                   auto& files = *dialog.findChild<QTreeView*>("treeView");
                   Testing::waitUntil([&] { return files.model()->rowCount(files.rootIndex()) > 0; });
                   QCoreApplication::processEvents();
                   cutOff.clear();
                   for (int column = 0; column < files.model()->columnCount(); ++column)
                     if (files.columnWidth(column) < static_cast<QAbstractItemView&>(files).sizeHintForColumn(column))
                       cutOff.push_back(std::to_string(column));
                   const auto& places = *dialog.findChild<QListView*>("sidebar");
                   if (places.viewport()->width() < places.sizeHintForColumn(0)) cutOff.emplace_back("places");
                   Testing::escape(dialog);
                 }});
  EXPECT_EQ(cutOff, std::vector<std::string>());
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
