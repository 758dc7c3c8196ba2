// Access keys and F1, in the window and in every dialog, in every language.
#include "tests/support/locales.h"
#include "tests/window/every_dialog.h"
#include "tests/window/stored_overlays.h"

#include <gmock/gmock.h>

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>

namespace Window {
namespace {

using testing::IsEmpty;

QString keyIn(const QString& text) { return QKeySequence::mnemonic(text).toString(); }

bool hasLetters(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar unit) { return unit.isLetter(); });
}

bool isPressedByReturnOrEscape(const QAbstractButton& button) {
  const auto* push = qobject_cast<const QPushButton*>(&button);
  const auto* row = qobject_cast<const QDialogButtonBox*>(button.parentWidget());
  const bool isCancel =
      row != nullptr && row->buttonRole(&const_cast<QAbstractButton&>(button)) == QDialogButtonBox::RejectRole;
  return (push != nullptr && push->isDefault()) || isCancel;
}

// The texts of visible controls that people reach by a key, apart from those with other keys.
QStringList textsWithKeys(const QWidget& window) {
  QStringList texts;
  for (const auto* bar : window.findChildren<QMenuBar*>(Qt::FindDirectChildrenOnly))
    for (const QAction* menu : bar->actions()) texts << menu->text();
  for (const auto* label : window.findChildren<QLabel*>())
    if (label->isVisible() && label->window() == &window && label->buddy() != nullptr) texts << label->text();
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    const bool isPressedOtherwise = isPressedByReturnOrEscape(*button) || button->property("keysElsewhere").toBool();
    const bool isTold = hasLetters(button->text()) && !button->inherits("QToolButton") && !isPressedOtherwise;
    if (button->isVisible() && button->window() == &window && isTold) texts << button->text();
  }
  return texts;
}

// What is wrong with the keys of the window.
QStringList troublesIn(const QWidget& window) {
  QStringList troubles;
  QHash<QString, QString> owners;
  for (const QString& text : textsWithKeys(window)) {
    const QString key = keyIn(text);
    if (key.isEmpty()) troubles << text + " has no key";
    if (!key.isEmpty() && owners.contains(key)) troubles << text + " has the key of " + owners[key];
    owners[key] = text;
  }
  return troubles;
}

std::vector<std::string> words(const QStringList& lines) {
  std::vector<std::string> all;
  for (const QString& line : lines) all.push_back(line.toStdString());
  return all;
}

class AccessKeysTest : public testing::TestWithParam<std::string> {
 protected:
  // Looks at a dialog, presses F1 in it, and closes it.
  static void look(QWidget& dialog, const std::string& name) {
    QApplication::setActiveWindow(&dialog);
    QCoreApplication::processEvents();
    EXPECT_THAT(words(troublesIn(dialog)), IsEmpty()) << name;
    Testing::press(dialog, Qt::Key_F1);
    if (auto* help = dialog.findChild<QWidget*>("help")) {
      EXPECT_TRUE(help->isVisible()) << name;
      help->close();
    } else {
      ADD_FAILURE() << name << " has no help";
    }
    Testing::press(dialog, Qt::Key_Escape);
  }

  Testing::OpenWindow open{[](Request& request) {
    Testing::useSeveralOverlays(request);
    request.preferences.locale = GetParam();
    request.preferences.settings.emplace_back(u"kilnworks.watermark.stylename.support", u"True");
    request.inspector = true;
  }};
  Testing::Answers answers{open};
};

TEST_P(AccessKeysTest, ReachEveryControlOfTheWindowOnce) {
  EXPECT_THAT(words(troublesIn(*open.window)), IsEmpty()) << "as it opens";
  for (const char* tab : {"pro_tab_device", "pro_tab_effect"}) {
    open.selectTab(tab);
    QCoreApplication::processEvents();
    EXPECT_THAT(words(troublesIn(*open.window)), IsEmpty()) << tab;
  }
  EXPECT_GT(textsWithKeys(*open.window).size(), 18);
}

TEST_P(AccessKeysTest, AndHelpAreInEveryDialog) {
  Testing::openEveryDialog(open, answers, look);
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_TRUE(open.window->failures().isEmpty());
}

TEST_P(AccessKeysTest, AreInTheToolkitsDialogsToo) {
  QColorDialog colours;
  colours.setOption(QColorDialog::DontUseNativeDialog);
  colours.show();
  EXPECT_FALSE(textsWithKeys(colours).isEmpty());
  EXPECT_THAT(words(troublesIn(colours)), IsEmpty());
  QFileDialog files;
  files.setOption(QFileDialog::DontUseNativeDialog);
  files.show();
  EXPECT_FALSE(textsWithKeys(files).isEmpty());
  EXPECT_THAT(words(troublesIn(files)), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Each, AccessKeysTest, testing::ValuesIn(Testing::locales), Testing::testedLocale);

}  // namespace
}  // namespace Window
