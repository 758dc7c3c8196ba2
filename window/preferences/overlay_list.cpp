#include "window/preferences/overlay_list.h"

#include "formats/names.h"
#include "window/widgets/access_keys.h"
#include "window/widgets/list_input.h"
#include "window/widgets/roomy_button.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QShortcut>
#include <QUrl>

#include <optional>
#include <utility>

namespace Window {
namespace {

using DropFile = std::function<void(const std::filesystem::path& file)>;

// The one file of this machine that is dragged; nothing for several, and for anything else.
std::optional<std::filesystem::path> fileIn(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  if (urls.size() != 1 || !urls.constFirst().isLocalFile()) return {};
  return urls.constFirst().toLocalFile().toStdU16String();
}

// Takes files that are dropped on the list, and lets the button follow the list.
class ListFollower final : public QObject {
 public:
  ListFollower(QComboBox& followed, QPushButton& newButton, DropFile onFile)
      : QObject(&followed),
        list(followed),
        button(newButton),
        drop(std::move(onFile)) {
    list.setAcceptDrops(true);
    list.installEventFilter(this);
    follow();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::EnabledChange:
      case QEvent::ShowToParent:
      case QEvent::HideToParent: follow(); break;
      case QEvent::DragEnter:
      case QEvent::DragMove: return accept(*dynamic_cast<QDropEvent*>(event));
      case QEvent::Drop: return take(*dynamic_cast<QDropEvent*>(event));
      default: break;
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  void follow() {
    button.setEnabled(list.isEnabled());
    button.setVisible(!list.isHidden());
  }

  static bool accept(QDropEvent& event) {
    if (!fileIn(*event.mimeData())) return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
  }

  // Later, so that the program that the file comes from does not wait for the user.
  bool take(QDropEvent& event) {
    if (!accept(event)) return false;
    QMetaObject::invokeMethod(this, [this, file = *fileIn(*event.mimeData())] { drop(file); }, Qt::QueuedConnection);
    return true;
  }

  QComboBox& list;
  QPushButton& button;
  DropFile drop;
};

// Above the plug-in's buttons; without any, below the list.
void place(QPushButton& button, QWidget& tabs, QComboBox& list) {
  for (const Formats::Name id : {Formats::WidgetId::overlayDetails, Formats::WidgetId::overlayDelete}) {
    const auto* const below = tabs.findChild<QPushButton*>(toQt(id));
    auto* const column = below == nullptr ? nullptr : qobject_cast<QBoxLayout*>(below->parentWidget()->layout());
    if (column == nullptr) continue;
    column->insertWidget(column->indexOf(below), &button);
    return;
  }
  if (auto* const around = qobject_cast<QBoxLayout*>(list.parentWidget()->layout()))
    around->insertWidget(around->indexOf(&list) + 1, &button);
}

}  // namespace

void addToOverlayList(QWidget& tabs, const Texts& texts, const OverlayListActions& actions) {
  auto* const list = tabs.findChild<QComboBox*>(toQt(Formats::WidgetId::overlayList));
  if (list == nullptr) return;
  auto* const button = new RoomyButton(list->parentWidget());
  button->setObjectName("newOverlayButton");
  button->setText(texts("NEW_OVERLAY"));
  button->setProperty(keyAfterOthers, true);
  const QKeySequence keys(QKeySequence::New);
  QObject::connect(new QShortcut(keys, button), &QShortcut::activated, button, &QPushButton::click);
  button->setToolTip(toolTipOf(texts("NEW_OVERLAY_TIP") + " (" + keys.toString(QKeySequence::NativeText) + ')', true));
  button->setAccessibleDescription(texts("NEW_OVERLAY_TIP"));
  place(*button, tabs, *list);
  QWidget::setTabOrder(list, button);
  QObject::connect(button, &QPushButton::clicked, list, actions.create);
  new ListFollower(*list, *button, actions.createOf);
  addToMenu(*list, {texts("NEW_OVERLAY"), QKeySequence(), [button] { return button->isEnabled(); }, actions.create});
  addToMenu(*list, {texts("RENAME_OVERLAY"), Qt::Key_F2, actions.mayRename, actions.rename});
}

}  // namespace Window
