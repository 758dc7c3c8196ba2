// The inspector pane: all properties, and all events as they happen.
#pragma once

#include "host/model/properties.h"
#include "host/trace.h"
#include "window/language/texts.h"

#include <QDockWidget>

#include <deque>

class QMainWindow;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;

namespace Window {

class Inspector final : public QDockWidget {
  Q_OBJECT

 public:
  explicit Inspector(QWidget* parent);

  void setTexts(const Texts& texts);

  QSize sizeHint() const override { return {400, 300}; }

  // Makes the pane a window of its own where the screen has no room for it beside the window's content.
  void settle(const QMainWindow& window);

  // Clears the pane and shows the events of `trace` from now on, while the pane is visible; it catches up when it
  // becomes so. The pane outlives the trace.
  void follow(Refhost::Trace& trace);

  // Shows the current properties: values other than the default in bold. The model lives until the next `follow`.
  void showProperties(const Refhost::PropertyModel& model);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* buildTracePage();
  void showEvents();
  void shareWidth();

  QTabWidget* pages;
  QTreeWidget* properties;
  QPlainTextEdit* events;
  QPushButton* copyAll;
  QPushButton* clear;
  std::deque<QString> waiting;                        // lines that are not shown yet
  const Refhost::PropertyModel* described = nullptr;  // the properties to show
};

}  // namespace Window
