// The user's text watermarks: read once from their files, kept in memory, and saved with every change.
//
// docs/watermarks.md describes the files and the guarantees.
#pragma once

#include "effect/watermark/file_record.h"
#include "effect/watermark/list_fill.h"
#include "effect/watermark/record.h"
#include "effect/watermark/record_id.h"
#include "effect/watermark/watermark_file.h"
#include "kiln/property.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class Watermarks final : public Kiln::RefCount {
 public:
  // Reads all files, the user's first. Never throws for a file; reports the user's own that cannot be read or written
  // to the user.
  Watermarks(Kiln::Host& lender, const Kiln::PropertyManager& properties, bool isMergedAlready);

  // Changes that are saved together. The operations work like the store's.
  class Changes {
   public:
    std::u16string add(const Effect::Node& record) { return store.add(record->clone()); }
    void update(std::u16string_view id, const Effect::Node& record);
    bool remove(std::u16string_view id);

   private:
    friend class Watermarks;
    explicit Changes(Watermarks& changed) : store(changed) {}

    Watermarks& store;
  };

  // The operations below return when the change is on disk. When it cannot be saved they throw Kiln::Exception and
  // leave the store unchanged.

  // Adds a copy of the record and returns its id; empty when its name is not usable. Replaces a record with the same
  // name, unless that was downloaded, and takes over its id. What is removed or replaced is so in every file, with the
  // records of its name that reading has overruled.
  std::u16string addRecord(const Effect::Node& record);

  // Stores the node, not a copy, as the record with that id.
  bool updateRecord(std::u16string_view id, const Effect::Node& record);

  // False when there is no such record. The NoneRecord cannot be removed.
  bool removeRecord(std::u16string_view id);

  // Applies several changes and saves them together at the end.
  void changeTogether(const std::function<void(Changes&)>& make);

  // The first id, in id order, with that name whose record was not downloaded; empty when there is none.
  std::u16string findIdByName(std::u16string_view stylename) const;
  // All of them, but not the NoneRecord's.
  std::vector<std::u16string> idsOfName(std::u16string_view stylename) const;
  bool hasName(std::u16string_view stylename) const { return !findIdByName(stylename).empty(); }

  // The store's own record, not to be modified; empty when there is none with that id.
  Effect::Node record(std::u16string_view id) const;

  // Whether the limit of 20 records, not counting the NoneRecord and hidden ones, is reached.
  bool isFull() const;

  // Appends the records to a list. `icon` marks the downloaded ones; may be null.
  void fillList(Kiln::XUL::ListData& list, const Kiln::SmartPtr<Kiln::XUL::Image>& icon) const;

  // A new NoneRecord, the template of a new watermark.
  Effect::Node makeNoneRecord() const;

  // Writes the files with changed records, and the merged copy when it is missing.
  bool save();

  // Whether all files could be read, so that no records are missing here; a damaged file does not count. checkComplete
  // throws Kiln::Exception, the reason, when they could not.
  bool isComplete() const { return unread.empty(); }
  void checkComplete() const;

  // Writes all records to one file, with the ids and names of their own files. Throws Kiln::Exception, also when
  // records may be missing.
  void exportMerged(const Kiln::SmartPtr<Kiln::Services::Path>& to);

  // Whether the store holds data of several folders, or of an already merged one.
  bool isMerged() const { return merged; }

 private:
  using Text = std::u16string;

  // The ids of each file's records, by its path, in path order.
  using Groups = std::map<Text, std::vector<Text>>;

  // Reading.
  bool readUserFile();
  bool readUserFileOnce();
  void readBuiltIn();
  void readLocalData();
  void note(const Kiln::Exception& problem);
  bool readAll(Kiln::Dom::INode& root, const Text& path);
  void takeIn(const Effect::FileRecord& found, const Text& path);
  void settle(const Effect::FileRecord& found, const Text& id, const Text& path) const;
  void complete(Kiln::Dom::INode& record, const Text& id, bool isFromLocalData) const;
  void keep(const Effect::FileRecord& found, const Text& path, const Text& by);
  bool isOverruled(Kiln::Dom::INode& known, const Effect::FileRecord& by, const Text& path) const;
  Text otherId(const Effect::FileRecord& found, const Text& path) const;

  // Reading what others have changed.
  void takeUpOthersChanges(const Text& path);
  void takeUp(Kiln::Dom::INode& root, const Text& path);
  std::optional<Text> idOfAdded(const Effect::FileRecord& found, const Text& path) const;
  std::map<Text, Text> idsByIdInFile(const Text& path) const;
  bool isStillIn(const Text& path, const Text& id) const;
  static Text idInItsFile(Kiln::Dom::INode& record, const Text& id);
  bool marks(const Text& path) const { return marksDownloaded && isLocalData(path); }
  Text withEnding(const Text& id, const Text& path) const;

  // Changing.
  Text add(const Effect::Node& record);
  void replaceOverruled(std::u16string_view name);
  void change(const Text& id, const Effect::Node& record);
  void put(const Text& id, const Effect::Node& record);
  void setBack();
  void forgetUnfinished();

  // Writing.
  void saveChanges();
  void writeDue();
  Groups groups() const;
  std::vector<Text> dueInOrder(const Groups& all) const;
  void writeMergedCopy(const Groups& all);
  Effect::Node document(const Text& path, const std::vector<Text>& ids) const;
  Text elementOf(const Effect::OverruledRecord& overruledOne, const Text& path,
                 const std::map<Text, Effect::Node>& taken) const;
  bool isReplaced(const Effect::OverruledRecord& record) const;
  void attempt(const Text& path, const std::function<void()>& work);
  void setAside(Effect::WatermarkFile& file, const Kiln::Exception& problem);
  [[noreturn]] void block(Effect::WatermarkFile& file, const Kiln::Exception& problem) const;
  void tellOnce(const Kiln::Exception& problem);

  Effect::WatermarkFile& fileAt(const Text& path);
  bool isLocalData(const Text& path) const { return path != userPath; }

  Kiln::Host& host;
  Effect::RecordIds ids;
  Text userPath;
  Kiln::SmartPtr<Kiln::Services::Path> mergeFolder;  // empty when the host has no local data
  bool marksDownloaded = false;
  bool hidesBuiltIn = false;
  bool merged;
  std::string unread;  // why the first file that could not be read could not be; empty when there is none

  Effect::WatermarkRecords records;
  std::set<std::pair<Text, Text>> namesAndIds;                     // of the records that were not downloaded
  std::map<Text, Effect::WatermarkFile> files;                     // by path
  std::map<Text, std::vector<Effect::OverruledRecord>> overruled;  // by path

  bool isOpening = true;  // failures to write are reported, not thrown
  std::set<Text> left;    // paths of the files to leave as they are while opening: others' records clash with theirs
  bool hasTold = false;
  std::set<Text> due;  // paths of the files whose records have changed since they were last read or written
  std::map<Text, Effect::Node> before;        // original records of unsaved changes; empty for added ones
  std::set<Text, std::less<>> replacedNames;  // of the records that unsaved changes remove or replace
};
