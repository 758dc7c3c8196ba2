#include "window/widgets/images.h"

#include "host/reference_host.h"
#include "window/language/texts.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

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

// As the guidelines for accessible content define it.
double luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one), b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

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

QColor legible(const QColor& colour, const QColor& background) {
  constexpr double leastContrast = 3;
  const bool isDark = luminance(background) < 0.18;
  QColor seen = colour.toRgb();
  for (int step = 0; step < 20 && contrast(seen, background) < leastContrast; ++step) {
    const int end = isDark ? 255 : 0;
    const auto nearer = [end](int part) { return part + (end - part) / 4 + (end > part ? 1 : 0); };
    seen.setRgb(std::min(nearer(seen.red()), 255), std::min(nearer(seen.green()), 255),
                std::min(nearer(seen.blue()), 255));
  }
  return seen;
}

QPixmap swatch(const QColor& colour, const QSize& pixels, const QWidget& on) {
  QPixmap drawn(pixels);
  if (drawn.isNull()) return {};
  drawn.fill(colour);
  QPainter painter(&drawn);
  QColor edge = on.palette().color(QPalette::WindowText);
  edge.setAlpha(110);
  painter.setPen(edge);
  painter.drawRect(0, 0, pixels.width() - 1, pixels.height() - 1);
  painter.end();
  drawn.setDevicePixelRatio(on.devicePixelRatioF());
  return drawn;
}

}  // namespace Window
