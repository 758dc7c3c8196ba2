// "Print into overlay...": the questions, the overlay, and the updated tab.
#include "press/job/sample.h"
#include "press/pdf/bytes.h"
#include "tests/files/failing_disk.h"
#include "tests/window/answers.h"
#include "window/widgets/picture_box.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

#include <algorithm>
#include <fstream>
#include <map>

namespace Window {
namespace {

using Testing::button;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Testing::name;

// A one-page job, all black.
std::string blackPage() {
  using Press::reference;
  Press::PdfBytes pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int content = pdf.addStream("", "0 g 0 0 595 842 re f");
  const int page = pdf.add("<< /Type /Page /Parent " + reference(pages) + " /MediaBox [0 0 595 842] /Contents " +
                           reference(content) + " >>");
  pdf.set(pages, "<< /Type /Pages /Count 1 /Kids [" + reference(page) + "] >>");
  pdf.set(catalog, "<< /Type /Catalog /Pages " + reference(pages) + " >>");
  return pdf.finish(catalog);
}

// A disk without space for overlays.
class FullDisk final : public FailingDisk {
 public:
  FullDisk() : FailingDisk(Files::realDisk()) {}
  bool isFull = false;

  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    if (isFull && target.extension() == ".opa") fail(target);
    return FailingDisk::create(temporary, target);
  }
};

class OverlayJobTest : public testing::Test {
 protected:
  std::filesystem::path overlays() {
    return std::filesystem::path(open.home.path().toStdString()) / "profile/overlays";
  }

  // The names of the files in the overlays' folder, except hidden ones.
  std::vector<std::string> endings() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(overlays())) found.push_back(entry.path().extension());
    std::sort(found.begin(), found.end());
    return found;
  }

  QStringList listed() {
    QStringList names;
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    for (int i = 2; i < list.count(); ++i) names << list.itemText(i);
    return names;
  }

  void print(std::deque<std::function<void(QWidget&)>> given) { answers.choose("PRINT_OVERLAY", std::move(given)); }

  // Chooses the list's last overlay.
  void chooseLast() {
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    Testing::press(list, Qt::Key_End);
    open.settle();
  }

  QString said() {
    auto* box = open.window->findChild<QMessageBox*>();
    return box == nullptr ? QString() : box->text();
  }

  QTemporaryDir folder;
  FullDisk disk;
  Testing::OpenWindow open{[this](Request& request) {
    request.preferences.disk = &disk;
    request.document = folder.filePath("letter.pdf").toStdString();
    std::ofstream(request.document, std::ios::binary) << Press::samplePdf();
  }};
  Testing::Answers answers{open};
};

TEST_F(OverlayJobTest, MakesAnOverlayThatTheTabHasAtOnce) {
  print({name("Letterhead")});
  EXPECT_EQ(said(), "The overlay \u201cLetterhead\u201d is ready: choose it from the list of overlays to print on it.");
  EXPECT_EQ(listed(), QStringList{"Letterhead"});
  EXPECT_THAT(endings(), ElementsAre(".bmp", ".flo", ".opa"));
  EXPECT_THAT(answers.unexpected, IsEmpty());

  EXPECT_TRUE(open.find<PictureBox>("img_EffOverlay").picture().isNull());
  chooseLast();
  EXPECT_FALSE(open.find<PictureBox>("img_EffOverlay").picture().isNull());
  EXPECT_EQ(open.value(u"OverlayImage"), "OverlayImage");
}

TEST_F(OverlayJobTest, PrintsTheOverlayAsTheJobWouldPrint) {
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  const QImage mirrored = open.page();
  print({name("Mirrored")});
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  chooseLast();
  open.find<QCheckBox>("ePTKWJobOverlayImage_Layering").click();
  open.settle();
  // The mirrored page is opaque except where blank, so it covers the page's own header.
  EXPECT_EQ(open.page().pixelColor(30, 30), mirrored.pixelColor(30, 30));
}

TEST_F(OverlayJobTest, OffersTheNamesInUse) {
  print({name("Letterhead")});
  print({name("Terms")});
  QStringList offered;
  print({[&](QWidget& dialog) {
    Testing::type(*dialog.findChild<QLineEdit*>(), "le");
    QCompleter* completer = dialog.findChild<QLineEdit*>()->completer();
    ASSERT_NE(completer, nullptr);
    for (int i = 0; completer->setCurrentRow(i); ++i) offered << completer->currentCompletion();
    Testing::escape(dialog);
  }});
  EXPECT_EQ(offered, QStringList{"Letterhead"});
}

TEST_F(OverlayJobTest, AsksBeforeItReplacesAndShowsTheNewOne) {
  print({name("Letterhead")});
  chooseLast();
  open.find<QCheckBox>("ePTKWJobOverlayImage_Layering").click();
  open.settle();
  const QImage before = open.page();
  const QImage thumbnail = open.find<PictureBox>("img_EffOverlay").picture().toImage();

  // Replaces the first form by a new one.
  std::ofstream(folder.filePath("letter.pdf").toStdString(), std::ios::binary) << blackPage();
  const std::string file = open.value(u"OverlaySel");
  print({name("Letterhead"), button("Replace")});
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(listed(), QStringList{"Letterhead"});
  EXPECT_EQ(open.value(u"OverlaySel"), file);
  EXPECT_THAT(endings(), ElementsAre(".bmp", ".flo", ".opa"));
  EXPECT_NE(open.find<PictureBox>("img_EffOverlay").picture().toImage(), thumbnail);
  EXPECT_NE(open.page(), before);
}

TEST_F(OverlayJobTest, KeepsTheOldOneWhenTheUserSaysSo) {
  print({name("Letterhead")});
  print({name("Letterhead"), Testing::escape});
  EXPECT_EQ(said(), QString());
  EXPECT_EQ(listed(), QStringList{"Letterhead"});
  EXPECT_THAT(endings(), ElementsAre(".bmp", ".flo", ".opa"));
}

TEST_F(OverlayJobTest, IsOffWhenTheUserCancels) {
  print({Testing::escape});
  EXPECT_EQ(said(), QString());
  EXPECT_EQ(listed(), QStringList());
  EXPECT_FALSE(std::filesystem::exists(overlays()));
}

TEST_F(OverlayJobTest, WaitsForAName) {
  print({[](QWidget& dialog) {
    const auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    const auto* about = dialog.findChild<QLabel*>("said");
    for (const auto& [name, text] : std::map<QString, QString>{
             {"", "Enter a name."},
             {"  ", "Enter a name."},
             {"multiple", "An overlay cannot have this name, because the list has an entry of that name: enter another "
                          "one."}}) {
      auto* line = dialog.findChild<QLineEdit*>();
      line->setText(name);
      EXPECT_FALSE(ok->isEnabled());
      EXPECT_EQ(about->text(), text);
      EXPECT_EQ(line->accessibleDescription(), text);
      Testing::press(*line, Qt::Key_Return);
      EXPECT_TRUE(dialog.isVisible());
    }
    dialog.findChild<QLineEdit*>()->clear();
    Testing::name("Terms")(dialog);
  }});
  EXPECT_EQ(listed(), QStringList("Terms"));
}

TEST_F(OverlayJobTest, SaysWhichEffectsBecomeAPartOfIt) {
  const auto notes = [](QString& text) {
    return [&text](QWidget& dialog) {
      const auto* note = dialog.findChild<QLabel*>("note");
      text = note == nullptr ? QString() : note->text();
      Testing::escape(dialog);
    };
  };
  QString text = "none yet";
  print({notes(text)});
  EXPECT_EQ(text, QString());
  Testing::press(open.find<QListWidget>("lst_selectedWatermark"), Qt::Key_Down);
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.window->preferences().set(u"Nin1", u"2in1");
  open.settle();
  print({notes(text)});
  EXPECT_EQ(text, "These settings become part of the overlay: Watermark, Mirror image, Pages per sheet.");
}

TEST_F(OverlayJobTest, ThatCannotBePrintedSaysWhyAndLeavesTheOldOverlay) {
  print({name("Letterhead")});
  chooseLast();
  std::ofstream(folder.filePath("letter.pdf").toStdString()) << "damaged meanwhile";
  print({});
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr("letter.pdf\" is not a PDF file"));
  EXPECT_THAT(endings(), ElementsAre(".bmp", ".flo", ".opa"));
  EXPECT_EQ(listed(), QStringList{"Letterhead"});
  EXPECT_EQ(open.value(u"OverlayImage"), "OverlayImage");
}

TEST_F(OverlayJobTest, ThatCannotBeWrittenSaysWhyAndHasTheOldOverlayBack) {
  print({name("Letterhead")});
  chooseLast();
  const std::filesystem::path file = open.value(u"OverlaySourceFileName");
  const QImage before = open.page();
  disk.isFull = true;
  print({name("Letterhead"), button("Replace")});
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr(file.filename().string()));
  EXPECT_TRUE(std::filesystem::exists(file));
  EXPECT_THAT(endings(), ElementsAre(".bmp", ".flo", ".opa"));
  EXPECT_EQ(listed(), QStringList{"Letterhead"});
  EXPECT_EQ(open.value(u"OverlaySourceFileName"), file.string());
  EXPECT_EQ(open.page(), before);
}

TEST_F(OverlayJobTest, SaysWhenThereIsNoRoom) {
  for (int i = 1; i <= 20; ++i) print({name("Form " + QString::number(i))});
  EXPECT_EQ(listed().size(), 20);
  QString text;
  print({[&](QWidget& dialog) {
    for (const auto* label : dialog.findChildren<QLabel*>()) text += label->text();
    Testing::escape(dialog);
  }});
  EXPECT_THAT(text.toStdString(), HasSubstr("20 overlays"));
  EXPECT_EQ(listed().size(), 20);
  EXPECT_EQ(said(), QString());
}

TEST_F(OverlayJobTest, LeavesTheSettingsAsTheyWere) {
  const auto before = open.window->preferences().model().values();
  print({name("Letterhead")});
  EXPECT_EQ(open.window->preferences().model().values(), before);
}

TEST_F(OverlayJobTest, IsTakenBackByUndo) {
  print({name("Letterhead")});
  EXPECT_EQ(open.find<QPushButton>("UNDO").toolTip(), "Undo: Add overlay (Ctrl+Z)");
  open.find<QPushButton>("UNDO").click();
  open.settle();
  EXPECT_EQ(listed(), QStringList());
}

TEST_F(OverlayJobTest, IsSeenInTheInspector) {
  print({name("Letterhead")});
  open.find<QWidget>("inspector").show();
  const std::string events = open.find<QPlainTextEdit>("events").toPlainText().toStdString();
  EXPECT_THAT(events, HasSubstr(R"(["OvlDestCreated","True"])"));
}

TEST_F(OverlayJobTest, TellsOfAFaceThatIsMissing) {
  Testing::press(open.find<QListWidget>("lst_selectedWatermark"), Qt::Key_Down);
  open.settle();
  open.window->preferences().set(u"WatermarkTextFont", u"No Such Face");
  open.settle();
  print({name("Letterhead")});
  EXPECT_TRUE(open.window->findChild<QMessageBox*>()->informativeText().contains("No Such Face"));
}

}  // namespace
}  // namespace Window
