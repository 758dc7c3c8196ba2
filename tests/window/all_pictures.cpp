#include "tests/window/all_pictures.h"

#include "tests/window/every_dialog.h"
#include "tests/window/stored_overlays.h"
#include "window/dialogs/new_overlay_dialog.h"

#include <QColorDialog>
#include <QDir>
#include <QDockWidget>
#include <QMenuBar>

#include <fstream>

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
          for (const char* overlay : {"00001.opa", "00002.opa"})
            write(request.preferences.home / "profile/overlays" / overlay, Press::samplePdf());
          request.preferences.locale = locale;
          request.document = made("Quarterly report.pdf");
          request.preferences.settings.emplace_back(u"kilnworks.watermark.stylename.support", u"True");
        }) {
    start = QString::fromStdString(locale + '-' + palette + '-');
    place.mkpath(".");
  }

  void drawWindow() {
    for (const char* tab : {"pro_tab_device", "pro_tab_effect"}) {
      open.selectTab(tab);
      Testing::waitUntil([this] { return open.window->isComplete(); });
      save(*open.window, tab);
    }
    open.find<QDockWidget>("inspector").toggleViewAction()->trigger();
    QCoreApplication::processEvents();
    Testing::waitUntil([this] { return open.window->isComplete(); });
    save(*open.window, "inspector");
    open.find<QDockWidget>("inspector").toggleViewAction()->trigger();
    for (QAction* menu : open.window->menuBar()->actions())
      save(*menu->menu(), "menu" + std::to_string(open.window->menuBar()->actions().indexOf(menu)));
    save(*open.find<QPushButton>("manage_presets").menu(), "menu_presets");
  }

  void drawDialogs() {
    openEveryDialog(open, answers, [this](QWidget& dialog, const std::string& name) { draw(dialog, name); });
    answers.choose("OPEN", {drawing("OPEN")});
    drawQuestions();
    open.window->findChild<QAction*>("HELP_WINDOW")->trigger();
    draw(open.find<QWidget>("help"), "help");
  }

 private:
  using Answer = std::function<void(QWidget&)>;

  static void write(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }

  // A PDF file of that name.
  std::filesystem::path made(const char* name) const {
    const std::filesystem::path file = files.filePath(name).toStdString();
    write(file, Press::samplePdf());
    return file;
  }

  Answer drawing(const std::string& name) {
    return [this, name](QWidget& dialog) { draw(dialog, name); };
  }

  // What the window asks and tells about presets, overlays, passwords and what fails.
  void drawQuestions() {
    answers.choose("PRESET_SAVE", {Testing::name("Office")});
    answers.choose("PRESET_DELETE", {drawing("preset_delete")});

    QImage logo(48, 48, QImage::Format_ARGB32);
    logo.fill(Qt::red);
    logo.save(files.filePath("Logo.png"));
    const auto make = [this](const QString& form, const Answer& answer) {
      answers.during([this] { open.find<QPushButton>("newOverlayButton").click(); },
                     {Testing::file(files.filePath(form)), answer});
    };
    make("Logo.png", drawing("new_overlay_of_picture"));
    make("Quarterly report.pdf", [](QWidget& dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
    auto& list = open.find<QComboBox>("cmb_EffOverlay");
    answers.during(
        [&] {
          QApplication::setActiveWindow(open.window.get());
          list.setFocus();
          press(list, Qt::Key_F2);
        },
        {drawing("rename_overlay")});

    const QString out = files.filePath("Out.pdf");
    answers.choose("PRINT",
                   {[](QWidget& dialog) { dialog.findChild<QPushButton*>("printGo")->click(); }, Testing::file(out)});
    if (auto* told = open.window->findChild<QMessageBox*>()) draw(*told, "printed");
    write(files.filePath("Notes.pdf").toStdString(), "no PDF");
    answers.choose("OPEN", {Testing::file(files.filePath("Notes.pdf"))});
    QColorDialog colours(open.window.get());
    colours.setOption(QColorDialog::DontUseNativeDialog);
    colours.show();
    draw(colours, "colours");
  }

  using Request = Window::Request;

  void draw(QWidget& dialog, const std::string& name) {
    QCoreApplication::processEvents();
    if (const auto* form = dynamic_cast<Window::NewOverlayDialog*>(&dialog))
      Testing::waitUntil([form] { return form->isSettled(); });
    save(dialog, name);
    press(dialog, Qt::Key_Escape);
  }

  void save(QWidget& shown, const std::string& name) {
    const QString file = place.filePath(start + QString::fromStdString(name) + ".png");
    if (!shown.grab().save(file)) throw std::runtime_error("cannot write " + file.toStdString());
  }

  QDir place;
  QString start;
  QTemporaryDir files;
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
