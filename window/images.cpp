#include "window/images.h"

#include "host/reference_host.h"
#include "window/texts.h"

#include <QWidget>

namespace Window {

QPixmap pixmapOf(const Kiln::SmartPtr<Kiln::XUL::Image>& image, const QWidget& on) {
  const auto* known = dynamic_cast<const Refhost::Image*>(image.get());
  if (known == nullptr) return {};
  if (known->colour.empty()) return QPixmap(toQt(known->file.u16string()));
  QPixmap swatch(known->width, known->height);
  swatch.fill(QColor(toQt(known->colour)));
  swatch.setDevicePixelRatio(on.devicePixelRatioF());
  return swatch;
}

QPixmap pixmapAt(std::u16string_view address, const Refhost::ChromeFolders& chrome) {
  const auto file = chrome.file(address);
  return file ? QPixmap(toQt(file->u16string())) : QPixmap();
}

}  // namespace Window
