// All kinds of changes that a user makes to watermarks.
#pragma once

#include "store_world.h"

#include <set>
#include <string>
#include <vector>

// The user's initial file.
inline const std::string userFileBytes = watermarkFile(element("WM_1", {{"label", "one"}, {"value", "WM_1"}}) +
                                                       element("WM_2", {{"label", "two"}, {"value", "WM_2"}}));

inline void renameRecord(Watermarks& store, std::u16string_view id, std::u16string_view name) {
  const Effect::Node known = store.record(id);
  if (!known) return;  // its file could not be read
  const Effect::Node edited = known->clone();
  Effect::setField(*edited, Effect::Field::stylename, name);
  store.updateRecord(id, edited);
}

// A change, and alternative names of which one must exist after a crash during it.
struct Change {
  const char* name;
  void (*make)(Watermarks& store);
  std::set<std::u16string> oneOf;
};

inline const std::vector<Change> changes = {
    {"Opening", [](Watermarks&) {}, {u"two"}},
    {"Adding", [](Watermarks& store) { StoreWorld::add(store, u"three"); }, {u"two"}},
    {"Replacing",
     [](Watermarks& store) {
       store.changeTogether([&](Watermarks::Changes& together) {
         together.remove(store.findIdByName(u"two"));
         together.add(StoreWorld::newRecord(store, u"two"));
       });
     },
     {u"two"}},
    {"Editing", [](Watermarks& store) { renameRecord(store, u"WM_2", u"2"); }, {u"two", u"2"}},
    {"Deleting", [](Watermarks& store) { store.removeRecord(u"WM_1"); }, {u"two"}},
    {"Moving", [](Watermarks& store) { StoreWorld::add(store, u"from a"); }, {u"two"}},
};
