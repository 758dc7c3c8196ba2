// A row of buttons below the tabs and the page.
#pragma once

#include "window/preferences/messages.h"

#include <QBoxLayout>
#include <QKeySequence>

#include <functional>
#include <utility>
#include <vector>

class QPushButton;

namespace Window {

class ButtonRow final : public QBoxLayout {
  Q_OBJECT

 public:
  // Failures of the buttons' actions are shown in `rowMessages`, which outlive the row.
  explicit ButtonRow(Messages& rowMessages);

  // Adds a button as a child of `parent`. Its object name is the name of its text; its tool tip, the keys that press it
  // or do the same.
  QPushButton* add(const char* name, QWidget* parent, const std::function<void()>& action,
                   const QKeySequence& keys = {});

  // Adds further buttons at the other end of the row.
  void divide();

  // Puts both ends below each other when they are wider than `width` beside each other, and the buttons of one that is
  // wider by itself.
  void fitInto(int width);

  // Sets all buttons' texts, which clears their shortcuts.
  void setTexts(const Texts& texts);

  // In order.
  std::vector<QPushButton*> buttons() const;

 private:
  void addEnd();

  Messages& messages;
  std::vector<QBoxLayout*> ends;
  std::vector<std::pair<QPushButton*, const char*>> named;
};

}  // namespace Window
