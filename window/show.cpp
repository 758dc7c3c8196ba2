#include "files/language.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "window/preferences/preferences_window.h"
#include "window/widgets/watermark_view.h"
#include "window/window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QFile>
#include <QPointer>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>

namespace Window {
namespace {

constexpr int cannotOpen = 2;
constexpr int cannotDraw = 1;

int fail(int status, const std::string& sentence) {
  std::fprintf(stderr, "kiln: %s\n", Formats::printable(sentence).c_str());
  return status;
}

bool hasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// What the toolkit says is about itself, plug-ins, sessions and locales for example, and helps nobody who prints. When
// it gives up, it has no display; it would end the program by a crash.
void takeToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::_Exit(fail(
      cannotOpen,
      Formats::sentence("The display cannot be opened: check DISPLAY, WAYLAND_DISPLAY and QT_QPA_PLATFORM, or give "
                        "--screenshot to draw the window into a picture.")));
}

// A screen for drawing without a display; Qt's default one is too small for the window.
class ImaginaryScreen {
 public:
  ImaginaryScreen() {
    QFile file(folder.filePath("screen.json"));
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(R"({"screens": [{"name": "paper", "x": 0, "y": 0, "width": 2400, "height": 1800,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    file.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + file.fileName()).toUtf8());
  }

 private:
  QTemporaryDir folder;
};

QAbstractButton& buttonToPress(PreferencesWindow& window, const std::string& id) {
  auto* button = window.findChild<QAbstractButton*>(QString::fromStdString(id));
  if (button == nullptr || !button->isEnabled() || button->isHidden())
    throw std::runtime_error(Formats::sentence("There is no button {1} to press in this window.", id));
  return *button;
}

int save(QWidget& shown, const std::filesystem::path& picture) {
  QCoreApplication::processEvents();
  if (shown.grab().save(toQt(picture.u16string()), "PNG")) return 0;
  return fail(cannotDraw,
              Formats::sentence("The picture {1} cannot be written: check that its folder exists and may be written.",
                                Formats::quoted(toQt(picture.u16string()).toStdString())));
}

// Clicking returns when the dialog has closed, so the dialog is drawn and closed from its event loop. It may open only
// when something was looked at in the background.
int drawDialog(QAbstractButton& opener, const std::filesystem::path& picture) {
  std::optional<int> status;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &opener, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || qobject_cast<QProgressDialog*>(dialog) != nullptr) return;
    looks.stop();
    const auto* preview = dialog->findChild<WatermarkView*>();
    while (preview != nullptr && !preview->isSettled()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    status = save(*dialog, picture);
    dialog->reject();
  });
  looks.start();
  opener.click();
  return status
             ? *status
             : fail(cannotDraw, Formats::sentence("Pressing {1} opens no dialog.", opener.objectName().toStdString()));
}

int draw(PreferencesWindow& window, const Request& request) {
  window.show();
  while (!window.isComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QCoreApplication::processEvents();
  if (!window.failures().isEmpty()) return fail(cannotDraw, window.failures().constFirst().toStdString());
  if (!window.pageFailure().isEmpty()) return fail(cannotDraw, window.pageFailure().toStdString());
  if (request.press.empty()) return save(window, request.screenshot);
  return drawDialog(buttonToPress(window, request.press), request.screenshot);
}

int show(const Request& request) {
  Files::speak(request.preferences.locale);
  std::optional<ImaginaryScreen> imaginary;
  if (!request.screenshot.empty()) imaginary.emplace();
  if (!imaginary && !hasDisplay())
    return fail(
        cannotOpen,
        Formats::sentence("There is no display to open a window on; give --screenshot to draw it into a picture."));
  // For those who look into the toolkit itself.
  if (qEnvironmentVariableIsEmpty("QT_DEBUG_PLUGINS") && qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
    qInstallMessageHandler(takeToolkitMessage);
  int count = 1;
  char name[] = "kiln";
  char* arguments[] = {name, nullptr};
  QApplication application(count, arguments);
  QApplication::setApplicationName("kiln");
  PreferencesWindow window(request);
  window.open();
  if (imaginary) return draw(window, request);
  window.show();
  const QPointer<QAbstractButton> pressed = request.press.empty() ? nullptr : &buttonToPress(window, request.press);
  const auto begin = [&window, pressed] {
    window.unlockJob();
    if (pressed) pressed->click();
  };
  QMetaObject::invokeMethod(&window, begin, Qt::QueuedConnection);
  return QApplication::exec();
}

}  // namespace
}  // namespace Window

extern "C" __attribute__((visibility("default"))) int kilnShow(const Window::Request& request) {
  try {
    return Window::show(request);
  } catch (const std::exception& error) {
    return Window::fail(Window::cannotOpen, error.what());
  }
}
