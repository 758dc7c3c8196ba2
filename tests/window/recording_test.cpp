// Recording a session by clicking: "kiln drive --expect" replays it, and finds the same answers.
#include "tests/window/answers.h"
#include "window/dialogs/dialog_window.h"
#include "window/widgets/item_list.h"
#include "window/widgets/picture_box.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QListWidget>
#include <QProcess>
#include <QRadioButton>
#include <QSlider>

#include <fstream>
#include <sstream>

namespace Window {
namespace {

using Testing::button;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Testing::name;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::string contentOf(const std::filesystem::path& file) {
  std::stringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  return content.str();
}

struct Replayed {
  int status;
  std::string out;
};

Replayed replay(const std::filesystem::path& file, const QStringList& options = {}) {
  QProcess kiln;
  kiln.setProcessChannelMode(QProcess::MergedChannels);
  kiln.start(KILN, QStringList{"drive", "--expect", QString::fromStdU16String(file.u16string())} + options);
  kiln.waitForFinished(-1);
  return {kiln.exitCode(), kiln.readAll().toStdString()};
}

class RecordingTest : public testing::Test {
 protected:
  void inDialogOf(QAbstractButton& opener, const std::function<void(DialogWindow&)>& operate) {
    inDialog([&] { opener.click(); }, operate);
  }

  // Opens a dialog, and operates it until it is closed.
  void inDialog(const std::function<void()>& opening, const std::function<void(DialogWindow&)>& operate) {
    QTimer::singleShot(0, open.window.get(), [operate] {
      auto* dialog = qobject_cast<DialogWindow*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      const QPointer<DialogWindow> shown = dialog;
      operate(*dialog);
      if (!shown || !shown->isVisible()) return;
      ADD_FAILURE() << "The dialog is still open.";
      shown->reject();
    });
    opening();
    open.settle();
  }

  static void type(DialogWindow& dialog, const char* id, const QString& text) {
    auto& line = *dialog.findChild<QLineEdit*>(id);
    line.setFocus();
    line.selectAll();
    line.insert(text);
  }

  static void press(DialogWindow& dialog, const char* id) { dialog.findChild<QAbstractButton*>(id)->click(); }

  void choose(const char* id, Qt::Key key) {
    Testing::press(open.find<QWidget>(id), key);
    open.settle();
  }

  void makeWatermark(const QString& text) {
    inDialogOf(open.find<QPushButton>("btn_WMAdd"), [text](DialogWindow& editor) {
      type(editor, "txt_EffWMTxtBox", text);
      press(editor, "accept");
    });
  }

  // The commands so far, with the answers.
  std::vector<std::string> lines() {
    std::istringstream content(contentOf(file));
    std::vector<std::string> found;
    for (std::string line; std::getline(content, line);)
      if (!line.starts_with("#:")) found.push_back(line);
    return found;
  }

  // Closes the window, and replays what it has recorded.
  void expectReplay(const QStringList& options = {}) {
    const QStringList failures = open.window->failures();
    EXPECT_TRUE(failures.isEmpty()) << failures.join('\n').toStdString();
    if (open.window->isVisible()) open.find<QPushButton>("CANCEL").click();
    const auto replayed = replay(file, options);
    EXPECT_EQ(replayed.status, 0) << replayed.out << contentOf(file);
    EXPECT_THAT(replayed.out, HasSubstr("as recorded"));
  }

  const QTemporaryDir folder;
  const std::filesystem::path file = folder.filePath("session.drive").toStdU16String();
  Testing::OpenWindow open{[this](Request& request) {
    request.record = file;
    request.version = "1.2.3";
    request.preferences.model = "kvt";
    request.preferences.locale = "de-DE";
  }};
  Testing::Answers answers{open};
};

TEST_F(RecordingTest, BeginsWithTheFactsOfTheRun) {
  const std::string content = contentOf(file);
  EXPECT_THAT(content, StartsWith("#: kiln 1.2.3\n#: contract "));
  EXPECT_THAT(content, HasSubstr("\n#: model kvt\n#: mode DocProp\n#: locale de-DE\n#: fonts "));
  EXPECT_THAT(content, Not(HasSubstr(open.home.path().toStdString())));
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(RecordingTest, IsWrittenAsItHappens) {
  open.find<QCheckBox>("chk_EffRot180Deg").click();
  EXPECT_THAT(lines(), ElementsAre("click chk_EffRot180Deg", "#= {\"ok\":true}", "get Rotate180",
                                   "#= {\"ok\":true,\"value\":\"Rotate180\"}"));
  inDialogOf(open.find<QPushButton>("btn_WMAdd"), [this](DialogWindow& editor) {
    EXPECT_EQ(lines().back(), "#= {\"ok\":true,\"modal\":\"chrome://effect/content/dlg_watermark.xul\"}");
    type(editor, "txt_EffWMTxtBox", "Mine");
    EXPECT_EQ(lines().back(), "#= {\"ok\":true,\"accepted\":true,\"text\":\"Mine\"}");
    editor.reject();
  });
  EXPECT_EQ(lines().back(), "#= {\"ok\":true}");
}

TEST_F(RecordingTest, OfTheTabsReplays) {
  open.find<QCheckBox>("chk_EffRot180Deg").click();
  open.settle();
  open.selectTab("pro_tab_device");
  choose("cmb_DevPaperSize", Qt::Key_Down);
  open.find<QPushButton>("HELP_BUTTON").click();
  open.find<QPushButton>("UNDO").click();
  open.settle();
  open.selectTab("pro_tab_effect");
  Testing::press(open.find<QListWidget>("lst_selectedWatermark"), Qt::Key_Down);
  Testing::waitUntil([this] { return open.value(u"WatermarkSel") != "0"; });
  open.find<QPushButton>("RESTORE").click();
  open.settle();
  open.find<QPushButton>("OK").click();
  std::vector<std::string> commands = lines();
  std::erase_if(commands, [](const auto& line) { return line.starts_with("#") || line.starts_with("get "); });
  EXPECT_THAT(commands, SizeIs(9));
  EXPECT_EQ(commands.at(1), "tab pro_tab_device");
  EXPECT_EQ(commands.at(2), "select cmb_DevPaperSize A3");
  EXPECT_EQ(commands.at(4), "undo");
  EXPECT_EQ(commands.at(8), "ok");
  expectReplay();
}

TEST_F(RecordingTest, TellsWhenThePluginHasDoneAnotherThing) {
  open.find<QCheckBox>("chk_EffRot180Deg").click();
  std::string changed = contentOf(file);
  const std::string value = R"("value":"Rotate180")";
  changed.replace(changed.find(value), value.size(), R"("value":"None")");
  std::ofstream(file, std::ios::binary | std::ios::trunc) << changed;
  const auto replayed = replay(file);
  EXPECT_EQ(replayed.status, 1);
  EXPECT_THAT(replayed.out, HasSubstr(": get Rotate180\n"));
  EXPECT_THAT(replayed.out, HasSubstr("got:      {\"ok\":true,\"value\":\"Rotate180\"}"));
}

TEST_F(RecordingTest, OfTheEditorReplays) {
  makeWatermark("Mine");
  EXPECT_EQ(open.value(u"WatermarkText"), "Mine");
  inDialogOf(open.find<QPushButton>("btn_WMEdit"), [](DialogWindow& editor) {
    type(editor, "txt_EffWMFonSiz", "12");
    type(editor, "txt_EffWMFonSiz", "none");
    type(editor, "txt_EffWMAngle", "30");
    press(editor, "UL");
    press(editor, "rad_EffWMTrans");
    editor.findChild<QSlider*>("scr_EffWMOpaScroll")->setValue(70);
    Testing::press(*editor.findChild<QComboBox*>("cmb_EffWMCol"), Qt::Key_Down);
    press(editor, "but_EffWMResDef");
    type(editor, "txt_EffWMTxtBox", "Mine \"2\" \\ ü");
    press(editor, "accept");
  });
  EXPECT_EQ(open.value(u"WatermarkText"), "Mine \"2\" \\ ü");
  expectReplay();
}

TEST_F(RecordingTest, OfNestedQuestionsReplays) {
  makeWatermark("Mine");
  makeWatermark("Other");
  // The name is taken, which is asked about over the editor.
  inDialogOf(open.find<QPushButton>("btn_WMAdd"), [this](DialogWindow& editor) {
    type(editor, "txt_EffWMTxtBox", "Mine");
    inDialogOf(*editor.findChild<QPushButton*>("accept"), [&editor](DialogWindow& question) {
      EXPECT_NE(&question, &editor);
      press(question, "cancel");
    });
    inDialogOf(*editor.findChild<QPushButton*>("accept"), [](DialogWindow& question) { press(question, "accept"); });
  });
  inDialogOf(open.find<QPushButton>("btn_WMDel"), [](DialogWindow& question) { press(question, "cancel"); });
  inDialogOf(open.find<QPushButton>("btn_WMDel"), [](DialogWindow& question) { press(question, "accept"); });
  EXPECT_THAT(contentOf(file), HasSubstr("cancel\n#= {\"ok\":true,\"vetoed\":true}\n"));
  expectReplay();
}

TEST_F(RecordingTest, OfOverlaysReplays) {
  answers.choose("PRINT_OVERLAY", {name("Letterhead")});
  answers.choose("PRINT_OVERLAY", {name("Terms \"of\" delivery")});
  answers.choose("PRINT_OVERLAY", {name("Letterhead"),
                                   [](QWidget& question) { press(dynamic_cast<DialogWindow&>(question), "accept"); }});
  answers.choose("PRINT_OVERLAY", {name("Letterhead"),
                                   [](QWidget& question) { press(dynamic_cast<DialogWindow&>(question), "cancel"); }});
  answers.choose("PRINT_OVERLAY", {Testing::escape});
  EXPECT_THAT(contentOf(file), HasSubstr("job-step \"Terms \\\"of\\\" delivery\"\n#= {\"ok\":true}\nprint-overlay\n"));
  EXPECT_THAT(contentOf(file),
              HasSubstr("job-step -\n#= {\"ok\":true}\nprint-overlay\n#= {\"ok\":true,\"created\":false}\n"));
  choose("cmb_EffOverlay", Qt::Key_End);
  choose("cmb_EffOverlay", Qt::Key_Home);
  const auto chooseSeveral = [this] { choose("cmb_EffOverlay", Qt::Key_Down); };
  inDialog(chooseSeveral, [](DialogWindow& details) {
    auto& source = *details.findChild<ItemList*>("lib_MulOvlSource");
    source.setCurrentRow(1);
    QCoreApplication::processEvents();
    QMimeData data;
    const QString value = source.item(1)->data(ItemList::valueRole).toString();
    data.setData(itemFormat, QByteArray(reinterpret_cast<const char*>(value.constData()), value.size() * 2));
    auto& slot = *details.findChild<PictureBox*>("img_MulOvl3Image");
    EXPECT_TRUE(Testing::drop(slot, data, slot.rect().center()));
    QCoreApplication::processEvents();
    type(details, "edt_MulOvl3Manual", "1,3-5");
    press(details, "accept");
  });
  EXPECT_EQ(open.value(u"OverlaySel"), "Multiple");
  EXPECT_THAT(contentOf(file), HasSubstr("drop-index lib_MulOvlSource 1 img_MulOvl3Image\n"));
  expectReplay();
}

TEST_F(RecordingTest, OfAnotherModelAndLanguageReplays) {
  open.find<QCheckBox>("chk_EffRot180Deg").click();
  open.choose("models", "tev");
  open.choose("languages", "ja-JP");
  open.find<QPushButton>("UNDO").click();
  EXPECT_THAT(contentOf(file), HasSubstr("reopen tev de-DE OverlayName=Ohne Rotate180=Rotate180\n"));
  EXPECT_THAT(contentOf(file), HasSubstr("reopen tev ja-JP OverlayName=Ohne Rotate180=Rotate180\n"));
  expectReplay();
}

TEST_F(RecordingTest, OfFilesReplays) {
  const QString ticket = folder.filePath("ticket.xml");
  const QString profile = folder.filePath("mine.zip");
  makeWatermark("Mine");
  answers.choose("SAVE_TICKET", {Testing::file(ticket)});
  answers.choose("EXPORT_PROFILE", {button("Exportieren..."), Testing::file(profile)});
  open.find<QPushButton>("RESTORE").click();
  answers.choose("OPEN_TICKET", {Testing::file(ticket)});
  answers.choose("IMPORT_PROFILE", {Testing::file(profile)});
  answers.choose("PRINT", {button("Drucken"), Testing::file(folder.filePath("printed.pdf"))});
  EXPECT_THAT(contentOf(file), HasSubstr("\nexport profile True\n#= {\"ok\":true}\n"));
  EXPECT_THAT(contentOf(file), HasSubstr("\nload-ticket " + ticket.toStdString() + "\n#= {\"ok\":true}\n"));
  EXPECT_THAT(contentOf(file), HasSubstr("\nimport-profile " + profile.toStdString() + "\n#= {\"ok\":true}\n"));
  EXPECT_THAT(contentOf(file), HasSubstr("\nprint\n#= {\"ok\":true}\n"));
  expectReplay();
}

TEST_F(RecordingTest, TellsWhatFailed) {
  answers.choose("OPEN_TICKET", {Testing::file(folder.filePath("session.drive"))});
  EXPECT_THAT(lines().back(), HasSubstr("\"ok\":false,\"error\":\""));
  EXPECT_THAT(lines().back(), HasSubstr("session.drive"));
}

TEST_F(RecordingTest, TellsInEnglishWhatFailedInAnotherLanguage) {
  answers.choose("OPEN_TICKET", {Testing::file(folder.filePath("session.drive"))});
  EXPECT_THAT(open.window->failures().join(' ').toStdString(), HasSubstr("nicht wohlgeformt"));
  EXPECT_THAT(lines().back(), HasSubstr(":1: not well-formed (invalid token)\""));
}

TEST_F(RecordingTest, OfAHomeReplaysWithACopyOfIt) {
  makeWatermark("Mine");
  open.find<QCheckBox>("chk_EffRot180Deg").click();
  open.find<QPushButton>("OK").click();
  const auto copy = std::filesystem::path(folder.filePath("copy").toStdU16String());
  std::filesystem::copy(open.home.path().toStdU16String(), copy, std::filesystem::copy_options::recursive);

  const std::filesystem::path second = folder.filePath("second.drive").toStdU16String();
  Testing::OpenWindow next([&](Request& request) {
    request.record = second;
    request.preferences.model = "kvt";
    request.preferences.home = open.home.path().toStdU16String();
  });
  next.find<QPushButton>("btn_WMEdit").isEnabled();
  next.find<QCheckBox>("chk_EffRot180Deg").click();
  next.find<QPushButton>("OK").click();
  EXPECT_THAT(contentOf(second), HasSubstr("#: property Rotate180=Rotate180\n"));
  EXPECT_THAT(contentOf(second), HasSubstr("#: home-held \"1 watermark, 0 overlays\"\n"));
  const auto replayed = replay(second, {"--home", QString::fromStdU16String(copy.u16string())});
  EXPECT_EQ(replayed.status, 0) << replayed.out;
}

TEST_F(RecordingTest, ThatEndsInADialogReplays) {
  const std::filesystem::path crashed = folder.filePath("crashed.drive").toStdU16String();
  inDialogOf(open.find<QPushButton>("btn_WMAdd"), [&](DialogWindow& editor) {
    type(editor, "txt_EffWMTxtBox", "Mine");
    std::filesystem::copy_file(file, crashed);
    editor.reject();
  });
  const auto replayed = replay(crashed);
  EXPECT_EQ(replayed.status, 0) << replayed.out;
}

TEST(RecordingFailureTest, IsToldOnce) {
  Testing::OpenWindow open([](Request& request) { request.record = "/dev/full"; });
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(),
              HasSubstr("The recording /dev/full cannot be written"));
  open.find<QCheckBox>("chk_EffRot180Deg").click();
  open.find<QPushButton>("UNDO").click();
  EXPECT_EQ(open.window->failures().size(), 1);
  EXPECT_EQ(open.value(u"MirrorImage"), "None");
}

TEST(RecordingFailureTest, ThatCannotBeginOpensNoWindow) {
  EXPECT_THROW(Testing::OpenWindow([](Request& request) { request.record = "/nowhere/session.drive"; }),
               std::runtime_error);
}

}  // namespace
}  // namespace Window
