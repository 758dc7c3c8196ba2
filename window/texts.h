// Texts of the user interface, from the string tables into Qt.
#pragma once

#include "host/chrome/strings.h"

#include <QString>

#include <string>
#include <string_view>

namespace Window {

QString toQt(std::u16string_view text);
std::u16string toWide(const QString& text);

// A label whose access key Qt underlines and obeys with Alt: where the label has it in brackets, as East Asian labels
// have, else where it first occurs. A key that the label does not contain is put behind it in brackets; an empty key
// leaves the label without one. An ampersand in the label stays an ampersand.
QString withAccessKey(const QString& label, const QString& key);

// The window's own texts in the language of the preferences. A value: it only knows where the texts are.
class Texts {
 public:
  // The tables outlive the texts and their copies.
  explicit Texts(const Refhost::StringTables& stringTables) : tables(&stringTables) {}

  // The text of "IDS_KILN_" and this name. What stands in the table as {1} and {2}, since a percent sign means
  // something else there, comes out as %1 and %2 for QString::arg. Throws std::logic_error when no table has the text.
  QString operator()(const char* name) const;

  // What the user reads for a text that may be a string-table reference.
  QString shown(std::u16string_view text) const { return toQt(tables->resolve(text)); }

 private:
  const Refhost::StringTables* tables;
};

}  // namespace Window
