// The inspector pane: all properties, and all events as they happen.
#pragma once

#include "host/model/properties.h"
#include "host/trace.h"
#include "window/language/texts.h"

#include <QDockWidget>

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

  // Clears the pane and shows the events of `trace` from now on. The pane outlives the trace.
  void follow(Refhost::Trace& trace);

  // Shows the current properties: values other than the default in bold.
  void showProperties(const Refhost::PropertyModel& model);

 private:
  QWidget* buildTracePage();

  QTabWidget* pages;
  QTreeWidget* properties;
  QPlainTextEdit* events;
  QPushButton* copyAll;
  QPushButton* clear;
};

}  // namespace Window
