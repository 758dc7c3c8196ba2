// Paper: its sizes, and how a sheet lies on the window.
#pragma once

#include <QRectF>
#include <QSizeF>

#include <string_view>

class QPainter;
class QWidget;

namespace Window {

// Between a sheet and the edge of its view; the shadow falls into it.
inline constexpr int roundSheet = 20;

// The upright sheet that the property "PaperSize" names, in points. A4 for a name that is not known here.
QSizeF paperOf(std::u16string_view name);

// The largest sheet of that shape that lies in the middle of the view, on whole pixels of the screen.
QRectF sheetWithin(const QWidget& view, const QSizeF& shape);

// Fills the view with what paper lies on.
void paintDesk(QPainter& painter, const QWidget& view);

// The sheet itself, white, with its edge and shadow.
void paintSheet(QPainter& painter, const QRectF& sheet);

}  // namespace Window
