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

// How well one colour is told from another: 1 for the same, 21 for black on white.
double contrast(const QColor& one, const QColor& other);

// The colour, or one like it that can be read on that background.
QColor legible(const QColor& colour, const QColor& background);

// A single-colour swatch in device pixels, with an edge in the colour of texts, which makes every colour visible.
QPixmap swatch(const QColor& colour, const QSize& pixels, const QWidget& on);

}  // namespace Window
