// A record as it stands in its file: under an element's name, with an id that no other record of the file has.
#pragma once

#include "effect/watermark/record.h"

#include <functional>
#include <string>
#include <vector>

namespace Effect {

struct FileRecord {
  Node node;               // with its source, and a name if it has a text
  std::u16string element;  // the element's name
  std::u16string id;       // in this file
  bool isUsable = false;   // has a name for the list
};

// The records below the root of the file at `path`, ordered by the 16-bit units of their elements' names. Of two with
// one id the later loses its own. A record without an id gets one that is the same at every reading.
std::vector<FileRecord> fileRecords(Kiln::Dom::INode& root, const std::u16string& path);

// An id for a record whose own belongs to a record of another file; the same at every reading.
std::u16string otherIdOf(const FileRecord& record, const std::u16string& path,
                         const std::function<bool(const std::u16string& id)>& isTaken);

// A record that a store does not show, and keeps in its file.
struct OverruledRecord {
  Node node;               // as written
  std::u16string element;  // the element's name
  std::u16string id;       // in its file
  std::u16string by;       // the id of the record that is shown for it; empty for a record without a usable name
};

}  // namespace Effect
