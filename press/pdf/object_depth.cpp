#include "press/pdf/object_depth.h"

#include <set>
#include <vector>

namespace Press {
namespace {

constexpr std::size_t deepest = 2000;

std::vector<QPDFObjectHandle> partsOf(QPDFObjectHandle object) {
  if (object.isArray()) return object.getArrayAsVector();
  if (object.isStream()) return {object.getDict()};
  std::vector<QPDFObjectHandle> parts;
  if (object.isDictionary())
    for (const std::string& key : object.getKeys()) parts.push_back(object.getKey(key));
  return parts;
}

}  // namespace

// Traverses objects like the library, but iteratively: in the same order, each shared object once.
bool isNestedTooDeeply(const QPDFObjectHandle& object) {
  struct Level {
    std::vector<QPDFObjectHandle> parts;
    std::size_t next = 0;
  };
  std::set<QPDFObjGen> seen;
  std::vector<Level> levels{{{object}}};
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.parts.size()) {
      levels.pop_back();
      continue;
    }
    QPDFObjectHandle part = level.parts[level.next++];
    if (part.isIndirect() && !seen.insert(part.getObjGen()).second) continue;
    if (part.isPagesObject() || part.isPageObject()) continue;  // not copied by the library
    std::vector<QPDFObjectHandle> parts = partsOf(part);
    if (parts.empty()) continue;
    if (levels.size() == deepest) return true;
    levels.push_back({std::move(parts)});
  }
  return false;
}

}  // namespace Press
