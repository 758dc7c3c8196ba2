#include "effect/watermark/file_record.h"

#include "effect/watermark/numbers.h"
#include "effect/watermark/record_id.h"
#include "effect/watermark/watermark_file.h"

#include <set>

namespace Effect {
namespace {

// Names a record without a name by its text.
void nameByLabel(Kiln::Dom::INode& record) {
  if (!hasField(record, Field::stylename) && hasField(record, Field::label))
    setField(record, Field::stylename, fieldText(record, Field::label));
}

// Prepares a record of a file for the store: ignores the file's values of the in-memory fields.
void prepare(Kiln::Dom::INode& record, const std::u16string& path) {
  stripMemoryFields(record);
  setField(record, Field::sourceFile, path);
  nameByLabel(record);
  if (const Node defaults = record.child(Field::defaultSetting)) nameByLabel(*defaults);
}

// The element's name where it is an id, else ids that depend on it and the file alone.
std::u16string idFromElement(const std::u16string& element, const std::u16string& path,
                             const std::function<bool(const std::u16string& id)>& isTaken) {
  std::u16string id(idInFile(element, {}));
  for (std::int64_t attempt = 0; !isMadeId(id) || isTaken(id); ++attempt)
    id = derivedRecordId(path + u'\n' + element + u'\n' + decimalText(attempt));
  return id;
}

}  // namespace

std::vector<FileRecord> fileRecords(Kiln::Dom::INode& root, const std::u16string& path) {
  std::vector<FileRecord> records;
  std::set<std::u16string> ids;
  const auto isTaken = [&ids](const std::u16string& id) { return ids.contains(id); };
  for (const Node& node : recordsOf(root)) {
    prepare(*node, path);
    FileRecord& record = records.emplace_back();
    record.node = node;
    record.element = node->name().str();
    record.isUsable = isUsableName(fieldText(*node, Field::stylename).view());
    if (!record.isUsable) continue;
    const std::u16string value = fieldText(*node, Field::value).str();
    record.id = idInFile(record.element, value);
    if (record.id != value || isTaken(value)) {
      node->removeChild(Field::value);
      record.id = idFromElement(record.element, path, isTaken);
    }
    ids.insert(record.id);
  }
  return records;
}

std::u16string otherIdOf(const FileRecord& record, const std::u16string& path,
                         const std::function<bool(const std::u16string& id)>& isTaken) {
  return idFromElement(record.element, path, [&](const std::u16string& id) { return id == record.id || isTaken(id); });
}

}  // namespace Effect
