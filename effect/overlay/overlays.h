// The user's overlays: forms captured from earlier jobs, each a file and a thumbnail beside it, listed in an index.
//
// docs/overlays.md describes the files and the guarantees.
#pragma once

#include "effect/vocabulary.h"
#include "formats/overlay_index.h"
#include "kiln/host.h"
#include "kiln/property.h"

#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Effect {

struct OverlayRecord {
  std::u16string label;      // the name in lists
  std::u16string disklabel;  // the name as stored in its index
  std::u16string diskpath;   // the file name, which identifies the overlay in lists and properties
  std::u16string path;       // the full path of the file
  std::u16string diskfile;   // the index that has the record
  bool downloaded = false;   // from local data, when that is kept separate from the user's own
};

}  // namespace Effect

class Overlays final : public Kiln::RefCount {
 public:
  // Reads all indexes, the user's first. Never throws for a file; reports an unreadable index of the user's own to the
  // user.
  Overlays(Kiln::Host& lender, const Kiln::PropertyManager& properties, bool isMergedAlready);

  // Records in reading order; an index is valid until the next removal.
  std::int32_t count() const { return static_cast<std::int32_t>(records.size()); }
  const Effect::OverlayRecord& record(std::int32_t index) const { return records.at(static_cast<std::size_t>(index)); }

  // Whether the limit of 20 overlays, including downloaded ones, is reached.
  bool isFull() const;

  // The first record with that label and origin; -1 when there is none.
  std::int32_t findByLabel(std::u16string_view label, bool downloaded) const;
  bool hasLabel(std::u16string_view label) const { return findByLabel(label, false) >= 0; }

  // The first record with that file name. Throws Kiln::Exception when there is none.
  std::int32_t findByDiskPath(std::u16string_view fileName) const;

  // The path of the record with that file name; `downloaded` is ignored unless downloaded data is kept separate. "None"
  // when there is no such record.
  std::u16string pathOf(std::u16string_view fileName, bool downloaded) const;

  // Merges in changes that other processes have made to the user's index since it was last read.
  void refresh();

  // Reserves an overlay with that label, and returns the path to create its file at: the existing path when the user
  // has an overlay with that label, else a new one. Throws Kiln::Exception when no file name is free.
  std::u16string addOverlay(std::u16string_view label);

  // Undoes an addOverlay whose file will not be written: removes a new record.
  void takeBack(std::u16string_view path);

  // Deletes the overlay's thumbnail and file; false when there is no such overlay. Throws Kiln::Exception, and keeps
  // the overlay, when they cannot be deleted. The next save writes the index.
  bool removeOverlay(std::u16string_view fileName, bool downloaded);

  // Appends an item for no overlay, one for several when `withMultiple` is set, then one per record. `icon` marks the
  // downloaded ones; may be empty.
  void fillList(Kiln::XUL::ListData& list, bool withMultiple, const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const;

  // Writes the indexes. Throws Kiln::Exception when one with unsaved changes cannot be written.
  void save();

  // Copies every overlay, with its thumbnail, into an existing folder, and writes an index of them. Throws
  // Kiln::Exception.
  void exportTo(const Kiln::SmartPtr<Kiln::Services::Path>& folder);

  // Whether the store holds data of several folders, or of an already merged one.
  bool isMerged() const { return merged; }

 private:
  using Text = std::u16string;

  void readLocalData(Effect::Name settingsFolder);
  void readOrBlock(Kiln::Services::Path& index, bool isFromLocalData);

  // The bytes of an index; empty when it does not exist. Throws Kiln::Exception.
  Kiln::String bytesOf(Kiln::Services::Path& index) const;

  // Adds the records of an index; with `keepsKnown` only those whose labels are new.
  void take(Kiln::StringView bytes, Kiln::Services::Path& index, bool keepsKnown);

  void put(Effect::OverlayRecord record);
  void erase(const Text& path);
  const Effect::OverlayRecord* find(std::u16string_view fileName, bool downloaded) const;
  bool isDownloaded(std::u16string_view index) const;
  Text freeFileName(Kiln::Services::Path& folder);
  void write(const Text& index);

  Kiln::Host& host;
  std::mt19937 random;
  Kiln::SmartPtr<Kiln::Services::Path> indexPath;
  Kiln::SmartPtr<Kiln::Services::Path> mergeFolder;  // empty when the host has no local data
  bool marksDownloaded = false;
  bool merged;

  std::vector<Effect::OverlayRecord> records;
  std::map<std::pair<Text, bool>, std::size_t> byLabel;  // the position of each (label, downloaded)

  std::set<Text> added;                 // paths of the records created by addOverlay
  std::set<Text> changed;               // indexes with records added or removed since they were written
  std::map<Text, std::string> blocked;  // indexes that must not be written, and the error to throw instead
};
