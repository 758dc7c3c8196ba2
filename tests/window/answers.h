// The user's answers to the dialogs that a menu entry opens in sequence.
#pragma once

#include "tests/window/open_window.h"

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
// next answer; one without an answer is closed, and recorded as unexpected.
class Answers {
 public:
  explicit Answers(OpenWindow& openWindow) : open(openWindow) {
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { answer(); });
  }

  void choose(const char* entry, std::deque<std::function<void(QWidget&)>> given) {
    during([&] { open.window->findChild<QAction*>(entry)->trigger(); }, std::move(given));
  }

  // Presses a button of the tabs that opens a dialog of the plug-in, which gets the answer.
  void press(const char* opener, const std::function<void(QWidget&)>& given) {
    bool wasOpen = false;
    QTimer::singleShot(0, open.window.get(), [&] {
      wasOpen = true;
      given(*QApplication::activeModalWidget());
    });
    open.find<QPushButton>(opener).click();
    EXPECT_TRUE(wasOpen) << opener;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  // The same as for entries, for another action than that of a menu.
  void during(const std::function<void()>& action, std::deque<std::function<void(QWidget&)>> given) {
    for (auto* told : open.window->findChildren<QMessageBox*>()) delete told;
    answers = std::move(given);
    unexpected.clear();
    timer.start(10);
    action();
    timer.stop();
    QCoreApplication::processEvents();
    open.settle();
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

// Types a text, letter by letter, into the focused widget.
inline void type(QWidget& dialog, const QString& text) {
  QWidget* line = dialog.findChild<QLineEdit*>();
  for (const QChar letter : text) {
    QKeyEvent down(QEvent::KeyPress, 0, {}, letter);
    QCoreApplication::sendEvent(line, &down);
  }
}

inline std::function<void(QWidget&)> name(const QString& text) {
  return [text](QWidget& dialog) {
    type(dialog, text);
    press(*dialog.findChild<QLineEdit*>(), Qt::Key_Return);
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
