#include "window/widgets/text_field.h"

#include "window/language/texts.h"

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QWheelEvent>

#include <algorithm>
#include <limits>
#include <utility>

namespace Window {
namespace {

using Refhost::Edit;

// Whether an unpaired high surrogate precedes the caret, left over by the line's length limit.
bool endsInHalf(const QString& text, int caret) {
  return caret > 0 && caret <= text.size() && text[caret - 1].isHighSurrogate() &&
         (caret == text.size() || !text[caret].isLowSurrogate());
}

}  // namespace

// Qt calls a validator for every change before notifying anyone, and reverts rejected ones completely: text, caret,
// selection and undo steps.
class TextField::Referee final : public QValidator {
 public:
  explicit Referee(TextField& line) : QValidator(&line), field(line) {}
  State validate(QString& text, int& caret) const override { return field.judge(text, caret); }

 private:
  TextField& field;
};

TextField::TextField(Refhost::TextBoxNode& box, Refhost::UserActions& userActions, QWidget* parent)
    : QLineEdit(parent),
      node(&box),
      actions(userActions) {
  setValidator(new Referee(*this));
  connect(this, &QLineEdit::textChanged, this, &TextField::putRight);
  // Qt reverts a rejected change only after reporting it.
  connect(this, &QLineEdit::inputRejected, this, &TextField::putRight, Qt::QueuedConnection);
  refresh();
}

void TextField::refresh() {
  if (node == nullptr || isTelling) return;
  const QString text = toQt(node->content());
  const auto most = static_cast<int>(
      std::min<std::size_t>(node->maximumLength().value_or(std::size_t(-1)), std::numeric_limits<int>::max()));
  if (text == known && most == limit) return;
  known = text;
  limit = most;
  show(text);
}

// The tree's text may exceed the user's limit, at which Qt would truncate it.
void TextField::show(const QString& text) {
  const QScopedValueRollback following(isFollowing, true);
  agreed = text;
  const int most = std::max(limit, static_cast<int>(text.size()));
  if (maxLength() != most) setMaxLength(most);
  setText(text);
}

QValidator::State TextField::judge(QString& text, int& caret) {
  if (node == nullptr || isFollowing || isTelling || text == agreed) return QValidator::Acceptable;
  if (text.size() == maxLength() && endsInHalf(text, caret)) text.remove(--caret, 1);
  if (!tell(text, way)) {
    if (isOutOfRange(text)) Q_EMIT limited(false);
    return QValidator::Invalid;
  }
  if (text != known) {
    text = known;
    caret = std::min(caret, static_cast<int>(text.size()));
  }
  agreed = text;
  return QValidator::Acceptable;
}

bool TextField::tell(const QString& text, Edit how) {
  const QScopedValueRollback telling(isTelling, true);
  const bool isTaken = actions.type(*node, toWide(text), how);
  known = toQt(node->content());
  return isTaken;
}

// Corrects rejected changes that Qt does not revert, such as undo, and rejections that set another text.
void TextField::putRight() {
  if (node == nullptr || isFollowing || isTelling || !composition.isEmpty()) return;
  if (known != agreed) {
    show(known);
  } else if (text() != agreed) {
    show(agreed);
  }
}

// As in spin boxes: the page keys take ten steps at once.
bool TextField::stepsByKey(const QKeyEvent& event) {
  if (node == nullptr || !node->range() || isReadOnly()) return false;
  for (const auto& [key, steps] : {std::pair(Qt::Key_Up, 1), std::pair(Qt::Key_Down, -1), std::pair(Qt::Key_PageUp, 10),
                                   std::pair(Qt::Key_PageDown, -10)})
    if (event.key() == key) {
      step(steps);
      return true;
    }
  return false;
}

// An edit of the whole text, so that handlers may reject it, and undo takes it back.
void TextField::step(int steps) {
  const QString reached = toQt(Refhost::stepped(*node->range(), toWide(text()), steps));
  const bool isAtEnd = reached == text();
  selectAll();
  insert(reached);
  selectAll();
  if (isAtEnd) Q_EMIT limited(false);
}

bool TextField::isOutOfRange(const QString& number) const {
  bool isNumber = false;
  const double value = number.toDouble(&isNumber);
  return node != nullptr && node->range() && isNumber && (value < node->range()->least || value > node->range()->most);
}

// Whether the tree has replaced a number that is out of range.
bool TextField::leave() {
  const bool wasPossible = !isOutOfRange(known);
  const QString before = known;
  actions.leave(*node);
  return !wasPossible && node != nullptr && toQt(node->content()) != before;
}

bool TextField::settles() {
  if (node == nullptr || !isOutOfRange(known) || !leave()) return false;
  Q_EMIT limited(true);
  return true;
}

// Without the focus the wheel scrolls what is around the box.
void TextField::wheelEvent(QWheelEvent* event) {
  if (node == nullptr || !node->range() || isReadOnly() || !hasFocus()) return event->ignore();
  turned += event->angleDelta().y();
  constexpr int notch = QWheelEvent::DefaultDeltasPerStep;
  if (const int steps = std::exchange(turned, turned % notch) / notch; steps != 0) step(steps);
  event->accept();
}

void TextField::keyPressEvent(QKeyEvent* event) {
  if (stepsByKey(*event)) return;
  const QScopedValueRollback pasting(way, event->matches(QKeySequence::Paste) ? Edit::pasted : Edit::typed);
  QLineEdit::keyPressEvent(event);
}

void TextField::mouseReleaseEvent(QMouseEvent* event) {
  const QScopedValueRollback pasting(way, event->button() == Qt::MiddleButton ? Edit::pasted : Edit::typed);
  QLineEdit::mouseReleaseEvent(event);
}

void TextField::dropEvent(QDropEvent* event) {
  const QScopedValueRollback pasting(way, Edit::pasted);
  QLineEdit::dropEvent(event);
}

void TextField::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  if (menu == nullptr) return;
  for (QAction* action : menu->actions()) {
    if (!action->text().startsWith(QLineEdit::tr("&Paste"))) continue;
    action->disconnect(this);
    connect(action, &QAction::triggered, this, [this] {
      const QScopedValueRollback pasting(way, Edit::pasted);
      paste();
    });
  }
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(event->globalPos());
}

// Qt shows a composition in the line without adding it to the text; the tree gets the whole, so that previews are
// updated.
void TextField::inputMethodEvent(QInputMethodEvent* event) {
  composition = event->preeditString();
  QLineEdit::inputMethodEvent(event);
  if (node == nullptr || isReadOnly()) return;
  QString whole = text();
  whole.insert(cursorPosition(), composition);
  if (whole != known) tell(whole, composition.isEmpty() ? Edit::typed : Edit::composing);
  putRight();
}

void TextField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const bool comesBack = event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
  if (node != nullptr && !comesBack && leave()) Q_EMIT limited(true);
}

}  // namespace Window
