// Paper sizes, and drawing of sheets.
#pragma once

#include <QRectF>
#include <QSizeF>

#include <string_view>

class QPainter;
class QWidget;

namespace Window {

inline constexpr double pointsPerInch = 72;
inline constexpr double millimetresPerInch = 25.4;
inline constexpr double pointsPerMillimetre = pointsPerInch / millimetresPerInch;

// The distance between a sheet and the edge of its view, with room for the shadow.
inline constexpr int roundSheet = 20;

// The portrait sheet for a value of the property "PaperSize", in points. A4 for an unknown name.
QSizeF paperOf(std::u16string_view name);

// The largest centred sheet of that shape in the view, aligned to device pixels.
QRectF sheetWithin(const QWidget& view, const QSizeF& shape);

// The same in a part of a view, whose device has so many pixels for each of its units.
QRectF sheetWithin(const QRectF& part, double ratio, const QSizeF& shape);

// Fills the view with the background of the paper.
void paintDesk(QPainter& painter, const QWidget& view);

// The sheet itself: white, with an edge and a shadow.
void paintSheet(QPainter& painter, const QRectF& sheet);

}  // namespace Window
