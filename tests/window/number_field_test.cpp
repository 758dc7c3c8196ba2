// Number boxes: keys and wheel.
#include "tests/window/shown_layout.h"
#include "window/widgets/text_field.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMenu>
#include <QWheelEvent>

namespace Window {
namespace {

using Change = Kiln::SmartPtr<Kiln::XUL::TextChangeEventArg>;
using Left = Kiln::XUL::EventArg<Kiln::XUL::TextBox>;

class NumberFieldTest : public testing::Test {
 protected:
  NumberFieldTest() { field().setFocus(); }

  TextField& field() { return shown.find<TextField>("number"); }
  std::string content() { return Formats::toUtf8(shown.node<Refhost::TextBox>(u"number").content()); }

  // The content after that key, or after a turn of the wheel.
  std::string after(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    Testing::press(field(), key, modifiers);
    return content();
  }
  std::string afterTurn(int eighthsOfADegree) {
    QWheelEvent event(QPointF(5, 5), field().mapToGlobal(QPointF(5, 5)), {}, {0, eighthsOfADegree}, {}, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&field(), &event);
    return content();
  }

  Testing::ShownLayout shown{"<textbox id='number' value='72' min='6' max='300' increment='1'/>"
                             "<textbox id='text' value='72'/>"};
};

TEST_F(NumberFieldTest, ChangesByTheArrowAndPageKeys) {
  EXPECT_EQ(after(Qt::Key_Up), "73");
  EXPECT_EQ(after(Qt::Key_Down), "72");
  EXPECT_EQ(after(Qt::Key_PageUp), "82");
  EXPECT_EQ(after(Qt::Key_PageDown), "72");
  EXPECT_EQ(field().text(), "72");
  EXPECT_EQ(after(Qt::Key_Z, Qt::ControlModifier), "82") << "undone";
}

TEST_F(NumberFieldTest, ChangesByTheWheelWhileItHasTheFocus) {
  EXPECT_EQ(afterTurn(120), "73");
  EXPECT_EQ(afterTurn(-240), "71");
  EXPECT_EQ(afterTurn(60), "71");
  EXPECT_EQ(afterTurn(60), "72");
  shown.find<TextField>("text").setFocus();
  EXPECT_EQ(afterTurn(120), "72");
}

TEST_F(NumberFieldTest, StaysAsItIsWhereAHandlerRefuses) {
  shown.follow<Change>(shown.node<Refhost::TextBox>(u"number").typingSignal(), [](Change change) { change->refuse(); });
  EXPECT_EQ(after(Qt::Key_Up), "72");
  EXPECT_EQ(afterTurn(120), "72");
  EXPECT_EQ(field().text(), "72");
}

TEST_F(NumberFieldTest, IsOneOnlyWhereTheLayoutGivesARange) {
  Testing::press(shown.find<TextField>("text"), Qt::Key_Up);
  EXPECT_EQ(shown.node<Refhost::TextBox>(u"text").content(), u"72");
}

}  // namespace
}  // namespace Window
