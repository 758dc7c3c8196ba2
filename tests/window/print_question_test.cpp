// The dialog that asks where and how to print.
#include "host/chrome/strings.h"
#include "tests/window/answers.h"
#include "window/dialogs/print_question.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QRadioButton>
#include <QSpinBox>

namespace Window {
namespace {

using testing::Eq;
using testing::Optional;

class PrintQuestionTest : public testing::Test {
 protected:
  PrintQuestionTest()
      : chrome(RESOURCES_FOLDER),
        tables(chrome, "en-US"),
        question{.pages = 4, .printers = {{"laser", "", false, true}, {"office", "2nd floor", false, false}}} {}

  // What the user chooses who does this, in the dialog, one after the other.
  std::optional<PrintChoice> ask(std::deque<std::function<void(QWidget&)>> answers) {
    QTimer timer;
    QPointer<QWidget> last;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      if (dialog == nullptr || dialog == last || answers.empty()) return;
      last = dialog;
      const auto next = answers.front();
      answers.pop_front();
      // Not from the timer, which would stand still while an answer opens another dialog.
      QMetaObject::invokeMethod(dialog, [next, dialog] { next(*dialog); }, Qt::QueuedConnection);
    });
    timer.start(10);
    return askHowToPrint(question, Texts(tables), nullptr);
  }

  static void choose(QWidget& dialog, const char* box, int index) {
    dialog.findChild<QComboBox*>(box)->setCurrentIndex(index);
  }

  static void typePages(QWidget& dialog, const QString& pages) {
    auto& line = *dialog.findChild<QLineEdit*>("printPages");
    line.clear();
    Testing::type(line, pages);
  }

  const Refhost::ChromeFolders chrome;
  const Refhost::StringTables tables;
  PrintQuestion question;
};

TEST_F(PrintQuestionTest, OffersAFileAndAllPagesFirst) {
  QStringList targets;
  bool hasCopies = true;
  const auto choice = ask({[&](QWidget& dialog) {
    const auto* target = dialog.findChild<QComboBox*>("printTarget");
    for (int i = 0; i < target->count(); ++i) targets << target->itemText(i);
    hasCopies = dialog.findChild<QSpinBox*>("printCopies")->isEnabled();
    Testing::button("Print")(dialog);
  }});
  EXPECT_EQ(targets, (QStringList{"PDF file", "laser", "2nd floor (office)"}));
  EXPECT_FALSE(hasCopies);
  ASSERT_TRUE(choice);
  EXPECT_FALSE(choice->printer);
  EXPECT_EQ(choice->pages, Press::PageRule());
}

TEST_F(PrintQuestionTest, OffersTheDefaultPrinterFirst) {
  question.printers[1].isDefault = true;
  const auto choice = ask({Testing::button("Print")});
  ASSERT_TRUE(choice && choice->printer);
  EXPECT_EQ(choice->printer->printer, "office");
  EXPECT_EQ(choice->printer->copies, 1);
  EXPECT_EQ(choice->printer->sides, std::nullopt);
}

TEST_F(PrintQuestionTest, TakesCopiesSidesAndPagesForAPrinter) {
  const auto choice = ask({[](QWidget& dialog) {
    choose(dialog, "printTarget", 1);
    dialog.findChild<QSpinBox*>("printCopies")->setValue(3);
    choose(dialog, "printSides", 2);
    typePages(dialog, "1,3-");
    Testing::button("Print")(dialog);
  }});
  ASSERT_TRUE(choice && choice->printer);
  EXPECT_EQ(choice->printer->printer, "laser");
  EXPECT_EQ(choice->printer->copies, 3);
  EXPECT_THAT(choice->printer->sides, Optional(Eq(Press::Sides::twoAtLongEdge)));
  EXPECT_EQ(choice->pages, Press::PageRule("1,3-"));
}

TEST_F(PrintQuestionTest, HasNoSidesOnAPrinterThatPrintsOnOneAlone) {
  const auto choice = ask({[](QWidget& dialog) {
    choose(dialog, "printTarget", 1);
    choose(dialog, "printSides", 3);
    choose(dialog, "printTarget", 2);
    EXPECT_FALSE(dialog.findChild<QComboBox*>("printSides")->isEnabled());
    Testing::button("Print")(dialog);
  }});
  ASSERT_TRUE(choice && choice->printer);
  EXPECT_EQ(choice->printer->sides, std::nullopt);
}

TEST_F(PrintQuestionTest, StaysOpenUntilThePagesAreSomeOfTheJob) {
  QStringList said;
  const auto read = [&said](QWidget& box) {
    said << dynamic_cast<QMessageBox&>(box).text();
    Testing::button("OK")(box);
  };
  const auto print = [](const QString& pages) {
    return [pages](QWidget& dialog) {
      typePages(dialog, pages);
      Testing::button("Print")(dialog);
    };
  };
  const auto choice = ask({print("5-"), read, print("first"), read, print("4")});
  EXPECT_EQ(said, (QStringList{"The job has none of these pages: choose from its 4.",
                               "\u201cfirst\u201d names no pages: write for example 1,3,5-9."}));
  ASSERT_TRUE(choice);
  EXPECT_EQ(choice->pages, Press::PageRule("4"));
}

TEST_F(PrintQuestionTest, ChoosesNothingWhenItIsCancelled) { EXPECT_FALSE(ask({Testing::escape})); }

}  // namespace
}  // namespace Window
