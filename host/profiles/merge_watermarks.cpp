#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/documents/documents.h"
#include "host/profiles/merge.h"

#include <limits>
#include <set>
#include <stdexcept>

namespace Refhost {
namespace {

namespace Field = Formats::Field;
using Formats::noneId;

using Record = Kiln::SmartPtr<Node>;

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

std::u16string field(Node& record, std::u16string_view name) {
  const auto found = record.child(name);
  return found ? found->value().str() : std::u16string();
}

bool isReference(std::u16string_view name) { return name.starts_with(u"$IDS_") && name.ends_with(u';'); }

using Fields = std::set<std::pair<std::u16string, std::u16string>>;

void collect(const Node& node, const std::u16string& path, Fields& fields) {
  for (const auto& child : node.children()) {
    const std::u16string childPath = path + u'/' + child->localNameText();
    fields.emplace(childPath, child->text());
    collect(*child, childPath, fields);
  }
}

// The displayed content of a record, for comparison; names and ids are ignored. The font face of a built-in record
// depends on the language at the first opening.
Fields contentOf(Node& record) {
  Fields fields;
  collect(record, {}, fields);
  const bool cameWithTheProgram = isReference(nameOfRecord(record));
  std::erase_if(fields, [&](const auto& entry) {
    const std::u16string& path = entry.first;
    return path == u"/value" || path == u"/downloaded" || path == u"/stylename" ||
           (cameWithTheProgram && path == u"/fontname");
  });
  return fields;
}

class WatermarkMerge {
 public:
  WatermarkMerge(Record homeRoot, const Translate& translator) : root(std::move(homeRoot)), translate(translator) {
    for (const Record& record : root->children()) take(record);
  }

  // Returns the record's id in the home.
  std::u16string add(Node& record) {
    const std::u16string wanted = nameOfRecord(record);
    std::u16string name = wanted;
    for (int number = 2;; ++number) {
      const auto known = byName.find(name);
      if (known == byName.end()) return append(record, name);
      if (contentOf(*known->second) == contentOf(record)) return known->second->localNameText();
      name = numbered(translate(wanted), number, noLimit);
    }
  }

  bool hasAdded() const { return isChanged; }

  // Reserves an id of the profile, so that no other record gets it.
  void reserve(const std::u16string& id) { reserved.insert(id); }

  std::string bytes() const { return watermarkBytes(*root); }

 private:
  void take(const Record& record) {
    ids.insert(record->localNameText());
    ids.insert(idOfRecord(*record));
    byName.emplace(nameOfRecord(*record), record);
  }

  std::u16string append(Node& record, const std::u16string& name) {
    std::u16string id = idOfRecord(record);
    for (int number = 2; ids.contains(id) || (number > 2 && reserved.contains(id)); ++number)
      id = idOfRecord(record) + u'_' + Formats::toUtf16(std::to_string(number));
    const auto added = record.copy();
    if (name != nameOfRecord(record)) added->childOrNew(Field::stylename)->setValue(name);
    if (id != field(record, Field::value)) added->childOrNew(Field::value)->setValue(id);
    if (const auto downloaded = added->child(Field::downloaded)) downloaded->setValue(Formats::Value::no);
    root->setChild(id, added);
    isChanged = true;
    take(Kiln::smartCast<Node>(root->child(id)));
    return id;
  }

  Record root;
  const Translate& translate;
  std::set<std::u16string> ids;
  std::set<std::u16string> reserved;
  std::map<std::u16string, Record> byName;
  bool isChanged = false;
};

}  // namespace

std::u16string numbered(std::u16string_view name, int number, std::size_t units) {
  const std::u16string ending = u" (" + Formats::toUtf16(std::to_string(number)) + u')';
  std::u16string result(name.substr(0, units - ending.size()));
  return result + ending;
}

std::u16string nameOfRecord(Node& record) {
  const bool isNamed = static_cast<bool>(record.child(Field::stylename));
  return field(record, isNamed ? Field::stylename : Field::label);
}

std::u16string idOfRecord(Node& record) {
  return std::u16string(Formats::idInFile(record.localNameText(), field(record, Field::value)));
}

std::string watermarkBytes(const Node& root) {
  std::multimap<std::pair<bool, std::u16string>, Record> inOrder;
  for (const Record& record : root.children())
    inOrder.emplace(std::pair(record->localNameText() != noneId, record->localNameText()), record);
  const auto sorted = make<Node>(root.localNameText());
  for (const auto& [place, record] : inOrder) sorted->append(record);
  return writeXml(*sorted, NameEscaping::on);
}

Kiln::SmartPtr<Node> readWatermarks(std::string_view bytes, const std::string& source) {
  return readXml(bytes, source, documentLimits, NameEscaping::on);
}

MergedWatermarks mergeWatermarks(Kiln::SmartPtr<Node> home, Node& profile, const Translate& translate) {
  const bool isNew = !home || home->children().empty();
  if (isNew) {
    home = make<Node>(profile.localNameText());
    if (const auto none = profile.child(noneId)) home->setChild(noneId, none->clone());
  }

  WatermarkMerge merge(home, translate);
  for (const Record& record : profile.children()) merge.reserve(idOfRecord(*record));
  MergedWatermarks merged;
  for (const Record& record : profile.children()) {
    const std::u16string name = nameOfRecord(*record);
    if (!Formats::isUsableName(name)) continue;  // the record for no watermark
    const std::u16string id = merge.add(*record);
    if (id != record->localNameText()) merged.ids[record->localNameText()] = id;
  }
  if (isNew || merge.hasAdded()) merged.file = merge.bytes();
  return merged;
}

}  // namespace Refhost
