// The user's overlays: forms captured from earlier jobs, each a file with a thumbnail beside it, listed in an index.
//
// docs/overlays.md tells of the files and of what is promised about them.
#pragma once

#include "effect/overlay/index.h"
#include "effect/vocabulary.h"
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
  std::u16string disklabel;  // the name as its index has it
  std::u16string diskpath;   // the file's name, by which lists and properties know the overlay
  std::u16string path;       // the whole path of the file
  std::u16string diskfile;   // the index that has the record
  bool downloaded = false;   // from local data, while that is kept apart from the user's own
};

}  // namespace Effect

class Overlays final : public Kiln::RefCount {
 public:
  // Reads all indexes, the user's first. Nothing is thrown for a file; the user is told of an index of their own that
  // cannot be read.
  Overlays(Kiln::Host& lender, const Kiln::PropertyManager& properties, bool isMergedAlready);

  // Records in reading order; an index is valid until the next one is removed.
  std::int32_t count() const { return static_cast<std::int32_t>(records.size()); }
  const Effect::OverlayRecord& record(std::int32_t index) const { return records.at(static_cast<std::size_t>(index)); }

  // Whether no more overlays fit: 20, downloaded ones included.
  bool isFull() const;

  // The first record of that label, downloaded or not; -1 when there is none.
  std::int32_t findByLabel(std::u16string_view label, bool downloaded) const;
  bool hasLabel(std::u16string_view label) const { return findByLabel(label, false) >= 0; }

  // The first record of that file name. Throws Kiln::Exception when there is none.
  std::int32_t findByDiskPath(std::u16string_view fileName) const;

  // The path of the record of that file name; `downloaded` counts only while downloaded data is kept apart. "None" when
  // there is no such record.
  std::u16string pathOf(std::u16string_view fileName, bool downloaded) const;

  // Takes up what other processes have put into the user's index since it was read.
  void refresh();

  // Makes room for an overlay of that label, and gives the path at which its file is to be made: that of the user's
  // overlay of the label, where there is one, else a new one. Throws Kiln::Exception when no name is free.
  std::u16string addOverlay(std::u16string_view label);

  // Takes back an addOverlay whose file will not be written: a record that was new is gone again.
  void takeBack(std::u16string_view path);

  // Deletes the overlay's thumbnail and file; false when there is no such overlay. Throws Kiln::Exception when they
  // cannot be deleted: the overlay stays. The index is written by the next save.
  bool removeOverlay(std::u16string_view fileName, bool downloaded);

  // Adds an item for no overlay, one for several where that is asked for, then one a record. `icon` marks the
  // downloaded ones; it may be empty.
  void fillList(Kiln::XUL::ListData& list, bool withMultiple, const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const;

  // Writes the indexes after a change. Throws Kiln::Exception when one that the change concerns cannot be written.
  void save();

  // Copies every overlay, with its thumbnail, into a folder that is there, and writes one index of them. Throws
  // Kiln::Exception.
  void exportTo(const Kiln::SmartPtr<Kiln::Services::Path>& folder);

  // Whether the store holds what several folders, or a merged one, brought together.
  bool isMerged() const { return merged; }

 private:
  using Text = std::u16string;

  void readLocalData(Effect::Name settingsFolder);
  void readOrBlock(Kiln::Services::Path& index, bool isFromLocalData);

  // The bytes of an index; empty where there is none. Throws Kiln::Exception.
  Kiln::String bytesOf(Kiln::Services::Path& index) const;

  // Adds what the bytes of an index list; `keepsKnown` leaves the records as they are whose labels they have, too.
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
  std::map<std::pair<Text, bool>, std::size_t> byLabel;  // the place of each label, downloaded or not

  std::set<Text> added;                 // paths of the records that addOverlay has made
  std::set<Text> changed;               // indexes that have gained or lost records since they were written
  std::map<Text, std::string> blocked;  // indexes that are not written, and the sentence that says why
};
