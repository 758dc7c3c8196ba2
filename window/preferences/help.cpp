#include "window/preferences/help.h"

#include "window/dialogs/help_viewer.h"

#include <QApplication>

namespace Window {

void Help::show(const std::u16string& url, const std::u16string& topic) {
  // While a dialog is modal, only its children are usable.
  QWidget* modal = QApplication::activeModalWidget();
  QWidget* owner = modal != nullptr ? modal : &window;
  if (viewer == nullptr || viewer->parentWidget() != owner) {
    delete viewer;
    viewer = new HelpViewer(owner);
  }
  isShown = viewer->show(url, topic, session.preferences().chrome(), session.texts());
  if (!isShown) messages.showFailure(session.texts()("NOT_OPENED").arg(toQt(url)).toStdString());
}

void Help::onTab() {
  isShown = false;
  session.preferences().help();
  if (!isShown) onWindow();
}

void Help::onWindow() {
  const QString locale = QString::fromStdString(session.locale());
  show(toWide(QStringLiteral("chrome://window/content/%1/help/window.html").arg(locale)), u"");
}

}  // namespace Window
