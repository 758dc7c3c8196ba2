// Conversion of user interface texts for Qt.
#pragma once

#include "host/chrome/strings.h"

#include <QLocale>
#include <QString>

#include <string>
#include <string_view>

namespace Window {

QString toQt(std::u16string_view text);
std::u16string toWide(const QString& text);

// A text of others, such as a name in a file, as labels and lists show it: on one line, without characters that would
// be obeyed (see Formats::printable).
QString plainText(const QString& text);

// A tool tip that shows the text as it is, although Qt takes what looks like HTML for HTML. Qt wraps only tips in HTML,
// as this one is when it looks like that or `isToBeWrapped`.
QString toolTipOf(const QString& text, bool isToBeWrapped);

// A label with its access key in Qt's form: the key in brackets, as in East Asian labels, if present, else its first
// occurrence. A missing key is appended in brackets; an empty key gives no access key. Escapes ampersands.
QString withAccessKey(const QString& label, const QString& key);

// A label without the colon at its end.
QString withoutColon(QString name);

// What screen readers tell of a text with an access key: without the key, its brackets, and the colon.
QString spokenName(const QString& text);

// The locale of that name. Its numbers have the digits that the texts have, whatever is usual in its country.
QLocale localeOf(const std::string& name);

// The window's own texts in the language of the preferences. Holds a reference only.
class Texts {
 public:
  // The tables outlive the texts and their copies.
  explicit Texts(const Refhost::StringTables& stringTables) : tables(&stringTables) {}

  // The text "IDS_KILN_" + name. Its placeholders {1} and {2} (percent signs have another meaning in tables) become %1
  // and %2 for QString::arg. Throws std::logic_error when no table has the text.
  QString operator()(const char* name) const;

  // The displayed form of a text that may be a string-table reference.
  QString shown(std::u16string_view text) const { return plainText(toQt(tables->resolve(text))); }

 private:
  const Refhost::StringTables* tables;
};

}  // namespace Window
