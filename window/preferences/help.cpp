#include "window/preferences/help.h"

#include "host/chrome/help.h"
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

void Help::onWindow() {
  const QString locale = QString::fromStdString(session.locale());
  show(toWide(QStringLiteral("chrome://window/content/%1/help/window.html").arg(locale)), u"");
}

}  // namespace Window
