#include "window/language/texts.h"

#include "formats/printable.h"

#include <QRegularExpression>
#include <QTextDocument>

#include <stdexcept>

namespace Window {

QString toQt(std::u16string_view text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }

std::u16string toWide(const QString& text) { return text.toStdU16String(); }

QString plainText(const QString& text) { return toQt(Formats::printable(toWide(text))); }

QString toolTipOf(const QString& text, bool isToBeWrapped) {
  if (!isToBeWrapped && !Qt::mightBeRichText(text)) return text;
  return Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

QString withAccessKey(const QString& label, const QString& key) {
  const auto plain = [](QString text) { return text.replace('&', "&&"); };
  if (key.isEmpty()) return plain(label);
  const qsizetype bracket = label.indexOf('(' + key + ')', 0, Qt::CaseInsensitive);
  const qsizetype place = bracket >= 0 ? bracket + 1 : label.indexOf(key, 0, Qt::CaseInsensitive);
  if (place < 0) return plain(label) + "(&" + key.toUpper() + ")";
  return plain(label.left(place)) + '&' + plain(label.mid(place));
}

QString withoutColon(QString name) {
  while (name.endsWith(':') || name.endsWith(u'\uFF1A') || name.endsWith(QChar::Nbsp)) name.chop(1);
  return name.trimmed();
}

QString spokenName(const QString& text) {
  static const QRegularExpression keyInBrackets(QStringLiteral("\\s*\\(&\\w\\)"));
  static const QRegularExpression keyMark(QStringLiteral("&(.)"));
  return withoutColon(QString(text).remove(keyInBrackets).replace(keyMark, QStringLiteral("\\1")));
}

QLocale localeOf(const std::string& name) {
  const QLocale locale(QString::fromStdString(name));
  for (const QLocale& each : {locale, QLocale(locale.language(), QLocale::Morocco)})
    if (each.zeroDigit() == QLatin1String("0")) return each;
  return locale;
}

QString Texts::operator()(const char* name) const {
  const std::u16string token = toWide(QStringLiteral("$IDS_KILN_%1;").arg(QLatin1String(name)));
  const std::u16string text = tables->resolve(token);
  if (text == token) throw std::logic_error("the window has no text " + std::string(name));
  return toQt(text).replace("{1}", "%1").replace("{2}", "%2");
}

}  // namespace Window
