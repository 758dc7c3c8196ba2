// The pane for those who look behind the preferences: every property as it is, every event as it happens.
#pragma once

#include "host/model/properties.h"
#include "host/trace.h"
#include "window/texts.h"

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

  // Starts over with the events of `trace`. The pane outlives the trace.
  void follow(Refhost::Trace& trace);

  // Shows the properties as they are now: values in bold that are not the default.
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
