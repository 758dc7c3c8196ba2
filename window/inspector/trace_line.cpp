#include "window/inspector/trace_line.h"

#include "window/language/texts.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace Window {
namespace {

QString quoted(const QString& text) {
  const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
  return QString::fromUtf8(list.mid(1, list.size() - 2));
}

QString json(const std::u16string& text) { return quoted(toQt(text)); }
QString json(bool value) { return value ? "true" : "false"; }
QString json(double value) { return QString::number(value); }

QString json(const Refhost::TracePairs& pairs) {
  QStringList items;
  for (const auto& [name, value] : pairs) items << '[' + json(name) + ',' + json(value) + ']';
  return '[' + items.join(',') + ']';
}

}  // namespace

QString traceLine(const Refhost::TraceEvent& event) {
  QString line = "{\"op\":" + quoted(QString::fromStdString(event.op));
  for (const auto& [name, value] : event.members)
    line += ',' + quoted(QString::fromStdString(name)) + ':' +
            std::visit([](const auto& known) { return json(known); }, value);
  return plainText(line + '}');
}

}  // namespace Window
