// All languages and models in the window.
#include "tests/support/locales.h"
#include "tests/window/open_window.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include <map>
#include <set>

namespace Window {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;

Refhost::StringTable tableOf(const std::string& locale) {
  return Refhost::readStrings(std::string(RESOURCES_FOLDER) + "/window/content/" + locale + "/strings.dtd");
}

class LanguageTest : public testing::TestWithParam<std::string> {
 protected:
  Testing::OpenWindow open{[](Request& request) {
    request.preferences.locale = GetParam();
    request.inspector = true;
  }};
};

TEST_P(LanguageTest, HasTheSameTexts) {
  std::set<std::u16string> english, own;
  for (const auto& [name, text] : tableOf("en-US")) english.insert(name);
  for (const auto& [name, text] : tableOf(GetParam())) {
    own.insert(name);
    EXPECT_FALSE(text.empty()) << Formats::toUtf8(name);
  }
  EXPECT_EQ(own, english);
}

TEST_P(LanguageTest, LeavesNoReferenceUnresolved) {
  for (const QWidget* widget : open.window->findChildren<QWidget*>()) {
    QStringList texts{widget->toolTip(), widget->accessibleName()};
    if (auto* button = qobject_cast<const QAbstractButton*>(widget)) texts << button->text();
    if (auto* label = qobject_cast<const QLabel*>(widget)) texts << label->text();
    if (auto* menu = qobject_cast<const QMenu*>(widget))
      for (const QAction* action : menu->actions()) texts << action->text();
    EXPECT_FALSE(texts.join(' ').contains("IDS_")) << texts.join(' ').toStdString();
  }
}

TEST_P(LanguageTest, NamesEveryWidgetThatTakesTheFocus) {
  int named = 0;
  for (QWidget* widget : open.window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
    const bool isList = reader->childCount() > 0 && reader->role() == QAccessible::PageTabList;
    EXPECT_TRUE(isList || !reader->text(QAccessible::Name).isEmpty())
        << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
    ++named;
  }
  EXPECT_GT(named, 12);
}

TEST_P(LanguageTest, OpensMenusByKeysOfTheirOwn) {
  std::multiset<QChar> keys;
  const auto count = [&keys](const QString& text) {
    const qsizetype mark = text.indexOf('&');
    if (mark >= 0 && text[mark + 1] != '&') keys.insert(text[mark + 1].toUpper());
  };
  for (const QAction* menu : open.window->menuBar()->actions()) count(menu->text());
  EXPECT_EQ(keys.size(), 6u);
  for (const QAbstractButton* button : open.find<QTabWidget>("tabs").findChildren<QAbstractButton*>())
    count(button->text());
  EXPECT_GT(keys.size(), 10u);
  for (const QChar key : keys) EXPECT_EQ(keys.count(key), 1u) << QString(key).toStdString();
}

TEST_P(LanguageTest, HasQtSpeakIt) {
  const QString cancel = QCoreApplication::translate("QPlatformTheme", "Cancel");
  EXPECT_EQ(cancel, open.find<QPushButton>("CANCEL").text());
  EXPECT_EQ(GetParam() == "en-US", QCoreApplication::translate("QFileDialog", "Look in:") == "Look in:");
  EXPECT_EQ(GetParam() == "en-US", QCoreApplication::translate("QColorDialog", "&Basic colors") == "&Basic colors");
  EXPECT_EQ(GetParam() == "en-US",
            QCoreApplication::translate("QIODevice", "Permission denied") == "Permission denied");
}

TEST_P(LanguageTest, HasHelpOnTheWindow) {
  open.window->findChild<QAction*>("HELP_WINDOW")->trigger();
  EXPECT_TRUE(open.find<QWidget>("help").isVisible());
  EXPECT_TRUE(open.window->failures().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Each, LanguageTest, testing::ValuesIn(Testing::locales), Testing::testedLocale);

TEST(LanguageMenu, OffersEachLanguageByItsOwnName) {
  Testing::OpenWindow open;
  std::vector<std::string> names;
  const auto languages = open.find<QMenu>("languages").actions();
  for (const QAction* language : languages) names.push_back(language->text().toStdString());
  EXPECT_THAT(names,
              UnorderedElementsAre("العربية", "English", "Deutsch", "Français", "日本語", "简体中文", "繁體中文"));
}

// What only some packages have in a language, others show in English; places on the page are not mirrored.
TEST(Arabic, RunsFromRightToLeftAsFarAsTheHostSpeaksIt) {
  std::set<std::u16string> english;
  for (const auto& [name, text] : tableOf("en-US")) english.insert(name);
  for (const auto& [name, text] : tableOf("ar")) EXPECT_TRUE(english.contains(name)) << Formats::toUtf8(name);
  Testing::OpenWindow open;
  open.choose("languages", "ar");
  EXPECT_EQ(open.window->layoutDirection(), Qt::RightToLeft);
  EXPECT_EQ(open.find<QPushButton>("CANCEL").text(), "إلغاء");
  EXPECT_EQ(open.find<QCheckBox>("ePTKWPageMirrorImage").text(), "M&irror image");
  const int tabs = open.find<QWidget>("tabs").mapTo(open.window.get(), QPoint()).x();
  const int paper = open.find<QWidget>("page").mapTo(open.window.get(), QPoint()).x();
  EXPECT_GT(tabs, paper);
  QTimer::singleShot(0, open.window.get(), [] {
    QWidget& editor = *QApplication::activeModalWidget();
    EXPECT_LT(editor.findChild<QWidget*>("UL")->mapTo(&editor, QPoint()).x(),
              editor.findChild<QWidget*>("UR")->mapTo(&editor, QPoint()).x());
    Testing::press(editor, Qt::Key_Escape);
  });
  open.find<QPushButton>("btn_WMAdd").click();
  Testing::press(*open.window, Qt::Key_F1);
  open.window->findChild<QAction*>("HELP_WINDOW")->trigger();
  EXPECT_TRUE(open.window->failures().isEmpty());
  open.choose("languages", "en-US");
  EXPECT_EQ(open.window->layoutDirection(), Qt::LeftToRight);
}

TEST(LanguageMenu, SwitchesTheWindowAndKeepsWhatWasSet) {
  Testing::OpenWindow open;
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.selectTab("pro_tab_device");
  open.choose("languages", "de-DE");
  EXPECT_EQ(open.find<QPushButton>("CANCEL").text(), "Abbrechen");
  EXPECT_TRUE(open.find<QCheckBox>("ePTKWPageMirrorImage").isChecked());
  EXPECT_EQ(open.find<QTabWidget>("tabs").currentWidget()->objectName(), "pro_tab_device");
}

TEST(LanguageMenu, SwitchesTheSentencesOfErrors) {
  Testing::OpenWindow open([](Request& request) { request.document = "/no/such/file.pdf"; });
  EXPECT_THAT(open.window->pageFailure().toStdString(), HasSubstr("\"/no/such/file.pdf\" does not exist"));
  open.choose("languages", "de-DE");
  EXPECT_THAT(open.window->pageFailure().toStdString(), HasSubstr("„/no/such/file.pdf“ ist nicht vorhanden"));
  open.choose("languages", "en-US");
  EXPECT_THAT(open.window->pageFailure().toStdString(), HasSubstr("\"/no/such/file.pdf\" does not exist"));
}

TEST(ModelMenu, OpensEveryModel) {
  Testing::OpenWindow open;
  std::vector<QString> models;
  for (const QAction* action : open.find<QMenu>("models").actions()) models.push_back(action->data().toString());
  EXPECT_GE(models.size(), 9u);
  for (const QString& model : models) {
    open.choose("models", model);
    EXPECT_EQ(toQt(open.window->preferences().model().description().name), model);
    EXPECT_TRUE(open.window->failures().isEmpty()) << open.window->failures().join(' ').toStdString();
    EXPECT_FALSE(open.page().isNull()) << model.toStdString();
    QStringList chosen;
    for (const QAction* action : open.find<QMenu>("models").actions())
      if (action->isChecked()) chosen << action->data().toString();
    EXPECT_EQ(chosen, QStringList{model});
  }
}

TEST(ModelMenu, ShowsWhatAModelRuleDoes) {
  Testing::OpenWindow open([](Request& request) { request.preferences.model = "kvt"; });
  EXPECT_FALSE(open.find<QWidget>("ePTKWPageNegativeImage").isHidden());
  open.window->preferences().setAvailable(u"NegativeImage", u"Negative", false);
  EXPECT_TRUE(open.find<QWidget>("ePTKWPageNegativeImage").isHidden());
}

}  // namespace
}  // namespace Window
