// Editing a text box: keys, clipboard, input methods, undo; and the state after a rejected edit.
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

using testing::ElementsAre;

using Change = Kiln::SmartPtr<Kiln::XUL::TextChangeEventArg>;
using Left = Kiln::XUL::EventArg<Kiln::XUL::TextBox>;

class TextFieldTest : public testing::Test {
 protected:
  TextFieldTest() { field().setFocus(); }

  TextField& field() { return shown.find<TextField>("box"); }
  Refhost::TextBox& box() { return shown.node<Refhost::TextBox>(u"box"); }

  // Records the events of the handlers, with "~" before compositions and "+" before pasted text.
  void listen() {
    shown.follow<Change>(box().typingSignal(), [this](Change change) {
      told.push_back((change->isProvisional() ? "~" : "") + Formats::toUtf8(change->text().view()));
    });
    shown.follow<Change>(box().pastingSignal(),
                         [this](Change change) { told.push_back("+" + Formats::toUtf8(change->text().view())); });
  }

  // Rejects every text with a character that is not a digit.
  void takeDigitsOnly() {
    const auto judge = [](Change change) {
      const auto text = change->text();
      for (const char16_t unit : text.view())
        if (unit < u'0' || unit > u'9') change->refuse();
    };
    shown.follow<Change>(box().typingSignal(), judge);
    shown.follow<Change>(box().pastingSignal(), judge);
  }

  void type(const QString& text) {
    Testing::type(field(), text);
    QCoreApplication::processEvents();
  }

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    Testing::press(field(), key, modifiers);
    QCoreApplication::processEvents();
  }
  void undo() { press(Qt::Key_Z, Qt::ControlModifier); }
  void redo() { press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
  void paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    press(Qt::Key_V, Qt::ControlModifier);
  }

  void compose(const QString& composition) {
    QInputMethodEvent event(composition, {});
    QCoreApplication::sendEvent(&field(), &event);
    QCoreApplication::processEvents();
  }
  void commit(const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(&field(), &event);
    QCoreApplication::processEvents();
  }

  std::string content() { return Formats::toUtf8(box().content()); }
  std::string text() { return field().text().toStdString(); }

  Testing::ShownLayout shown{"<hbox><label value='Name' accesskey='N' control='box'/><textbox id='box' value='old'/>"
                             "</hbox><textbox id='other'/>"};
  std::vector<std::string> told;
};

TEST_F(TextFieldTest, ShowsTheTextOfTheTree) {
  EXPECT_EQ(text(), "old");
  box().setText(u"new");
  EXPECT_EQ(text(), "new");
}

TEST_F(TextFieldTest, TellsEachTypedLetterWithTheWholeText) {
  listen();
  type("ab");
  EXPECT_THAT(told, ElementsAre("olda", "oldab"));
  EXPECT_EQ(content(), "oldab");
}

TEST_F(TextFieldTest, TellsWhatIsDeleted) {
  listen();
  press(Qt::Key_Backspace);
  press(Qt::Key_Home);
  press(Qt::Key_Delete);
  EXPECT_THAT(told, ElementsAre("ol", "l"));
}

TEST_F(TextFieldTest, TellsAPasteOnceAndAsOne) {
  listen();
  paste("er and older");
  EXPECT_THAT(told, ElementsAre("+older and older"));
  type("!");
  EXPECT_EQ(told.back(), "older and older!");
}

TEST_F(TextFieldTest, TellsAPasteFromItsMenuAsAPaste) {
  listen();
  QApplication::clipboard()->setText("er");
  QContextMenuEvent asks(QContextMenuEvent::Keyboard, {}, field().mapToGlobal(QPoint(1, 1)));
  QCoreApplication::sendEvent(&field(), &asks);
  auto* menu = field().findChild<QMenu*>();
  ASSERT_NE(menu, nullptr);
  for (QAction* action : menu->actions())
    if (action->text().contains("aste")) action->trigger();
  EXPECT_THAT(told, ElementsAre("+older"));
  EXPECT_EQ(text(), "older");
  menu->close();
}

TEST_F(TextFieldTest, TellsATextThatIsDroppedOnItAsAPaste) {
  listen();
  QMimeData data;
  data.setText("!");
  EXPECT_TRUE(Testing::drop(field(), data, QPoint(field().width() - 4, 8)));
  EXPECT_THAT(told, ElementsAre("+old!"));
}

TEST_F(TextFieldTest, LeavesTextCaretAndSelectionWhenALetterIsRefused) {
  takeDigitsOnly();
  box().setText(u"123");
  field().setSelection(1, 1);
  type("x");
  EXPECT_EQ(text(), "123");
  EXPECT_EQ(content(), "123");
  EXPECT_EQ(field().selectedText(), "2");
  type("7");
  EXPECT_EQ(content(), "173");
  EXPECT_EQ(field().cursorPosition(), 2);
}

TEST_F(TextFieldTest, ForgetsARefusedEditWhenUndoing) {
  takeDigitsOnly();
  box().setText(u"1");
  paste("2");
  type("x");
  paste("3");
  paste("y");
  EXPECT_EQ(text(), "123");
  undo();
  EXPECT_EQ(text(), "12");
  undo();
  EXPECT_EQ(text(), "1");
  redo();
  redo();
  EXPECT_EQ(text(), "123");
  EXPECT_EQ(content(), "123");
}

TEST_F(TextFieldTest, CanRedoOverARefusedLetter) {
  takeDigitsOnly();
  box().setText(u"1");
  paste("2");
  undo();
  EXPECT_TRUE(field().isRedoAvailable());
  type("x");
  EXPECT_EQ(text(), "1");
}

TEST_F(TextFieldTest, TellsUndoAndRedo) {
  type("a");
  listen();
  undo();
  redo();
  EXPECT_THAT(told, ElementsAre("old", "olda"));
  EXPECT_EQ(content(), "olda");
}

TEST_F(TextFieldTest, ShowsTheTextOfTheTreeWhenAnUndoIsRefused) {
  type("a");
  shown.follow<Change>(box().typingSignal(), [](Change change) { change->refuse(); });
  undo();
  EXPECT_EQ(text(), "olda");
  EXPECT_EQ(content(), "olda");
}

TEST_F(TextFieldTest, RefusesAPasteAsAWhole) {
  takeDigitsOnly();
  box().setText(u"1");
  paste("2x3");
  EXPECT_EQ(text(), "1");
  EXPECT_EQ(content(), "1");
}

TEST_F(TextFieldTest, TellsACompositionWithTheTextAroundIt) {
  listen();
  field().setCursorPosition(0);
  compose("か");
  compose("かん");
  EXPECT_EQ(content(), "かんold");
  EXPECT_EQ(text(), "old");
  commit("漢");
  EXPECT_THAT(told, ElementsAre("~かold", "~かんold", "漢old"));
  EXPECT_EQ(text(), "漢old");
  EXPECT_EQ(content(), "漢old");
}

TEST_F(TextFieldTest, TellsASettledCompositionThatIsWhatWasComposed) {
  listen();
  compose("あ");
  commit("あ");
  EXPECT_THAT(told, ElementsAre("~oldあ", "oldあ"));
}

TEST_F(TextFieldTest, TakesBackACompositionThatIsGivenUp) {
  compose("あ");
  EXPECT_EQ(content(), "oldあ");
  compose("");
  EXPECT_EQ(content(), "old");
  EXPECT_EQ(text(), "old");
}

TEST_F(TextFieldTest, GoesOnComposingWhereACompositionIsRefused) {
  takeDigitsOnly();
  box().setText(u"1");
  compose("あ");
  EXPECT_EQ(content(), "1");
  compose("あい");
  commit("2");
  EXPECT_EQ(text(), "12");
  EXPECT_EQ(content(), "12");
}

TEST_F(TextFieldTest, LeavesTheTextWhereASettledCompositionIsRefused) {
  takeDigitsOnly();
  box().setText(u"1");
  compose("あ");
  commit("あ");
  EXPECT_EQ(text(), "1");
  EXPECT_EQ(content(), "1");
  type("2");
  EXPECT_EQ(content(), "12");
  undo();
  EXPECT_EQ(text(), "1");
}

TEST_F(TextFieldTest, ReplacesTheSelectionByAComposition) {
  field().selectAll();
  compose("あ");
  EXPECT_EQ(content(), "あ");
  commit("亜");
  EXPECT_EQ(text(), "亜");
  undo();
  EXPECT_EQ(text(), "old");
  EXPECT_EQ(content(), "old");
}

TEST_F(TextFieldTest, UndoesASettledComposition) {
  compose("あ");
  commit("亜");
  undo();
  EXPECT_EQ(text(), "old");
  EXPECT_EQ(content(), "old");
}

TEST_F(TextFieldTest, TakesNoMoreThanTheLimitAndKeepsWhatStandsBehindTheCaret) {
  box().setMaximumLength(4);
  field().setCursorPosition(0);
  paste("xyz");
  EXPECT_EQ(text(), "xold");
  type("q");
  EXPECT_EQ(text(), "xold");
  EXPECT_EQ(content(), "xold");
}

TEST_F(TextFieldTest, TakesNoHalfOfACharacterAtTheLimit) {
  box().setMaximumLength(4);
  paste("😀");
  EXPECT_EQ(text(), "old");
  EXPECT_EQ(content(), "old");
  box().setMaximumLength(5);
  paste("😀");
  EXPECT_EQ(content(), "old😀");
}

TEST_F(TextFieldTest, ShowsATextOfTheTreeThatIsLongerThanItsLimit) {
  box().setMaximumLength(3);
  box().setText(u"longer");
  EXPECT_EQ(text(), "longer");
  const std::u16string huge(100000, u'x');
  box().setText(huge);
  EXPECT_EQ(field().text().size(), 100000);
  type("y");
  EXPECT_EQ(box().content(), huge);
  press(Qt::Key_Backspace);
  EXPECT_EQ(text(), "xxx");
  EXPECT_EQ(content(), "xxx");
}

TEST_F(TextFieldTest, ShowsWhatAHandlerMakesOfAnEdit) {
  shown.follow<Change>(box().typingSignal(), [this](Change change) {
    if (change->text().view() == u"olda") box().setText(u"6");
  });
  type("a");
  EXPECT_EQ(text(), "6");
  EXPECT_EQ(content(), "6");
  type("7");
  EXPECT_EQ(content(), "67");
}

TEST_F(TextFieldTest, ShowsWhatAHandlerPutsInPlaceOfWhatItRefuses) {
  shown.follow<Change>(box().typingSignal(), [this](Change change) {
    if (change->text().view() != u"olda") return;
    change->refuse();
    box().setText(u"6");
  });
  type("a");
  EXPECT_EQ(text(), "6");
  EXPECT_EQ(content(), "6");
}

TEST_F(TextFieldTest, FollowsAHandlerOfAnotherBox) {
  shown.follow<Change>(box().typingSignal(),
                       [this](Change change) { shown.node<Refhost::TextBox>(u"other").setText(change->text()); });
  type("er");
  EXPECT_EQ(shown.find<TextField>("other").text(), "older");
}

TEST_F(TextFieldTest, TellsThatTheFocusHasLeft) {
  int left = 0;
  shown.follow<Left>(box().blurSignal(), [&](Left) { ++left; });
  press(Qt::Key_Tab);
  EXPECT_TRUE(shown.find<TextField>("other").hasFocus());
  EXPECT_EQ(left, 1);
}

TEST_F(TextFieldTest, KeepsTheFocusOfTheTreeWhileAnotherWindowIsUsed) {
  int left = 0;
  shown.follow<Left>(box().blurSignal(), [&](Left) { ++left; });
  for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
    QFocusEvent event(QEvent::FocusOut, reason);
    QCoreApplication::sendEvent(&field(), &event);
  }
  EXPECT_EQ(left, 0);
}

TEST_F(TextFieldTest, KeepsTheCaretWhereAHandlerPutsItsOwnTextBack) {
  shown.follow<Left>(box().blurSignal(), [this](Left) { box().setText(box().text()); });
  type("er");
  field().setCursorPosition(2);
  press(Qt::Key_Tab);
  EXPECT_EQ(field().cursorPosition(), 2);
  EXPECT_TRUE(field().isUndoAvailable());
}

TEST_F(TextFieldTest, IsLedToByItsLabel) {
  shown.find<TextField>("other").setFocus();
  EXPECT_EQ(shown.window.findChild<QLabel*>()->buddy(), &field());
  Testing::press(shown.find<TextField>("other"), Qt::Key_N, Qt::AltModifier);
  Testing::waitUntil([&] { return field().hasFocus(); });
}

TEST_F(TextFieldTest, TouchesNothingOfABoxThatItForgot) {
  listen();
  field().forget();
  type("a");
  press(Qt::Key_Tab);
  EXPECT_THAT(told, ElementsAre());
  EXPECT_EQ(content(), "old");
}

}  // namespace
}  // namespace Window
