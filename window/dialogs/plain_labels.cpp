#include "window/dialogs/plain_labels.h"

#include <QLabel>

namespace Window {

void showPlain(QWidget& dialog) {
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
}

}  // namespace Window
