#include "window/widgets/readers.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

namespace Window {
namespace {

constexpr const char* roleProperty = "readers' role";

// A widget that its property, not its class, gives a role.
class RoleReader final : public QAccessibleWidget {
 public:
  RoleReader(QWidget* shown, QAccessible::Role role) : QAccessibleWidget(shown, role) {}

  // QAccessibleInterface
  QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    const auto* label = qobject_cast<const QLabel*>(object());
    return own.isEmpty() && label != nullptr && kind == QAccessible::Name ? label->text() : own;
  }
};

// Qt names a combo box by its value. This one has the name of its label, and its value as a text.
class ComboReader final : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit ComboReader(QComboBox* shown) : QAccessibleWidget(shown, QAccessible::ComboBox) {}

  // QAccessibleInterface
  int childCount() const override { return combo().isEditable() ? 2 : 1; }
  QAccessibleInterface* child(int index) const override {
    if (index == 0) return QAccessible::queryAccessibleInterface(combo().view());
    return index == 1 && combo().isEditable() ? QAccessible::queryAccessibleInterface(combo().lineEdit()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    if (child->object() == combo().view()) return 0;
    return combo().isEditable() && child->object() == combo().lineEdit() ? 1 : -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const bool isOnLine = combo().isEditable() && combo().lineEdit() != nullptr &&
                          widget()->rect().contains(widget()->mapFromGlobal(QPoint(x, y)));
    return isOnLine ? child(1) : nullptr;
  }
  QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    const bool isUnnamed = kind == QAccessible::Name && own.isEmpty();  // such as in the toolkit's dialogs
    return kind == QAccessible::Value || isUnnamed ? shown() : own;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = combo().view()->isVisible();
    state.editable = combo().isEditable();
    return state;
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : QAccessibleWidget::interface_cast(type);
  }

  // QAccessibleActionInterface
  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& action) override {
    if (action != showMenuAction() && action != pressAction()) return;
    combo().view()->isVisible() ? combo().hidePopup() : combo().showPopup();
  }

  // QAccessibleTextInterface
  void selection(int, int* start, int* end) const override { *start = *end = 0; }
  int selectionCount() const override { return 0; }
  void addSelection(int, int) override {}
  void removeSelection(int) override {}
  void setSelection(int, int, int) override {}
  int cursorPosition() const override { return 0; }
  void setCursorPosition(int) override {}
  QString text(int start, int end) const override { return shown().mid(start, std::max(0, end - start)); }
  int characterCount() const override { return static_cast<int>(shown().size()); }
  QRect characterRect(int) const override { return rect(); }
  int offsetAtPoint(const QPoint&) const override { return 0; }
  void scrollToSubstring(int, int) override {}
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }

 private:
  QString shown() const {
    const bool isChosen = combo().currentIndex() >= 0 || combo().isEditable();
    return isChosen ? combo().currentText() : combo().placeholderText();
  }

  QComboBox& combo() const { return *static_cast<QComboBox*>(object()); }
};

QAccessibleInterface* readerOf(const QString& className, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return nullptr;
  if (const QVariant role = widget->property(roleProperty); role.isValid())
    return new RoleReader(widget, static_cast<QAccessible::Role>(role.toInt()));
  auto* combo = qobject_cast<QComboBox*>(widget);
  return combo != nullptr && className == QLatin1String("QComboBox") ? new ComboReader(combo) : nullptr;
}

}  // namespace

void setRole(QWidget& widget, QAccessible::Role role) { widget.setProperty(roleProperty, int(role)); }

void showChosen(QComboBox& combo) {
  combo.view()->setCurrentIndex(combo.model()->index(combo.currentIndex(), combo.modelColumn()));
}

// Screen readers of Linux tell a notification when it appears; those of other systems take alerts.
void announce(QWidget& label) {
  if (!QAccessible::isActive() || !label.isVisible()) return;
  for (const QAccessible::Event kind : {QAccessible::ObjectShow, QAccessible::Alert}) {
    QAccessibleEvent event(&label, kind);
    QAccessible::updateAccessibility(&event);
  }
}

void installReaders() {
  [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(readerOf), true);
}

}  // namespace Window
