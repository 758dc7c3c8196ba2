// A sentence beside a widget that tells what has become of the user's input; it goes by itself.
#pragma once

class QString;
class QWidget;

namespace Window {

// Shows the sentence below the widget, and tells it to screen readers. A window shows one at a time.
void showNotice(QWidget& widget, const QString& sentence);

}  // namespace Window
