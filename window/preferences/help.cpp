#include "window/preferences/help.h"

#include "host/chrome/help.h"
#include "window/dialogs/dialog_window.h"
#include "window/dialogs/help_viewer.h"

#include <QApplication>

namespace Window {

void Help::show(const std::u16string& url, const std::u16string& topic) {
  const Refhost::Preferences& preferences = session.preferences();
  const auto page = Refhost::readHelp(preferences.chrome(), preferences.strings(), url);
  isShown = page.has_value();
  if (!isShown) return messages.showFailure(session.texts()("NOT_OPENED").arg(toQt(url)).toStdString());
  // While a dialog is modal, only its children are usable.
  QWidget* modal = QApplication::activeModalWidget();
  QWidget* owner = modal != nullptr ? modal : &window;
  if (viewer == nullptr || viewer->parentWidget() != owner) {
    delete viewer;
    viewer = new HelpViewer(owner);
  }
  viewer->show(*page, topic, session.texts());
}

void Help::onTab() {
  isShown = false;
  session.preferences().help();
  if (!isShown) onWindow();
}

void Help::onWindow(const std::u16string& topic) {
  const QString locale = QString::fromStdString(session.locale());
  show(toWide(QStringLiteral("chrome://window/content/%1/help/window.html").arg(locale)), topic);
}

// The parts of the page on the window are named like its dialogs.
void Help::onDialog(const QDialog& dialog) {
  if (dynamic_cast<const DialogWindow*>(&dialog) != nullptr) return onTab();
  onWindow(toWide(dialog.objectName()));
}

}  // namespace Window
