// A window with the built plug-in, and user input, for tests.
#pragma once

#include "formats/text.h"
#include "window/page/page_panel.h"
#include "window/preferences/preferences_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QDeadlineTimer>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QTabWidget>
#include <QTemporaryDir>

#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace Testing {

inline Refhost::Options builtOptions() {
  Refhost::Options options;
  options.plugin = PLUGIN_FILE;
  options.resources = RESOURCES_FOLDER;
  return options;
}

// Runs the event loop until `condition` holds; throws when it does not for minutes, which no machine is too busy for.
inline void waitUntil(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(std::chrono::minutes(5));
  while (!condition()) {
    if (deadline.hasExpired()) throw std::runtime_error("waited in vain");
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

inline void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QKeyEvent down(QEvent::KeyPress, key, modifiers);
  QKeyEvent up(QEvent::KeyRelease, key, modifiers);
  QCoreApplication::sendEvent(&widget, &down);
  QCoreApplication::sendEvent(&widget, &up);
}

// Types a text, letter by letter.
inline void type(QWidget& widget, const QString& text) {
  for (const QChar letter : text) {
    QKeyEvent down(QEvent::KeyPress, 0, {}, letter);
    QCoreApplication::sendEvent(&widget, &down);
  }
}

inline void click(QWidget& widget, QPoint place) {
  const QPointF inside = place;
  const QPointF onScreen = widget.mapToGlobal(inside);
  QMouseEvent down(QEvent::MouseButtonPress, inside, onScreen, Qt::LeftButton, Qt::LeftButton, {});
  QMouseEvent up(QEvent::MouseButtonRelease, inside, onScreen, Qt::LeftButton, {}, {});
  QCoreApplication::sendEvent(&widget, &down);
  QCoreApplication::sendEvent(&widget, &up);
}

// Drags `data` into and over the widget and drops it there, as far as the widget accepts it; whether it did.
inline bool drop(QWidget& widget, const QMimeData& data, QPoint place) {
  QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&widget, &enter);
  if (!enter.isAccepted()) return false;
  QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&widget, &move);
  QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&widget, &drop);
  QCoreApplication::processEvents();
  return drop.isAccepted();
}

class OpenWindow {
 public:
  explicit OpenWindow(const std::function<void(Window::Request&)>& change = [](auto&) {}) {
    Window::Request request;
    request.preferences = builtOptions();
    request.preferences.home = home.path().toStdU16String();
    change(request);
    window = std::make_unique<Window::PreferencesWindow>(request);
    window->open();
    window->show();
    settle();
  }

  void settle() {
    waitUntil([this] { return window->isSettled(); });
    QCoreApplication::processEvents();
  }

  template <class Widget>
  Widget& find(const char* name) {
    auto* found = window->findChild<Widget*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("no such widget: ") + name);
    return *found;
  }

  template <class Node>
  Node& node(std::u16string_view id) {
    return dynamic_cast<Node&>(*window->preferences().gui()->find(id));
  }

  void selectTab(const char* id) {
    auto& tabs = find<QTabWidget>("tabs");
    for (int i = 0; i < tabs.count(); ++i)
      if (tabs.widget(i)->objectName() == id) tabs.setCurrentIndex(i);
  }

  // Chooses a menu entry by its data.
  void choose(const char* menu, const QString& data) {
    for (QAction* action : window->findChild<QMenu*>(menu)->actions())
      if (action->data().toString() == data) action->trigger();
    QCoreApplication::processEvents();
    settle();
  }

  QImage page() { return window->findChild<Window::PagePanel*>()->picture().image; }

  std::string value(std::u16string_view property) {
    return Formats::toUtf8(window->preferences().model().value(property).value());
  }

  QTemporaryDir home;
  std::unique_ptr<Window::PreferencesWindow> window;
};

}  // namespace Testing
