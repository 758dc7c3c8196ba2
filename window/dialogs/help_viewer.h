// A small window for help pages.
#pragma once

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

  // Shows a page, scrolled to `topic` if it exists.
  void show(const std::string& page, const std::u16string& topic, const Texts& texts);

 private:
  QTextBrowser* text;
  QPushButton* closeButton;
};

}  // namespace Window
