// A line of text whose every edit the tree decides. In all else it is the desktop's own: caret, selection, undo, input
// methods, menu.
#pragma once

#include "host/widgets/input.h"

#include <QLineEdit>
#include <QValidator>

namespace Window {

class TextField final : public QLineEdit {
  Q_OBJECT

 public:
  // The box outlives the field, or the field is told to forget it.
  TextField(Refhost::TextBoxNode& box, QWidget* parent);

  // Shows the box's text where it is no longer the one that the field has told or was told.
  void refresh();

  // The box is gone or about to go: nothing of it is touched any more.
  void forget() { node = nullptr; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  class Referee;

  QValidator::State judge(QString& text, int& caret);
  bool tell(const QString& text, Refhost::Edit how);
  void show(const QString& text);
  void putRight();

  Refhost::TextBoxNode* node;
  Refhost::Edit way = Refhost::Edit::typed;  // how the user is editing at the moment
  QString agreed;                            // the text of the line that the tree has agreed to
  QString known;                             // the box's text as it was last seen: that, and a composition within it
  QString composition;
  int limit = -1;
  bool isFollowing = false;  // while a text of the tree's is put into the line
  bool isTelling = false;
};

}  // namespace Window
