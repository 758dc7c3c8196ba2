// The pictures of a plug-in and its layouts, as Qt draws them.
#pragma once

#include "host/chrome/addresses.h"
#include "kiln/widgets.h"

#include <QColor>
#include <QPixmap>
#include <QSize>

#include <string_view>

class QWidget;

namespace Window {

// The picture for showing on that widget; nothing for none, and for one that cannot be read. Pictures keep the size
// that they have at 96 dots an inch; swatches were made in the screen's own pixels.
QPixmap pixmapOf(const Kiln::SmartPtr<Kiln::XUL::Image>& image, const QWidget& on);

// The picture of that address; nothing for none.
QPixmap pixmapAt(std::u16string_view address, const Refhost::ChromeFolders& chrome);

// The edge of a page, which may be as white as what lies around it.
inline constexpr QColor pageEdge(150, 158, 168);

// A page as large as fits into that room, with an edge.
QPixmap pageWithEdge(const QPixmap& page, const QSize& room, const QColor& edge, const QWidget& on);

// A patch of one colour, of so many of the screen's own pixels, with an edge that a patch as light as the window needs.
QPixmap swatch(const QColor& colour, const QSize& pixels, const QWidget& on);

}  // namespace Window
