// "New..." beside the list of overlays, files that are dropped on it, and renaming.
#include "formats/overlay_index.h"
#include "press/job/sample.h"
#include "press/pictures/loader.h"
#include "tests/window/answers.h"
#include "window/dialogs/new_overlay_dialog.h"
#include "window/page/paper_view.h"
#include "window/widgets/picture_box.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QShortcut>
#include <QSpinBox>
#include <QUrl>

#include <fstream>

namespace Window {
namespace {

using Testing::button;
using testing::HasSubstr;
using testing::IsEmpty;

using Answer = std::function<void(QWidget&)>;

std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class NewOverlayTest : public testing::Test {
 protected:
  NewOverlayTest() {
    std::ofstream(path("Letterhead.pdf").toStdString(), std::ios::binary) << Press::samplePdf();
    QImage logo(48, 48, QImage::Format_ARGB32);
    logo.fill(Qt::red);
    logo.save(path("Logo.png"));
  }

  QString path(const char* name) const { return folder.filePath(name); }

  QStringList listed() {
    QStringList names;
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    for (int i = 2; i < list.count(); ++i) names << list.itemText(i);
    return names;
  }

  QString chosen() { return open.find<QComboBox>("cmb_EffOverlay").currentText(); }

  // Presses "New..." and chooses the file.
  void make(const char* name, std::deque<Answer> given) {
    given.push_front(Testing::file(path(name)));
    answers.during([this] { open.find<QPushButton>("newOverlayButton").click(); }, std::move(given));
  }

  bool drop(const QList<QUrl>& urls, std::deque<Answer> given) {
    QMimeData data;
    data.setUrls(urls);
    bool isTaken = false;
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    answers.during([&] { isTaken = Testing::drop(list, data, list.rect().center()); }, std::move(given));
    return isTaken;
  }

  // The file of the overlay that is chosen.
  std::filesystem::path overlayFile() { return open.value(u"OverlaySourceFileName"); }

  static NewOverlayDialog& settled(QWidget& widget) {
    auto& dialog = dynamic_cast<NewOverlayDialog&>(widget);
    QCoreApplication::processEvents();
    Testing::waitUntil([&] { return dialog.isSettled(); });
    return dialog;
  }

  static bool mayAccept(const QWidget& dialog) {
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
  }

  static QString saidIn(const QWidget& dialog) { return dialog.findChild<QLabel*>("said")->text(); }

  static QImage pictureIn(const QWidget& dialog) { return dialog.findChild<PaperView*>("form")->picture().image; }

  QTemporaryDir folder;
  Testing::OpenWindow open{[this](Request& request) { request.record = path("session.drive").toStdString(); }};
  Testing::Answers answers{open};
};

TEST_F(NewOverlayTest, IsMadeOfAPdfWithItsNameAndChosen) {
  make("Letterhead.pdf", {button("OK")});
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(listed(), QStringList("Letterhead"));
  EXPECT_EQ(chosen(), "Letterhead");
  EXPECT_EQ(open.value(u"OverlayImage"), "OverlayImage");
  EXPECT_FALSE(open.find<PictureBox>("img_EffOverlay").picture().isNull());
  EXPECT_TRUE(open.window->failures().isEmpty());
  EXPECT_EQ(open.window->findChild<QMessageBox*>(), nullptr);
}

TEST_F(NewOverlayTest, IsMadeOfTheChosenPage) {
  QImage first, second;
  make("Letterhead.pdf", {[&](QWidget& widget) {
         NewOverlayDialog& dialog = settled(widget);
         auto& page = *dialog.findChild<QSpinBox*>("formPage");
         EXPECT_GT(page.maximum(), 1);
         first = pictureIn(dialog);
         page.setValue(2);
         second = pictureIn(settled(dialog));
         button("OK")(dialog);
       }});
  EXPECT_FALSE(first.isNull());
  EXPECT_NE(first, second);
  const auto drawn = [](const std::string& pdf, int page) { return Press::drawPage(pdf, page, 20).argb; };
  EXPECT_EQ(drawn(bytesOf(overlayFile()), 1), drawn(Press::samplePdf(), 2));
}

TEST_F(NewOverlayTest, IsDrawnAsLargeAsItIsZoomed) {
  int width = 0;
  make("Letterhead.pdf", {[&](QWidget& widget) {
         NewOverlayDialog& dialog = settled(widget);
         auto& form = *dialog.findChild<PaperView*>("form");
         form.setZoom({Zoom::Kind::size, 2});
         width = pictureIn(settled(dialog)).width();
         EXPECT_NEAR(width, 2 * 210 / 25.4 * form.logicalDpiX(), 2);
         Testing::escape(dialog);
       }});
  EXPECT_GT(width, 0);
}

TEST_F(NewOverlayTest, HasNoEffectsOfTheJob) {
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  make("Letterhead.pdf", {button("OK")});
  const auto drawn = [](const std::string& pdf) { return Press::drawPage(pdf, 1, 20).argb; };
  EXPECT_EQ(drawn(bytesOf(overlayFile())), drawn(Press::samplePdf()));
}

TEST_F(NewOverlayTest, IsMadeOfAPictureOnThePaper) {
  open.window->preferences().set(u"PaperSize", u"Letter");
  open.settle();
  QImage own, large;
  make("Logo.png", {[&](QWidget& widget) {
         NewOverlayDialog& dialog = settled(widget);
         EXPECT_EQ(dialog.findChild<QSpinBox*>(), nullptr);
         own = pictureIn(dialog);
         dialog.findChild<QRadioButton*>("paperSize")->click();
         large = pictureIn(settled(dialog));
         dialog.findChild<QRadioButton*>("ownSize")->click();
         settled(dialog);
         button("OK")(dialog);
       }});
  EXPECT_EQ(chosen(), "Logo");
  EXPECT_EQ(own.pixelColor(own.rect().center()), QColor(Qt::red));
  EXPECT_EQ(own.pixelColor(own.width() / 4, own.height() / 2), QColor(Qt::white));
  EXPECT_GT(large.pixelColor(large.width() / 20, large.height() / 2).red(), 250);
  EXPECT_LT(large.pixelColor(large.width() / 20, large.height() / 2).blue(), 5);
  const Press::Picture stored = Press::drawPage(bytesOf(overlayFile()), 1, 72);
  EXPECT_EQ(stored.width, 612);
  EXPECT_EQ(stored.height, 792);
}

TEST_F(NewOverlayTest, IsMadeOfADroppedFile) {
  EXPECT_TRUE(drop({QUrl::fromLocalFile(path("Logo.png"))}, {button("OK")}));
  EXPECT_EQ(chosen(), "Logo");
}

TEST_F(NewOverlayTest, IsMadeOfOneDroppedFileAlone) {
  EXPECT_FALSE(drop({}, {}));
  EXPECT_FALSE(drop({QUrl("https://example.com/Logo.png")}, {}));
  EXPECT_FALSE(drop({QUrl::fromLocalFile(path("Logo.png")), QUrl::fromLocalFile(path("Letterhead.pdf"))}, {}));
  EXPECT_THAT(answers.unexpected, IsEmpty());
}

TEST_F(NewOverlayTest, NeedsAName) {
  make("Letterhead.pdf", {[](QWidget& dialog) {
         auto& line = *dialog.findChild<QLineEdit*>("qt_spinbox_lineedit")
                           ->window()
                           ->findChild<NameField*>()
                           ->findChild<QLineEdit*>();
         EXPECT_EQ(line.text(), "Letterhead");
         EXPECT_EQ(line.maxLength(), int{Formats::overlayNameUnits});
         EXPECT_EQ(saidIn(dialog), "");
         for (const char* name : {"", "   ", "none", "Mehrere"}) {
           line.setText(name);
           EXPECT_FALSE(mayAccept(dialog)) << name;
           EXPECT_NE(saidIn(dialog), "") << name;
           Testing::press(line, Qt::Key_Return);
           EXPECT_TRUE(dialog.isVisible());
         }
         line.setText(" Terms ");
         EXPECT_TRUE(mayAccept(dialog));
         button("OK")(dialog);
       }});
  EXPECT_EQ(listed(), QStringList("Terms"));
}

TEST_F(NewOverlayTest, StaysInItsDialogUntilThereIsOne) {
  make("Letterhead.pdf", {button("OK")});
  const std::string before = bytesOf(overlayFile());
  const auto acceptPicture = [](QWidget& dialog) {
    dialog.findChild<NameField*>()->findChild<QLineEdit*>()->setText("Letterhead");
    EXPECT_EQ(saidIn(dialog), "There is an overlay of this name: you will be asked whether to replace it.");
    button("OK")(dialog);
  };
  bool hasStayed = false;
  make("Logo.png", {acceptPicture, Testing::escape, [&](QWidget& dialog) {
                      hasStayed = dynamic_cast<NewOverlayDialog*>(&dialog) != nullptr;
                      Testing::escape(dialog);
                    }});
  EXPECT_TRUE(hasStayed);
  EXPECT_EQ(bytesOf(overlayFile()), before);
  make("Logo.png", {acceptPicture, button("Replace")});
  EXPECT_NE(bytesOf(overlayFile()), before);
  EXPECT_EQ(listed(), QStringList("Letterhead"));
}

TEST_F(NewOverlayTest, IsNamedWhereItWouldReplaceAnother) {
  make("Letterhead.pdf", {button("OK")});
  make("Logo.png", {button("OK")});
  QString subject;
  const auto readAndCancel = [&subject](QWidget& question) {
    if (const auto* label = question.findChild<QLabel*>("subject")) subject = label->text();
    Testing::escape(question);
  };
  make("Letterhead.pdf", {button("OK"), readAndCancel, Testing::escape});
  EXPECT_EQ(subject, "Letterhead");
}

TEST_F(NewOverlayTest, IsNotMadeOfAnotherFileWhichIsTold) {
  std::ofstream(path("notes.txt").toStdString()) << "no PDF";
  make("notes.txt", {});
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr("notes.txt\" is not a PDF file"));
  EXPECT_EQ(listed(), QStringList());
}

TEST_F(NewOverlayTest, IsOfferedWhereOverlaysAre) {
  auto& make = open.find<QPushButton>("newOverlayButton");
  EXPECT_TRUE(make.isVisible());
  EXPECT_TRUE(make.isEnabled());
  EXPECT_EQ(open.find<QComboBox>("cmb_EffOverlay").nextInFocusChain(), &make);
  open.window->preferences().setAvailable(u"OverlayImage", u"OverlayImage", false);
  EXPECT_FALSE(make.isEnabled());
  open.window->preferences().setAvailable(u"OverlayImage", u"OverlayImage", true);
  EXPECT_TRUE(make.isEnabled());
}

TEST_F(NewOverlayTest, IsReachedByKeys) {
  const auto& make = open.find<QPushButton>("newOverlayButton");
  EXPECT_FALSE(QKeySequence::mnemonic(make.text()).isEmpty());
  auto& shortcut = *make.findChild<QShortcut*>();
  EXPECT_EQ(shortcut.key(), QKeySequence(QKeySequence::New));
  answers.during([&shortcut] { Q_EMIT shortcut.activated(); }, {Testing::file(path("Letterhead.pdf")), button("OK")});
  EXPECT_EQ(listed(), QStringList("Letterhead"));
}

TEST_F(NewOverlayTest, SaysWhichFileItIsMadeOf) {
  make("Letterhead.pdf", {[](QWidget& dialog) {
         QStringList labels;
         for (const auto* label : dialog.findChildren<QLabel*>()) {
           labels << label->text();
           if (label->text() != "Letterhead.pdf") continue;
           EXPECT_TRUE(label->alignment().testFlag(Qt::AlignAbsolute));
         }
         EXPECT_TRUE(labels.contains("Letterhead.pdf"));
         EXPECT_TRUE(labels.contains("File:")) << "without an access key, as there is nothing to enter";
         Testing::escape(dialog);
       }});
  EXPECT_THAT(answers.unexpected, IsEmpty());
}

TEST_F(NewOverlayTest, IsOfferedWithoutThePluginsButtons) {
  Testing::OpenWindow without(
      [](Request& request) { request.preferences.withoutWidgets = {u"but_EffDet", u"btn_OvlDel"}; });
  EXPECT_TRUE(without.find<QPushButton>("newOverlayButton").isVisible());
}

TEST_F(NewOverlayTest, IsRecordedAsAJobWithThatName) {
  make("Letterhead.pdf", {button("OK")});
  EXPECT_THAT(bytesOf(path("session.drive").toStdString()),
              HasSubstr("job-step Letterhead\n#= {\"ok\":true}\nprint-overlay\n#= {\"ok\":true,\"created\":true}\n"
                        "select-index cmb_EffOverlay 2\n"));
}

class RenamedOverlayTest : public NewOverlayTest {
 protected:
  RenamedOverlayTest() {
    make("Letterhead.pdf", {button("OK")});
    make("Logo.png", {button("OK")});
  }

  void rename(std::deque<Answer> given) {
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    answers.during(
        [&] {
          QApplication::setActiveWindow(open.window.get());
          list.setFocus();
          Testing::press(list, Qt::Key_F2);
        },
        std::move(given));
  }

  // Whether the entry of the list's context menu can be chosen, which does so.
  bool chooseFromMenu() {
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    QContextMenuEvent event(QContextMenuEvent::Mouse, list.rect().center(), list.mapToGlobal(list.rect().center()));
    QCoreApplication::sendEvent(&list, &event);
    QCoreApplication::processEvents();
    auto* menu = list.findChild<QMenu*>("list_menu");
    if (menu == nullptr) return false;
    for (QAction* action : menu->actions())
      if (action->text() == "&Rename...") {
        const bool isOffered = action->isEnabled();
        action->trigger();
        menu->close();
        QCoreApplication::processEvents();
        return isOffered;
      }
    return false;
  }

  static void type(QWidget& dialog, const QString& name) {
    dialog.findChild<QLineEdit*>()->setText(name);
    button("OK")(dialog);
  }
};

TEST_F(RenamedOverlayTest, StaysChosen) {
  const auto file = overlayFile();
  rename({[](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "Logo");
    type(dialog, "Company logo");
  }});
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(listed(), QStringList({"Company logo", "Letterhead"}));
  EXPECT_EQ(chosen(), "Company logo");
  EXPECT_EQ(overlayFile(), file);
  open.settle();
  EXPECT_EQ(open.find<QLabel>("overlays").text(), "Overlays by page: 1-4: Company logo");
}

TEST_F(RenamedOverlayTest, IsRecorded) {
  rename({[](QWidget& dialog) { type(dialog, "Company logo"); }});
  EXPECT_THAT(bytesOf(path("session.drive").toStdString()),
              HasSubstr("rename-overlay \"Company logo\"\n#= {\"ok\":true}\n"));
}

TEST_F(RenamedOverlayTest, HasItsFormerNameAfterUndo) {
  rename({[](QWidget& dialog) { type(dialog, "Company logo"); }});
  QAction& undo = open.find<QAction>("UNDO_ENTRY");
  EXPECT_EQ(undo.text(), "&Undo: Rename overlay");
  undo.trigger();
  open.settle();
  EXPECT_EQ(listed(), QStringList({"Letterhead", "Logo"}));
  EXPECT_EQ(chosen(), "Logo");
  EXPECT_TRUE(open.window->failures().isEmpty());
}

TEST_F(RenamedOverlayTest, HasANameOfItsOwn) {
  rename({[](QWidget& dialog) {
    for (const char* name : {"", "None", "Letterhead"}) {
      dialog.findChild<QLineEdit*>()->setText(name);
      EXPECT_FALSE(mayAccept(dialog)) << name;
      EXPECT_NE(saidIn(dialog), "") << name;
    }
    Testing::escape(dialog);
  }});
  EXPECT_EQ(listed(), QStringList({"Letterhead", "Logo"}));
}

TEST_F(RenamedOverlayTest, IsRenamedFromTheListsMenuToo) {
  bool isOffered = false;
  answers.during([&] { isOffered = chooseFromMenu(); }, {[](QWidget& dialog) { type(dialog, "Brand"); }});
  EXPECT_TRUE(isOffered);
  EXPECT_EQ(chosen(), "Brand");
}

TEST_F(RenamedOverlayTest, IsNoneOfTheListsFirstEntries) {
  Testing::press(open.find<QComboBox>("cmb_EffOverlay"), Qt::Key_Home);
  open.settle();
  ASSERT_EQ(chosen(), "None");
  rename({});
  bool isOffered = true;
  answers.during([&] { isOffered = chooseFromMenu(); }, {});
  EXPECT_FALSE(isOffered);
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(listed(), QStringList({"Letterhead", "Logo"}));
}

}  // namespace
}  // namespace Window
