// A line edit whose text is controlled by the widget tree, which accepts or rejects every edit. Caret, selection, undo,
// input methods and menu are Qt's. In a box for numbers the arrow keys and the wheel change the number.
#pragma once

#include "host/user_actions.h"

#include <QLineEdit>
#include <QValidator>

namespace Window {

class TextField final : public QLineEdit {
  Q_OBJECT

 public:
  // The box and the actions, which edit it, outlive the field, unless the field is told to forget it.
  TextField(Refhost::TextBoxNode& box, Refhost::UserActions& userActions, QWidget* parent);

  // Shows the box's text if it differs from the last known one.
  void refresh();

  // Drops the reference to the box, which is about to be destroyed.
  void forget() { node = nullptr; }

  // Tells beside the field which numbers are possible; the texts are those of `tellsRange`.
  void tellRange() { Q_EMIT limited(false); }

  // Whether the field was left with another number than the user's, because that is not possible. The box is left.
  bool settles();

 Q_SIGNALS:
  // A number that is not possible was refused, or if `isChanged`, replaced by another one.
  void limited(bool isChanged);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  class Referee;

  QValidator::State judge(QString& text, int& caret);
  bool tell(const QString& text, Refhost::Edit how);
  bool stepsByKey(const QKeyEvent& event);
  void step(int steps);
  bool isOutOfRange(const QString& number) const;
  bool leave();
  void show(const QString& text);
  void putRight();

  Refhost::TextBoxNode* node;
  Refhost::UserActions& actions;
  Refhost::Edit way = Refhost::Edit::typed;  // the kind of the current edit
  QString agreed;                            // the line's text as last accepted by the tree
  QString known;                             // the box's last known text: `agreed` with a composition
  QString composition;
  int limit = -1;
  int turned = 0;            // the wheel's turn since the last step, in eighths of a degree
  bool isFollowing = false;  // while the tree's text is set in the line
  bool isTelling = false;
};

}  // namespace Window
