// A row of buttons below the tabs and the page.
#pragma once

#include "window/preferences/messages.h"

#include <QHBoxLayout>

#include <functional>
#include <utility>
#include <vector>

class QPushButton;

namespace Window {

class ButtonRow final : public QHBoxLayout {
  Q_OBJECT

 public:
  // Failures of the buttons' actions are shown in `rowMessages`, which outlive the row.
  explicit ButtonRow(Messages& rowMessages) : messages(rowMessages) {}

  // Adds a button as a child of `parent`. Its object name is the name of its text.
  QPushButton* add(const char* name, QWidget* parent, const std::function<void()>& action);

  // Sets all buttons' texts, which clears their shortcuts.
  void setTexts(const Texts& texts);

  // In order.
  std::vector<QPushButton*> buttons() const;

 private:
  Messages& messages;
  std::vector<std::pair<QPushButton*, const char*>> named;
};

}  // namespace Window
