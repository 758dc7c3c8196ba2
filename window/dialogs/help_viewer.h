// A small window for help pages.
#pragma once

#include "host/chrome/addresses.h"
#include "window/language/texts.h"

#include <QDialog>

#include <string>

class QPushButton;
class QTextBrowser;

namespace Window {

class HelpViewer final : public QDialog {
  Q_OBJECT

 public:
  // Stays open beside `parent` until the user closes it.
  explicit HelpViewer(QWidget* parent);

  // Shows the page at a chrome:// address, scrolled to `topic` if it exists. False when there is no such page.
  bool show(const std::u16string& url, const std::u16string& topic, const Refhost::ChromeFolders& chrome,
            const Texts& texts);

 private:
  QTextBrowser* text;
  QPushButton* closeButton;
};

}  // namespace Window
