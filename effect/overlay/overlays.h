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
#include <tuple>
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

// Identifies a record, as an item of the tab's list does. Neither labels nor file names are unique.
struct OverlayId {
  std::u16string label;
  std::u16string fileName;
  bool downloaded = false;

  friend bool operator==(const OverlayId&, const OverlayId&) = default;
};

// The record that an item made by Overlays::fillList stands for.
OverlayId idOf(Kiln::XUL::ListItem& overlay);

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

  // The path of that very record; "None" when there is no such record.
  std::u16string pathOf(const Effect::OverlayId& id) const;

  // The record with that file name: the one at `path`, else the first one, the user's own before a downloaded one.
  // Without such a record, an id that no record has.
  Effect::OverlayId idOf(std::u16string_view fileName, std::u16string_view path) const;

  // Merges in changes that other processes have made to the user's index since it was last read. Throws
  // Kiln::Exception when it cannot be read any more.
  void refresh();

  // Throws Kiln::Exception when the user's index cannot be used, so that no overlay can be added to it.
  void checkIndex() const;

  // Reserves an overlay with that label, and returns the path to create its file at: the existing path when the user
  // has an overlay with that label, else a new one. Throws Kiln::Exception when no file name is free.
  std::u16string addOverlay(std::u16string_view label);

  // Undoes an addOverlay whose file will not be written: removes a new record.
  void takeBack(std::u16string_view path);

  // Deletes the overlay's thumbnail and file; false when there is no such overlay. Throws Kiln::Exception, and keeps
  // the overlay, when they cannot be deleted. The next save writes the index.
  bool removeOverlay(std::u16string_view fileName, bool downloaded);

  // The same for that very record; keeps the file while another record has it. Of the overlays with the label that the
  // record overruled, the last one takes its place.
  bool removeOverlay(const Effect::OverlayId& id);

  // Whether another overlay takes the place of that record when it is removed.
  bool hasOtherForm(const Effect::OverlayId& id) const;

  // Appends an item for no overlay, one for several when `withMultiple` is set, then one per record. `icon` marks the
  // downloaded ones; may be empty.
  void fillList(Kiln::XUL::ListData& list, bool withMultiple, const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const;

  // Whether all indexes could be read, so that no overlays are missing here. checkComplete throws Kiln::Exception, the
  // reason, when they could not.
  bool isComplete() const { return unread.empty(); }
  void checkComplete() const;

  // Writes the indexes. Throws Kiln::Exception when one with unsaved changes cannot be written.
  void save();

  // Copies every overlay, with its thumbnail, into an existing folder, and writes an index of them. Throws
  // Kiln::Exception, also when overlays may be missing.
  void exportTo(const Kiln::SmartPtr<Kiln::Services::Path>& folder);

  // Whether the store holds data of several folders, or of an already merged one.
  bool isMerged() const { return merged; }

 private:
  using Text = std::u16string;

  void readLocalData(Effect::Name settingsFolder);
  void checkUnblocked(const Text& index) const;
  void readOrBlock(Kiln::Services::Path& index, bool isFromLocalData);
  void note(const Kiln::Exception& problem);

  // The bytes of an index; empty when it does not exist. Throws Kiln::Exception.
  Kiln::String bytesOf(Kiln::Services::Path& index) const;

  // Adds the records of an index; with `keepsKnown` only those whose labels are new.
  void take(Kiln::StringView bytes, Kiln::Services::Path& index, bool keepsKnown);

  void put(Effect::OverlayRecord record);
  template <class IsMeant>
  void erase(const IsMeant& isMeant);
  void restoreOverruled(const std::set<std::pair<Text, bool>>& labels);
  bool deleteFiles(const Text& path);
  const Effect::OverlayRecord* find(std::u16string_view fileName, bool downloaded) const;
  const Effect::OverlayRecord* find(const Effect::OverlayId& id) const;
  bool mayBeFile(const Text& path) const;

  // Throws Kiln::Exception when that cannot be determined.
  static bool isFile(Kiln::Services::Path& path);
  static void copyIfThere(Kiln::Services::Path& file, const Kiln::SmartPtr<Kiln::Services::Path>& to);
  bool isDownloaded(std::u16string_view index) const;
  Text freeFileName(Kiln::Services::Path& folder);
  void write(const Text& index);
  void checkAdded(const Text& index, const std::vector<Effect::IndexEntry>& present) const;
  std::vector<Effect::IndexEntry> entriesOf(const Text& index, const std::vector<Effect::IndexEntry>& present) const;

  Kiln::Host& host;
  std::mt19937 random;
  Kiln::SmartPtr<Kiln::Services::Path> indexPath;
  Kiln::SmartPtr<Kiln::Services::Path> mergeFolder;  // empty when the host has no local data
  bool marksDownloaded = false;
  bool merged;
  std::string unread;  // why the first index that could not be read could not be; empty when there is none

  std::vector<Effect::OverlayRecord> records;
  std::map<std::pair<Text, bool>, std::size_t> byLabel;  // the position of each (label, downloaded)

  // In reading order. They are not listed, but stay in their indexes.
  std::vector<Effect::OverlayRecord> overruled;

  // The index entries of removed records whose file another record has: label, path, index.
  std::set<std::tuple<Text, Text, Text>> removed;

  std::set<Text> added;                 // paths of the records created by addOverlay
  std::set<Text> changed;               // indexes with records added or removed since they were written
  std::map<Text, std::string> blocked;  // indexes that must not be written, and the error to throw instead
};
