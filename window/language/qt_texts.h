// Qt's own texts (file dialogs, context menus) in the language of the preferences.
#pragma once

#include "window/language/texts.h"

#include <QHash>
#include <QTranslator>

namespace Window {

class QtTexts final : public QTranslator {
  Q_OBJECT

 public:
  // Sets the language; install the translator again to update visible texts.
  void setTexts(const Texts& texts);

  // QTranslator
  QString translate(const char* context, const char* sourceText, const char* disambiguation, int n) const override;
  bool isEmpty() const override { return translations.isEmpty(); }

 private:
  QHash<QByteArray, QString> translations;
};

}  // namespace Window
