// What screen readers are told, as Qt tells it; reader_test.py asks the bus.
#include "tests/window/open_window.h"
#include "window/inspector/inspector.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace Window {
namespace {

using testing::Contains;
using testing::Not;

// The events of widgets since the last call of `take`, as the object's name and the event.
class Heard {
 public:
  Heard() {
    all().clear();
    before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
      if (event->object() == nullptr) return;
      for (QObject* each = event->object(); each != nullptr; each = each->parent())
        all().emplace_back(each->objectName().toStdString(), event->type());
    });
    QAccessible::setActive(true);
  }
  ~Heard() {
    QAccessible::setActive(false);
    QAccessible::installUpdateHandler(before);
  }

  static std::vector<std::pair<std::string, QAccessible::Event>>& all() {
    static std::vector<std::pair<std::string, QAccessible::Event>> events;
    return events;
  }

 private:
  QAccessible::UpdateHandler before = nullptr;
};

QString nameOf(QWidget& widget) { return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name); }

TEST(Readers, AreToldTheLabelAndTheValueOfAComboBox) {
  Testing::OpenWindow open;
  open.selectTab("pro_tab_device");
  auto& paper = open.find<QComboBox>("cmb_DevPaperSize");
  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&paper);
  EXPECT_EQ(nameOf(paper), "Paper size");
  EXPECT_EQ(reader->role(), QAccessible::ComboBox);
  EXPECT_EQ(reader->text(QAccessible::Value), "A4");
  EXPECT_EQ(reader->textInterface()->text(0, reader->textInterface()->characterCount()), "A4");
  EXPECT_TRUE(reader->child(0)->child(0)->state().selected);
}

TEST(Readers, AreToldNothingByTheHiddenInspector) {
  Testing::OpenWindow open;
  Heard heard;
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  std::vector<std::string> names;
  for (const auto& [name, event] : Heard::all()) names.push_back(name);
  EXPECT_THAT(names, Contains("ePTKWPageMirrorImage"));
  EXPECT_THAT(names, Not(Contains("inspector")));
  auto& inspector = open.find<Inspector>("inspector");
  EXPECT_EQ(open.find<QPlainTextEdit>("events").toPlainText(), "");
  inspector.show();
  EXPECT_TRUE(open.find<QPlainTextEdit>("events").toPlainText().contains("MirrorImage"));
  EXPECT_FALSE(open.find<QTreeWidget>("properties").findItems("MirrorImage", Qt::MatchExactly).isEmpty());
}

TEST(Readers, AreToldNotesAsTheyAppearAndChange) {
  Testing::OpenWindow open;
  auto& notes = open.find<QLabel>("notes");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&notes)->role(), QAccessible::Notification);
  const auto printIn = [&open](const char16_t* face) {
    open.window->preferences().model().submit(
        {{u"Watermark", u"Watermark"}, {u"WatermarkText", u"Draft"}, {u"WatermarkTextFont", face}});
    open.settle();
  };
  Heard heard;
  for (const char16_t* face : {u"No Such Face", u"None Such"}) {
    Heard::all().clear();
    printIn(face);
    EXPECT_THAT(Heard::all(), Contains(testing::Pair("notes", QAccessible::Alert))) << notes.text().toStdString();
    EXPECT_TRUE(nameOf(notes).contains(toQt(face)));
  }
}

}  // namespace
}  // namespace Window
