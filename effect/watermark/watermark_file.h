// One watermark file: a document of records, read and replaced as a whole through the host.
#pragma once

#include "effect/watermark/record.h"

#include <string>
#include <vector>

namespace Effect {

class SeenStore;

// The file was read completely, and holds no records that can be used. Any other Kiln::Exception of a read tells
// nothing of the content, which may be sound and must not be written over.
class DamagedFile : public Kiln::Exception {
 public:
  using Exception::Exception;
};

// Remembers the content last read or written by this process, to detect changes by others.
class WatermarkFile {
 public:
  // `lender` outlives the file.
  WatermarkFile(Kiln::Host& lender, Kiln::SmartPtr<Kiln::Services::Path> filePath);
  WatermarkFile(const WatermarkFile&) = delete;
  WatermarkFile& operator=(const WatermarkFile&) = delete;
  ~WatermarkFile();

  // The root of the records; empty when there is no file. Throws DamagedFile when it is no document or has too many
  // records, Exception when it cannot be read.
  Node read();

  // The same when the file exists and differs from what was last read or written here; else empty. Throws like read.
  Node readIfChanged();

  // Forgets what was read or written here.
  void forget();

  // Replace the file's content by the document, or by the bytes of a resource. Throw Exception.
  void write(const Node& root);
  void copyFrom(Name resource);

  // Copies a damaged file beside itself, as the first name ZVeffect.damaged-N.xml that is free or has the same
  // content; returns the copy's path. Throws Exception.
  Kiln::SmartPtr<Kiln::Services::Path> setAside();

  // Blocks the file: every later read or write throws Exception with this sentence.
  void block(std::string sentence) { blockedBecause = std::move(sentence); }
  void refuseIfBlocked() const;

 private:
  Kiln::SmartPtr<SeenStore> newStore() const;
  Node readDocument();
  bool holdsTheSame(Kiln::Services::Path& other) const;

  Kiln::Host& host;
  Kiln::SmartPtr<Kiln::Services::Path> path;
  Kiln::SmartPtr<SeenStore> store;
  std::string blockedBecause;  // UTF-8; empty when not blocked
};

// The records below a root, ordered by the 16-bit units of their ids; records with the same id in file order.
std::vector<Node> recordsOf(Kiln::Dom::INode& root);

}  // namespace Effect
