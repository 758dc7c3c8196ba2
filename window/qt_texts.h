// What Qt says of its own accord (file dialogs, context menus), in the language of the preferences.
#pragma once

#include "window/texts.h"

#include <QHash>
#include <QTranslator>

namespace Window {

class QtTexts final : public QTranslator {
  Q_OBJECT

 public:
  // The language from now on; install the translator again to have it used by what is on the screen.
  void setTexts(const Texts& texts);

  // QTranslator
  QString translate(const char* context, const char* sourceText, const char* disambiguation, int n) const override;
  bool isEmpty() const override { return translations.isEmpty(); }

 private:
  QHash<QByteArray, QString> translations;
};

}  // namespace Window
