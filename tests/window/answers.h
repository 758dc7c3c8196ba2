// The user's answers to the dialogs that a menu entry opens in sequence.
#pragma once

#include "tests/window/open_window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <deque>
#include <functional>

namespace Testing {

// Triggers entries of the window's menus, after closing earlier messages. Each dialog that waits for the user gets the
// next answer; one without an answer is closed, and recorded as unexpected. An answer without a dialog fails the test.
class Answers {
 public:
  explicit Answers(OpenWindow& openWindow) : open(openWindow) {
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { answer(); });
  }

  void choose(const char* entry, std::deque<std::function<void(QWidget&)>> given) {
    during([&] { open.window->findChild<QAction*>(entry)->trigger(); }, std::move(given));
  }

  // The same for a button of the tabs that opens a dialog of the plug-in.
  void press(const char* opener, const std::function<void(QWidget&)>& given) {
    during([&] { open.find<QPushButton>(opener).click(); }, {given});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  // The same for any action.
  void during(const std::function<void()>& action, std::deque<std::function<void(QWidget&)>> given) {
    for (auto* told : open.window->findChildren<QMessageBox*>()) delete told;
    answers = std::move(given);
    unexpected.clear();
    timer.start(10);
    action();
    timer.stop();
    QCoreApplication::processEvents();
    open.settle();
    EXPECT_TRUE(answers.empty()) << answers.size() << " of the dialogs have not opened";
  }

  // The titles of dialogs without an answer.
  QStringList unexpected;

 private:
  void answer() {
    QWidget* dialog = QApplication::activeModalWidget();
    const bool waits = dialog != nullptr && dialog != last && qobject_cast<QProgressDialog*>(dialog) == nullptr;
    if (!waits) return;
    last = dialog;
    if (answers.empty()) {
      unexpected << dialog->windowTitle();
      dialog->close();
      return;
    }
    const auto next = answers.front();
    answers.pop_front();
    // Not from the timer, which would stand still while an answer opens another dialog.
    QMetaObject::invokeMethod(dialog, [next, dialog] { next(*dialog); }, Qt::QueuedConnection);
  }

  OpenWindow& open;
  QTimer timer;
  std::deque<std::function<void(QWidget&)>> answers;
  QPointer<QWidget> last;
};

inline std::function<void(QWidget&)> name(const QString& text) {
  return [text](QWidget& dialog) {
    auto& line = *dialog.findChild<QLineEdit*>();
    type(line, text);
    press(line, Qt::Key_Return);
  };
}

inline std::function<void(QWidget&)> file(const QString& path) {
  return [path](QWidget& dialog) {
    dialog.findChild<QLineEdit*>()->setText(path);
    QMetaObject::invokeMethod(&dialog, "accept");
  };
}

inline std::function<void(QWidget&)> button(const QString& text) {
  return [text](QWidget& dialog) {
    for (auto* button : dialog.findChildren<QPushButton*>())
      if (QString(button->text()).remove('&') == text) return button->click();
    throw std::runtime_error("no button " + text.toStdString());
  };
}

inline void escape(QWidget& dialog) { press(dialog, Qt::Key_Escape); }

}  // namespace Testing
