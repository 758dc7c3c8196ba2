#include "window/dialogs/dialog_care.h"

#include "window/dialogs/help_viewer.h"
#include "window/widgets/access_keys.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>

#include <utility>

namespace Window {

DialogCare::DialogCare(std::function<void(const QDialog&)> help) : showHelp(std::move(help)) {
  QApplication::instance()->installEventFilter(this);
}

bool DialogCare::eventFilter(QObject* watched, QEvent* event) {
  // The texts change before the dialog is laid out, and again where they were set anew for the next time.
  if (event->type() == QEvent::Polish || event->type() == QEvent::Show)
    if (auto* dialog = qobject_cast<QDialog*>(watched)) giveAccessKeys(*dialog);
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  const auto* widget = qobject_cast<const QWidget*>(watched);
  if (widget == nullptr || key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
  const auto* dialog = qobject_cast<const QDialog*>(widget->window());
  if (dialog == nullptr || qobject_cast<const HelpViewer*>(dialog) != nullptr) return false;
  showHelp(*dialog);
  return true;
}

}  // namespace Window
