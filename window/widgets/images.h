// The pictures of a plug-in and its layouts, for Qt.
#pragma once

#include "host/chrome/addresses.h"
#include "kiln/widgets.h"

#include <QColor>
#include <QPixmap>
#include <QSize>

#include <string_view>

class QWidget;

namespace Window {

// The picture for display on that widget; null for none, and for an unreadable one. Pictures are sized for 96 dots per
// inch; swatches, and pictures scaled for the screen, are in device pixels.
QPixmap pixmapOf(const Kiln::SmartPtr<Kiln::XUL::Image>& image, const QWidget& on);

// The picture at an address; null for none.
QPixmap pixmapAt(std::u16string_view address, const Refhost::ChromeFolders& chrome);

// The colour of a page's edge, since pages may be as white as the background.
inline constexpr QColor pageEdge(150, 158, 168);

// A page scaled to fit into `room`, with an edge.
QPixmap pageWithEdge(const QPixmap& page, const QSize& room, const QColor& edge, const QWidget& on);

// A single-colour swatch in device pixels, with an edge that makes light colours visible.
QPixmap swatch(const QColor& colour, const QSize& pixels, const QWidget& on);

}  // namespace Window
