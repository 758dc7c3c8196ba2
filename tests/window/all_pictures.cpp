#include "tests/window/all_pictures.h"

#include "tests/window/every_dialog.h"
#include "tests/window/stored_overlays.h"

#include <QDir>

namespace Testing {
namespace {

// Of dark desktops, and of those for people who need strong contrasts.
void usePalette(const std::string& name) {
  if (name == "light") return;
  const bool isDark = name == "dark";
  const QColor window = isDark ? QColor("#2a2e32") : QColor(Qt::black);
  const QColor base = isDark ? QColor("#1b1e20") : QColor(Qt::black);
  const QColor text = isDark ? QColor("#fcfcfc") : QColor(Qt::white);
  const QColor highlight = isDark ? QColor("#3daee9") : QColor(Qt::yellow);
  QPalette palette(text, isDark ? QColor("#31363b") : window, window.lighter(), window.darker(), QColor("#808080"),
                   text, text, base, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, Qt::black);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, QColor("#b0b0b0"));
  palette.setColor(QPalette::Link, highlight);
  for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(isDark ? "#808080" : "#00ff00"));
  QApplication::setPalette(palette);
}

class Album {
 public:
  Album(const std::string& folder, const std::string& locale, const std::string& palette)
      : place(QString::fromStdString(folder)),
        open([&](Request& request) {
          Testing::useSeveralOverlays(request);
          request.preferences.locale = locale;
          request.preferences.settings.emplace_back(u"kilnworks.watermark.stylename.support", u"True");
        }) {
    start = QString::fromStdString(locale + '-' + palette + '-');
    place.mkpath(".");
  }

  void drawWindow() {
    for (const char* tab : {"pro_tab_device", "pro_tab_effect"}) {
      open.selectTab(tab);
      open.settle();
      save(*open.window, tab);
    }
  }

  void drawDialogs() {
    openEveryDialog(open, answers, [this](QWidget& dialog, const std::string& name) { draw(dialog, name); });
    answers.choose("OPEN", {[this](QWidget& dialog) { draw(dialog, "OPEN"); }});
    open.window->findChild<QAction*>("HELP_WINDOW")->trigger();
    draw(open.find<QWidget>("help"), "help");
  }

 private:
  using Request = Window::Request;

  void draw(QWidget& dialog, const std::string& name) {
    QCoreApplication::processEvents();
    save(dialog, name);
    press(dialog, Qt::Key_Escape);
  }

  void save(QWidget& shown, const std::string& name) {
    const QString file = place.filePath(start + QString::fromStdString(name) + ".png");
    if (!shown.grab().save(file)) throw std::runtime_error("cannot write " + file.toStdString());
  }

  QDir place;
  QString start;
  OpenWindow open;
  Answers answers{open};
};

}  // namespace

void drawAll(const std::string& folder, const std::string& locale, const std::string& palette) {
  usePalette(palette);
  Album album(folder, locale, palette);
  album.drawWindow();
  album.drawDialogs();
}

}  // namespace Testing
