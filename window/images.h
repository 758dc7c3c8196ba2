// The pictures of a plug-in and its layouts, as Qt draws them.
#pragma once

#include "host/chrome/addresses.h"
#include "kiln/widgets.h"

#include <QPixmap>

#include <string_view>

class QWidget;

namespace Window {

// The picture for showing on that widget; nothing for none, and for one that cannot be read. Pictures keep the size
// that they have at 96 dots an inch; swatches were made in the screen's own pixels.
QPixmap pixmapOf(const Kiln::SmartPtr<Kiln::XUL::Image>& image, const QWidget& on);

// The picture that a layout names by its address.
QPixmap pixmapAt(std::u16string_view address, const Refhost::ChromeFolders& chrome);

}  // namespace Window
