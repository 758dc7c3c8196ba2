#include "effect/watermark/record.h"

#include <new>

namespace Effect {

Node newElement(Kiln::Host& host, Name name) {
  const Node element = host.documents()->createElement(name, {}, {});
  if (!element) throw std::bad_alloc();
  return element;
}

Kiln::WString fieldText(Kiln::Dom::INode& record, Name field) {
  const Node found = record.child(field);
  return found ? found->value() : Kiln::WString();
}

void setField(Kiln::Dom::INode& record, Name field, Kiln::WStringView text) {
  record.childOrNew(field)->setValue(text);
}

bool hasField(Kiln::Dom::INode& record, Name field) { return static_cast<bool>(record.child(field)); }

bool isDownloaded(Kiln::Dom::INode& record) { return fieldText(record, Field::downloaded).view() == Value::yes; }

Name defaultFace(Kiln::Host& host) {
  if (host.isJapanese()) return u"ＭＳ Ｐゴシック";
  const Kiln::WString language = host.languageName();
  if (language.view() == u"Chinese-Traditional") return u"細明體";
  if (language.view() == u"Chinese-Simplified") return u"宋体";
  return u"Arial";
}

Node noneRecord(Kiln::Host& host, Kiln::WStringView sourceFile) {
  Node record = newElement(host, noneId);
  setField(*record, Field::label, Token::none);
  setField(*record, Field::stylename, Token::none);
  setField(*record, Field::fontname, defaultFace(host));
  setField(*record, Field::fontsize, u"72");
  setField(*record, Field::fontstyle, FontStyle::regular);
  setField(*record, Field::colour, u"#808080");
  setField(*record, Field::angle, u"0");
  setField(*record, Field::positionX, u"C");
  setField(*record, Field::positionY, u"C");
  setField(*record, Field::printStyle, PrintStyle::solid);
  setField(*record->childOrNew(Field::transparency), Field::intensity, u"0");
  setField(*record, Field::sourceFile, sourceFile);
  return record;
}

Node asWritten(Kiln::Dom::INode& record) {
  Node written = record.clone();
  if (const Node name = record.child(Field::origName)) setField(*written, Field::stylename, name->value());
  if (const Node id = record.child(Field::origId)) setField(*written, Field::value, id->value());
  stripMemoryFields(*written);
  return written;
}

void stripMemoryFields(Kiln::Dom::INode& record) {
  for (const Name field : {Field::sourceFile, Field::origId, Field::origName}) record.removeChild(field);
}

}  // namespace Effect
