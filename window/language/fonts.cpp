#include "window/language/fonts.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>

namespace Window {
namespace {

QFontDatabase::WritingSystem writingSystem(const std::string& locale) {
  if (locale.starts_with("ja")) return QFontDatabase::Japanese;
  if (locale.starts_with("zh-TW")) return QFontDatabase::TraditionalChinese;
  if (locale.starts_with("zh")) return QFontDatabase::SimplifiedChinese;
  if (locale.starts_with("ar")) return QFontDatabase::Arabic;
  return QFontDatabase::Latin;
}

}  // namespace

void useFontsFor(const std::string& locale) {
  static const QFont desktopFont = QApplication::font();
  const auto system = writingSystem(locale);
  QFont font = desktopFont;
  if (!QFontDatabase::writingSystems(font.family()).contains(system)) {
    const QStringList able = QFontDatabase::families(system);
    if (!able.isEmpty()) font.setFamilies({desktopFont.family(), able.first()});
  }
  QApplication::setFont(font);
}

}  // namespace Window
