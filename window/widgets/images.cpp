#include "window/widgets/images.h"

#include "host/reference_host.h"
#include "window/language/texts.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QWidget>

namespace Window {
namespace {

// The file is untrusted: decodes only bitmaps, and rejects excessive sizes.
QPixmap bitmapIn(const std::filesystem::path& file) {
  QFile bytes(toQt(file.u16string()));
  if (!bytes.open(QIODevice::ReadOnly)) return {};
  QImageReader reader(&bytes, "bmp");
  reader.setAutoDetectImageFormat(false);
  return QPixmap::fromImageReader(&reader);
}

}  // namespace

QPixmap pixmapOf(const Kiln::SmartPtr<Kiln::XUL::Image>& image, const QWidget& on) {
  const auto* known = dynamic_cast<const Refhost::Image*>(image.get());
  if (known == nullptr) return {};
  const QSize sides(known->width, known->height);
  if (!known->colour.empty()) return swatch(QColor(toQt(known->colour)), sides, on);
  QPixmap picture = bitmapIn(known->file);
  if (sides.isEmpty() || picture.isNull()) return picture;
  QPixmap scaled = picture.scaled(sides, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  scaled.setDevicePixelRatio(on.devicePixelRatioF());
  return scaled;
}

QPixmap pixmapAt(std::u16string_view address, const Refhost::ChromeFolders& chrome) {
  const auto file = chrome.file(address);
  return file ? bitmapIn(*file) : QPixmap();
}

QPixmap pageWithEdge(const QPixmap& page, const QSize& room, const QColor& edge, const QWidget& on) {
  if (page.isNull()) return {};
  const double ratio = on.devicePixelRatioF();
  QPixmap drawn = page.scaled((QSizeF(room) * ratio).toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
  drawn.setDevicePixelRatio(ratio);
  QPainter painter(&drawn);
  painter.setPen(QPen(edge, 1));
  painter.drawRect(QRectF(QPointF(), drawn.deviceIndependentSize()).adjusted(0.5, 0.5, -0.5, -0.5));
  return drawn;
}

QPixmap swatch(const QColor& colour, const QSize& pixels, const QWidget& on) {
  QPixmap drawn(pixels);
  if (drawn.isNull()) return {};
  drawn.fill(colour);
  QPainter painter(&drawn);
  painter.setPen(QColor(0, 0, 0, 80));
  painter.drawRect(0, 0, pixels.width() - 1, pixels.height() - 1);
  painter.end();
  drawn.setDevicePixelRatio(on.devicePixelRatioF());
  return drawn;
}

}  // namespace Window
